#pragma once

#include "store/ClipboardItemType.h"

#include <QByteArrayView>
#include <QSize>
#include <QString>

/// What a row of the list says of an entry: short texts that cannot break its layout, however odd the entry
/// is.
///
/// Control characters are replaced by their visible symbols, and what turns the direction of the text around
/// it is left out (the embeddings, overrides and isolates of Unicode's UAX #9). Nothing here looks at more
/// than the beginning of a content.
namespace rowtext
{

/// More bytes of a content are not looked at.
inline constexpr qsizetype LongestLookedAt = 16 * 1024;

/// The beginning of a content: more than four lines of a row hold, and no more lines than five. A `Text` and
/// a `RichText` without white space around it, a `File` as its path, the others as they are.
QString preview(QByteArrayView content, ClipboardItemType type);

/// A path in two parts, each as one line.
struct Path {
    QString name;   ///< the last component
    QString folder; ///< what is before it; "/" of what is in the root, empty when nothing is
};
/// The path of a `File`: without any "file://", its percent escapes decoded, or as it stands when they cannot
/// be.
QString filePath(QByteArrayView content);
/// The parts of a path; slashes at its end count for nothing.
Path parts(const QString &path);
/// The parts of what an `Image` was captured with: a path's, or a name and no folder when there is no "/" in
/// it.
Path imageParts(QByteArrayView content);

/// A name that somebody else has chosen, as one line.
QString oneLine(const QString &name);

/// "12 KB" in the user's language, rounded down.
QString sizeText(qint64 bytes);
/// "1920×1080"; nothing for an invalid size.
QString pixelSizeText(const QSize &size);

} // namespace rowtext
