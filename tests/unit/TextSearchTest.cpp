#include "base/TextSearch.h"

#include "base/PieceSearch.h"

#include <QLocale>

#include <gtest/gtest.h>
#include <unicode/brkiter.h>
#include <unicode/normalizer2.h>
#include <unicode/unistr.h>

#include <array>
#include <random>
#include <set>

namespace
{

using text::CaseRule;

bool contains(const QByteArray &text, const QByteArray &sought, CaseRule rule = CaseRule::Common)
{
    return text::localizedCaseInsensitiveContains(text, text::SearchPattern(QString::fromUtf8(sought), rule));
}

struct Sought {
    const char *name;
    QByteArray text;
    QByteArray sought;
    bool isFound;
    CaseRule rule = CaseRule::Common;
};

class Search : public ::testing::TestWithParam<Sought>
{
};

TEST_P(Search, Finds)
{
    EXPECT_EQ(contains(GetParam().text, GetParam().sought, GetParam().rule), GetParam().isFound);
}

const auto NameOf = [](const auto &tested) { return std::string(tested.param.name); };

INSTANTIATE_TEST_SUITE_P(Plain, Search,
    ::testing::Values(Sought{"Itself", "lark", "lark", true}, Sought{"Beginning", "larkspur", "lark", true},
        Sought{"End", "skylark", "lark", true}, Sought{"NotThere", "larch", "lark", false},
        Sought{"LongerThanText", "lar", "lark", false}, Sought{"InNothing", "", "l", false},
        Sought{"UpperForLower", "LARK", "lark", true}, Sought{"LowerForUpper", "lark", "LARK", true},
        Sought{"BlankCounts", "a lark", "alark", false}, Sought{"OneBlank", "a lark", " ", true},
        Sought{"SignIsNoLetterInAnotherCase", "a{b", "a[b", false}, Sought{"AtIsNoBacktick", "@", "`", false},
        Sought{"Digits", "call 0815 now", "0815", true},
        Sought{"AfterABrokenStart", "lalalark", "lalark", true},
        Sought{"FarIn", QByteArray(1000, 'a') + "b", "ab", true},
        Sought{"LastByteOfABlock", QByteArray(15, 'x') + "y", "Y", true},
        Sought{"AcrossBlocks", QByteArray(14, 'x') + "lark" + QByteArray(30, 'x'), "LARK", true},
        Sought{"OverLineBreak", "one\ntwo", "e\nt", true}, Sought{"Nul", QByteArray("a\0b", 3), "b", true},
        Sought{"PartOfCrLf", "a\r\nb", "a\r", false}, Sought{"CrLf", "a\r\nb", "A\r\nB", true}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(Letters, Search,
    ::testing::Values(Sought{"Umlaut", "GRÜN", "grün", true}, Sought{"AccentCounts", "grün", "grun", false},
        Sought{"AccentCountsTheOtherWay", "grun", "grün", false},
        Sought{"Cyrillic", "ПРИВЕТ", "привет", true}, Sought{"Greek", "ΚΌΣΜΕ", "κόσμε", true},
        Sought{"FinalSigma", "ΟΔΟΣ", "οδός", false},
        Sought{"FinalSigmaInCapitals", "ΟΔΥΣΣΕΥΣ", "οδυσσευς", true},
        Sought{"FinalSigmaForTheOther", "οδυσσευς", "οδυσσευσ", true},
        Sought{"SharpSForTwo", "MASSE", "maße", true}, Sought{"TwoForSharpS", "Straße", "STRASSE", true},
        Sought{"CapitalSharpS", "STRAẞE", "straße", true}, Sought{"HalfASharpS", "groß", "gros", false},
        Sought{"OtherHalfOfASharpS", "ßa", "sa", false}, Sought{"BothHalves", "ßa", "ssa", true},
        Sought{"SAfterAHalf", "ßs", "s", true}, Sought{"Ligature", "o\ufb03ce", "OFFICE", true},
        Sought{"HalfALigature", "\ufb01n", "f", false}, Sought{"Armenian", "\u0587", "\u0565\u0582", true},
        Sought{"Han", "漢字を書く", "字を", true}, Sought{"FullWidth", "ＡＢＣ", "ａｂｃ", true},
        Sought{"FullWidthIsNotAscii", "ＡＢＣ", "abc", false}, Sought{"Kelvin", "300 \u212a", "300 k", true},
        Sought{"Cherokee", "Ꭰ", "ꭰ", true}, Sought{"Deseret", "𐐀", "𐐨", true}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(Equivalence, Search,
    ::testing::Values(Sought{"DecomposedText", "cafe\u0301", "CAFÉ", true},
        Sought{"DecomposedPattern", "CAFÉ", "cafe\u0301", true},
        Sought{"OrderOfMarks", "q\u0307\u0323", "Q\u0323\u0307", true},
        Sought{"LetterWithoutItsMark", "cafe\u0301", "cafe", false},
        Sought{"LetterWithoutAMarkThatDoesNotCompose", "q\u0307", "q", false},
        Sought{"MarkAlone", "cafe\u0301", "\u0301", false},
        Sought{"LetterBeforeIt", "cafe\u0301", "caf", true}, Sought{"AfterIt", "e\u0301s", "S", true},
        Sought{"Angstrom", "5 \u212b", "5 å", true}, Sought{"Hangul", "한글", "\u1112\u1161\u11ab", true},
        Sought{"SyllableWithoutItsEnd", "한", "\u1112\u1161", false},
        Sought{"IotaBelow", "\u1fb3", "Α\u0345", true},
        Sought{"CompatibilityIsNoEquivalence", "x\u00b2", "x2", false}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(Characters, Search,
    ::testing::Values(Sought{"Family", "👨\u200d👩\u200d👧", "👩", false}, Sought{"Woman", "a 👩 b", "👩", true},
        Sought{"SkinTone", "👍🏽", "👍", false}, Sought{"Flag", "🇦🇹🇫🇷", "🇫🇷", true},
        Sought{"FlagAcrossTwo", "🇺🇸🇩🇪", "🇸🇩", false}, Sought{"KeyCap", "1\ufe0f\u20e3", "1", false},
        Sought{"ThaiWithoutVowel", "กิน", "ก", false}, Sought{"Thai", "กิน", "กิ", true},
        Sought{"LetterAfterEmoji", "👍ok", "OK", true}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(Turkish, Search,
    ::testing::Values(Sought{"CapitalIIsDotless", "ISI", "ısı", true, CaseRule::Turkic},
        Sought{"CapitalIIsNoI", "ISI", "isi", false, CaseRule::Turkic},
        Sought{"DottedCapital", "İSTANBUL", "istanbul", true, CaseRule::Turkic},
        Sought{"DottedCapitalDecomposed", "I\u0307STANBUL", "istanbul", true, CaseRule::Turkic},
        Sought{"OtherLettersAsEver", "Ankara", "ANKARA", true, CaseRule::Turkic},
        Sought{"PatternInCapitals", "ırmak", "IRMAK", true, CaseRule::Turkic},
        Sought{"CapitalIIsIElsewhere", "ISI", "isi", true},
        Sought{"DottedCapitalIsNoIElsewhere", "İSTANBUL", "istanbul", false},
        Sought{"DottedCapitalIsItselfElsewhere", "İstanbul", "İSTANBUL", true}),
    NameOf);

TEST(CaseRules, GoByTheLanguage)
{
    EXPECT_EQ(text::caseRule(QLocale(QStringLiteral("tr_TR"))), CaseRule::Turkic);
    EXPECT_EQ(text::caseRule(QLocale(QStringLiteral("az_AZ"))), CaseRule::Turkic);
    EXPECT_EQ(text::caseRule(QLocale(QStringLiteral("de_AT"))), CaseRule::Common);
    EXPECT_EQ(text::caseRule(QLocale::c()), CaseRule::Common);
}

TEST(FoldsAsAscii, TellsTextsThatNeedNoCopy)
{
    EXPECT_TRUE(text::foldsAsAscii("Plain TEXT\twith\nall", CaseRule::Common));
    EXPECT_TRUE(text::foldsAsAscii("", CaseRule::Common));
    EXPECT_FALSE(text::foldsAsAscii("long enough for a word é", CaseRule::Common));
    EXPECT_FALSE(text::foldsAsAscii("é", CaseRule::Common));
    EXPECT_TRUE(text::foldsAsAscii("IN", CaseRule::Common));
    EXPECT_FALSE(text::foldsAsAscii("IN", CaseRule::Turkic));
    EXPECT_TRUE(text::foldsAsAscii("in", CaseRule::Turkic));
}

/// The same question answered from the definition, character by character.
class Definition
{
public:
    static bool contains(const icu::UnicodeString &text, const icu::UnicodeString &sought)
    {
        const icu::UnicodeString pattern = fold(sought);
        const std::vector<icu::UnicodeString> characters = charactersOf(text);
        for (size_t begin = 0; begin < characters.size(); ++begin) {
            icu::UnicodeString together;
            for (size_t end = begin; end < characters.size() && together.length() <= pattern.length();
                 ++end) {
                together += characters[end];
                if (together == pattern)
                    return true;
            }
        }
        return false;
    }

private:
    static icu::UnicodeString fold(const icu::UnicodeString &text)
    {
        UErrorCode status = U_ZERO_ERROR;
        icu::UnicodeString folded = icu::Normalizer2::getNFDInstance(status)->normalize(text, status);
        folded.foldCase();
        return icu::Normalizer2::getNFCInstance(status)->normalize(folded, status);
    }

    static std::vector<icu::UnicodeString> charactersOf(const icu::UnicodeString &text)
    {
        UErrorCode status = U_ZERO_ERROR;
        const std::unique_ptr<icu::BreakIterator> breaks(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        breaks->setText(text);
        std::vector<icu::UnicodeString> characters;
        int32_t begin = breaks->first();
        for (int32_t end = breaks->next(); end != icu::BreakIterator::DONE; end = breaks->next()) {
            characters.push_back(fold(text.tempSubStringBetween(begin, end)));
            begin = end;
        }
        return characters;
    }
};

TEST(SearchAtScale, AgreesWithTheDefinitionOnAnyMixture)
{
    constexpr std::array Pieces{"a", "A", "s", "S", "ß", "ẞ", "e", "É", "e\u0301", "\u0301", "\u0307", "q",
        "Σ", "ς", "σ", "İ", "ı", "\ufb01", "f", "i", "\r", "\n", "\u200d", "👩", "🇦", "🇹", "漢", "か",
        "\u3099", "한", "\u1112", "\u1161", "\u11ab", "Ж", "ж", "K", "\u212a", "ก", "\u0e34", "\u01f0",
        "\u0345", "α", "plain text "};
    std::mt19937 random(7);
    const auto mixture = [&](size_t count) {
        QByteArray mixed;
        for (size_t i = 0; i < count; ++i)
            mixed += Pieces[random() % Pieces.size()];
        return mixed;
    };
    int found = 0;
    for (int round = 0; round < 20'000; ++round) {
        const QByteArray text = mixture(1 + random() % 12);
        const QByteArray sought = mixture(1 + random() % 2);
        const bool expected = Definition::contains(
            icu::UnicodeString::fromUTF8(text.constData()), icu::UnicodeString::fromUTF8(sought.constData()));
        ASSERT_EQ(contains(text, sought), expected)
            << text.toPercentEncoding().constData() << " in which " << sought.toPercentEncoding().constData();
        found += expected;
    }
    EXPECT_GT(found, 500);
}

TEST(PieceSearch, FindsWhatTheWholeTextHoldsWhereverItIsCut)
{
    constexpr std::array Pieces{"a", "e", "e\u0301", "É", "\u0301", "ß", "s", "漢", "か\u3099", "👩\u200d👩",
        "\u1112\u1161\u11ab", "\r\n", " ", "plain text "};
    std::mt19937 random(11);
    const auto mixture = [&](size_t count) {
        QByteArray mixed;
        for (size_t i = 0; i < count; ++i)
            mixed += Pieces[random() % Pieces.size()];
        return mixed;
    };
    int found = 0;
    for (int round = 0; round < 2000; ++round) {
        const QByteArray whole = mixture(200);
        const QByteArray sought = mixture(2 + random() % 3);
        const text::SearchPattern pattern(QString::fromUtf8(sought), CaseRule::Common);
        text::PieceSearch search(pattern);
        bool isFound = false;
        for (qsizetype at = 0; at < whole.size() && !isFound;) {
            const qsizetype size = 1 + qsizetype(random() % 120);
            const auto rest =
                at + size < whole.size() ? text::PieceSearch::Rest::Follows : text::PieceSearch::Rest::None;
            isFound = search.find(whole.mid(at, size), rest);
            at += size;
        }
        ASSERT_EQ(isFound, contains(whole, sought)) << whole.toPercentEncoding().constData() << " in which "
                                                    << sought.toPercentEncoding().constData();
        found += isFound;
    }
    EXPECT_GT(found, 200);
    EXPECT_LT(found, 1900);
}

} // namespace
