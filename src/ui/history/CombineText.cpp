#include "ui/history/CombineText.h"

#include "base/Text.h"

#include <algorithm>
#include <optional>

namespace
{

/// The value of a hexadecimal digit; -1 of another character.
int digitValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// Nothing when a percent sign is not the start of an escape, or the bytes are no text.
std::optional<QByteArray> percentDecoded(const QByteArray &text)
{
    QByteArray decoded;
    decoded.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            decoded += text[i];
            continue;
        }
        const int high = i + 2 < text.size() ? digitValue(text[i + 1]) : -1;
        const int low = high >= 0 ? digitValue(text[i + 2]) : -1;
        if (low < 0)
            return std::nullopt;
        decoded += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return text::wellFormed(decoded) == decoded ? std::optional(decoded) : std::nullopt;
}

/// Slashes at the end do not count; of slashes alone, one is left.
QByteArrayView lastPathComponent(QByteArrayView path)
{
    while (path.size() > 1 && path.endsWith('/'))
        path.chop(1);
    return path.size() > 1 ? path.sliced(path.lastIndexOf('/') + 1) : path;
}

QString fileName(QByteArray content)
{
    content.replace("file://", "");
    return QString::fromUtf8(lastPathComponent(percentDecoded(content).value_or(content)));
}

} // namespace

namespace combine
{

QString textOf(ClipboardItemType type, const QByteArray &content)
{
    switch (type) {
    case ClipboardItemType::File:
        return fileName(content);
    case ClipboardItemType::Image:
        return QString::fromUtf8(lastPathComponent(content));
    case ClipboardItemType::Text:
    case ClipboardItemType::Url:
    case ClipboardItemType::RichText:
        break;
    }
    return QString::fromUtf8(text::trimmed(content));
}

QString numbered(const QStringList &texts)
{
    constexpr qsizetype RoomForNumber = 8;
    qsizetype room = 0;
    for (const QString &text : texts)
        room += text.size() + RoomForNumber;
    QString lines;
    lines.reserve(room);
    for (qsizetype i = 0; i < texts.size(); ++i) {
        if (i > 0)
            lines += QLatin1Char('\n');
        lines += QString::number(i + 1);
        lines += QLatin1String(". ");
        lines += texts[i];
    }
    return lines;
}

QString beginning(const QString &text, qsizetype longest, qsizetype mostLineFeeds)
{
    qsizetype end = std::min(text.size(), longest);
    qsizetype feed = -1;
    for (qsizetype count = 0; count <= mostLineFeeds; ++count) {
        feed = text.indexOf(QLatin1Char('\n'), feed + 1);
        if (feed < 0 || feed >= end)
            break;
        if (count == mostLineFeeds)
            return text.left(feed);
    }
    if (end > 0 && end < text.size() && text[end - 1].isHighSurrogate())
        --end;
    return text.left(end);
}

} // namespace combine
