#include "capture/CaptureRule.h"

#include "base/Text.h"
#include "capture/Url.h"
#include "platform/Pasteboard.h"

#include <algorithm>
#include <array>

namespace
{

constexpr std::array ImageFileExtensions{"png", "jpg", "jpeg", "gif", "heic", "webp", "tiff", "bmp", "ico"};

std::optional<QByteArray> extractImage(const Pasteboard &pasteboard)
{
    for (const PasteboardType type : {PasteboardType::Tiff, PasteboardType::Png}) {
        if (auto png = pasteboard.pngRepresentation(type))
            return png;
    }
    return std::nullopt;
}

QByteArray imageText(const PasteboardItem &item, const QByteArray &png)
{
    if (const auto address = item.string(PasteboardType::FileUrl)) {
        if (const auto path = url::filePath(*address))
            return path->isDecoded ? path->text : path->lastComponent;
    }
    if (const auto name = item.string(PasteboardType::UrlName))
        return *name;
    return "Image (" + QByteArray::number(png.size() / 1024) + " KB)";
}

Capture captureFile(const url::FilePath &path)
{
    const QByteArray extension = url::lowerCaseExtension(path.bytes);
    const bool isImageFile = std::any_of(ImageFileExtensions.begin(), ImageFileExtensions.end(),
        [&extension](const char *known) { return extension == known; });
    return {path.text, ClipboardItemType::File, std::nullopt,
        isImageFile ? std::optional(path.bytes) : std::nullopt};
}

std::optional<Capture> captureText(const QByteArray &string)
{
    const QByteArrayView trimmed = text::trimmed(string);
    if (trimmed.isEmpty())
        return std::nullopt;
    if (url::hasSchemeAndHost(trimmed))
        return Capture{trimmed.toByteArray(), ClipboardItemType::Url, std::nullopt, std::nullopt};
    return Capture{string, ClipboardItemType::Text, std::nullopt, std::nullopt};
}

} // namespace

std::optional<Capture> captureFrom(const Pasteboard &pasteboard)
{
    const auto items = pasteboard.pasteboardItems();
    if (items.empty())
        return std::nullopt;
    const PasteboardItem &first = items.front();
    if (const auto png = extractImage(pasteboard))
        return Capture{imageText(first, *png), ClipboardItemType::Image, png, std::nullopt};
    if (const auto address = first.string(PasteboardType::Url); address && url::hasScheme(*address))
        return Capture{*address, ClipboardItemType::Url, std::nullopt, std::nullopt};
    if (const auto address = first.string(PasteboardType::FileUrl)) {
        if (const auto path = url::filePath(*address))
            return captureFile(*path);
    }
    if (const auto string = first.string(PasteboardType::String); string && !string->isEmpty())
        return captureText(*string);
    return std::nullopt;
}

Capture withImageFile(Capture capture, std::optional<QByteArray> bytes)
{
    capture.imageFile.reset();
    if (bytes) {
        capture.type = ClipboardItemType::Image;
        capture.imageData = std::move(bytes);
    }
    return capture;
}
