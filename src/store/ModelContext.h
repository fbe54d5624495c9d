#pragma once

#include "store/FetchDescriptor.h"
#include "store/ItemIndex.h"
#include "store/RecordSet.h"

#include <functional>
#include <memory>
#include <tuple>
#include <vector>

/// The records of the store as the program works with them, and the road back to the file.
///
/// All records are in memory (entries without their image bytes and long contents), so fetching cannot fail
/// and shows changes that are not saved yet. A save writes everything that has changed as one transaction,
/// durable when it returns; one that fails leaves the changes waiting for the next. Main thread only.
class ModelContext : public ItemByteReader
{
public:
    /// The database must outlive it. `load` comes first.
    explicit ModelContext(Database &database);
    ~ModelContext() override;

    Result<Success> load();

    template<class Model>
    std::vector<std::shared_ptr<Model>> fetch(const FetchDescriptor<Model> &descriptor = {}) const;
    template<class Model>
    qint64 fetchCount(const FetchDescriptor<Model> &descriptor = {}) const;
    template<class Model>
    void insert(const std::shared_ptr<Model> &record);
    /// Deletes the record; it lives on, in no context, while somebody holds it.
    template<class Model>
    void remove(const std::shared_ptr<Model> &record);

    Result<Success> save();
    /// Whether something waits for a save.
    bool hasChanges() const;

    /// Called when a save has failed.
    std::function<void()> onSaveFailed;

    /// The newest entry with this type and exactly this content; null when there is none.
    std::shared_ptr<ClipboardItem> newestItem(ClipboardItemType type, const QByteArray &content) const;
    /// The oldest entries that are not pinned, as many as there are beyond `limit`.
    std::vector<std::shared_ptr<ClipboardItem>> unpinnedItemsBeyond(qint64 limit) const;

    template<class Model>
    RecordSet<Model> &records()
    {
        return std::get<RecordSet<Model>>(m_records);
    }
    template<class Model>
    const RecordSet<Model> &records() const
    {
        return std::get<RecordSet<Model>>(m_records);
    }

    std::optional<QByteArray> readContent(qint64 rowId) const override;
    std::unique_ptr<ContentReader> openContent(qint64 rowId) const override;
    std::optional<QByteArray> readImageData(qint64 rowId) const override;
    bool contentEquals(qint64 rowId, const QByteArray &content) const override;

private:
    /// A row has been read or written: what it holds need not stay in memory.
    void itemStored(ClipboardItem &item);

    Database &m_database;
    std::tuple<RecordSet<ClipboardItem>, RecordSet<ClipCategory>, RecordSet<PasteTemplate>> m_records;
    ItemIndex m_itemIndex;
};

template<class Model>
std::vector<std::shared_ptr<Model>> ModelContext::fetch(const FetchDescriptor<Model> &descriptor) const
{
    std::vector<std::shared_ptr<Model>> found;
    for (const auto &record : records<Model>().records()) {
        if (!descriptor.leading && descriptor.limit && std::ssize(found) >= *descriptor.limit)
            break;
        if (!descriptor.predicate || descriptor.predicate(*record))
            found.push_back(record);
    }
    if (descriptor.leading) {
        std::stable_partition(found.begin(), found.end(),
            [&](const auto &record) { return (record.get()->*descriptor.leading)(); });
        if (descriptor.limit && std::ssize(found) > *descriptor.limit)
            found.resize(static_cast<size_t>(*descriptor.limit));
    }
    return found;
}

template<class Model>
qint64 ModelContext::fetchCount(const FetchDescriptor<Model> &descriptor) const
{
    const auto &all = records<Model>().records();
    qint64 count = std::ssize(all);
    if (descriptor.predicate)
        count = std::count_if(
            all.begin(), all.end(), [&](const auto &record) { return descriptor.predicate(*record); });
    return descriptor.limit ? std::min(count, *descriptor.limit) : count;
}

template<class Model>
void ModelContext::insert(const std::shared_ptr<Model> &record)
{
    records<Model>().insert(record);
}

template<class Model>
void ModelContext::remove(const std::shared_ptr<Model> &record)
{
    records<Model>().remove(record);
}
