#include "store/ItemIndex.h"

namespace
{

/// Long contents are told apart by size and beginning first, and then by comparing.
size_t contentHash(ClipboardItemType type, qint64 size, QByteArrayView content)
{
    const QByteArrayView head = content.first(qMin(content.size(), ClipboardItem::HeadSize));
    return qHashMulti(0, static_cast<int>(type), size, head);
}

size_t contentHash(const ClipboardItem &item)
{
    return contentHash(item.type(), item.contentSize(), item.contentHead());
}

} // namespace

ItemIndex::ItemIndex(RecordSet<ClipboardItem> &items)
    : m_items(items)
{
    m_items.addObserver(*this);
}

ItemIndex::~ItemIndex()
{
    m_items.removeObserver(*this);
}

void ItemIndex::rebuild()
{
    m_byContent.clear();
    m_unpinnedCount = 0;
    m_byContent.reserve(m_items.records().size());
    for (const auto &item : m_items.records())
        add(*item);
}

std::shared_ptr<ClipboardItem> ItemIndex::newest(ClipboardItemType type, const QByteArray &content) const
{
    const ClipboardItem *newest = nullptr;
    const auto [begin, end] = m_byContent.equal_range(contentHash(type, content.size(), content));
    for (auto at = begin; at != end; ++at) {
        const ClipboardItem *const item = at->second;
        if (item->type() != type || (newest && ClipboardItem::newestFirst(*newest, *item)))
            continue;
        if (item->contentEquals(content))
            newest = item;
    }
    return newest ? m_items.shared(*newest) : nullptr;
}

void ItemIndex::recordInserted(const std::shared_ptr<ClipboardItem> &item)
{
    add(*item);
}

void ItemIndex::recordWillChange(const ClipboardItem &item)
{
    drop(item);
}

void ItemIndex::recordChanged(const std::shared_ptr<ClipboardItem> &item)
{
    add(*item);
}

void ItemIndex::recordRemoved(const std::shared_ptr<ClipboardItem> &item)
{
    drop(*item);
}

void ItemIndex::add(const ClipboardItem &item)
{
    m_byContent.emplace(contentHash(item), &item);
    m_unpinnedCount += item.isPinned() ? 0 : 1;
}

void ItemIndex::drop(const ClipboardItem &item)
{
    const auto [begin, end] = m_byContent.equal_range(contentHash(item));
    for (auto at = begin; at != end; ++at) {
        if (at->second == &item) {
            m_byContent.erase(at);
            m_unpinnedCount -= item.isPinned() ? 0 : 1;
            return;
        }
    }
}
