#include "store/RecordMapping.h"

#include "store/Database.h"

#include <QSet>

namespace
{

/// One shared copy of each text that many rows repeat: applications' names.
QString shared(const QString &text)
{
    static QSet<QString> texts;
    return *texts.insert(text);
}

/// Null when the text is absent.
QString shared(const std::optional<QString> &text)
{
    return text ? shared(text->isNull() ? QStringLiteral("") : *text) : QString();
}

} // namespace

const char *RecordMapping<ClipboardItem>::selectAll()
{
    // 16384 characters are at least as many bytes: such a content is long, and is read in pieces instead.
    return "SELECT rowid, id, type, sourceAppName, sourceAppBundleId, isPinned, createdAt, characterCount, "
           "categoryId, CASE WHEN characterCount > 16384 THEN NULL ELSE content END, typeof(imageData) <> "
           "'null' "
           "FROM ClipboardItem ORDER BY rowid";
}

const char *RecordMapping<ClipboardItem>::insert()
{
    return "INSERT INTO ClipboardItem (id, type, sourceAppName, sourceAppBundleId, isPinned, createdAt, "
           "characterCount, categoryId, content, imageData) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10)";
}

const char *RecordMapping<ClipboardItem>::update()
{
    return "UPDATE ClipboardItem SET id = ?1, type = ?2, sourceAppName = ?3, sourceAppBundleId = ?4, "
           "isPinned = ?5, createdAt = ?6, characterCount = ?7, categoryId = ?8, "
           "content = coalesce(?9, content) WHERE rowid = ?11";
}

const char *RecordMapping<ClipboardItem>::remove()
{
    return "DELETE FROM ClipboardItem WHERE rowid = ?1";
}

void RecordMapping<ClipboardItem>::bind(Statement &statement, const ClipboardItem::Fields &fields)
{
    statement.bind(1, fields.id);
    statement.bindText(2, storedText(fields.type));
    statement.bindOrNull(3, fields.sourceAppName);
    statement.bindOrNull(4, fields.sourceAppBundleId);
    statement.bind(5, fields.isPinned);
    statement.bind(6, fields.createdAt);
    statement.bind(7, fields.characterCount);
    statement.bind(8, fields.categoryId);
    // Of a long content that is only in the row, the row keeps it.
    if (fields.content.size() == fields.contentSize)
        statement.bindText(9, fields.content);
    statement.bindBlobOrNull(10, fields.imageData);
}

void RecordMapping<ClipboardItem>::bindUpdate(
    Statement &statement, const ClipboardItem::Fields &fields, qint64 rowId)
{
    bind(statement, fields);
    statement.bind(11, rowId);
}

ClipboardItem::Fields RecordMapping<ClipboardItem>::read(const Statement &statement)
{
    ClipboardItem::Fields fields;
    fields.id = statement.uuid(1);
    fields.type = clipboardItemType(statement.bytes(2)).value_or(ClipboardItemType::Text);
    fields.sourceAppName = shared(statement.optionalString(3));
    fields.sourceAppBundleId = shared(statement.optionalString(4));
    fields.isPinned = statement.integer(5) != 0;
    fields.createdAt = statement.date(6);
    fields.characterCount = statement.integer(7);
    fields.categoryId = statement.optionalUuid(8);
    fields.content = statement.bytes(9);
    fields.contentSize = statement.isNull(9) ? -1 : fields.content.size();
    fields.hasImageData = statement.integer(10) != 0;
    return fields;
}

const char *RecordMapping<ClipCategory>::selectAll()
{
    return "SELECT rowid, id, name, colorHex, icon, sortOrder, isDefault, createdAt FROM ClipCategory "
           "ORDER BY rowid";
}

const char *RecordMapping<ClipCategory>::insert()
{
    return "INSERT INTO ClipCategory (id, name, colorHex, icon, sortOrder, isDefault, createdAt) "
           "VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7)";
}

const char *RecordMapping<ClipCategory>::update()
{
    return "UPDATE ClipCategory SET id = ?1, name = ?2, colorHex = ?3, icon = ?4, sortOrder = ?5, "
           "isDefault = ?6, createdAt = ?7 WHERE rowid = ?8";
}

const char *RecordMapping<ClipCategory>::remove()
{
    return "DELETE FROM ClipCategory WHERE rowid = ?1";
}

void RecordMapping<ClipCategory>::bind(Statement &statement, const ClipCategory::Fields &fields)
{
    statement.bind(1, fields.id);
    statement.bind(2, fields.name);
    statement.bind(3, fields.colorHex);
    statement.bind(4, fields.icon);
    statement.bind(5, fields.sortOrder);
    statement.bind(6, fields.isDefault);
    statement.bind(7, fields.createdAt);
}

void RecordMapping<ClipCategory>::bindUpdate(
    Statement &statement, const ClipCategory::Fields &fields, qint64 rowId)
{
    bind(statement, fields);
    statement.bind(8, rowId);
}

ClipCategory::Fields RecordMapping<ClipCategory>::read(const Statement &statement)
{
    return {statement.uuid(1), statement.string(2), statement.string(3), statement.string(4),
        statement.integer(5), statement.integer(6) != 0, statement.date(7)};
}

const char *RecordMapping<PasteTemplate>::selectAll()
{
    return "SELECT rowid, id, name, separator, itemPrefix, itemSuffix, wrapPrefix, wrapSuffix, sortOrder, "
           "isDefault FROM PasteTemplate ORDER BY rowid";
}

const char *RecordMapping<PasteTemplate>::insert()
{
    return "INSERT INTO PasteTemplate (id, name, separator, itemPrefix, itemSuffix, wrapPrefix, wrapSuffix, "
           "sortOrder, isDefault) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9)";
}

const char *RecordMapping<PasteTemplate>::update()
{
    return "UPDATE PasteTemplate SET id = ?1, name = ?2, separator = ?3, itemPrefix = ?4, itemSuffix = ?5, "
           "wrapPrefix = ?6, wrapSuffix = ?7, sortOrder = ?8, isDefault = ?9 WHERE rowid = ?10";
}

const char *RecordMapping<PasteTemplate>::remove()
{
    return "DELETE FROM PasteTemplate WHERE rowid = ?1";
}

void RecordMapping<PasteTemplate>::bind(Statement &statement, const PasteTemplate::Fields &fields)
{
    statement.bind(1, fields.id);
    statement.bind(2, fields.name);
    statement.bind(3, fields.separator);
    statement.bind(4, fields.itemPrefix);
    statement.bind(5, fields.itemSuffix);
    statement.bind(6, fields.wrapPrefix);
    statement.bind(7, fields.wrapSuffix);
    statement.bind(8, fields.sortOrder);
    statement.bind(9, fields.isDefault);
}

void RecordMapping<PasteTemplate>::bindUpdate(
    Statement &statement, const PasteTemplate::Fields &fields, qint64 rowId)
{
    bind(statement, fields);
    statement.bind(10, rowId);
}

PasteTemplate::Fields RecordMapping<PasteTemplate>::read(const Statement &statement)
{
    return {statement.uuid(1), statement.string(2), statement.string(3), statement.string(4),
        statement.string(5), statement.string(6), statement.string(7), statement.integer(8),
        statement.integer(9) != 0};
}
