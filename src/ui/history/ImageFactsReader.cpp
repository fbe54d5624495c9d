#include "ui/history/ImageFactsReader.h"

#include "store/StoredImage.h"
#include "ui/history/Thumbnail.h"

ImageFactsReader::ImageFactsReader(QString storePath)
    : m_storePath(std::move(storePath))
{
    m_pool.setMaxThreadCount(1);
    constexpr int IdleMilliseconds = 5000;
    m_pool.setExpiryTimeout(IdleMilliseconds);
}

ImageFactsReader::~ImageFactsReader()
{
    m_pool.clear();
    m_pool.waitForDone();
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
    QMetaObject::invokeMethod(
        this,
        [this, id, facts] {
            m_sought.remove(id);
            m_facts.insert(id, new ImageFacts(facts));
            Q_EMIT found(id);
        },
        Qt::QueuedConnection);
}
