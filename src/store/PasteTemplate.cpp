#include "store/PasteTemplate.h"

PasteTemplate::PasteTemplate(QString name, QString separator, QString itemPrefix, QString itemSuffix,
    QString wrapPrefix, QString wrapSuffix, qint64 sortOrder, bool isDefault)
    : m_fields{QUuid::createUuid(), std::move(name), std::move(separator), std::move(itemPrefix),
          std::move(itemSuffix), std::move(wrapPrefix), std::move(wrapSuffix), sortOrder, isDefault}
{
}

QString PasteTemplate::combine(const QStringList &items) const
{
    QString combined = m_fields.wrapPrefix;
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (i > 0)
            combined += m_fields.separator;
        combined += m_fields.itemPrefix + items[i] + m_fields.itemSuffix;
    }
    return combined + m_fields.wrapSuffix;
}

bool PasteTemplate::bySortOrder(const PasteTemplate &a, const PasteTemplate &b)
{
    return a.sortOrder() != b.sortOrder() ? a.sortOrder() < b.sortOrder() : a.sequence() < b.sequence();
}

const std::vector<PasteTemplate::Default> &PasteTemplate::defaults()
{
    static const QString None;
    static const QString Comma = QStringLiteral(", ");
    static const QString LineFeed = QStringLiteral("\n");
    static const QString Quote = QStringLiteral("\"");
    static const QString Apostrophe = QStringLiteral("'");
    static const std::vector<Default> Defaults{
        {QStringLiteral("Comma"), Comma, None, None, None, None},
        {QStringLiteral("New Line"), LineFeed, None, None, None, None},
        {QStringLiteral("Space"), QStringLiteral(" "), None, None, None, None},
        {QStringLiteral("Tab"), QStringLiteral("\t"), None, None, None, None},
        {QStringLiteral("\"Double Quotes\""), Comma, Quote, Quote, None, None},
        {QStringLiteral("'Single Quotes'"), Comma, Apostrophe, Apostrophe, None, None},
        {QStringLiteral("JSON Array"), Comma, Quote, Quote, QStringLiteral("["), QStringLiteral("]")},
        {QStringLiteral("Bullet List"), LineFeed, QStringLiteral("- "), None, None, None},
        {QStringLiteral("Numbered"), LineFeed, None, None, None, None},
        {QStringLiteral("SQL IN"), Comma, Apostrophe, Apostrophe, QStringLiteral("("), QStringLiteral(")")},
    };
    return Defaults;
}
