#pragma once

#include "store/ClipboardItem.h"
#include "store/RecordSet.h"

#include <unordered_map>

/// What capture asks of the history, without reading it: the newest entry with a given type and content, and
/// how many entries are not pinned. Both take the same time however long the history is.
class ItemIndex : public RecordObserver<ClipboardItem>
{
public:
    explicit ItemIndex(RecordSet<ClipboardItem> &items);
    ~ItemIndex() override;
    ItemIndex(const ItemIndex &) = delete;
    ItemIndex &operator=(const ItemIndex &) = delete;

    /// Takes in what the set holds now.
    void rebuild();

    /// Null when there is none.
    std::shared_ptr<ClipboardItem> newest(ClipboardItemType type, const QByteArray &content) const;
    qint64 unpinnedCount() const { return m_unpinnedCount; }

    void recordInserted(const std::shared_ptr<ClipboardItem> &item) override;
    void recordWillChange(const ClipboardItem &item) override;
    void recordChanged(const std::shared_ptr<ClipboardItem> &item) override;
    void recordRemoved(const std::shared_ptr<ClipboardItem> &item) override;

private:
    void add(const ClipboardItem &item);
    void drop(const ClipboardItem &item);

    RecordSet<ClipboardItem> &m_items;
    // By a hash of the type, the content's size and its beginning.
    std::unordered_multimap<size_t, const ClipboardItem *> m_byContent;
    qint64 m_unpinnedCount = 0;
};
