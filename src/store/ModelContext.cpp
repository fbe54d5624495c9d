#include "store/ModelContext.h"

#include "store/Schema.h"

#include <array>
#include <cstring>

namespace
{

class RowReader : public ContentReader
{
public:
    explicit RowReader(BlobReader blob)
        : m_blob(std::move(blob))
    {
    }
    qint64 size() const override { return m_blob.size(); }
    std::optional<QByteArray> read(qint64 offset, qint64 size) const override
    {
        QByteArray bytes(qBound<qint64>(0, m_blob.size() - offset, size), Qt::Uninitialized);
        return m_blob.read(bytes.data(), bytes.size(), offset) ? std::optional(bytes) : std::nullopt;
    }

private:
    BlobReader m_blob;
};

} // namespace

ModelContext::ModelContext(Database &database)
    : m_database(database)
    , m_itemIndex(records<ClipboardItem>())
{
    records<ClipboardItem>().onStored = [this](ClipboardItem &item) { itemStored(item); };
    // Its row is gone, and its number may be another's soon.
    records<ClipboardItem>().onLeft = [](ClipboardItem &item) { item.m_reader = nullptr; };
}

ModelContext::~ModelContext() = default;

Result<Success> ModelContext::load()
{
    auto outcome = records<ClipboardItem>().load(m_database);
    if (outcome)
        outcome = records<ClipCategory>().load(m_database);
    if (outcome)
        outcome = records<PasteTemplate>().load(m_database);
    m_itemIndex.rebuild();
    // The pages of the rows just read are not read again soon.
    (void)m_database.execute("PRAGMA shrink_memory");
    return outcome;
}

Result<Success> ModelContext::save()
{
    if (!hasChanges())
        return Success();
    const auto outcome = m_database.transaction([this]() -> Result<Success> {
        return std::apply(
            [this](auto &...sets) {
                Result<Success> written = Success();
                // The first that fails ends the fold.
                (void)((written = sets.write(m_database), static_cast<bool>(written)) && ...);
                return written;
            },
            m_records);
    });
    if (!outcome) {
        if (onSaveFailed)
            onSaveFailed();
        return outcome;
    }
    const bool hadDeletions = records<ClipboardItem>().hasDeletions();
    std::apply([](auto &...sets) { (sets.didWrite(), ...); }, m_records);
    if (hadDeletions)
        schema::giveFreePagesBack(m_database);
    return outcome;
}

bool ModelContext::hasChanges() const
{
    return std::apply([](const auto &...sets) { return (sets.hasChanges() || ...); }, m_records);
}

std::shared_ptr<ClipboardItem> ModelContext::newestItem(
    ClipboardItemType type, const QByteArray &content) const
{
    return m_itemIndex.newest(type, content);
}

std::vector<std::shared_ptr<ClipboardItem>> ModelContext::unpinnedItemsBeyond(qint64 limit) const
{
    qint64 excess = m_itemIndex.unpinnedCount() - limit;
    std::vector<std::shared_ptr<ClipboardItem>> oldest;
    const auto &items = records<ClipboardItem>().records();
    for (auto item = items.rbegin(); item != items.rend() && excess > 0; ++item) {
        if ((*item)->isPinned())
            continue;
        oldest.push_back(*item);
        --excess;
    }
    return oldest;
}

void ModelContext::itemStored(ClipboardItem &item)
{
    // A long content is not loaded with the row; its size and beginning are.
    if (item.m_fields.contentSize < 0) {
        if (const auto blob = m_database.openBlob("ClipboardItem", "content", item.rowId())) {
            item.m_fields.contentSize = blob.value().size();
            QByteArray head(qMin(blob.value().size(), ClipboardItem::HeadSize), Qt::Uninitialized);
            if (blob.value().read(head.data(), head.size(), 0))
                item.m_fields.content = head;
        }
    }
    item.releaseBytes(this);
}

std::optional<QByteArray> ModelContext::readContent(qint64 rowId) const
{
    const auto blob = m_database.openBlob("ClipboardItem", "content", rowId);
    if (!blob)
        return std::nullopt;
    QByteArray content(blob.value().size(), Qt::Uninitialized);
    return blob.value().read(content.data(), content.size(), 0) ? std::optional(content) : std::nullopt;
}

std::unique_ptr<ContentReader> ModelContext::openContent(qint64 rowId) const
{
    auto blob = m_database.openBlob("ClipboardItem", "content", rowId);
    return blob ? std::make_unique<RowReader>(std::move(blob).value()) : nullptr;
}

std::optional<QByteArray> ModelContext::readImageData(qint64 rowId) const
{
    const auto blob = m_database.openBlob("ClipboardItem", "imageData", rowId);
    if (!blob)
        return std::nullopt;
    QByteArray data(blob.value().size(), Qt::Uninitialized);
    return blob.value().read(data.data(), data.size(), 0) ? std::optional(data) : std::nullopt;
}

bool ModelContext::contentEquals(qint64 rowId, const QByteArray &content) const
{
    const auto blob = m_database.openBlob("ClipboardItem", "content", rowId);
    if (!blob || blob.value().size() != content.size())
        return false;
    std::array<char, 64 * 1024> buffer;
    for (qint64 offset = 0; offset < content.size();) {
        const qint64 size = qMin<qint64>(buffer.size(), content.size() - offset);
        if (!blob.value().read(buffer.data(), size, offset) ||
            std::memcmp(buffer.data(), content.constData() + offset, static_cast<size_t>(size)) != 0)
            return false;
        offset += size;
    }
    return true;
}
