#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

/// The semantics of clip texts. Texts are UTF-8 throughout the road of a copy: a copy of 50 MB is never held
/// twice. Sizes stay below 2 GiB, since a row of the store holds less.
namespace text
{

/// The number of user-perceived characters: extended grapheme clusters of Unicode's UAX #29. A flag, a joined
/// emoji, a letter with its combining marks and CR LF each count as one. The text must be well-formed.
qint64 characterCount(QByteArrayView utf8);

/// The text without white space and line breaks at both ends (Unicode White_Space); a view into the same
/// bytes.
QByteArrayView trimmed(QByteArrayView utf8);

/// The same text as well-formed UTF-8: each malformed sequence becomes U+FFFD. Well-formed input comes back
/// as the same shared bytes, without a copy.
QByteArray wellFormed(const QByteArray &bytes);

/// The first characters of a text, at most `limit` user-perceived ones.
QString prefix(QByteArrayView utf8, qint64 limit);

} // namespace text
