#include "capture/CaptureRule.h"

#include "base/Text.h"
#include "capture/Url.h"
#include "platform/Pasteboard.h"
#include "store/ModelContainer.h"

#include <QFile>

#include <algorithm>
#include <array>

#include <fcntl.h>
#include <sys/stat.h>

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

/// The whole of a regular file. A pipe or device is not waited for, and what no row can hold is not read.
std::optional<QByteArray> readFile(const QByteArray &path)
{
    const int descriptor = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0)
        return std::nullopt;
    QFile file;
    struct stat status = {};
    if (!file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle) ||
        fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > ModelContainer::LargestRow)
        return std::nullopt;
    const QByteArray bytes = file.readAll();
    return file.error() == QFileDevice::NoError ? std::optional(bytes) : std::nullopt;
}

Capture captureFile(const url::FilePath &path)
{
    const QByteArray extension = url::lowerCaseExtension(path.bytes);
    const bool isImageFile = std::any_of(ImageFileExtensions.begin(), ImageFileExtensions.end(),
        [&extension](const char *known) { return extension == known; });
    if (isImageFile) {
        if (const auto bytes = readFile(path.bytes))
            return {path.text, ClipboardItemType::Image, bytes};
    }
    return {path.text, ClipboardItemType::File, std::nullopt};
}

std::optional<Capture> captureText(const QByteArray &string)
{
    const QByteArrayView trimmed = text::trimmed(string);
    if (trimmed.isEmpty())
        return std::nullopt;
    if (url::hasSchemeAndHost(trimmed))
        return Capture{trimmed.toByteArray(), ClipboardItemType::Url, std::nullopt};
    return Capture{string, ClipboardItemType::Text, std::nullopt};
}

} // namespace

std::optional<Capture> captureFrom(const Pasteboard &pasteboard)
{
    const auto items = pasteboard.pasteboardItems();
    if (items.empty())
        return std::nullopt;
    const PasteboardItem &first = items.front();
    if (const auto png = extractImage(pasteboard))
        return Capture{imageText(first, *png), ClipboardItemType::Image, png};
    if (const auto address = first.string(PasteboardType::Url); address && url::hasScheme(*address))
        return Capture{*address, ClipboardItemType::Url, std::nullopt};
    if (const auto address = first.string(PasteboardType::FileUrl)) {
        if (const auto path = url::filePath(*address))
            return captureFile(*path);
    }
    if (const auto string = first.string(PasteboardType::String); string && !string->isEmpty())
        return captureText(*string);
    return std::nullopt;
}
