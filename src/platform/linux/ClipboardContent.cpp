#include "platform/linux/ClipboardContent.h"

#include "base/Text.h"
#include "platform/ImageCodec.h"
#include "platform/linux/ClipboardTargets.h"

#include <QStringDecoder>
#include <QSysInfo>

#include <algorithm>

void ClipboardContent::insert(const QByteArray &target, const QByteArray &bytes)
{
    const auto found = std::find_if(
        m_entries.begin(), m_entries.end(), [&](const Entry &entry) { return entry.target == target; });
    if (found != m_entries.end())
        found->bytes = bytes;
    else
        m_entries.push_back({target, bytes});
}

const QByteArray *ClipboardContent::find(const QByteArray &target) const
{
    const QByteArray canonical = clipboard::canonicalTarget(target);
    for (const Entry &entry : m_entries) {
        if (clipboard::canonicalTarget(entry.target) == canonical)
            return &entry.bytes;
    }
    return nullptr;
}

qint64 ClipboardReading::byteCount() const
{
    qint64 count = 0;
    for (const auto *const part : {&values, &pngs}) {
        for (const auto &[type, bytes] : *part)
            count += bytes.size();
    }
    return count;
}

namespace clipboard
{
namespace
{

QByteArray withoutTerminator(const QByteArray &bytes)
{
    return bytes.endsWith('\0') ? bytes.chopped(1) : bytes;
}

/// The entries of a list of addresses: one a line, either line end, comments and blank lines skipped.
QByteArrayList addressesIn(const QByteArray &list)
{
    QByteArrayList addresses;
    for (const QByteArray &line : withoutTerminator(list).split('\n')) {
        const QByteArray entry = line.trimmed();
        if (!entry.isEmpty() && !entry.startsWith('#'))
            addresses.append(text::wellFormed(entry));
    }
    return addresses;
}

std::optional<QByteArray> firstAddress(const QByteArray *list, bool (*isWanted)(const QByteArray &))
{
    if (list == nullptr)
        return std::nullopt;
    const QByteArrayList addresses = addressesIn(*list);
    const auto found = std::find_if(addresses.begin(), addresses.end(), isWanted);
    return found == addresses.end() ? std::nullopt : std::optional(*found);
}

bool isOtherAddress(const QByteArray &address)
{
    return !isFileAddress(address);
}

/// "file:/a", "file://localhost/a" and "file://<this machine>/a" in the form "file:///a".
QByteArray withoutOwnHost(const QByteArray &address, const QByteArray &machineName)
{
    const QByteArray rest = address.mid(5);
    if (!rest.startsWith("//"))
        return rest.startsWith('/') ? "file://" + rest : address;
    const qsizetype slash = rest.indexOf('/', 2);
    if (slash < 0)
        return address;
    const QByteArray host = rest.mid(2, slash - 2).toLower();
    const bool isHere = host.isEmpty() || host == "localhost" || host == machineName.toLower();
    return isHere ? "file://" + rest.mid(slash) : address;
}

/// The address and the title of text/x-moz-url.
std::optional<std::pair<QByteArray, QByteArray>> mozillaUrl(const ClipboardContent &content)
{
    const QByteArray *const bytes = content.find(MozillaUrl);
    if (bytes == nullptr)
        return std::nullopt;
    // The byte order is that of the machine that wrote it, unless a mark says otherwise.
    QStringDecoder decoder(QStringDecoder::Utf16);
    QString lines = decoder(QByteArrayView(*bytes).first(bytes->size() & ~qsizetype(1)));
    if (lines.endsWith(QChar(u'\0')))
        lines.chop(1);
    const QString address = lines.section(u'\n', 0, 0).trimmed();
    const QString title = lines.section(u'\n', 1, 1).trimmed();
    return std::pair(address.toUtf8(), title.toUtf8());
}

std::optional<QByteArray> unlessEmpty(const QByteArray &bytes)
{
    return bytes.isEmpty() ? std::nullopt : std::optional(bytes);
}

void setIfThere(ClipboardReading &reading, PasteboardType type, const std::optional<QByteArray> &value)
{
    if (value)
        reading.values[type] = *value;
}

void setIfThere(ClipboardReading &reading, PasteboardType type, const QByteArray *value)
{
    if (value != nullptr)
        reading.values[type] = *value;
}

} // namespace

std::optional<QByteArray> text(const ClipboardContent &content)
{
    const ClipboardContent::Entry *best = nullptr;
    for (const ClipboardContent::Entry &entry : content.entries()) {
        const auto rank = textRank(entry.target);
        if (rank && (best == nullptr || *rank < *textRank(best->target)))
            best = &entry;
    }
    if (best == nullptr)
        return std::nullopt;
    const QByteArray bytes = withoutTerminator(best->bytes);
    return best->target == Latin1String ? QString::fromLatin1(bytes).toUtf8() : text::wellFormed(bytes);
}

std::optional<QByteArray> fileAddress(const ClipboardContent &content, const QByteArray &machineName)
{
    for (const char *const target : {UriList, GnomeCopiedFiles, MateCopiedFiles}) {
        // The first line of the file managers' own lists, "copy" or "cut", is no file's address.
        if (const auto found = firstAddress(content.find(target), isFileAddress))
            return withoutOwnHost(*found, machineName);
    }
    return std::nullopt;
}

std::optional<QByteArray> address(const ClipboardContent &content)
{
    if (auto found = firstAddress(content.find(UriList), isOtherAddress))
        return found;
    const auto url = mozillaUrl(content);
    if (!url || isFileAddress(url->first))
        return std::nullopt;
    return unlessEmpty(url->first);
}

std::optional<QByteArray> addressTitle(const ClipboardContent &content)
{
    const auto url = mozillaUrl(content);
    return url ? unlessEmpty(url->second) : std::nullopt;
}

ClipboardReading readingOf(const ClipboardContent &content)
{
    ClipboardReading reading;
    if (content.isSecret)
        return reading;
    setIfThere(reading, PasteboardType::String, text(content));
    setIfThere(reading, PasteboardType::FileUrl, fileAddress(content, QSysInfo::machineHostName().toUtf8()));
    setIfThere(reading, PasteboardType::Url, address(content));
    setIfThere(reading, PasteboardType::UrlName, addressTitle(content));
    setIfThere(reading, PasteboardType::Tiff, content.find(Tiff));
    setIfThere(reading, PasteboardType::Png, content.find(Png));
    return reading;
}

void addPngRepresentations(ClipboardReading &reading)
{
    for (const PasteboardType type : {PasteboardType::Tiff, PasteboardType::Png}) {
        const auto found = reading.values.find(type);
        auto picture = found == reading.values.end() ? std::nullopt : image::decode(found->second);
        auto png = picture ? image::pngRepresentation(std::move(*picture)) : std::nullopt;
        if (!png)
            continue;
        // The other one is the same picture again, as a rule; encoding is what takes long.
        reading.pngs[type] = std::move(*png);
        break;
    }
    if (!reading.isImageOfAnyFormat)
        return;
    const auto image = reading.values.find(PasteboardType::Png);
    const auto png = reading.pngs.find(PasteboardType::Png);
    if (image == reading.values.end() || isPngFile(image->second))
        return;
    if (png == reading.pngs.end())
        reading.values.erase(image);
    else
        image->second = png->second;
}

bool isFileAddress(const QByteArray &address)
{
    return qstrnicmp(address.constData(), "file:", 5) == 0;
}

bool isPngFile(const QByteArray &bytes)
{
    return bytes.startsWith("\x89PNG\r\n\x1a\n");
}

} // namespace clipboard
