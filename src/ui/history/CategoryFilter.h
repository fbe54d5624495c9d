#pragma once

#include "store/ClipCategory.h"
#include "store/ClipboardItem.h"

/// The kind of entry that a category of this name stands for: "Text", "URL", "Image", "File", "Rich Text",
/// exactly so written, whoever made the category.
std::optional<ClipboardItemType> typeOfCategory(const QString &name);

/// Whether the entry is shown under the category: it is assigned to it, or is assigned to none and is of the
/// kind that the category stands for.
bool isUnder(const ClipboardItem &item, const ClipCategory &category);
