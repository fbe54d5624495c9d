#pragma once

#include <QBuffer>
#include <QImage>

/// Pictures as the bytes of files.
namespace testimages
{

inline QByteArray encoded(const QImage &image, const char *format = "png")
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

/// A picture of one colour.
inline QByteArray plain(const QSize &size, const QColor &color, const char *format = "png")
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return encoded(image, format);
}

} // namespace testimages
