#include "store/Color.h"

#include <QString>

std::optional<Color> Color::hex(QStringView text)
{
    QString digits = text.trimmed().toString();
    digits.remove(QLatin1Char('#'));
    if (digits.size() != 6)
        return std::nullopt;
    // An integer parser takes a sign, and of signs only the plus.
    QStringView number = digits;
    if (number.front() == QLatin1Char('+'))
        number = number.sliced(1);
    quint64 value = 0;
    for (const QChar character : number) {
        const char16_t unit = character.unicode();
        const bool isDigit = unit >= u'0' && unit <= u'9';
        const bool isLower = unit >= u'a' && unit <= u'f';
        const bool isUpper = unit >= u'A' && unit <= u'F';
        if (!isDigit && !isLower && !isUpper)
            return std::nullopt;
        const char16_t zero = isDigit ? u'0' : isLower ? u'a' - 10 : u'A' - 10;
        value = value << 4U | static_cast<quint64>(unit - zero);
    }
    const auto component = [value](unsigned shift) {
        return static_cast<double>(value >> shift & 0xffU) / 255.0;
    };
    return Color{component(16), component(8), component(0), 1};
}

Color Color::systemBlue()
{
    return {0, 122.0 / 255.0, 1, 1};
}
