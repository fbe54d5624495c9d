#include "ui/history/CategoryFilter.h"

#include <algorithm>
#include <array>

namespace
{

struct TypeCategory {
    QLatin1String name;
    ClipboardItemType type;
};

constexpr std::array TypeCategories{
    TypeCategory{QLatin1String("Text"), ClipboardItemType::Text},
    TypeCategory{QLatin1String("URL"), ClipboardItemType::Url},
    TypeCategory{QLatin1String("Image"), ClipboardItemType::Image},
    TypeCategory{QLatin1String("File"), ClipboardItemType::File},
    TypeCategory{QLatin1String("Rich Text"), ClipboardItemType::RichText},
};

} // namespace

std::optional<ClipboardItemType> typeOfCategory(const QString &name)
{
    const auto found = std::ranges::find(TypeCategories, name, &TypeCategory::name);
    return found == TypeCategories.end() ? std::nullopt : std::optional(found->type);
}

bool isUnder(const ClipboardItem &item, const ClipCategory &category)
{
    if (item.categoryId())
        return item.categoryId() == category.id();
    return typeOfCategory(category.name()) == item.type();
}
