#include "platform/linux/ClipboardOwnContent.h"

#include "platform/linux/ClipboardOffer.h"
#include "platform/linux/ClipboardTargets.h"

namespace
{

/// The target of an image file, by its first bytes. Others are offered in converted form only, as are all.
QByteArray imageTarget(const QByteArray &encoded)
{
    if (clipboard::isPngFile(encoded))
        return clipboard::Png;
    if (encoded.startsWith("\xff\xd8\xff"))
        return "image/jpeg";
    if (encoded.startsWith("GIF8"))
        return "image/gif";
    if (encoded.startsWith("BM"))
        return "image/bmp";
    if (encoded.startsWith("RIFF") && encoded.mid(8, 4) == "WEBP")
        return "image/webp";
    if (encoded.startsWith(QByteArrayView("II*\0", 4)) || encoded.startsWith(QByteArrayView("MM\0*", 4)))
        return clipboard::Tiff;
    return clipboard::UnknownImage;
}

/// Address, line feed, title: the address is its own title. UTF-16 in this machine's byte order, as browsers
/// write.
QByteArray mozillaUrl(const QByteArray &address)
{
    const QString utf16 = QString::fromUtf8(address);
    const QString lines = utf16 + QChar(u'\n') + utf16;
    return QByteArray(reinterpret_cast<const char *>(lines.utf16()), lines.size() * 2);
}

} // namespace

qint64 ClipboardOwnContent::start()
{
    const qint64 number = m_queue.reserve();
    {
        const std::lock_guard lock(m_mutex);
        m_own = {number, {}};
    }
    m_queue.fill(number, {});
    return number;
}

void ClipboardOwnContent::setString(const QByteArray &string)
{
    offer(clipboard::Utf8PlainText, string);
    amendReading([&](ClipboardReading &reading) { reading.values[PasteboardType::String] = string; });
}

void ClipboardOwnContent::writeObjects(const std::vector<PasteboardObject> &objects)
{
    for (const PasteboardObject &object : objects)
        std::visit([this](const auto &written) { write(written); }, object);
}

void ClipboardOwnContent::write(const PasteboardImage &image)
{
    offer(imageTarget(image.encoded), image.encoded);
    amendReading([&](ClipboardReading &reading) {
        reading.values[PasteboardType::Png] = image.encoded;
        reading.pngs.erase(PasteboardType::Png);
        reading.isImageOfAnyFormat = true;
    });
}

void ClipboardOwnContent::write(const PasteboardUrl &url)
{
    offer(clipboard::UriList, url.text + "\r\n");
    offer(clipboard::MozillaUrl, mozillaUrl(url.text));
    const auto type = clipboard::isFileAddress(url.text) ? PasteboardType::FileUrl : PasteboardType::Url;
    amendReading([&](ClipboardReading &reading) { reading.values[type] = url.text; });
}

void ClipboardOwnContent::offer(const QByteArray &target, const QByteArray &bytes)
{
    const std::lock_guard lock(m_mutex);
    if (m_own.number != 0)
        m_own.content.insert(target, bytes);
}

void ClipboardOwnContent::amendReading(const std::function<void(ClipboardReading &)> &change)
{
    if (const qint64 number = snapshot().number; number != 0)
        m_queue.amend(number, change);
}

ClipboardOwnContent::Snapshot ClipboardOwnContent::snapshot() const
{
    const std::lock_guard lock(m_mutex);
    return m_own;
}
