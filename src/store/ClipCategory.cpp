#include "store/ClipCategory.h"

ClipCategory::ClipCategory(
    QString name, QString colorHex, QString icon, qint64 sortOrder, bool isDefault, const Clock &clock)
    : m_fields{QUuid::createUuid(), std::move(name), std::move(colorHex), std::move(icon), sortOrder,
          isDefault, clock.now()}
{
}

Color ClipCategory::color() const
{
    return Color::hex(m_fields.colorHex).value_or(Color::systemBlue());
}

bool ClipCategory::bySortOrder(const ClipCategory &a, const ClipCategory &b)
{
    return a.sortOrder() != b.sortOrder() ? a.sortOrder() < b.sortOrder() : a.sequence() < b.sequence();
}

const std::vector<ClipCategory::Default> &ClipCategory::defaults()
{
    static const std::vector<Default> Defaults{
        {QStringLiteral("Text"), QStringLiteral("#3F78F3"), QStringLiteral("doc.text")},
        {QStringLiteral("URL"), QStringLiteral("#33B873"), QStringLiteral("link")},
        {QStringLiteral("Image"), QStringLiteral("#EB8C33"), QStringLiteral("photo")},
        {QStringLiteral("File"), QStringLiteral("#808594"), QStringLiteral("doc")},
        {QStringLiteral("Rich Text"), QStringLiteral("#9A4DD8"), QStringLiteral("doc.richtext")},
    };
    return Defaults;
}
