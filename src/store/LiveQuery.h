#pragma once

#include "store/ModelContext.h"

/// The result of a query that follows the store: rows in an order, with each change told as it happens.
/// It must not outlive the context. Main thread only.
template<class Model>
class LiveQuery : public RecordObserver<Model>
{
public:
    /// What happens to a row, or to several in a row.
    struct Change {
        enum class Kind { Inserted, Removed, Moved, Changed };
        Kind kind;
        qsizetype row;       ///< where it is afterwards; of a `Removed` one, where it was
        qsizetype fromRow;   ///< where it was before, of a `Moved` one; else `row`
        qsizetype count = 1; ///< how many rows from `row` on
    };

    /// The descriptor's limit is not observed. A record whose field the predicate reads enters and leaves as
    /// the field changes.
    LiveQuery(ModelContext &context, FetchDescriptor<Model> descriptor);
    ~LiveQuery() override;
    LiveQuery(const LiveQuery &) = delete;
    LiveQuery &operator=(const LiveQuery &) = delete;

    const std::deque<std::shared_ptr<Model>> &rows() const { return m_rows; }

    /// Shows the records of another predicate from now on. Rows are removed or inserted at the end, and the
    /// others are `Changed`: they show other records.
    void setPredicate(typename FetchDescriptor<Model>::Predicate predicate);
    /// What the predicate says of the record is no longer what it said before.
    void reconsider(const std::shared_ptr<Model> &record) { recordChanged(record); }

    /// Called before the rows show a change, and after. A model of the rows passes them on to its views.
    std::function<void(const Change &)> onWillChange;
    std::function<void(const Change &)> onDidChange;

    void recordInserted(const std::shared_ptr<Model> &record) override;
    void recordWillChange(const Model &) override {}
    void recordChanged(const std::shared_ptr<Model> &record) override;
    void recordRemoved(const std::shared_ptr<Model> &record) override;

private:
    bool matches(const Model &record) const
    {
        return !m_descriptor.predicate || m_descriptor.predicate(record);
    }
    using Kind = typename Change::Kind;

    /// Whether the first comes before the second.
    bool precedes(const Model &a, const Model &b) const
    {
        const auto leading = m_descriptor.leading;
        if (leading && (a.*leading)() != (b.*leading)())
            return (a.*leading)();
        return RecordMapping<Model>::Order(a, b);
    }
    /// The row that the record is in, or -1.
    qsizetype rowOf(const Model &record) const;
    /// The row that the record would be in if it were not in one yet.
    qsizetype rowFor(const Model &record) const;
    /// Tells before, changes the rows, tells after.
    template<class Edit>
    void apply(const Change &change, Edit edit);

    ModelContext &m_context;
    FetchDescriptor<Model> m_descriptor;
    std::deque<std::shared_ptr<Model>> m_rows;
};

template<class Model>
LiveQuery<Model>::LiveQuery(ModelContext &context, FetchDescriptor<Model> descriptor)
    : m_context(context)
    , m_descriptor(std::move(descriptor))
{
    m_descriptor.limit.reset();
    const auto found = context.fetch(m_descriptor);
    m_rows.assign(found.begin(), found.end());
    m_context.records<Model>().addObserver(*this);
}

template<class Model>
LiveQuery<Model>::~LiveQuery()
{
    m_context.records<Model>().removeObserver(*this);
}

template<class Model>
void LiveQuery<Model>::setPredicate(typename FetchDescriptor<Model>::Predicate predicate)
{
    m_descriptor.predicate = std::move(predicate);
    const auto found = m_context.fetch(m_descriptor);
    const qsizetype before = std::ssize(m_rows);
    const qsizetype after = std::ssize(found);
    const qsizetype kept = std::min(before, after);
    if (after < before) {
        apply({Kind::Removed, after, after, before - after},
            [&] { m_rows.erase(m_rows.begin() + after, m_rows.end()); });
    }
    if (kept > 0) {
        apply({Kind::Changed, 0, 0, kept},
            [&] { std::copy(found.begin(), found.begin() + kept, m_rows.begin()); });
    }
    if (after > before) {
        apply({Kind::Inserted, before, before, after - before},
            [&] { m_rows.insert(m_rows.end(), found.begin() + before, found.end()); });
    }
}

template<class Model>
void LiveQuery<Model>::recordInserted(const std::shared_ptr<Model> &record)
{
    if (!matches(*record))
        return;
    const qsizetype row = rowFor(*record);
    apply({Kind::Inserted, row, row}, [&] { m_rows.insert(m_rows.begin() + row, record); });
}

template<class Model>
void LiveQuery<Model>::recordRemoved(const std::shared_ptr<Model> &record)
{
    const qsizetype row = rowOf(*record);
    if (row >= 0)
        apply({Kind::Removed, row, row}, [&] { m_rows.erase(m_rows.begin() + row); });
}

template<class Model>
void LiveQuery<Model>::recordChanged(const std::shared_ptr<Model> &record)
{
    // The order may read the changed field, so the old row is not looked for by order.
    const auto found = std::find(m_rows.begin(), m_rows.end(), record);
    if (found == m_rows.end()) {
        recordInserted(record);
        return;
    }
    const qsizetype fromRow = found - m_rows.begin();
    if (!matches(*record)) {
        apply({Kind::Removed, fromRow, fromRow}, [&] { m_rows.erase(m_rows.begin() + fromRow); });
        return;
    }
    const bool isAfterPrevious = fromRow == 0 || !precedes(*record, *m_rows[fromRow - 1]);
    const bool isBeforeNext = fromRow + 1 == std::ssize(m_rows) || !precedes(*m_rows[fromRow + 1], *record);
    if (isAfterPrevious && isBeforeNext) {
        apply({Kind::Changed, fromRow, fromRow}, [] {});
        return;
    }
    // Two stretches, each in order: the rows before the old one and the rows after it.
    const auto comesBefore = [this](
                                 const Model &sought, const auto &other) { return precedes(sought, *other); };
    const auto old = m_rows.begin() + fromRow;
    const qsizetype row = isAfterPrevious
        ? std::upper_bound(old + 1, m_rows.end(), *record, comesBefore) - m_rows.begin() - 1
        : std::upper_bound(m_rows.begin(), old, *record, comesBefore) - m_rows.begin();
    apply({Kind::Moved, row, fromRow}, [&] {
        m_rows.erase(m_rows.begin() + fromRow);
        m_rows.insert(m_rows.begin() + row, record);
    });
}

template<class Model>
qsizetype LiveQuery<Model>::rowOf(const Model &record) const
{
    const qsizetype after = rowFor(record);
    // The order is strict, so the record, if it is there, is the last that does not come after itself.
    return after > 0 && m_rows[after - 1].get() == &record ? after - 1 : -1;
}

template<class Model>
qsizetype LiveQuery<Model>::rowFor(const Model &record) const
{
    return std::upper_bound(m_rows.begin(), m_rows.end(), record,
               [this](const Model &sought, const auto &other) { return precedes(sought, *other); }) -
        m_rows.begin();
}

template<class Model>
template<class Edit>
void LiveQuery<Model>::apply(const Change &change, Edit edit)
{
    if (onWillChange)
        onWillChange(change);
    edit();
    if (onDidChange)
        onDidChange(change);
}
