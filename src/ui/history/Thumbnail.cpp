#include "ui/history/Thumbnail.h"

#include <QIODevice>
#include <QImageReader>
#include <QtEndian>
#include <QtMath>

#include <algorithm>
#include <array>
#include <cmath>

namespace thumbnail
{
namespace
{

/// The formats that are captured. Not among them: drawings that can refer to other files or never end.
constexpr std::array Formats{
    "png", "jpeg", "jpg", "gif", "webp", "tiff", "bmp", "ico", "heic", "heif", "avif"};

bool isKnown(const QByteArray &format)
{
    return std::ranges::any_of(Formats, [&format](const char *known) { return format == known; });
}

/// A reader that goes by what the bytes are.
bool openReader(QImageReader &reader, QIODevice &device)
{
    reader.setDevice(&device);
    reader.setDecideFormatFromContent(true);
    return reader.canRead() && isKnown(reader.format());
}

/// A decoder that reads a picture as a whole has it in memory as it is, and again as it can be scaled.
/// Measured.
constexpr qint64 BytesOfWholePixel = 6;
constexpr qint64 BytesOfWholeDeepPixel = 12;

/// What decoding a PNG needs for each pixel: nothing to speak of when its lines can be made smaller one by
/// one (PNG 1.2, 4.1.1: IHDR).
qint64 bytesOfPngPixel(const QByteArray &head)
{
    constexpr qsizetype Depth = 24;
    constexpr qsizetype ColorType = 25;
    constexpr qsizetype Interlace = 28;
    if (head.size() <= Interlace)
        return BytesOfWholePixel;
    const bool isTrueColor = head[ColorType] == 2 || head[ColorType] == 6;
    if (isTrueColor && head[Depth] == 8 && head[Interlace] == 0)
        return 0;
    return head[Depth] == 16 ? BytesOfWholeDeepPixel : BytesOfWholePixel;
}

/// The same of a JPEG: lines are made smaller one by one, but for a progressive one, whose coefficients are
/// all kept until its end (ITU T.81, B.2.2: frame header).
qint64 bytesOfJpegPixel(const QByteArray &head)
{
    constexpr qint64 BytesOfCoefficients = 3 * 2;
    qsizetype at = 2;
    while (at + 4 <= head.size() && static_cast<quint8>(head[at]) == 0xFF) {
        const auto marker = static_cast<quint8>(head[at + 1]);
        const bool isFrame =
            marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (isFrame)
            return marker <= 0xC1 ? 0 : BytesOfCoefficients;
        at += 2 + qFromBigEndian<quint16>(head.constData() + at + 2);
    }
    // What comes before the frame is long, and says nothing of it.
    return BytesOfCoefficients;
}

bool isAffordable(const QSize &size, const QByteArray &format, const QByteArray &head)
{
    const qint64 pixels = qint64(size.width()) * size.height();
    if (pixels > MostPixels)
        return false;
    qint64 bytesOfPixel = BytesOfWholePixel;
    if (format == "png")
        bytesOfPixel = bytesOfPngPixel(head);
    else if (format == "jpeg" || format == "jpg")
        bytesOfPixel = bytesOfJpegPixel(head);
    return pixels * bytesOfPixel <= MostBytes;
}

/// A premultiplied colour of less opacity.
QRgb faded(QRgb pixel, qreal share)
{
    const auto part = [share](int component) { return qRound(component * share); };
    return qRgba(part(qRed(pixel)), part(qGreen(pixel)), part(qBlue(pixel)), part(qAlpha(pixel)));
}

/// The size that just covers a square, never larger than the picture is.
QSize coverOf(const QSize &size, int side)
{
    const int shorter = qMin(size.width(), size.height());
    if (shorter <= side)
        return size;
    return size.scaled(side, side, Qt::KeepAspectRatioByExpanding);
}

} // namespace

QImage square(QIODevice &device, int side)
{
    constexpr qint64 HeadSize = 64 * 1024;
    const QByteArray head = device.peek(HeadSize);
    QImageReader reader;
    if (side <= 0 || !openReader(reader, device))
        return {};
    const QSize size = reader.size();
    if (size.isEmpty() || !isAffordable(size, reader.format(), head))
        return {};
    reader.setAutoTransform(true);
    reader.setScaledSize(coverOf(size, side));
    const QImage picture = reader.read();
    if (picture.isNull())
        return {};
    const int shorter = qMin(picture.width(), picture.height());
    const QPoint corner((picture.width() - shorter) / 2, (picture.height() - shorter) / 2);
    return picture.copy({corner, QSize(shorter, shorter)})
        .convertToFormat(QImage::Format_ARGB32_Premultiplied)
        .scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QSize pixelSize(QIODevice &device)
{
    QImageReader reader;
    return openReader(reader, device) ? reader.size() : QSize();
}

QImage rounded(const QImage &picture, qreal radius)
{
    QImage result = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    // How much of a pixel lies within the arc, by how far its middle is from the arc's.
    const auto coverage = [radius](int x, int y) {
        return qBound(0.0, radius + 0.5 - std::hypot(radius - x - 0.5, radius - y - 0.5), 1.0);
    };
    const int corner = qMin(qCeil(radius), qMin(result.width(), result.height()) / 2);
    for (int y = 0; y < corner; ++y) {
        for (const int line : {y, result.height() - 1 - y}) {
            auto *const pixels = reinterpret_cast<QRgb *>(result.scanLine(line));
            for (int x = 0; x < corner; ++x) {
                for (QRgb *const pixel : {pixels + x, pixels + result.width() - 1 - x})
                    *pixel = faded(*pixel, coverage(x, y));
            }
        }
    }
    return result;
}

} // namespace thumbnail
