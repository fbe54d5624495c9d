#include "ui/history/CombineText.h"

#include <gtest/gtest.h>

namespace
{

struct Contribution {
    const char *name;
    ClipboardItemType type;
    QByteArray content;
    QString expected;
};

class CombineTextOf : public ::testing::TestWithParam<Contribution>
{
};

TEST_P(CombineTextOf, IsWhatTheKindContributes)
{
    EXPECT_EQ(combine::textOf(GetParam().type, GetParam().content), GetParam().expected);
}

constexpr auto File = ClipboardItemType::File;
constexpr auto Image = ClipboardItemType::Image;
constexpr auto Text = ClipboardItemType::Text;

std::vector<Contribution> files()
{
    return {
        {"AFileAddressIsItsDecodedName", File, "file:///home/ann/My%20File.txt",
            QStringLiteral("My File.txt")},
        {"APathIsItsName", File, "/home/ann/My File.txt", QStringLiteral("My File.txt")},
        {"ANameAloneStays", File, "notes.txt", QStringLiteral("notes.txt")},
        {"EveryMarkOfAnAddressGoes", File, "file:///a/file://b file://c", QStringLiteral("b c")},
        {"MarksGoBeforeEscapesAreDecoded", File, "/a/file%3A%2F%2Fb", QStringLiteral("b")},
        {"AnAddressOfAHostIsItsName", File, "file://localhost/home/ann/a.txt", QStringLiteral("a.txt")},
        {"LowerCaseEscapesAreDecoded", File, "/a/%c3%a4%2e", QStringLiteral("ä.")},
        {"UpperCaseEscapesAreDecoded", File, "/a/%C3%A4%2E", QStringLiteral("ä.")},
        {"AnEscapedSlashDivides", File, "/a/b%2Fc", QStringLiteral("c")},
        {"AnEscapedPercentSignIsDecodedOnce", File, "/a/%2520", QStringLiteral("%20")},
        {"ABarePercentSignLeavesEverythingUndecoded", File, "/a/My%20100%.txt",
            QStringLiteral("My%20100%.txt")},
        {"APercentSignAtTheEndLeavesEverythingUndecoded", File, "/a/%20b%", QStringLiteral("%20b%")},
        {"HalfAnEscapeAtTheEndLeavesEverythingUndecoded", File, "/a/%20b%4", QStringLiteral("%20b%4")},
        {"AnEscapeThatIsNoNumberLeavesEverythingUndecoded", File, "/a/%20%4g", QStringLiteral("%20%4g")},
        {"AnEscapeWithASignIsNoNumber", File, "/a/%-1%+1", QStringLiteral("%-1%+1")},
        {"EscapesThatAreNoTextLeaveEverythingUndecoded", File, "/a/%20%FF", QStringLiteral("%20%FF")},
        {"AWholeEscapeAtTheEndIsDecoded", File, "/a/b%41", QStringLiteral("bA")},
        {"AFolderIsItsName", File, "file:///home/ann/", QStringLiteral("ann")},
        {"ManySlashesAtTheEndDoNotCount", File, "/home/ann///", QStringLiteral("ann")},
        {"TheRootIsASlash", File, "file:///", QStringLiteral("/")},
        {"NothingIsNothing", File, "", QString()},
        {"BlanksOfANameStay", File, "/a/ b ", QStringLiteral(" b ")},
    };
}

std::vector<Contribution> images()
{
    return {
        {"APathIsItsName", Image, "/home/ann/Pictures/harbour.png", QStringLiteral("harbour.png")},
        {"ANameStays", Image, "harbour.png", QStringLiteral("harbour.png")},
        {"ASizeStays", Image, "Image 40x30", QStringLiteral("Image 40x30")},
        {"EscapesStay", Image, "/a/My%20Picture.png", QStringLiteral("My%20Picture.png")},
        {"TheMarkOfAnAddressGoesWithThePath", Image, "file:///a/b.png", QStringLiteral("b.png")},
        {"BlanksStay", Image, " harbour ", QStringLiteral(" harbour ")},
        {"ASlashAtTheEndDoesNotCount", Image, "a/b/", QStringLiteral("b")},
        {"NothingIsNothing", Image, "", QString()},
    };
}

std::vector<Contribution> texts()
{
    return {
        {"BlankLinesAroundGo", Text, "\n\n  two\n\n lines \n\n", QStringLiteral("two\n\n lines")},
        {"EveryWhiteSpaceAroundGoes", Text, "\t\r\n\u00A0\u2003\u2028a\u2029\v\f", QStringLiteral("a")},
        {"WhiteSpaceAloneIsNothing", Text, " \n\t ", QString()},
        {"NothingIsNothing", Text, "", QString()},
        {"PathsAndEscapesStay", Text, "file:///a/b%20c", QStringLiteral("file:///a/b%20c")},
        {"AnAddressIsTrimmed", ClipboardItemType::Url, " https://example.org/a%20b/ ",
            QStringLiteral("https://example.org/a%20b/")},
        {"RichTextIsTrimmed", ClipboardItemType::RichText, "\nbold\n", QStringLiteral("bold")},
    };
}

std::string nameOf(const ::testing::TestParamInfo<Contribution> &tested)
{
    return tested.param.name;
}

INSTANTIATE_TEST_SUITE_P(OfAFile, CombineTextOf, ::testing::ValuesIn(files()), nameOf);
INSTANTIATE_TEST_SUITE_P(OfAnImage, CombineTextOf, ::testing::ValuesIn(images()), nameOf);
INSTANTIATE_TEST_SUITE_P(OfAText, CombineTextOf, ::testing::ValuesIn(texts()), nameOf);

// Numbers

TEST(CombineNumbered, EveryTextIsALineWithItsNumber)
{
    const QStringList texts{QStringLiteral("eggs"), QStringLiteral("oat milk"), QStringLiteral("two lemons")};
    EXPECT_EQ(combine::numbered(texts), QStringLiteral("1. eggs\n2. oat milk\n3. two lemons"));
}

TEST(CombineNumbered, NumbersGoOnBeyondNine)
{
    QStringList texts;
    for (int i = 0; i < 12; ++i)
        texts.append(QStringLiteral("%1").arg(QLatin1Char(char('a' + i))));
    EXPECT_TRUE(combine::numbered(texts).endsWith(QStringLiteral("\n9. i\n10. j\n11. k\n12. l")));
}

TEST(CombineNumbered, AnEmptyTextKeepsItsNumberAndLineFeedsInsideStay)
{
    const QStringList texts{QStringLiteral("a\nb"), QString(), QStringLiteral("c")};
    EXPECT_EQ(combine::numbered(texts), QStringLiteral("1. a\nb\n2. \n3. c"));
    EXPECT_EQ(combine::numbered({}), QString());
}

// The beginning

TEST(CombineBeginning, OfAShortTextIsTheWhole)
{
    EXPECT_EQ(combine::beginning(QStringLiteral("abc"), 3, 5), QStringLiteral("abc"));
    EXPECT_EQ(combine::beginning(QString(), 3, 5), QString());
    EXPECT_EQ(combine::beginning(QStringLiteral("a\nb\nc"), 9, 2), QStringLiteral("a\nb\nc"));
}

TEST(CombineBeginning, IsNoLongerThanAsked)
{
    EXPECT_EQ(combine::beginning(QStringLiteral("abcdef"), 3, 5), QStringLiteral("abc"));
}

TEST(CombineBeginning, EndsBeforeALineFeedTooMany)
{
    EXPECT_EQ(combine::beginning(QStringLiteral("a\nb\nc\nd"), 99, 2), QStringLiteral("a\nb\nc"));
    EXPECT_EQ(combine::beginning(QStringLiteral("\n\n\n\n"), 99, 2), QStringLiteral("\n\n"));
    EXPECT_EQ(combine::beginning(QStringLiteral("aaaa\nb\nc"), 3, 1), QStringLiteral("aaa"));
}

TEST(CombineBeginning, DoesNotDivideACodePoint)
{
    const QString butterflies = QStringLiteral("a🦋🦋");
    EXPECT_EQ(combine::beginning(butterflies, 5, 5), butterflies);
    EXPECT_EQ(combine::beginning(butterflies, 4, 5), QStringLiteral("a🦋"));
    EXPECT_EQ(combine::beginning(butterflies, 3, 5), QStringLiteral("a🦋"));
    EXPECT_EQ(combine::beginning(butterflies, 2, 5), QStringLiteral("a"));
}

} // namespace
