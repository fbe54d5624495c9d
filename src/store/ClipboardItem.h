#pragma once

#include "base/Clock.h"
#include "store/ClipboardItemType.h"
#include "store/Record.h"

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QUuid>

#include <memory>
#include <optional>

class Pasteboard;

/// A long content, read in pieces without being loaded.
class ContentReader
{
public:
    virtual ~ContentReader() = default;
    /// In bytes.
    virtual qint64 size() const = 0;
    /// At most `size` bytes from the offset on; nothing when the entry has changed since, is gone or cannot
    /// be read.
    virtual std::optional<QByteArray> read(qint64 offset, qint64 size) const = 0;
};

/// Reads the bytes that a saved entry does not keep in memory.
class ItemByteReader
{
public:
    virtual ~ItemByteReader() = default;
    /// The whole content of the row; nothing when the row is gone or cannot be read.
    virtual std::optional<QByteArray> readContent(qint64 rowId) const = 0;
    /// The same in pieces; null when the row is gone or cannot be read. It must not outlive the context.
    virtual std::unique_ptr<ContentReader> openContent(qint64 rowId) const = 0;
    /// The image bytes of the row; nothing when it has none, is gone or cannot be read.
    virtual std::optional<QByteArray> readImageData(qint64 rowId) const = 0;
    /// Whether the row's content is these bytes; reads no more of it at a time than a buffer.
    virtual bool contentEquals(qint64 rowId, const QByteArray &content) const = 0;
};

/// One entry of the history: one captured copy.
///
/// Once saved, it keeps in memory neither image bytes nor a long content: these are read from the store when
/// asked for. Main thread only.
class ClipboardItem : public Record
{
public:
    /// Contents of up to this many bytes stay in memory.
    static constexpr qint64 ResidentLimit = 16 * 1024;
    /// Of longer ones these many bytes do: enough for a row of the list.
    static constexpr qint64 HeadSize = 4 * 1024;

    /// A new entry with a fresh `id`, the current time and its characters counted.
    /// `content` is well-formed UTF-8: the text; of a `Url` its address; of a `File` its path; of an `Image`
    /// the path, name or size text that it was captured with.
    ClipboardItem(QByteArray content, ClipboardItemType type, std::optional<QByteArray> imageData,
        std::optional<QString> sourceAppName, std::optional<QString> sourceAppBundleId, bool isPinned,
        const Clock &clock = SystemClock());

    /// The fields as they are stored.
    struct Fields {
        QUuid id;
        QByteArray content;        ///< the whole, or the first `HeadSize` bytes of a longer one
        qint64 contentSize = 0;    ///< negative when the row could not be read
        QByteArray imageData;      ///< only while it is not saved; null when there are none
        QString sourceAppName;     ///< null when it is not known
        QString sourceAppBundleId; ///< the same
        QDateTime createdAt;       ///< UTC
        qint64 characterCount = 0;
        std::optional<QUuid> categoryId;
        ClipboardItemType type = ClipboardItemType::Text;
        bool hasImageData = false;
        bool isPinned = false;
    };
    explicit ClipboardItem(Fields fields)
        : m_fields(std::move(fields))
    {
    }
    const Fields &fields() const { return m_fields; }

    const QUuid &id() const { return m_fields.id; }
    ClipboardItemType type() const { return m_fields.type; }
    bool isPinned() const { return m_fields.isPinned; }
    std::optional<QString> sourceAppName() const { return present(m_fields.sourceAppName); }
    std::optional<QString> sourceAppBundleId() const { return present(m_fields.sourceAppBundleId); }
    const QDateTime &createdAt() const { return m_fields.createdAt; }
    /// User-perceived characters of the content as it was at creation, or as set since.
    qint64 characterCount() const { return m_fields.characterCount; }
    const std::optional<QUuid> &categoryId() const { return m_fields.categoryId; }

    /// The content, UTF-8. Long ones are read from the store; empty when that fails.
    QByteArray contentUtf8() const;
    QString content() const { return QString::fromUtf8(contentUtf8()); }
    /// The beginning of the content, at least `HeadSize` bytes of it if it has them; costs nothing.
    QByteArrayView contentHead() const { return m_fields.content; }
    /// The size of the content in bytes.
    qint64 contentSize() const { return m_fields.contentSize; }
    /// Whether `contentHead` is the whole content.
    bool isContentResident() const { return m_fields.content.size() == m_fields.contentSize; }
    /// Reads a content that is not resident; null when the entry is in no store or cannot be read.
    std::unique_ptr<ContentReader> openContent() const;
    /// Whether the content is exactly these bytes.
    bool contentEquals(const QByteArray &content) const;

    /// The image bytes; read from the store each time.
    std::optional<QByteArray> imageData() const;
    bool hasImageData() const { return m_fields.hasImageData; }

    /// The picture in the image bytes, decoded afresh; nothing when there are none or they do not decode.
    std::optional<QImage> thumbnail() const;

    /// The symbol of the entry's kind.
    QString typeIcon() const { return ::typeIcon(m_fields.type); }

    void setPinned(bool isPinned) { assign(m_fields.isPinned, isPinned); }
    void setCategoryId(std::optional<QUuid> categoryId) { assign(m_fields.categoryId, categoryId); }
    /// Does not count the characters again.
    void setContent(QByteArray content);
    void setCharacterCount(qint64 count) { assign(m_fields.characterCount, count); }

    /// Puts the entry on the pasteboard. Clears it always: an entry that cannot be written (image
    /// bytes absent or broken, an address that does not parse) leaves it empty rather than with what was
    /// there before. A `RichText` is written as plain text, a `Url` as text and address, a `File` as an
    /// address alone, with its path as it stands.
    void copyToPasteboard(Pasteboard &pasteboard) const;

    /// The order of the history: later `createdAt` first; equal ones by later insertion first.
    static bool newestFirst(const ClipboardItem &a, const ClipboardItem &b);

private:
    friend class ModelContext;

    /// An entry is there ten thousand times: absence is a null text, not a flag beside it.
    static std::optional<QString> present(const QString &text)
    {
        return text.isNull() ? std::nullopt : std::optional(text);
    }
    /// After a save: lets go of what the row holds from now on.
    void releaseBytes(const ItemByteReader *reader);

    Fields m_fields;
    const ItemByteReader *m_reader = nullptr;
};
