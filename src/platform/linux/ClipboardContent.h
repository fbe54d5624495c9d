#pragma once

#include "platform/Pasteboard.h"

#include <QByteArray>

#include <map>
#include <optional>
#include <vector>

/// What a clipboard holds, as its owner delivers it: bytes by target, in the order in which they came.
/// A value that shares its bytes.
class ClipboardContent
{
public:
    struct Entry {
        QByteArray target; ///< as the owner calls it
        QByteArray bytes;
    };

    /// Adds the bytes of a target, or replaces them.
    void insert(const QByteArray &target, const QByteArray &bytes);
    /// The bytes of a target; null when they are not there. Valid until the next change.
    const QByteArray *find(const QByteArray &target) const;

    const std::vector<Entry> &entries() const { return m_entries; }
    bool isEmpty() const { return m_entries.empty(); }

    /// Marked by its writer as not to be remembered; it has no bytes then.
    bool isSecret = false;

private:
    std::vector<Entry> m_entries;
};

/// How a content reads through the port.
struct ClipboardReading {
    /// Strings and image bytes.
    std::map<PasteboardType, QByteArray> values;
    /// The images among them as PNG, by the type that they were made from; made by `addPngRepresentations`.
    std::map<PasteboardType, QByteArray> pngs;
    /// `Png` holds an image file of any format, which `addPngRepresentations` turns into PNG.
    bool isImageOfAnyFormat = false;

    qint64 byteCount() const;
};

namespace clipboard
{

/// The content's text, from the best text target in it: well-formed UTF-8. STRING is ISO 8859-1 (ICCCM
/// section 2.6.2), the others are UTF-8; one NUL at the end is a C string's terminator and no part of the
/// text.
std::optional<QByteArray> text(const ClipboardContent &content);

/// The first `file:` address among the copied files. This machine's name as host, or "localhost", is dropped:
/// "file:///home/ann/a%20b.txt".
std::optional<QByteArray> fileAddress(const ClipboardContent &content, const QByteArray &machineName);

/// The first address of text/uri-list (RFC 2483, section 5) that is no file's, else that of text/x-moz-url.
std::optional<QByteArray> address(const ClipboardContent &content);

/// The title in text/x-moz-url: UTF-16 text, the address, a line feed, the title.
std::optional<QByteArray> addressTitle(const ClipboardContent &content);

/// How the content reads, but for the PNG representations. A secret one has nothing to be read.
ClipboardReading readingOf(const ClipboardContent &content);

/// Decodes the images and encodes them as PNG: may take a second.
void addPngRepresentations(ClipboardReading &reading);

bool isFileAddress(const QByteArray &address);
bool isPngFile(const QByteArray &bytes);

} // namespace clipboard
