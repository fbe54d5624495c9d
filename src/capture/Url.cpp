#include "capture/Url.h"

#include "base/Text.h"

#include <QUrl>

namespace url
{
namespace
{

/// Longer texts are not given to the parser: no address is as long.
constexpr qsizetype LongestUrl = 1024 * 1024;

/// Whether the text begins with a scheme and a colon, without looking any further.
bool beginsWithScheme(QByteArrayView text)
{
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    if (text.isEmpty() || !isLetter(text.front()))
        return false;
    for (const char c : text.sliced(1)) {
        if (c == ':')
            return true;
        const bool isDigit = c >= '0' && c <= '9';
        if (!isLetter(c) && !isDigit && c != '+' && c != '-' && c != '.')
            return false;
    }
    return false;
}

std::optional<QUrl> parsed(QByteArrayView text)
{
    if (text.size() > LongestUrl || !beginsWithScheme(text))
        return std::nullopt;
    const QUrl url(QString::fromUtf8(text), QUrl::StrictMode);
    return url.isValid() ? std::optional(url) : std::nullopt;
}

} // namespace

bool hasScheme(const QByteArray &text)
{
    const auto url = parsed(text);
    return url && !url->scheme().isEmpty();
}

bool hasSchemeAndHost(QByteArrayView text)
{
    const auto url = parsed(text);
    return url && !url->scheme().isEmpty() && !url->host().isEmpty();
}

std::optional<FilePath> filePath(const QByteArray &text)
{
    if (text.size() > LongestUrl)
        return std::nullopt;
    // Programs write spaces and other characters of names as they are; such an address means one file all the
    // same.
    const QUrl url(QString::fromUtf8(text), QUrl::TolerantMode);
    if (!url.isValid() || url.path().isEmpty())
        return std::nullopt;
    const QByteArray encoded = url.path(QUrl::FullyEncoded).toUtf8();
    FilePath path;
    path.bytes = QByteArray::fromPercentEncoding(encoded);
    path.lastComponent = encoded.sliced(encoded.lastIndexOf('/') + 1);
    path.isDecoded = text::wellFormed(path.bytes) == path.bytes;
    path.text = path.isDecoded ? path.bytes : encoded;
    return path;
}

QByteArray lowerCaseExtension(const QByteArray &path)
{
    const qsizetype name = path.lastIndexOf('/') + 1;
    const qsizetype dot = path.lastIndexOf('.');
    return dot > name ? path.sliced(dot + 1).toLower() : QByteArray();
}

} // namespace url
