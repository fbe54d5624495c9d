#pragma once

#include <QtGlobal>

#include <utility>

class Record;

/// Who is told of a record's changes: the context that the record is in.
class RecordKeeper
{
public:
    virtual ~RecordKeeper() = default;

    /// A field that the keeper's indexes read is about to change.
    virtual void recordWillChange(Record &record) = 0;
    /// A field has changed.
    virtual void recordDidChange(Record &record) = 0;
};

/// What is the same for every persisted record. Main thread only.
class Record
{
public:
    Record() = default;
    Record(const Record &) = delete;
    Record &operator=(const Record &) = delete;

    /// The row that holds it in its table; 0 while it has not been saved.
    qint64 rowId() const { return m_rowId; }
    /// Its place in the order of insertion into the context; 0 outside one. Breaks ties of time.
    quint64 sequence() const { return m_sequence; }

protected:
    ~Record() = default;

    RecordKeeper *keeper() const { return m_keeper; }

    /// Sets a field and tells the keeper, unless the field has the value already.
    template<class T>
    void assign(T &field, T value)
    {
        if (field == value)
            return;
        if (m_keeper)
            m_keeper->recordWillChange(*this);
        field = std::move(value);
        if (m_keeper)
            m_keeper->recordDidChange(*this);
    }

private:
    template<class T>
    friend class RecordSet;

    RecordKeeper *m_keeper = nullptr;
    qint64 m_rowId = 0;
    quint64 m_sequence = 0;
};
