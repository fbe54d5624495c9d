#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>

/// Image files as values. Any thread.
namespace image
{

/// The largest picture that is decoded: width x height x 4 bytes, in MiB. A small file that claims more (a
/// decompression bomb) does not decode.
inline constexpr int DecodedLimitMiB = 1024;

/// The picture in the bytes of an image file, in any format that Qt's plugins read; nothing when they hold
/// none, or a broken one.
std::optional<QImage> decode(const QByteArray &encoded);

/// The picture as the bytes of a PNG file, without any text of the original. Move the picture in where it is
/// not needed any more: a large one is then never held twice.
std::optional<QByteArray> pngRepresentation(QImage picture);

} // namespace image
