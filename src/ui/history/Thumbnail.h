#pragma once

#include <QImage>
#include <QSize>

class QIODevice;

/// Small pictures of image files. Any thread.
namespace thumbnail
{

/// The middle of the picture in a device, as a square of `side` pixels, as large as fits, upright. The
/// picture is made small while it is decoded where its format can do that; one that would need more than
/// `MostBytes` of memory, or that has more than `MostPixels` and so would take seconds, gives none. Null,
/// too, when the device holds no picture of a known format, or a broken one.
QImage square(QIODevice &device, int side);

inline constexpr qint64 MostBytes = 96 * 1024 * 1024;
inline constexpr qint64 MostPixels = 128 * 1024 * 1024;

/// The size of the picture in a device, from its header; an invalid one when it cannot be told.
QSize pixelSize(QIODevice &device);

/// The picture with round corners, `radius` in pixels.
QImage rounded(const QImage &picture, qreal radius);

} // namespace thumbnail
