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
    /// Of a `File` with an image's name: its path. Once the file has been read, `withImageFile` decides what
    /// it is.
    std::optional<QByteArray> imageFile;
};

/// Decides what to keep of the pasteboard's current content: an image, else an address, else a file, else a
/// text; nothing for white space alone and for anything else. Only the first item counts.
std::optional<Capture> captureFrom(const Pasteboard &pasteboard);

/// The capture of a copied image file, with the file's bytes unchanged; without bytes it stays a file.
Capture withImageFile(Capture capture, std::optional<QByteArray> bytes);
