#pragma once

#include <QtGlobal>

#include <functional>
#include <optional>

/// What to fetch: all records of a type, or those of a predicate, up to a limit, in the records' own order.
template<class Model>
struct FetchDescriptor {
    using Predicate = std::function<bool(const Model &)>;
    /// A flag of the record (`&ClipboardItem::isPinned`).
    using Flag = bool (Model::*)() const;

    Predicate predicate;         ///< none: all
    Flag leading = nullptr;      ///< records with this flag come before the others, each part in order
    std::optional<qint64> limit; ///< none: no limit
};
