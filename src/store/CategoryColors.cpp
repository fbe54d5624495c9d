#include "store/CategoryColors.h"

const std::vector<CategoryColors::Entry> &CategoryColors::palette()
{
    static const std::vector<Entry> Palette{
        {QStringLiteral("Blue"), QStringLiteral("#3F78F3")},
        {QStringLiteral("Green"), QStringLiteral("#33B873")},
        {QStringLiteral("Orange"), QStringLiteral("#EB8C33")},
        {QStringLiteral("Purple"), QStringLiteral("#9A4DD8")},
        {QStringLiteral("Red"), QStringLiteral("#E84855")},
        {QStringLiteral("Pink"), QStringLiteral("#E84899")},
        {QStringLiteral("Teal"), QStringLiteral("#2DB5AA")},
        {QStringLiteral("Yellow"), QStringLiteral("#E8B833")},
        {QStringLiteral("Indigo"), QStringLiteral("#5856D6")},
        {QStringLiteral("Brown"), QStringLiteral("#A0845C")},
        {QStringLiteral("Mint"), QStringLiteral("#66D4A8")},
        {QStringLiteral("Steel"), QStringLiteral("#808594")},
    };
    return Palette;
}
