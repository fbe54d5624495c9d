#include "store/Seeding.h"

#include "support/TemporaryStore.h"

#include <gtest/gtest.h>

namespace
{

constexpr auto CategoriesLine = "[Larkspool] Seeded 5 default categories\n";
constexpr auto TemplatesLine = "[Larkspool] Seeded 10 default templates\n";

/// What seeding prints.
std::string seed(ModelContainer *container)
{
    ::testing::internal::CaptureStdout();
    seedDefaultCategories(container);
    seedDefaultTemplates(container);
    return ::testing::internal::GetCapturedStdout();
}

TEST(Seeding, FillsAnEmptyStoreAndSaysSoCategoriesFirst)
{
    TemporaryStore store;
    EXPECT_EQ(seed(&store.container()), std::string(CategoriesLine) + TemplatesLine);
    store.reopen();
    const auto categories = store.context().fetch<ClipCategory>();
    ASSERT_EQ(categories.size(), 5U);
    for (size_t i = 0; i < categories.size(); ++i) {
        EXPECT_EQ(categories[i]->sortOrder(), static_cast<qint64>(i));
        EXPECT_EQ(categories[i]->name(), ClipCategory::defaults()[i].name);
        EXPECT_TRUE(categories[i]->isDefault());
    }
    const auto templates = store.context().fetch<PasteTemplate>();
    ASSERT_EQ(templates.size(), 10U);
    for (size_t i = 0; i < templates.size(); ++i) {
        EXPECT_EQ(templates[i]->sortOrder(), static_cast<qint64>(i));
        EXPECT_EQ(templates[i]->name(), PasteTemplate::defaults()[i].name);
        EXPECT_EQ(templates[i]->wrapPrefix(), PasteTemplate::defaults()[i].wrapPrefix);
        EXPECT_TRUE(templates[i]->isDefault());
    }
}

TEST(Seeding, TheSecondStartInsertsAndPrintsNothing)
{
    TemporaryStore store;
    seed(&store.container());
    store.reopen();
    EXPECT_EQ(seed(&store.container()), "");
    EXPECT_EQ(store.context().fetchCount<ClipCategory>(), 5);
    EXPECT_EQ(store.context().fetchCount<PasteTemplate>(), 10);
}

TEST(Seeding, AStoreWithCategoriesSeedsTemplatesOnly)
{
    TemporaryStore store;
    store.context().insert(std::make_shared<ClipCategory>(
        QStringLiteral("Mine"), QStringLiteral("#E84855"), QStringLiteral("tag"), 0, false));
    EXPECT_EQ(seed(&store.container()), TemplatesLine);
    EXPECT_EQ(store.context().fetchCount<ClipCategory>(), 1);
}

TEST(Seeding, AStoreWithTemplatesSeedsCategoriesOnly)
{
    TemporaryStore store;
    store.context().insert(std::make_shared<PasteTemplate>(
        QStringLiteral("Mine"), QString(), QString(), QString(), QString(), QString(), 0, false));
    EXPECT_EQ(seed(&store.container()), CategoriesLine);
    EXPECT_EQ(store.context().fetchCount<PasteTemplate>(), 1);
}

TEST(Seeding, AStoreWhoseRecordsWereAllDeletedIsSeededAgain)
{
    TemporaryStore store;
    seed(&store.container());
    for (const auto &category : store.context().fetch<ClipCategory>())
        store.context().remove(category);
    ASSERT_TRUE(store.context().save());
    store.reopen();
    EXPECT_EQ(seed(&store.container()), CategoriesLine);
}

TEST(Seeding, WithoutAStoreDoesNothing)
{
    EXPECT_EQ(seed(nullptr), "");
}

} // namespace
