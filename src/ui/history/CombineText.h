#pragma once

#include "store/ClipboardItemType.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// What entries become when they are combined into one text.
namespace combine
{

/// What an entry contributes. Of a `File` its name: "file://" and the rest of the path removed, percent
/// escapes decoded (RFC 3986, 2.1), unless they are malformed or do not give UTF-8. Of an `Image` whose
/// content is a path its last component, of another the content. Of every other kind the content without
/// white space at both ends. `content` is well-formed UTF-8.
QString textOf(ClipboardItemType type, const QByteArray &content);

/// One line for each text: "1. first", "2. second". No line feed at the end.
QString numbered(const QStringList &texts);

/// The beginning of a text, at most so many UTF-16 units and line feeds of it. It ends between two code
/// points.
QString beginning(const QString &text, qsizetype longest, qsizetype mostLineFeeds);

} // namespace combine
