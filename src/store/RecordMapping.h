#pragma once

#include "store/ClipCategory.h"
#include "store/ClipboardItem.h"
#include "store/PasteTemplate.h"

class Statement;

/// How a record's fields lie in its table: one specialisation for each record type.
template<class Model>
struct RecordMapping;

template<>
struct RecordMapping<ClipboardItem> {
    static constexpr auto Order = &ClipboardItem::newestFirst;
    /// Columns: rowid, id, type, sourceAppName, sourceAppBundleId, isPinned, createdAt, characterCount,
    /// categoryId, content (or NULL when it is long), whether there are image bytes.
    static const char *selectAll();
    static const char *insert();
    static const char *update();
    static const char *remove();
    static void bind(Statement &statement, const ClipboardItem::Fields &fields);
    /// An update leaves image bytes alone: they never change. It binds what `bind` does, and the row's
    /// number.
    static void bindUpdate(Statement &statement, const ClipboardItem::Fields &fields, qint64 rowId);
    static ClipboardItem::Fields read(const Statement &statement);
};

template<>
struct RecordMapping<ClipCategory> {
    static constexpr auto Order = &ClipCategory::bySortOrder;
    static const char *selectAll();
    static const char *insert();
    static const char *update();
    static const char *remove();
    static void bind(Statement &statement, const ClipCategory::Fields &fields);
    static void bindUpdate(Statement &statement, const ClipCategory::Fields &fields, qint64 rowId);
    static ClipCategory::Fields read(const Statement &statement);
};

template<>
struct RecordMapping<PasteTemplate> {
    static constexpr auto Order = &PasteTemplate::bySortOrder;
    static const char *selectAll();
    static const char *insert();
    static const char *update();
    static const char *remove();
    static void bind(Statement &statement, const PasteTemplate::Fields &fields);
    static void bindUpdate(Statement &statement, const PasteTemplate::Fields &fields, qint64 rowId);
    static PasteTemplate::Fields read(const Statement &statement);
};
