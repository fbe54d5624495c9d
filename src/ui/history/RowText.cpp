#include "ui/history/RowText.h"

#include "base/Text.h"

#include <QCoreApplication>
#include <QUtf8StringView>

#include <cctype>
#include <optional>

namespace rowtext
{
namespace
{

/// In user-perceived characters, and in UTF-16 units: one such character can have any number of these.
constexpr qint64 LongestPreview = 600;
constexpr qsizetype LongestPreviewUnits = 2400;
/// One more than a row shows: the last one then ends with an ellipsis.
constexpr int MostLines = 5;
/// Of a name or a folder in UTF-16 units.
constexpr qsizetype LongestLine = 300;

constexpr QChar Ellipsis(0x2026);

enum class Lines { One, Several };

/// Whether a character turns the direction of what follows it.
bool turnsDirection(QChar character)
{
    const char16_t unit = character.unicode();
    return (unit >= 0x202A && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x2069);
}

/// A control character's picture; a blank for those that have none.
QChar pictureOf(QChar control)
{
    constexpr char16_t FirstPicture = 0x2400;
    constexpr char16_t Delete = 0x7F;
    constexpr char16_t PictureOfDelete = 0x2421;
    if (control.unicode() == Delete)
        return QChar(PictureOfDelete);
    return control < u' ' ? QChar(char16_t(FirstPicture + control.unicode())) : QChar(u' ');
}

bool isLineBreak(QChar character)
{
    constexpr QChar NextLine(0x85);
    return character == u'\n' || character == u'\r' || character == NextLine ||
        character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
}

/// The text with nothing in it that breaks a layout.
QString harmless(const QString &text, Lines lines)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar character = text[i];
        if (turnsDirection(character))
            continue;
        if (lines == Lines::Several && isLineBreak(character)) {
            if (character == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
                ++i;
            result.append(u'\n');
        } else if (lines == Lines::Several && character == u'\t') {
            result.append(character);
        } else if (character.category() == QChar::Other_Control || isLineBreak(character)) {
            result.append(pictureOf(character));
        } else {
            result.append(character);
        }
    }
    return result;
}

/// Where a text can be cut at or before a place: not within a pair of surrogates.
qsizetype cutAt(const QString &text, qsizetype place)
{
    return place > 0 && place < text.size() && text[place].isLowSurrogate() ? place - 1 : place;
}

/// What is looked at of a content; not ending within a character.
QByteArrayView beginning(QByteArrayView content)
{
    qsizetype size = qMin(content.size(), LongestLookedAt);
    constexpr auto Continuation = [](char byte) { return (static_cast<quint8>(byte) & 0xC0U) == 0x80U; };
    while (size > 0 && size < content.size() && Continuation(content[size]))
        --size;
    return content.first(size);
}

/// The first lines of a text that is shown in several.
QString firstLines(QByteArrayView utf8)
{
    QString text = harmless(text::prefix(utf8, LongestPreview), Lines::Several);
    if (text.size() > LongestPreviewUnits)
        text.truncate(cutAt(text, LongestPreviewUnits));
    qsizetype end = -1;
    for (int line = 0; line < MostLines; ++line) {
        end = text.indexOf(u'\n', end + 1);
        if (end < 0)
            return text;
    }
    return text.left(end);
}

/// The text that percent escapes stand for; nothing when one is malformed or they do not give a text.
std::optional<QString> percentDecoded(const QByteArray &text)
{
    const auto isHexDigit = [&text](qsizetype at) {
        return at < text.size() && std::isxdigit(static_cast<unsigned char>(text[at]));
    };
    for (qsizetype at = text.indexOf('%'); at >= 0; at = text.indexOf('%', at + 1)) {
        if (!isHexDigit(at + 1) || !isHexDigit(at + 2))
            return std::nullopt;
    }
    const QByteArray decoded = QByteArray::fromPercentEncoding(text);
    return QUtf8StringView(decoded).isValidUtf8() ? std::optional(QString::fromUtf8(decoded)) : std::nullopt;
}

/// A long line without its middle: a name's ending says as much as its beginning.
QString withoutMiddle(const QString &line)
{
    if (line.size() <= LongestLine)
        return line;
    const qsizetype half = LongestLine / 2;
    return line.left(cutAt(line, half)) + Ellipsis + line.mid(cutAt(line, line.size() - half));
}

QStringView withoutSlashesAtEnd(QStringView path)
{
    while (path.size() > 1 && path.back() == u'/')
        path.chop(1);
    return path;
}

} // namespace

QString preview(QByteArrayView content, ClipboardItemType type)
{
    switch (type) {
    case ClipboardItemType::Text:
    case ClipboardItemType::RichText:
        return firstLines(text::trimmed(beginning(content)));
    case ClipboardItemType::File:
        return withoutMiddle(harmless(filePath(content), Lines::One));
    case ClipboardItemType::Url:
    case ClipboardItemType::Image:
        break;
    }
    return firstLines(beginning(content));
}

QString filePath(QByteArrayView content)
{
    QByteArray path = beginning(content).toByteArray();
    path.replace("file://", "");
    return percentDecoded(path).value_or(QString::fromUtf8(path));
}

Path parts(const QString &path)
{
    const QStringView whole = withoutSlashesAtEnd(path);
    const qsizetype slash = whole.lastIndexOf(u'/');
    Path parts;
    if (whole == u"/")
        parts = {whole.toString(), whole.toString()};
    else if (slash < 0)
        parts = {whole.toString(), QString()};
    else
        parts = {whole.sliced(slash + 1).toString(),
            withoutSlashesAtEnd(whole.first(qMax<qsizetype>(1, slash))).toString()};
    parts.name = withoutMiddle(harmless(parts.name, Lines::One));
    parts.folder = withoutMiddle(harmless(parts.folder, Lines::One));
    return parts;
}

Path imageParts(QByteArrayView content)
{
    const QString text = QString::fromUtf8(beginning(content));
    if (text.contains(u'/'))
        return parts(text);
    return {withoutMiddle(harmless(text, Lines::One)), QString()};
}

QString oneLine(const QString &name)
{
    return harmless(name.left(cutAt(name, qMin(name.size(), LongestLine))), Lines::One);
}

QString sizeText(qint64 bytes)
{
    constexpr qint64 Kilobyte = 1024;
    const int kilobytes = static_cast<int>(bytes / Kilobyte);
    //: The size of an image in kilobytes.
    return QCoreApplication::translate("RowText", "%n KB", "", kilobytes);
}

QString pixelSizeText(const QSize &size)
{
    return size.isValid() ? QStringLiteral("%1×%2").arg(size.width()).arg(size.height()) : QString();
}

} // namespace rowtext
