#pragma once

#include <QByteArray>

#include <optional>

/// Questions about texts that may be addresses. Texts are well-formed UTF-8.
namespace url
{

/// Whether the text is an address (RFC 3986, with the characters of RFC 3987) that has a scheme.
bool hasScheme(const QByteArray &text);

/// Whether the text is an address that has a scheme and a host, the mark of a web address.
bool hasSchemeAndHost(QByteArrayView text);

/// The path of a file address.
struct FilePath {
    QByteArray bytes; ///< as the file system knows it; may be no UTF-8
    QByteArray
        text; ///< as an entry shows it: decoded, or, when that gives no text, as it stands in the address
    QByteArray lastComponent; ///< the last component of the path as it stands in the address
    bool isDecoded = false;   ///< whether `text` is the decoded path
};

/// Takes a file address apart; nothing when the text is no address.
std::optional<FilePath> filePath(const QByteArray &text);

/// The file name's extension in lower case, without the dot; empty when there is none. A name that only
/// starts with a dot has none.
QByteArray lowerCaseExtension(const QByteArray &path);

} // namespace url
