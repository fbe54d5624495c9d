#pragma once

#include <QByteArrayView>
#include <QString>

#include <array>
#include <optional>

/// The closed set of kinds of entry. Stored as text.
enum class ClipboardItemType : quint8 { Text, Image, Url, File, RichText };

/// Every kind, in the order in which lists show them.
inline constexpr std::array AllClipboardItemTypes{ClipboardItemType::Text, ClipboardItemType::Image,
    ClipboardItemType::Url, ClipboardItemType::File, ClipboardItemType::RichText};

/// The text that a kind is stored as: "text", "image", "url", "file", "richText".
QByteArrayView storedText(ClipboardItemType type);

/// The kind of a stored text; exact and case-sensitive, nothing for any other text.
std::optional<ClipboardItemType> clipboardItemType(QByteArrayView storedText);

/// The name of the symbol that stands for a kind: "doc.text".
QString typeIcon(ClipboardItemType type);

/// The name of the default category of a kind: "Text", "Rich Text".
QString defaultCategoryName(ClipboardItemType type);
