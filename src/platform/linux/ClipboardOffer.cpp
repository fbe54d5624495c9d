#include "platform/linux/ClipboardOffer.h"

#include "platform/ImageCodec.h"
#include "platform/linux/ClipboardTargets.h"

#include <QBuffer>
#include <QImageWriter>
#include <QPainter>

#include <algorithm>
#include <array>

namespace clipboard
{
namespace
{

constexpr std::array TextTargets = {Utf8PlainText, Utf8String, PlainText, Latin1String, AnyText};

struct ImageFormat {
    const char *target;
    const char *format; // of QImageWriter's
};
constexpr std::array ImageFormats = {
    ImageFormat{Png, "png"},
    ImageFormat{"image/jpeg", "jpeg"},
    ImageFormat{"image/bmp", "bmp"},
    ImageFormat{Tiff, "tiff"},
    ImageFormat{"image/webp", "webp"},
};

const ImageFormat *formatOf(const QByteArray &target)
{
    const auto found = std::find_if(ImageFormats.begin(), ImageFormats.end(),
        [&](const ImageFormat &format) { return format.target == target; });
    return found == ImageFormats.end() ? nullptr : &*found;
}

/// Builds of Qt lack one or the other.
bool isWritable(const ImageFormat &format)
{
    static const QList<QByteArray> Supported = QImageWriter::supportedImageFormats();
    return Supported.contains(format.format);
}

/// The image to make the others from: lossless ones first.
const QByteArray *imageSource(const ClipboardContent &content)
{
    for (const char *const target : {Png, Tiff}) {
        if (const QByteArray *const bytes = content.find(target))
            return bytes;
    }
    for (const ClipboardContent::Entry &entry : content.entries()) {
        if (isRasterImage(entry.target))
            return &entry.bytes;
    }
    return nullptr;
}

bool isTextTarget(const QByteArray &target)
{
    return std::find(TextTargets.begin(), TextTargets.end(), target) != TextTargets.end();
}

bool hasText(const ClipboardContent &content)
{
    return std::any_of(content.entries().begin(), content.entries().end(),
        [](const ClipboardContent::Entry &entry) { return textRank(entry.target).has_value(); });
}

/// Whether the byte starts a UTF-8 sequence of a character above U+00FF.
bool startsBeyondLatin1(char byte)
{
    return static_cast<quint8>(byte) >= 0xc4;
}

Answer textAnswer(const QByteArray &utf8, const QByteArray &target)
{
    if (target == Latin1String)
        return Rendering{latin1(utf8), Latin1String};
    if (target != AnyText)
        return Rendering{utf8, target};
    const bool isLatin1 = std::none_of(utf8.begin(), utf8.end(), startsBeyondLatin1);
    return isLatin1 ? Rendering{latin1(utf8), Latin1String} : Rendering{utf8, Utf8String};
}

/// JPEG and BMP readers know no transparency: what was transparent would come out black.
QImage onWhite(const QImage &picture)
{
    QImage opaque(picture.size(), QImage::Format_RGB32);
    opaque.fill(Qt::white);
    QPainter(&opaque).drawImage(0, 0, picture);
    return opaque;
}

} // namespace

QByteArrayList offeredTargets(const ClipboardContent &content)
{
    QByteArrayList targets;
    const auto add = [&](const QByteArray &target) {
        if (!targets.contains(target))
            targets.append(target);
    };
    for (const ClipboardContent::Entry &entry : content.entries()) {
        if (entry.target != UnknownImage)
            add(entry.target);
    }
    if (hasText(content))
        std::for_each(TextTargets.begin(), TextTargets.end(), add);
    if (imageSource(content) != nullptr) {
        for (const ImageFormat &format : ImageFormats) {
            if (isWritable(format))
                add(format.target);
        }
    }
    return targets;
}

Answer answerFor(const ClipboardContent &content, const QByteArray &target)
{
    if (const QByteArray *const bytes = content.find(target))
        return Rendering{*bytes, target};
    const QByteArray canonical = canonicalTarget(target);
    if (isTextTarget(canonical)) {
        const auto utf8 = text(content);
        return utf8 ? textAnswer(*utf8, target) : Answer();
    }
    const QByteArray *const source = imageSource(content);
    const ImageFormat *const format = formatOf(canonical);
    if (source == nullptr || format == nullptr || !isWritable(*format))
        return {};
    return PendingImage{*source, canonical};
}

std::optional<QByteArray> encodedImage(const PendingImage &image)
{
    const ImageFormat *const format = formatOf(image.target);
    const auto picture = image::decode(image.source);
    if (!picture || format == nullptr)
        return std::nullopt;
    if (image.target == Png)
        return image::pngRepresentation(*picture);
    const bool isOpaqueFormat = image.target == "image/jpeg" || image.target == "image/bmp";
    const QImage written = isOpaqueFormat && picture->hasAlphaChannel() ? onWhite(*picture) : *picture;
    QByteArray encoded;
    QBuffer buffer(&encoded);
    if (!buffer.open(QIODevice::WriteOnly) || !QImageWriter(&buffer, format->format).write(written))
        return std::nullopt;
    return encoded;
}

QByteArray latin1(const QByteArray &utf8)
{
    QByteArray bytes(utf8.size(), Qt::Uninitialized);
    char *out = bytes.data();
    const char *const end = utf8.constData() + utf8.size();
    for (const char *at = utf8.constData(); at != end; ++at) {
        const auto byte = static_cast<quint8>(*at);
        if (byte < 0x80)
            *out++ = *at;
        else if (startsBeyondLatin1(*at))
            *out++ = '?';
        else if ((byte & 0xc0U) == 0xc0U && at + 1 != end)
            *out++ = static_cast<char>((byte << 6U) | (static_cast<quint8>(at[1]) & 0x3fU));
    }
    bytes.truncate(out - bytes.constData());
    return bytes;
}

} // namespace clipboard
