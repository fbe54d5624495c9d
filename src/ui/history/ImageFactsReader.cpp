#include "ui/history/ImageFactsReader.h"

#include "store/StoredImage.h"
#include "ui/history/Thumbnail.h"

ImageFactsReader::ImageFactsReader(QString storePath)
    : m_storePath(std::move(storePath))
{
}

std::optional<ImageFacts> ImageFactsReader::facts(const ClipboardItem &item)
{
    if (const ImageFacts *const known = m_facts.object(item.id()))
        return *known;
    if (item.rowId() != 0 && !m_sought.contains(item.id())) {
        m_sought.insert(item.id());
        m_pool.start([this, rowId = item.rowId(), id = item.id()] { read(rowId, id); });
    }
    return std::nullopt;
}

void ImageFactsReader::read(qint64 rowId, const QUuid &id)
{
    ImageFacts facts;
    if (const auto stored = StoredImage::open(m_storePath, rowId, id))
        facts = {stored->size(), thumbnail::pixelSize(*stored)};
    const std::lock_guard lock(m_mutex);
    m_read.emplace_back(id, facts);
    m_queue.async([this] { tellNext(); });
}

void ImageFactsReader::tellNext()
{
    std::unique_lock lock(m_mutex);
    const auto [id, facts] = m_read.front();
    m_read.pop_front();
    lock.unlock();
    m_sought.remove(id);
    m_facts.insert(id, new ImageFacts(facts));
    Q_EMIT found(id);
}
