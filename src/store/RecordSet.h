#pragma once

#include "store/Database.h"
#include "store/Record.h"
#include "store/RecordMapping.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>
#include <unordered_set>
#include <vector>

/// Who is told of the changes to the records of one type: indexes and live queries.
template<class Model>
class RecordObserver
{
public:
    virtual ~RecordObserver() = default;
    virtual void recordInserted(const std::shared_ptr<Model> &record) = 0;
    virtual void recordWillChange(const Model &record) = 0;
    virtual void recordChanged(const std::shared_ptr<Model> &record) = 0;
    virtual void recordRemoved(const std::shared_ptr<Model> &record) = 0;
};

/// All records of one type, in their natural order, with the changes that wait for the next save.
template<class Model>
class RecordSet : public RecordKeeper
{
public:
    using Records = std::deque<std::shared_ptr<Model>>;
    using Mapping = RecordMapping<Model>;

    RecordSet() = default;
    ~RecordSet() override;
    RecordSet(const RecordSet &) = delete;
    RecordSet &operator=(const RecordSet &) = delete;

    /// Called for each record that a load has brought or a save has written.
    std::function<void(Model &)> onStored;
    /// Called for each record that leaves the set.
    std::function<void(Model &)> onLeft;

    const Records &records() const { return m_records; }
    bool hasChanges() const;
    bool hasDeletions() const { return !m_deletions.empty(); }
    /// The owner of a record of this set; null when it is not in the set.
    std::shared_ptr<Model> shared(const Model &record) const;

    void insert(const std::shared_ptr<Model> &record);
    void remove(const std::shared_ptr<Model> &record);

    void addObserver(RecordObserver<Model> &observer) { m_observers.push_back(&observer); }
    void removeObserver(RecordObserver<Model> &observer) { std::erase(m_observers, &observer); }

    /// Reads all rows.
    Result<Success> load(Database &database);
    /// Writes what waits; within a transaction of the caller's.
    Result<Success> write(Database &database);
    /// The transaction has been committed: nothing waits any more.
    void didWrite();

    void recordWillChange(Record &record) override;
    void recordDidChange(Record &record) override;

private:
    typename Records::const_iterator find(const Model &record) const;
    void place(const std::shared_ptr<Model> &record);
    Result<Success> prepareStatements(Database &database);
    void detach(Model &record);

    Records m_records;
    std::vector<std::shared_ptr<Model>> m_insertions;
    std::vector<qint64> m_insertedRowIds;
    std::unordered_set<Model *> m_updates;
    std::vector<qint64> m_deletions;
    std::vector<RecordObserver<Model> *> m_observers;
    quint64 m_nextSequence = 1;
    bool m_isPrepared = false;
    Statement m_insert;
    Statement m_update;
    Statement m_remove;
};

template<class Model>
RecordSet<Model>::~RecordSet()
{
    for (const auto &record : m_records)
        detach(*record);
}

template<class Model>
bool RecordSet<Model>::hasChanges() const
{
    return !m_insertions.empty() || !m_updates.empty() || !m_deletions.empty();
}

template<class Model>
std::shared_ptr<Model> RecordSet<Model>::shared(const Model &record) const
{
    const auto found = find(record);
    return found != m_records.end() ? *found : nullptr;
}

template<class Model>
void RecordSet<Model>::insert(const std::shared_ptr<Model> &record)
{
    record->m_keeper = this;
    record->m_sequence = m_nextSequence++;
    place(record);
    m_insertions.push_back(record);
    for (auto *const observer : m_observers)
        observer->recordInserted(record);
}

template<class Model>
void RecordSet<Model>::remove(const std::shared_ptr<Model> &record)
{
    const auto found = find(*record);
    if (found == m_records.end())
        return;
    m_records.erase(found);
    m_updates.erase(record.get());
    if (std::erase(m_insertions, record) == 0)
        m_deletions.push_back(record->m_rowId);
    detach(*record);
    for (auto *const observer : m_observers)
        observer->recordRemoved(record);
}

template<class Model>
Result<Success> RecordSet<Model>::load(Database &database)
{
    auto select = database.prepare(Mapping::selectAll());
    if (!select)
        return select.error();
    Statement &rows = select.value();
    auto row = rows.step();
    for (; row && row.value(); row = rows.step()) {
        const auto record = std::make_shared<Model>(Mapping::read(rows));
        record->m_keeper = this;
        record->m_rowId = rows.integer(0);
        record->m_sequence = m_nextSequence++;
        if (onStored)
            onStored(*record);
        m_records.push_front(record);
    }
    if (!row)
        return row.error();
    std::stable_sort(m_records.begin(), m_records.end(),
        [](const auto &a, const auto &b) { return Mapping::Order(*a, *b); });
    return Success();
}

template<class Model>
Result<Success> RecordSet<Model>::prepareStatements(Database &database)
{
    if (m_isPrepared)
        return Success();
    auto insertion = database.prepare(Mapping::insert());
    auto update = database.prepare(Mapping::update());
    auto removal = database.prepare(Mapping::remove());
    for (auto *const statement : {&insertion, &update, &removal}) {
        if (!*statement)
            return statement->error();
    }
    m_insert = std::move(insertion.value());
    m_update = std::move(update.value());
    m_remove = std::move(removal.value());
    m_isPrepared = true;
    return Success();
}

template<class Model>
Result<Success> RecordSet<Model>::write(Database &database)
{
    if (const auto prepared = prepareStatements(database); !prepared)
        return prepared;
    for (const qint64 rowId : m_deletions) {
        m_remove.bind(1, rowId);
        if (const auto done = m_remove.run(); !done)
            return done;
    }
    for (Model *const record : m_updates) {
        if (record->m_rowId == 0)
            continue; // still to be inserted, as it is now
        Mapping::bindUpdate(m_update, record->fields(), record->m_rowId);
        if (const auto done = m_update.run(); !done)
            return done;
    }
    m_insertedRowIds.clear();
    for (const auto &record : m_insertions) {
        Mapping::bind(m_insert, record->fields());
        if (const auto done = m_insert.run(); !done)
            return done;
        m_insertedRowIds.push_back(database.lastInsertRowId());
    }
    return Success();
}

template<class Model>
void RecordSet<Model>::didWrite()
{
    for (size_t i = 0; i < m_insertions.size(); ++i) {
        m_insertions[i]->m_rowId = m_insertedRowIds[i];
        m_updates.insert(m_insertions[i].get());
    }
    if (onStored) {
        for (Model *const record : m_updates)
            onStored(*record);
    }
    m_insertions.clear();
    m_insertedRowIds.clear();
    m_updates.clear();
    m_deletions.clear();
}

template<class Model>
void RecordSet<Model>::recordWillChange(Record &record)
{
    for (auto *const observer : m_observers)
        observer->recordWillChange(static_cast<Model &>(record));
}

template<class Model>
void RecordSet<Model>::recordDidChange(Record &record)
{
    auto &changed = static_cast<Model &>(record);
    m_updates.insert(&changed);
    // Its place may have changed with the field, so it is looked for everywhere.
    const auto found = std::find_if(
        m_records.begin(), m_records.end(), [&](const auto &other) { return other.get() == &changed; });
    const std::shared_ptr<Model> held = *found;
    m_records.erase(found);
    place(held);
    for (auto *const observer : m_observers)
        observer->recordChanged(held);
}

template<class Model>
typename RecordSet<Model>::Records::const_iterator RecordSet<Model>::find(const Model &record) const
{
    const auto found = std::lower_bound(m_records.begin(), m_records.end(), record,
        [](const auto &other, const Model &sought) { return Mapping::Order(*other, sought); });
    return found != m_records.end() && found->get() == &record ? found : m_records.end();
}

template<class Model>
void RecordSet<Model>::place(const std::shared_ptr<Model> &record)
{
    const auto at = std::lower_bound(m_records.begin(), m_records.end(), record,
        [](const auto &a, const auto &b) { return Mapping::Order(*a, *b); });
    m_records.insert(at, record);
}

template<class Model>
void RecordSet<Model>::detach(Model &record)
{
    record.m_keeper = nullptr;
    if (onLeft)
        onLeft(record);
}
