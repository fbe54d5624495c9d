#include "store/ClipboardItemType.h"

namespace
{

struct Row {
    ClipboardItemType type;
    const char *storedText;
    const char *typeIcon;
    const char *categoryName;
};

constexpr std::array Rows{
    Row{ClipboardItemType::Text, "text", "doc.text", "Text"},
    Row{ClipboardItemType::Image, "image", "photo", "Image"},
    Row{ClipboardItemType::Url, "url", "link", "URL"},
    Row{ClipboardItemType::File, "file", "doc", "File"},
    Row{ClipboardItemType::RichText, "richText", "doc.richtext", "Rich Text"},
};

const Row &rowOf(ClipboardItemType type)
{
    return Rows[static_cast<size_t>(type)];
}

} // namespace

QByteArrayView storedText(ClipboardItemType type)
{
    return rowOf(type).storedText;
}

std::optional<ClipboardItemType> clipboardItemType(QByteArrayView storedText)
{
    for (const Row &row : Rows) {
        if (storedText == QByteArrayView(row.storedText))
            return row.type;
    }
    return std::nullopt;
}

QString typeIcon(ClipboardItemType type)
{
    return QString::fromLatin1(rowOf(type).typeIcon);
}

QString defaultCategoryName(ClipboardItemType type)
{
    return QString::fromLatin1(rowOf(type).categoryName);
}
