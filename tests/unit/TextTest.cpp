#include "base/Text.h"

#include <gtest/gtest.h>
#include <unicode/brkiter.h>
#include <unicode/unistr.h>

#include <array>
#include <random>

namespace
{

struct Counted {
    const char *name;
    QByteArray utf8;
    qint64 characters;
};

class CharacterCount : public ::testing::TestWithParam<Counted>
{
};

TEST_P(CharacterCount, CountsUserPerceivedCharacters)
{
    EXPECT_EQ(text::characterCount(GetParam().utf8), GetParam().characters);
}

INSTANTIATE_TEST_SUITE_P(Text, CharacterCount,
    ::testing::Values(Counted{"Empty", "", 0}, Counted{"Ascii", "hello", 5},
        Counted{"CrLfIsOne", "a\r\nb", 3}, Counted{"LfCrAreTwo", "\n\r", 2},
        Counted{"TwoCrLf", "\r\n\r\n", 2}, Counted{"PrecomposedLetter", "é", 1},
        Counted{"CombiningMark", "e\u0301", 1}, Counted{"MarkAfterPlainText", "cafe\u0301s", 5},
        Counted{"MarkAfterLineBreakStandsAlone", "a\n\u0301", 3}, Counted{"MarkAfterCrLf", "\r\n\u0301b", 3},
        Counted{"Flag", "🇦🇹", 1}, Counted{"TwoFlags", "🇦🇹🇫🇷", 2},
        Counted{"Family", "👨\u200d👩\u200d👧\u200d👦", 1}, Counted{"SkinTone", "👍🏽", 1},
        Counted{"KeyCap", "1\ufe0f\u20e3", 1}, Counted{"CopyrightAsEmoji", "©\ufe0f", 1},
        Counted{"JoinedPictographs", "©\u200d®", 1}, Counted{"Hangul", "한글", 2},
        Counted{"HangulJamo", "\u1112\u1161\u11ab", 1}, Counted{"Ideographs", "漢字です", 4},
        Counted{"KanaWithVoicing", "か\u3099", 1}, Counted{"Cyrillic", "Привет", 6}, Counted{"Thai", "กำ", 1},
        Counted{"Devanagari", "नि", 1},
        Counted{"SoftHyphen",
            "a\u00ad"
            "b",
            3},
        Counted{"MixedEnds", "a🇦🇹b", 3}, Counted{"Nul", QByteArray("a\0b", 3), 3}),
    [](const auto &tested) { return std::string(tested.param.name); });

TEST(CharacterCountAtScale, MarksAcrossManyPlainStretchesAllCount)
{
    QByteArray many;
    for (int i = 0; i < 10000; ++i)
        many += "plain e\u0301 漢字 🇦🇹\r\n";
    EXPECT_EQ(text::characterCount(many), 10000 * 13);
}

TEST(CharacterCountAtScale, AgreesWithTheFullRulesOnAnyMixture)
{
    constexpr std::array Pieces{"a", "plain text ", "\r", "\n", "\r\n", "é", "e", "\u0301", "\u200d", "👩",
        "🇦", "🇹", "漢", "か", "、", "カ", "\u302a", "가", "한글", "\u11a8", "\ud7b0", "〰", "\u3099", "ж",
        "\u0483", "\u1112", "\u1161", "한", "©", "\ufe0f", "ก", "\u0e33", "\u00ad"};
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> rules(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    std::mt19937 random(20260301); // NOLINT: the same texts each time
    for (int round = 0; round < 3000; ++round) {
        QByteArray mixture;
        for (auto length = random() % 40; length > 0; --length)
            mixture += Pieces[random() % Pieces.size()];
        const auto utf16 = icu::UnicodeString::fromUTF8(mixture.toStdString());
        rules->setText(utf16);
        qint64 expected = 0;
        while (rules->next() != icu::BreakIterator::DONE)
            ++expected;
        ASSERT_EQ(text::characterCount(mixture), expected) << mixture.toHex().constData();
    }
}

TEST(Trimmed, DropsUnicodeWhiteSpaceAtBothEnds)
{
    EXPECT_EQ(text::trimmed(" \t\r\n a b \u00a0\u2003\u3000").toByteArray(), "a b");
    EXPECT_EQ(text::trimmed("\u2028x\u0085").toByteArray(), "x");
}

TEST(Trimmed, OfNothingButWhiteSpaceIsEmpty)
{
    EXPECT_TRUE(text::trimmed(" \n\t\u2003").isEmpty());
    EXPECT_TRUE(text::trimmed("").isEmpty());
}

TEST(Trimmed, LeavesTextWithoutMarginsAlone)
{
    EXPECT_EQ(text::trimmed("ünï").toByteArray(), "ünï");
}

TEST(WellFormed, SharesTheBytesOfWellFormedText)
{
    const QByteArray bytes = "plain ünï 🇦🇹 and more than eight bytes";
    EXPECT_EQ(text::wellFormed(bytes).constData(), bytes.constData());
}

TEST(WellFormed, ReplacesMalformedSequencesAndKeepsTheRest)
{
    EXPECT_EQ(text::wellFormed("abcdefgh\xff"
                               "ij"),
        "abcdefgh\ufffdij");
    EXPECT_EQ(text::wellFormed("caf\xe9!"), "caf\ufffd!");
    EXPECT_TRUE(text::wellFormed("\xed\xa0\x80").contains("\ufffd"));
}

TEST(WellFormed, KeepsNulBytes)
{
    EXPECT_EQ(text::wellFormed(QByteArray("a\0b", 3)), QByteArray("a\0b", 3));
}

TEST(Prefix, CutsBetweenUserPerceivedCharacters)
{
    EXPECT_EQ(text::prefix("e\u0301e\u0301e\u0301", 2), QStringLiteral("e\u0301e\u0301"));
    EXPECT_EQ(text::prefix("ab", 5), QStringLiteral("ab"));
    EXPECT_EQ(text::prefix("", 5), QString());
}

} // namespace
