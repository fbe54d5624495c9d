#pragma once

#include "store/Record.h"

#include <QString>
#include <QStringList>
#include <QUuid>

#include <vector>

/// How several entries are joined into one text.
class PasteTemplate : public Record
{
public:
    /// Sets a fresh `id`.
    PasteTemplate(QString name, QString separator, QString itemPrefix, QString itemSuffix, QString wrapPrefix,
        QString wrapSuffix, qint64 sortOrder, bool isDefault);

    /// The fields as they are stored.
    struct Fields {
        QUuid id;
        QString name;
        QString separator;
        QString itemPrefix;
        QString itemSuffix;
        QString wrapPrefix;
        QString wrapSuffix;
        qint64 sortOrder = 0;
        bool isDefault = false;
    };
    explicit PasteTemplate(Fields fields)
        : m_fields(std::move(fields))
    {
    }
    const Fields &fields() const { return m_fields; }

    const QUuid &id() const { return m_fields.id; }
    const QString &name() const { return m_fields.name; }
    const QString &separator() const { return m_fields.separator; }
    const QString &itemPrefix() const { return m_fields.itemPrefix; }
    const QString &itemSuffix() const { return m_fields.itemSuffix; }
    const QString &wrapPrefix() const { return m_fields.wrapPrefix; }
    const QString &wrapSuffix() const { return m_fields.wrapSuffix; }
    qint64 sortOrder() const { return m_fields.sortOrder; }
    bool isDefault() const { return m_fields.isDefault; }

    /// The texts, each between `itemPrefix` and `itemSuffix`, joined by `separator`, the whole between
    /// `wrapPrefix` and `wrapSuffix`. Nothing is escaped, trimmed or numbered.
    QString combine(const QStringList &items) const;

    /// The order of display: lower `sortOrder` first; equal ones in the order of insertion.
    static bool bySortOrder(const PasteTemplate &a, const PasteTemplate &b);

    struct Default {
        QString name;
        QString separator;
        QString itemPrefix;
        QString itemSuffix;
        QString wrapPrefix;
        QString wrapSuffix;
    };
    /// What an empty store is seeded with, in `sortOrder`.
    static const std::vector<Default> &defaults();

private:
    Fields m_fields;
};
