#pragma once

#include "base/Clock.h"
#include "store/Color.h"
#include "store/Record.h"

#include <QString>
#include <QUuid>

#include <vector>

/// A label with a colour and a symbol that entries can be assigned to. Two may share a name.
class ClipCategory : public Record
{
public:
    /// Sets a fresh `id` and the current time.
    ClipCategory(QString name, QString colorHex, QString icon, qint64 sortOrder, bool isDefault,
        const Clock &clock = SystemClock());

    /// The fields as they are stored.
    struct Fields {
        QUuid id;
        QString name;
        QString colorHex; ///< "#" and six hexadecimal digits; anything else shows the system's blue
        QString icon;     ///< the name of a symbol
        qint64 sortOrder = 0;
        bool isDefault = false;
        QDateTime createdAt;
    };
    explicit ClipCategory(Fields fields)
        : m_fields(std::move(fields))
    {
    }
    const Fields &fields() const { return m_fields; }

    const QUuid &id() const { return m_fields.id; }
    const QString &name() const { return m_fields.name; }
    const QString &colorHex() const { return m_fields.colorHex; }
    const QString &icon() const { return m_fields.icon; }
    qint64 sortOrder() const { return m_fields.sortOrder; }
    bool isDefault() const { return m_fields.isDefault; }
    const QDateTime &createdAt() const { return m_fields.createdAt; }

    void setName(QString name) { assign(m_fields.name, std::move(name)); }
    void setColorHex(QString colorHex) { assign(m_fields.colorHex, std::move(colorHex)); }
    void setIcon(QString icon) { assign(m_fields.icon, std::move(icon)); }
    void setSortOrder(qint64 sortOrder) { assign(m_fields.sortOrder, sortOrder); }

    /// The colour of `colorHex`, or the system's blue when that does not parse.
    Color color() const;

    /// The order of display: lower `sortOrder` first; equal ones in the order of insertion.
    static bool bySortOrder(const ClipCategory &a, const ClipCategory &b);

    struct Default {
        QString name;
        QString colorHex;
        QString icon;
    };
    /// What an empty store is seeded with, in `sortOrder`: one category for each kind of entry.
    static const std::vector<Default> &defaults();

private:
    Fields m_fields;
};
