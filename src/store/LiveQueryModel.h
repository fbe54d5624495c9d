#pragma once

#include "store/LiveQuery.h"

#include <QAbstractListModel>

/// The rows of a live query, as views see them: they follow the store change by change.
template<class Record>
class LiveQueryModel : public QAbstractListModel
{
public:
    const std::deque<std::shared_ptr<Record>> &rows() const { return m_query.rows(); }
    /// The record in a row; null when there is no such row.
    std::shared_ptr<Record> record(qsizetype row) const
    {
        return row >= 0 && row < std::ssize(rows()) ? rows()[static_cast<size_t>(row)] : nullptr;
    }

    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(rows().size());
    }

    /// Something has changed, and views know it.
    std::function<void()> onChanged;

protected:
    /// The context must outlive it.
    LiveQueryModel(ModelContext &context, FetchDescriptor<Record> descriptor)
        : m_query(context, std::move(descriptor))
    {
        m_query.onWillChange = [this](const Change &change) { willChange(change); };
        m_query.onDidChange = [this](const Change &change) { didChange(change); };
    }

    LiveQuery<Record> &query() { return m_query; }

private:
    using Change = typename LiveQuery<Record>::Change;
    using Kind = typename Change::Kind;

    void willChange(const Change &change)
    {
        const int row = static_cast<int>(change.row);
        const int fromRow = static_cast<int>(change.fromRow);
        const int last = static_cast<int>(change.row + change.count - 1);
        switch (change.kind) {
        case Kind::Inserted:
            beginInsertRows({}, row, last);
            break;
        case Kind::Removed:
            beginRemoveRows({}, row, last);
            break;
        case Kind::Moved:
            // Qt names the row before which it goes, counted before the move.
            beginMoveRows({}, fromRow, fromRow, {}, row > fromRow ? row + 1 : row);
            break;
        case Kind::Changed:
            break;
        }
    }

    void didChange(const Change &change)
    {
        switch (change.kind) {
        case Kind::Inserted:
            endInsertRows();
            break;
        case Kind::Removed:
            endRemoveRows();
            break;
        case Kind::Moved:
            endMoveRows();
            break;
        case Kind::Changed:
            break;
        }
        if (change.kind == Kind::Moved || change.kind == Kind::Changed) {
            const QModelIndex first = index(static_cast<int>(change.row));
            Q_EMIT dataChanged(first, index(first.row() + static_cast<int>(change.count) - 1));
        }
        if (onChanged)
            onChanged();
    }

    LiveQuery<Record> m_query;
};
