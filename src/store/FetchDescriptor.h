#pragma once

#include <QtGlobal>

#include <functional>
#include <optional>

/// What to fetch: all records of a type, or those of a predicate, in an order, up to a limit.
template<class Model>
struct FetchDescriptor {
    using Predicate = std::function<bool(const Model &)>;
    /// Whether the first comes before the second: one of the record's own orders
    /// (`ClipboardItem::newestFirst`).
    using Order = bool (*)(const Model &, const Model &);

    Predicate predicate;         ///< none: all
    Order order = nullptr;       ///< none: the record's natural order
    std::optional<qint64> limit; ///< none: no limit
};
