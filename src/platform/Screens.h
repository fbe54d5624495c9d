#pragma once

#include <QRect>

#include <optional>

/// The desktop's screens. Main thread only.
class Screens
{
public:
    virtual ~Screens() = default;

    /// The part of the main screen, the one with the keyboard focus, that panels leave free, in
    /// device-independent pixels of the desktop's coordinates; of the first screen when none has the focus;
    /// nothing without a screen.
    virtual std::optional<QRect> visibleFrame() const = 0;
};
