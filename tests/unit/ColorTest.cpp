#include "store/Color.h"
#include "store/CategoryColors.h"
#include "store/ClipCategory.h"

#include <gtest/gtest.h>

namespace
{

const Color Blue{63 / 255.0, 120 / 255.0, 243 / 255.0, 1};

TEST(ColorHex, PrefixCaseAndSurroundingSpaceDoNotMatter)
{
    EXPECT_EQ(Color::hex(u"#3F78F3"), Blue);
    EXPECT_EQ(Color::hex(u"3F78F3"), Blue);
    EXPECT_EQ(Color::hex(u"  #3f78f3 \n"), Blue);
}

TEST(ColorHex, EveryHashIsRemoved)
{
    EXPECT_EQ(Color::hex(u"#3F#78F3"), Blue);
    EXPECT_EQ(Color::hex(u"3F78F3##"), Blue);
}

TEST(ColorHex, OtherLengthsGiveNoColour)
{
    for (const auto *const text : {u"#FFF", u"#3F78F3FF", u"", u"#", u"3F78F"})
        EXPECT_FALSE(Color::hex(text)) << QString::fromUtf16(text).toStdString();
}

TEST(ColorHex, OtherCharactersGiveNoColour)
{
    for (const auto *const text : {u"ZZZZZZ", u"3F 8F3", u"-F78F3", u"0x78F3", u"３F78F3"})
        EXPECT_FALSE(Color::hex(text)) << QString::fromUtf16(text).toStdString();
}

TEST(ColorHex, TakesTheSignThatAnIntegerParserTakes)
{
    EXPECT_EQ(Color::hex(u"+F78F3"), (Color{0x0f / 255.0, 0x78 / 255.0, 0xf3 / 255.0, 1}));
}

TEST(CategoryColor, FallsBackToBlueForATextThatDoesNotParse)
{
    for (const auto &text :
        {QStringLiteral("#FFF"), QStringLiteral("#3F78F3FF"), QStringLiteral("nonsense")}) {
        const ClipCategory category(QStringLiteral("x"), text, QStringLiteral("doc"), 0, false);
        EXPECT_EQ(category.color(), Color::systemBlue());
    }
}

TEST(CategoryPalette, HasTwelveColoursInOrder)
{
    const std::vector<std::pair<const char *, const char *>> expected{{"Blue", "#3F78F3"},
        {"Green", "#33B873"}, {"Orange", "#EB8C33"}, {"Purple", "#9A4DD8"}, {"Red", "#E84855"},
        {"Pink", "#E84899"}, {"Teal", "#2DB5AA"}, {"Yellow", "#E8B833"}, {"Indigo", "#5856D6"},
        {"Brown", "#A0845C"}, {"Mint", "#66D4A8"}, {"Steel", "#808594"}};
    const auto &palette = CategoryColors::palette();
    ASSERT_EQ(palette.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(palette[i].name, QLatin1String(expected[i].first));
        EXPECT_EQ(palette[i].hex, QLatin1String(expected[i].second));
        EXPECT_TRUE(Color::hex(palette[i].hex));
    }
}

} // namespace
