#include "store/ClipCategory.h"
#include "store/CategoryColors.h"
#include "store/ClipboardItemType.h"

#include "fakes/FixedClock.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

TEST(ClipCategory, CreationSetsAFreshIdAndTheCurrentTime)
{
    const FixedClock clock;
    const ClipCategory a(
        QStringLiteral("Work"), QStringLiteral("#E84855"), QStringLiteral("tag"), 7, false, clock);
    const ClipCategory b(
        QStringLiteral("Work"), QStringLiteral("#E84855"), QStringLiteral("tag"), 7, false, clock);
    EXPECT_FALSE(a.id().isNull());
    EXPECT_NE(a.id(), b.id());
    EXPECT_EQ(a.createdAt(), clock.now());
    EXPECT_EQ(a.name(), QStringLiteral("Work"));
    EXPECT_EQ(a.sortOrder(), 7);
    EXPECT_FALSE(a.isDefault());
}

TEST(ClipCategory, DefaultsAreOneForEachKindWithTheKindsSymbol)
{
    const auto &defaults = ClipCategory::defaults();
    ASSERT_EQ(defaults.size(), 5U);
    const std::vector<std::pair<ClipboardItemType, const char *>> expected{
        {ClipboardItemType::Text, "#3F78F3"}, {ClipboardItemType::Url, "#33B873"},
        {ClipboardItemType::Image, "#EB8C33"}, {ClipboardItemType::File, "#808594"},
        {ClipboardItemType::RichText, "#9A4DD8"}};
    for (size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(defaults[i].name, defaultCategoryName(expected[i].first));
        EXPECT_EQ(defaults[i].icon, typeIcon(expected[i].first));
        EXPECT_EQ(defaults[i].colorHex, QLatin1String(expected[i].second));
    }
}

TEST(ClipCategory, DefaultColoursAreOfThePalette)
{
    const auto &palette = CategoryColors::palette();
    for (const auto &row : ClipCategory::defaults()) {
        EXPECT_TRUE(std::any_of(
            palette.begin(), palette.end(), [&row](const auto &entry) { return entry.hex == row.colorHex; }));
    }
}

TEST(ClipboardItemType, StoredTextsAndSymbolsAreAsTabled)
{
    const std::vector<std::pair<const char *, const char *>> expected{{"text", "doc.text"},
        {"image", "photo"}, {"url", "link"}, {"file", "doc"}, {"richText", "doc.richtext"}};
    ASSERT_EQ(AllClipboardItemTypes.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
        const ClipboardItemType type = AllClipboardItemTypes[i];
        EXPECT_EQ(storedText(type), QByteArrayView(expected[i].first));
        EXPECT_EQ(typeIcon(type), QLatin1String(expected[i].second));
        EXPECT_EQ(clipboardItemType(expected[i].first), type);
    }
}

TEST(ClipboardItemType, OnlyTheExactStoredTextsMatch)
{
    for (const auto *const text : {"Text", "TEXT", "", "richtext", "text ", "pdf"})
        EXPECT_FALSE(clipboardItemType(text)) << text;
}

} // namespace
