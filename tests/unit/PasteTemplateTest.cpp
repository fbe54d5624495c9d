#include "store/PasteTemplate.h"

#include <gtest/gtest.h>

namespace
{

struct Combined {
    const char *name;
    size_t row;
    QStringList items;
    QString expected;
};

const QString A = QStringLiteral("a");
const QString B = QStringLiteral("b");

class Combine : public ::testing::TestWithParam<Combined>
{
};

TEST_P(Combine, JoinsTheEntries)
{
    const auto &d = PasteTemplate::defaults().at(GetParam().row);
    const PasteTemplate pasteTemplate(
        d.name, d.separator, d.itemPrefix, d.itemSuffix, d.wrapPrefix, d.wrapSuffix, 0, true);
    EXPECT_EQ(pasteTemplate.combine(GetParam().items), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(PasteTemplate, Combine,
    ::testing::Values(Combined{"EmptyCommaIsEmpty", 0, {}, QString()},
        Combined{"EmptyJsonArrayIsTheBrackets", 6, {}, QStringLiteral("[]")},
        Combined{"EmptySqlInIsTheParentheses", 9, {}, QStringLiteral("()")},
        Combined{"OneJsonEntryHasNoSeparator", 6, {A}, QStringLiteral("[\"a\"]")},
        Combined{"SqlInQuotesEach", 9, {A, B}, QStringLiteral("('a', 'b')")},
        Combined{"BulletListHasNoLastLineFeed", 7, {A, B}, QStringLiteral("- a\n- b")},
        Combined{"TabIsBetween", 3, {A, B}, QStringLiteral("a\tb")},
        Combined{"CommaIsBetween", 0, {A, B}, QStringLiteral("a, b")},
        Combined{"NewLineIsBetween", 1, {A, B}, QStringLiteral("a\nb")},
        Combined{"SpaceIsBetween", 2, {A, B}, QStringLiteral("a b")},
        Combined{"DoubleQuotesAroundEach", 4, {A, B}, QStringLiteral("\"a\", \"b\"")},
        Combined{"SingleQuotesAroundEach", 5, {A, B}, QStringLiteral("'a', 'b'")},
        Combined{"NumberedNumbersNothingByItself", 8, {A, B}, QStringLiteral("a\nb")},
        Combined{"QuotesAreNotEscaped", 6, {QStringLiteral("say \"x\"")}, QStringLiteral("[\"say \"x\"\"]")},
        Combined{"ApostrophesAreNotDoubled", 9, {QStringLiteral("it's")}, QStringLiteral("('it's')")},
        Combined{"LineFeedsInsideStay", 7, {QStringLiteral("a\nb")}, QStringLiteral("- a\nb")},
        Combined{"EntriesAreNotTrimmed", 0, {QStringLiteral(" a "), B}, QStringLiteral(" a , b")}),
    [](const auto &tested) { return std::string(tested.param.name); });

TEST(PasteTemplateDefaults, AreTenInOrder)
{
    const QStringList names{QStringLiteral("Comma"), QStringLiteral("New Line"), QStringLiteral("Space"),
        QStringLiteral("Tab"), QStringLiteral("\"Double Quotes\""), QStringLiteral("'Single Quotes'"),
        QStringLiteral("JSON Array"), QStringLiteral("Bullet List"), QStringLiteral("Numbered"),
        QStringLiteral("SQL IN")};
    QStringList actual;
    for (const auto &row : PasteTemplate::defaults())
        actual.append(row.name);
    EXPECT_EQ(actual, names);
    EXPECT_EQ(names[4].size(), 15);
}

TEST(PasteTemplate, CreationSetsAFreshId)
{
    const PasteTemplate a(A, {}, {}, {}, {}, {}, 0, false);
    const PasteTemplate b(A, {}, {}, {}, {}, {}, 0, false);
    EXPECT_FALSE(a.id().isNull());
    EXPECT_NE(a.id(), b.id());
}

} // namespace
