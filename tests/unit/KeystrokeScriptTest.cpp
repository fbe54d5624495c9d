#include "platform/linux/KeystrokeScript.h"

#include <gtest/gtest.h>

namespace
{

std::optional<Keystroke> read(const char *source)
{
    return keystrokeFromScript(QString::fromUtf8(source));
}

/// A script with this as its second line.
std::optional<Keystroke> readPress(const char *line)
{
    return keystrokeFromScript(
        QStringLiteral("tell application \"System Events\"\n    %1\nend tell").arg(QString::fromUtf8(line)));
}

/// The held keys by their first letters: "cs" for Command and Shift.
QString heldKeys(const Keystroke &keystroke)
{
    QString letters;
    if (keystroke.isCommandDown)
        letters += QLatin1Char('c');
    if (keystroke.isShiftDown)
        letters += QLatin1Char('s');
    if (keystroke.isOptionDown)
        letters += QLatin1Char('o');
    if (keystroke.isControlDown)
        letters += QLatin1Char('n');
    return letters;
}

struct Understood {
    const char *line;
    char16_t character;
    const char *held;
};

TEST(KeystrokeScript, UnderstandsACharacterWithItsModifiers)
{
    const Understood table[] = {
        {R"(keystroke "v" using command down)", u'v', "c"},
        {R"(keystroke "v" using {command down})", u'v', "c"},
        {R"(keystroke "v" using {command down, shift down})", u'v', "cs"},
        {R"(keystroke "V" using {option down, control down})", u'V', "on"},
        {R"(keystroke "v" using { shift  down ,command down })", u'v', "cs"},
        {R"(keystroke "v" using {command down, command down})", u'v', "c"},
        {R"(keystroke  "v"  using  control  down)", u'v', "n"},
        {R"(keystroke "x")", u'x', ""},
        {R"(keystroke " " using command down)", u' ', "c"},
        {R"(keystroke "\"" using command down)", u'"', "c"},
        {R"(keystroke "\\" using command down)", u'\\', "c"},
        {"keystroke \"\xc3\xa9\" using command down", u'\u00e9', "c"},
    };
    for (const Understood &row : table) {
        const auto keystroke = readPress(row.line);
        ASSERT_TRUE(keystroke) << row.line;
        EXPECT_EQ(keystroke->character, QChar(row.character)) << row.line;
        EXPECT_EQ(heldKeys(*keystroke), QString::fromLatin1(row.held)) << row.line;
    }
}

TEST(KeystrokeScript, UnderstandsNoOtherLine)
{
    for (const char *const line : {
             "",
             "keystroke",
             "keystroke v using command down",
             R"(keystroke "" using command down)",
             R"(keystroke "vv" using command down)",
             R"(keystroke "\v" using command down)",
             R"(keystroke """ using command down)",
             R"(keystroke "v" using)",
             R"(keystroke "v" using {})",
             R"(keystroke "v" using command)",
             R"(keystroke "v" using commanddown)",
             R"(keystroke "v" using super down)",
             R"(keystroke "v" using command down, shift down)",
             R"(keystroke "v" using {command down shift down})",
             R"(keystroke "v" using {command down, })",
             R"(keystroke "v" using {command down)",
             R"(keystroke "v" using {command down}})",
             R"(keystroke "v"using command down)",
             R"(keystroke "v" command down)",
             R"(key code 9 using command down)",
             R"(keystroke "v" using command down -- paste)",
         })
        EXPECT_FALSE(readPress(line)) << line;
}

TEST(KeystrokeScript, UnderstandsThreeLinesAndNoOthers)
{
    const char *const press = "keystroke \"v\" using command down\n";
    EXPECT_TRUE(read(("tell application \"System Events\"\n" + std::string(press) + "end tell").c_str()));
    EXPECT_TRUE(
        read(("\n\ttell  application  \"System Events\" \r\n" + std::string(press) + "end  tell\n").c_str()));
    EXPECT_FALSE(read(""));
    EXPECT_FALSE(read(press));
    EXPECT_FALSE(read(("tell application \"Finder\"\n" + std::string(press) + "end tell").c_str()));
    EXPECT_FALSE(read(("tell application \"System Events\"\n" + std::string(press) + "end").c_str()));
    EXPECT_FALSE(
        read(("tell application \"System Events\"\n" + std::string(press) + press + "end tell").c_str()));
    EXPECT_FALSE(read("tell application \"System Events\" to keystroke \"v\" using command down"));
}

} // namespace
