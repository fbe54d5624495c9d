#pragma once

#include <QStringView>

#include <optional>

/// A display colour in the sRGB colour space, each component from 0 to 1.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double opacity = 1;

    /// The colour that a text of six hexadecimal digits names, any "#" and surrounding white space aside:
    /// "#3F78F3". There are no short forms and none with alpha: any other length gives nothing.
    static std::optional<Color> hex(QStringView text);

    /// What stands in for a colour that does not parse.
    static Color systemBlue();

    friend bool operator==(const Color &, const Color &) = default;
};
