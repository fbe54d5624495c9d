#pragma once

#include <QByteArray>

#include <map>
#include <optional>
#include <variant>
#include <vector>

/// What a pasteboard holds something as.
enum class PasteboardType {
    String,  ///< plain text, well-formed UTF-8
    Tiff,    ///< a TIFF file's bytes
    Png,     ///< a PNG file's bytes
    FileUrl, ///< the first file's address, as text: "file:///home/ann/a%20b.txt"
    Url,     ///< the first other address, as text
    UrlName, ///< "public.url-name": the title that came with the address
};

/// One item of the pasteboard's content: a value that shares its bytes.
class PasteboardItem
{
public:
    PasteboardItem() = default;
    explicit PasteboardItem(std::map<PasteboardType, QByteArray> strings)
        : m_strings(std::move(strings))
    {
    }

    /// The text of the type as well-formed UTF-8; nothing when the item does not have the type.
    std::optional<QByteArray> string(PasteboardType type) const
    {
        const auto found = m_strings.find(type);
        return found == m_strings.end() ? std::nullopt : std::optional(found->second);
    }

private:
    std::map<PasteboardType, QByteArray> m_strings;
};

/// An image to be written: the bytes of an image file in any format that Qt reads. Larkspool stores PNG and
/// the formats of copied image files.
struct PasteboardImage {
    QByteArray encoded;
};

/// An address to be written with its text as it stands; one without a scheme stays one.
struct PasteboardUrl {
    QByteArray text; ///< well-formed UTF-8
};

using PasteboardObject = std::variant<PasteboardImage, PasteboardUrl>;

/// The general pasteboard: content that is simply there, with a counter, whoever wrote it and whether or not
/// that program still runs.
///
/// Life cycle:
///  1. Made by loadPasteboard(). What the desktop's clipboard holds then is content number `changeCount()`,
///  or
///     becomes a content that waits, a moment later.
///  2. Contents that other programs write are fetched in the background, each with a deadline and a byte cap.
///  A
///     finished one waits in line; `advance()` makes the next one current. None is lost while fewer wait than
///     the back end's bound; beyond it the oldest waiting one is dropped, with a line on the console.
///  3. Reading shows the current content, without waiting for anybody.
///  4. `clearContents()` starts a content of this program's own, which joins the line like anybody's;
///  `setString`
///     and `writeObjects` add to it.
///  5. Destroyed: background work is cancelled; content of this program's own goes with it, unless the
///  desktop
///     keeps it.
///
/// Thread: the main thread only. No call blocks on another program.
///
/// A content that its writer marked as secret has a number like any, and no items.
class Pasteboard
{
public:
    virtual ~Pasteboard() = default;

    /// The number of the current content. It only rises.
    virtual qint64 changeCount() const = 0;

    /// Makes the next waiting content current; false when none waits.
    virtual bool advance() = 0;

    /// The items of the current content; empty when there is none to be read.
    virtual std::vector<PasteboardItem> pasteboardItems() const = 0;

    /// The bytes of a type on the whole current content; nothing when it does not have the type.
    virtual std::optional<QByteArray> data(PasteboardType type) const = 0;

    /// The image bytes of the type (`Tiff` or `Png`), decoded and encoded afresh as PNG; nothing when the
    /// type is not there or its bytes are no image. Costs nothing to ask: a back end converts before a
    /// content is finished. It converts the first of the two types, in this order, that is an image, and may
    /// have nothing for the other.
    virtual std::optional<QByteArray> pngRepresentation(PasteboardType type) const = 0;

    /// Starts a new, empty content of this program's own and takes the clipboard over.
    virtual void clearContents() = 0;

    /// Adds the text, well-formed UTF-8, to the content that `clearContents` started, under `String`.
    virtual void setString(const QByteArray &string) = 0;

    /// Adds objects to the content that `clearContents` started.
    virtual void writeObjects(const std::vector<PasteboardObject> &objects) = 0;
};
