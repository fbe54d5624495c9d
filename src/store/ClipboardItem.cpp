#include "store/ClipboardItem.h"

#include "base/Text.h"
#include "platform/ImageCodec.h"
#include "platform/Pasteboard.h"

#include <QUrl>

namespace
{

/// No address is as long; a long text is not worth a parser's time and memory.
constexpr qsizetype LongestUrl = 1024 * 1024;

/// Whether a text is an address: the text itself decides, nothing is completed or mended.
bool parsesAsUrl(const QByteArray &text)
{
    return !text.isEmpty() && text.size() <= LongestUrl &&
        QUrl(QString::fromUtf8(text), QUrl::StrictMode).isValid();
}

/// The same for a path, in which blanks and other characters stand unescaped.
bool parsesAsPath(const QByteArray &text)
{
    return !text.isEmpty() && text.size() <= LongestUrl &&
        QUrl(QString::fromUtf8(text), QUrl::TolerantMode).isValid();
}

/// What an entry puts on the pasteboard.
struct Writing {
    std::optional<QByteArray> string;
    std::vector<PasteboardObject> objects;
};

Writing writingOf(const ClipboardItem &item)
{
    switch (item.type()) {
    case ClipboardItemType::Text:
    case ClipboardItemType::RichText:
        return {item.contentUtf8(), {}};
    case ClipboardItemType::Image: {
        const auto encoded = item.imageData();
        if (encoded && image::decode(*encoded))
            return {std::nullopt, {PasteboardImage{*encoded}}};
        break;
    }
    case ClipboardItemType::Url: {
        const QByteArray address = item.contentUtf8();
        if (parsesAsUrl(address))
            return {address, {PasteboardUrl{address}}};
        break;
    }
    case ClipboardItemType::File: {
        const QByteArray path = item.contentUtf8();
        if (parsesAsPath(path))
            return {std::nullopt, {PasteboardUrl{path}}};
        break;
    }
    }
    return {};
}

} // namespace

ClipboardItem::ClipboardItem(QByteArray content, ClipboardItemType type, std::optional<QByteArray> imageData,
    std::optional<QString> sourceAppName, std::optional<QString> sourceAppBundleId, bool isPinned,
    const Clock &clock)
{
    m_fields.id = QUuid::createUuid();
    m_fields.content = std::move(content);
    m_fields.contentSize = m_fields.content.size();
    m_fields.type = type;
    m_fields.hasImageData = imageData.has_value();
    if (imageData)
        m_fields.imageData = imageData->isNull() ? QByteArray("") : std::move(*imageData);
    // An empty name is one; a null text would be none.
    const auto named = [](const QString &name) { return name.isNull() ? QStringLiteral("") : name; };
    if (sourceAppName)
        m_fields.sourceAppName = named(*sourceAppName);
    if (sourceAppBundleId)
        m_fields.sourceAppBundleId = named(*sourceAppBundleId);
    m_fields.isPinned = isPinned;
    m_fields.createdAt = clock.now();
    m_fields.characterCount = text::characterCount(m_fields.content);
}

QByteArray ClipboardItem::contentUtf8() const
{
    if (isContentResident() || !m_reader)
        return m_fields.content;
    return m_reader->readContent(rowId()).value_or(QByteArray());
}

std::unique_ptr<ContentReader> ClipboardItem::openContent() const
{
    return m_reader ? m_reader->openContent(rowId()) : nullptr;
}

bool ClipboardItem::contentEquals(const QByteArray &content) const
{
    if (content.size() != m_fields.contentSize || !content.startsWith(m_fields.content))
        return false;
    return isContentResident() || (m_reader && m_reader->contentEquals(rowId(), content));
}

std::optional<QByteArray> ClipboardItem::imageData() const
{
    if (!m_fields.imageData.isNull())
        return m_fields.imageData;
    return m_fields.hasImageData && m_reader ? m_reader->readImageData(rowId()) : std::nullopt;
}

std::optional<QImage> ClipboardItem::thumbnail() const
{
    const auto encoded = imageData();
    return encoded ? image::decode(*encoded) : std::nullopt;
}

void ClipboardItem::setContent(QByteArray content)
{
    if (contentEquals(content))
        return;
    if (keeper())
        keeper()->recordWillChange(*this);
    m_fields.contentSize = content.size();
    m_fields.content = std::move(content);
    if (keeper())
        keeper()->recordDidChange(*this);
}

void ClipboardItem::copyToPasteboard(Pasteboard &pasteboard) const
{
    // Read and decoded first: nobody sees the pasteboard empty meanwhile.
    const Writing writing = writingOf(*this);
    pasteboard.clearContents();
    if (writing.string)
        pasteboard.setString(*writing.string);
    if (!writing.objects.empty())
        pasteboard.writeObjects(writing.objects);
}

bool ClipboardItem::newestFirst(const ClipboardItem &a, const ClipboardItem &b)
{
    if (a.m_fields.createdAt != b.m_fields.createdAt)
        return a.m_fields.createdAt > b.m_fields.createdAt;
    return a.sequence() > b.sequence();
}

void ClipboardItem::releaseBytes(const ItemByteReader *reader)
{
    m_reader = reader;
    m_fields.imageData = QByteArray();
    if (m_fields.contentSize > ResidentLimit)
        m_fields.content = QByteArray(m_fields.content.constData(), HeadSize);
}
