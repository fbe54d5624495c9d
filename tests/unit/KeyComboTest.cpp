#include "services/KeyCombo.h"

#include <gtest/gtest.h>

namespace
{

TEST(KeyCombo, TheStandardOneIsCommandShiftV)
{
    EXPECT_EQ(KeyCombo::standard(), (KeyCombo{9, 768}));
    EXPECT_EQ(KeyCombo::standard().displayString(), QStringLiteral("⌘ ⇧ V"));
}

TEST(KeyCombo, TheStoredFormDecodesToTheSame)
{
    EXPECT_EQ(KeyCombo::standard().encoded(), "{\"keyCode\":9,\"modifiers\":768}");
    EXPECT_EQ(KeyCombo::decoded(KeyCombo::standard().encoded()), KeyCombo::standard());
    const KeyCombo largest{0xffffffffU, 0xffffffffU};
    EXPECT_EQ(KeyCombo::decoded(largest.encoded()), largest);
}

TEST(KeyCombo, AMissingOrIllTypedMemberMakesItUndecodable)
{
    for (const auto *const json :
        {"", "{}", "[]", "{\"keyCode\":9}", "{\"modifiers\":768}", "{\"keyCode\":\"9\",\"modifiers\":768}",
            "{\"keyCode\":9.5,\"modifiers\":768}", "{\"keyCode\":-1,\"modifiers\":768}",
            "{\"keyCode\":4294967296,\"modifiers\":768}", "{\"keyCode\":true,\"modifiers\":768}",
            "{\"keyCode\":null,\"modifiers\":768}", "{\"keyCode\":9,\"modifiers\":768", "garbage"})
        EXPECT_FALSE(KeyCombo::decoded(json)) << json;
}

struct Displayed {
    const char *name;
    KeyCombo combo;
    QString text;
};

class DisplayString : public ::testing::TestWithParam<Displayed>
{
};

TEST_P(DisplayString, ListsTheModifiersAndTheKey)
{
    EXPECT_EQ(GetParam().combo.displayString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(KeyCombo, DisplayString,
    ::testing::Values(Displayed{"ControlOptionReturn", {36, 2048 | 4096}, QStringLiteral("⌥ ⌃ ↩")},
        Displayed{"AllFour", {49, 256 | 512 | 2048 | 4096}, QStringLiteral("⌘ ⇧ ⌥ ⌃ Space")},
        Displayed{"NoNameAndNoModifierIsEmpty", {122, 0}, QString()},
        Displayed{"NoNameShowsTheModifiers", {122, 256}, QStringLiteral("⌘")},
        Displayed{"OtherBitsAreNotShown", {0, 1024 | 256}, QStringLiteral("⌘ A")},
        Displayed{"BareKey", {126, 0}, QStringLiteral("↑")}),
    [](const auto &tested) { return std::string(tested.param.name); });

TEST(KeyCodeToString, NamesFortySixKeys)
{
    const std::vector<quint32> letters{
        0, 11, 8, 2, 14, 3, 5, 4, 34, 38, 40, 37, 46, 45, 31, 35, 12, 15, 1, 17, 32, 9, 13, 7, 16, 6};
    for (size_t i = 0; i < letters.size(); ++i)
        EXPECT_EQ(KeyCombo::keyCodeToString(letters[i]), QString(QChar(u'A' + static_cast<char16_t>(i))));
    const std::vector<quint32> digits{29, 18, 19, 20, 21, 23, 22, 26, 28, 25};
    for (size_t i = 0; i < digits.size(); ++i)
        EXPECT_EQ(KeyCombo::keyCodeToString(digits[i]), QString::number(i));
    int named = 0;
    for (quint32 code = 0; code < 1000; ++code)
        named += KeyCombo::keyCodeToString(code) ? 1 : 0;
    EXPECT_EQ(named, 46);
}

TEST(KeyCodeToString, NamesNoFunctionKeysPunctuationOrKeypad)
{
    for (const quint32 code : {122U, 120U, 27U, 24U, 33U, 43U, 82U, 76U})
        EXPECT_FALSE(KeyCombo::keyCodeToString(code)) << code;
}

} // namespace
