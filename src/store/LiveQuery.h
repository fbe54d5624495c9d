#pragma once

#include "store/ModelContext.h"

/// The result of a query that follows the store: rows in an order, with each change told as it happens.
/// It must not outlive the context. Main thread only.
template<class Model>
class LiveQuery : public RecordObserver<Model>
{
public:
    /// What happened to one row; the rows show it already.
    struct Change {
        enum class Kind { Inserted, Removed, Moved, Changed };
        Kind kind;
        qsizetype row;       ///< where it is, or was when it was removed
        qsizetype fromRow;   ///< where it was before, of a `Moved` one; else `row`
        std::shared_ptr<Model> record;
    };

    /// The descriptor's limit is not observed. A record whose field the predicate reads enters and leaves as the
    /// field changes.
    LiveQuery(ModelContext &context, FetchDescriptor<Model> descriptor);
    ~LiveQuery() override;
    LiveQuery(const LiveQuery &) = delete;
    LiveQuery &operator=(const LiveQuery &) = delete;

    const std::deque<std::shared_ptr<Model>> &rows() const { return m_rows; }

    std::function<void(const Change &)> onChange;

    void recordInserted(const std::shared_ptr<Model> &record) override;
    void recordWillChange(const Model &) override {}
    void recordChanged(const std::shared_ptr<Model> &record) override;
    void recordRemoved(const std::shared_ptr<Model> &record) override;

private:
    bool matches(const Model &record) const
    {
        return !m_descriptor.predicate || m_descriptor.predicate(record);
    }
    /// The row that the record is in, or -1.
    qsizetype rowOf(const Model &record) const;
    qsizetype place(const std::shared_ptr<Model> &record);
    void tell(typename Change::Kind kind, qsizetype row, qsizetype fromRow, const std::shared_ptr<Model> &record);

    ModelContext &m_context;
    FetchDescriptor<Model> m_descriptor;
    std::deque<std::shared_ptr<Model>> m_rows;
};

template<class Model>
LiveQuery<Model>::LiveQuery(ModelContext &context, FetchDescriptor<Model> descriptor)
    : m_context(context), m_descriptor(std::move(descriptor))
{
    if (!m_descriptor.order)
        m_descriptor.order = RecordMapping<Model>::Order;
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
void LiveQuery<Model>::recordInserted(const std::shared_ptr<Model> &record)
{
    if (!matches(*record))
        return;
    const qsizetype row = place(record);
    tell(Change::Kind::Inserted, row, row, record);
}

template<class Model>
void LiveQuery<Model>::recordRemoved(const std::shared_ptr<Model> &record)
{
    const qsizetype row = rowOf(*record);
    if (row < 0)
        return;
    m_rows.erase(m_rows.begin() + row);
    tell(Change::Kind::Removed, row, row, record);
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
    m_rows.erase(found);
    if (!matches(*record)) {
        tell(Change::Kind::Removed, fromRow, fromRow, record);
        return;
    }
    const qsizetype row = place(record);
    tell(row == fromRow ? Change::Kind::Changed : Change::Kind::Moved, row, fromRow, record);
}

template<class Model>
qsizetype LiveQuery<Model>::rowOf(const Model &record) const
{
    const auto found = std::lower_bound(m_rows.begin(), m_rows.end(), record,
        [this](const auto &other, const Model &sought) { return m_descriptor.order(*other, sought); });
    return found != m_rows.end() && found->get() == &record ? found - m_rows.begin() : -1;
}

template<class Model>
qsizetype LiveQuery<Model>::place(const std::shared_ptr<Model> &record)
{
    const auto at = std::upper_bound(m_rows.begin(), m_rows.end(), record,
        [this](const auto &a, const auto &b) { return m_descriptor.order(*a, *b); });
    return m_rows.insert(at, record) - m_rows.begin();
}

template<class Model>
void LiveQuery<Model>::tell(
    typename Change::Kind kind, qsizetype row, qsizetype fromRow, const std::shared_ptr<Model> &record)
{
    if (onChange)
        onChange({kind, row, fromRow, record});
}
