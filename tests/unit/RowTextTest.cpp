#include "ui/history/RowText.h"

#include <gtest/gtest.h>

namespace
{

using rowtext::preview;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

TEST(RowText, APreviewOfATextHasNoWhiteSpaceAroundIt)
{
    EXPECT_EQ(preview("\n \t two\n lines \xE2\x80\xA9\n", ClipboardItemType::Text), text("two\n lines"));
    EXPECT_EQ(preview("  rich  ", ClipboardItemType::RichText), text("rich"));
    EXPECT_EQ(preview(" \n\t ", ClipboardItemType::Text), QString());
}

TEST(RowText, AnAddressIsShownAsItIs)
{
    EXPECT_EQ(preview(" https://a.example/%20 ", ClipboardItemType::Url), text(" https://a.example/%20 "));
}

struct ControlCase {
    const char *content;
    const char *shown;
};

class Controls : public ::testing::TestWithParam<ControlCase>
{
};

TEST_P(Controls, AreVisibleOrGone)
{
    EXPECT_EQ(preview(GetParam().content, ClipboardItemType::Text), text(GetParam().shown));
}

INSTANTIATE_TEST_SUITE_P(Table, Controls,
    ::testing::Values(ControlCase{"a\tb", "a\tb"}, ControlCase{"a\nb", "a\nb"}, ControlCase{"a\r\nb", "a\nb"},
        ControlCase{"a\rb", "a\nb"},
        ControlCase{"a\xE2\x80\xA8"
                    "b",
            "a\nb"},
        ControlCase{"a\xC2\x85"
                    "b",
            "a\nb"},
        ControlCase{"\x01\x1b[31mred\x7f", "␁␛[31mred␡"},
        ControlCase{"a\x0c"
                    "b",
            "a␌b"},
        ControlCase{"a\xC2\x9B"
                    "b",
            "a b"},
        ControlCase{"\xE2\x80\xAE"
                    "abc\xE2\x80\xAC",
            "abc"},
        ControlCase{"a\xE2\x81\xA6"
                    "b\xE2\x81\xA9",
            "ab"},
        ControlCase{"a\xE2\x80\x8F"
                    "b",
            "a\xE2\x80\x8F"
            "b"}));

TEST(RowText, AZeroByteIsShownAndEndsNothing)
{
    EXPECT_EQ(preview(QByteArray("a\0b", 3), ClipboardItemType::Text), text("a␀b"));
}

TEST(RowText, OfManyLinesFiveAreLeftSoThatTheFourthEndsWithAnEllipsis)
{
    const QByteArray lines = QByteArray("line\n").repeated(10'000);
    EXPECT_EQ(preview(lines, ClipboardItemType::Text), text("line\nline\nline\nline\nline"));
    EXPECT_EQ(preview("1\n2\n3\n4", ClipboardItemType::Text), text("1\n2\n3\n4"));
}

TEST(RowText, OfOneLongLineLittleMoreIsLeftThanARowHolds)
{
    EXPECT_EQ(preview(QByteArray(5'000'000, 'x'), ClipboardItemType::Text).size(), 600);
    EXPECT_EQ(preview(QByteArray(5'000'000, 'x'), ClipboardItemType::Url).size(), 600);
}

TEST(RowText, ALetterWithThousandsOfMarksIsCut)
{
    const QByteArray tower = "Z" + QByteArray("\xCC\x81").repeated(5000);
    EXPECT_LE(preview(tower, ClipboardItemType::Text).size(), 2400);
}

TEST(RowText, ACutLeavesNoHalfOfACharacter)
{
    const QString shown = preview(QByteArray("\xF0\x9F\x98\x80").repeated(5000), ClipboardItemType::Text);
    EXPECT_EQ(shown, QString::fromUtf8("\xF0\x9F\x98\x80").repeated(600));
    // 16 KiB of three bytes each end within a character.
    const QString euros = rowtext::filePath(QByteArray("\xE2\x82\xAC").repeated(20'000));
    EXPECT_EQ(euros.count(QChar(0x20AC)), euros.size());
}

struct PathCase {
    const char *content;
    const char *path;
};

class FilePaths : public ::testing::TestWithParam<PathCase>
{
};

TEST_P(FilePaths, AreDecodedOrStayAsTheyAre)
{
    EXPECT_EQ(rowtext::filePath(GetParam().content), text(GetParam().path));
}

INSTANTIATE_TEST_SUITE_P(Table, FilePaths,
    ::testing::Values(PathCase{"/home/ann/report.pdf", "/home/ann/report.pdf"},
        PathCase{"file:///home/ann/a%20b.txt", "/home/ann/a b.txt"}, PathCase{"/a/file:///b", "/a//b"},
        PathCase{"/a%2Fb%C3%A9", "/a/bé"},
        // Not a percent escape, or not a text: nothing is decoded.
        PathCase{"/100%", "/100%"}, PathCase{"/a%2", "/a%2"}, PathCase{"/a%zz%20b", "/a%zz%20b"},
        PathCase{"/a%FFb%20c", "/a%FFb%20c"}, PathCase{"", ""}));

struct PartsCase {
    const char *path;
    const char *name;
    const char *folder;
};

class Parts : public ::testing::TestWithParam<PartsCase>
{
};

TEST_P(Parts, AreTheLastComponentAndWhatIsBeforeIt)
{
    const auto parts = rowtext::parts(text(GetParam().path));
    EXPECT_EQ(parts.name, text(GetParam().name));
    EXPECT_EQ(parts.folder, text(GetParam().folder));
}

INSTANTIATE_TEST_SUITE_P(Table, Parts,
    ::testing::Values(PartsCase{"/home/ann/report.pdf", "report.pdf", "/home/ann"},
        PartsCase{"/home/ann/", "ann", "/home"}, PartsCase{"/report.pdf", "report.pdf", "/"},
        PartsCase{"a//b", "b", "a"}, PartsCase{"report.pdf", "report.pdf", ""}, PartsCase{"/", "/", "/"},
        PartsCase{"///", "/", "/"}, PartsCase{"", "", ""}, PartsCase{"a/", "a", ""},
        PartsCase{"/a/new\nline\tand \xE2\x80\xAE"
                  "fdp",
            "new␊line␉and fdp", "/a"}));

TEST(RowText, ALongNameLosesItsMiddleAndKeepsItsEnding)
{
    const auto parts = rowtext::parts(QLatin1Char('/') + QString(4000, QLatin1Char('a')) + text(".pdf"));
    EXPECT_EQ(parts.name.size(), 301);
    EXPECT_TRUE(parts.name.endsWith(text("a.pdf")));
    EXPECT_TRUE(parts.name.contains(QChar(0x2026)));
}

TEST(RowText, AnImageWithoutAPathIsNamedByItsContent)
{
    EXPECT_EQ(rowtext::imageParts("Image (12 KB)").name, text("Image (12 KB)"));
    EXPECT_EQ(rowtext::imageParts("Image (12 KB)").folder, QString());
    EXPECT_EQ(rowtext::imageParts("/home/ann/a%20b.png").name, text("a%20b.png"));
    EXPECT_EQ(rowtext::imageParts("/home/ann/a%20b.png").folder, text("/home/ann"));
}

TEST(RowText, ANameIsOneLineAndNotEndless)
{
    EXPECT_EQ(rowtext::oneLine(text("a\nb\xE2\x80\xAE")), text("a␊b"));
    EXPECT_EQ(rowtext::oneLine(QString(500, QLatin1Char('n'))).size(), 300);
}

TEST(RowText, ASizeIsInWholeKilobytesRoundedDown)
{
    EXPECT_EQ(rowtext::sizeText(0), text("0 KB"));
    EXPECT_EQ(rowtext::sizeText(1023), text("0 KB"));
    EXPECT_EQ(rowtext::sizeText(1024), text("1 KB"));
    EXPECT_EQ(rowtext::sizeText(12 * 1024 + 1023), text("12 KB"));
}

TEST(RowText, APixelSizeIsWidthTimesHeight)
{
    EXPECT_EQ(rowtext::pixelSizeText({1920, 1080}), text("1920×1080"));
    EXPECT_EQ(rowtext::pixelSizeText(QSize()), QString());
}

} // namespace
