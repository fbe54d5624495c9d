#pragma once

#include "store/ClipboardItemType.h"

#include <QByteArray>

#include <optional>

class Pasteboard;

/// What a copy becomes as an entry.
struct Capture {
    QByteArray content; ///< well-formed UTF-8
    ClipboardItemType type = ClipboardItemType::Text;
    std::optional<QByteArray> imageData; ///< the bytes of an image file
};

/// Decides what to keep of the pasteboard's current content: an image, else an address, else a file, else a
/// text; nothing for white space alone and for anything else. Only the first item counts. Reads the file when
/// it is an image file; one that cannot be read is kept as a file.
std::optional<Capture> captureFrom(const Pasteboard &pasteboard);
