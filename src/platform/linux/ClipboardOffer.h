#pragma once

#include "platform/linux/ClipboardContent.h"

#include <QByteArrayList>

#include <variant>

/// How a content is offered to other programs: the targets that it has, and those that follow from them. A
/// text is offered in every text encoding, an image in the common formats. Pure functions; any thread.
namespace clipboard
{

/// ICCCM section 2.6.2: the owner chooses the encoding.
inline constexpr char AnyText[] = "TEXT";

/// A content's image in a format without a name of its own: it is offered in converted form only.
inline constexpr char UnknownImage[] = "image/x-unknown";

/// What is written for a requested target.
struct Rendering {
    QByteArray bytes;
    QByteArray
        type; ///< the target name that says how to read the bytes: the requested one, unless that is TEXT
};

/// The picture must be encoded afresh: see `encodedImage`, which takes its time.
struct PendingImage {
    QByteArray source;
    QByteArray target;
};

/// Nothing at all: the content does not have the target.
using Answer = std::variant<std::monostate, Rendering, PendingImage>;

QByteArrayList offeredTargets(const ClipboardContent &content);
Answer answerFor(const ClipboardContent &content, const QByteArray &target);

/// The image file in the format of the target; nothing when the source is no image.
std::optional<QByteArray> encodedImage(const PendingImage &image);

/// A well-formed text in ISO 8859-1; characters that it lacks become question marks.
QByteArray latin1(const QByteArray &utf8);

} // namespace clipboard
