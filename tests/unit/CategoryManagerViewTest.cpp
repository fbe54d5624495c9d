#include "ui/settings/CategoryManagerView.h"

#include "store/CategoryColors.h"
#include "store/Seeding.h"
#include "support/CapturedConsole.h"
#include "support/TemporaryStore.h"

#include <gtest/gtest.h>

#include <set>

namespace
{

class CategoryManager : public ::testing::Test
{
protected:
    CategoryManager()
    {
        CapturedConsole console;
        seedDefaultCategories(&store.container());
    }
    QStringList names()
    {
        QStringList list;
        for (const auto &category : manager.categories()->rows())
            list.append(category->name());
        return list;
    }
    std::shared_ptr<ClipCategory> row(int index) { return manager.categories()->record(index); }
    QVariant shown(int index, CategoryRows::Role role)
    {
        return manager.categories()->data(manager.categories()->index(index), role);
    }
    qint64 savedCount()
    {
        owned.reset();
        store.reopen();
        return store.context().fetchCount<ClipCategory>();
    }
    void add(const QString &name)
    {
        manager.addNew();
        manager.setNewName(name);
        manager.saveForm();
    }

    TemporaryStore store;
    std::unique_ptr<CategoryManagerView> owned = std::make_unique<CategoryManagerView>(store.context());
    /// Not after `savedCount`.
    CategoryManagerView &manager = *owned;
};

TEST_F(CategoryManager, ShowsEachCategoryInOrder)
{
    ASSERT_EQ(manager.categories()->rowCount(), 5);
    const auto &defaults = ClipCategory::defaults();
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(shown(i, CategoryRows::Name), defaults[i].name);
        EXPECT_EQ(shown(i, CategoryRows::Icon), defaults[i].icon);
        EXPECT_EQ(shown(i, CategoryRows::CategoryColor).value<QColor>(), QColor(defaults[i].colorHex));
        EXPECT_EQ(shown(i, CategoryRows::IsDefault), true);
    }
}

TEST_F(CategoryManager, ANewCategoryGoesLastWithTheTag)
{
    manager.addNew();
    EXPECT_TRUE(manager.isAddingNew());
    EXPECT_EQ(manager.newName(), QString());
    EXPECT_EQ(manager.newIcon(), QStringLiteral("tag.fill"));
    manager.setNewName(QStringLiteral("Recipes"));
    manager.setNewColorHex(QStringLiteral("#2DB5AA"));
    manager.saveForm();
    EXPECT_FALSE(manager.isAddingNew());
    ASSERT_EQ(manager.categories()->rowCount(), 6);
    EXPECT_EQ(row(5)->name(), QStringLiteral("Recipes"));
    EXPECT_EQ(row(5)->colorHex(), QStringLiteral("#2DB5AA"));
    EXPECT_EQ(row(5)->icon(), QStringLiteral("tag.fill"));
    EXPECT_EQ(row(5)->sortOrder(), 5);
    EXPECT_FALSE(row(5)->isDefault());
}

TEST_F(CategoryManager, AfterADeletionANewOneMaySharePlaces)
{
    manager.deleteCategory(1);
    add(QStringLiteral("Recipes"));
    EXPECT_EQ(row(4)->name(), QStringLiteral("Recipes"));
    EXPECT_EQ(row(4)->sortOrder(), 4);
    EXPECT_EQ(row(3)->sortOrder(), 4);
}

TEST_F(CategoryManager, TheColourOfANewOneIsAnyOfThePalette)
{
    std::set<QString> palette;
    for (const auto &entry : CategoryColors::palette())
        palette.insert(entry.hex);
    std::set<QString> seen;
    for (int i = 0; i < 2000; ++i) {
        manager.addNew();
        seen.insert(manager.newColorHex());
    }
    EXPECT_EQ(seen, palette);
}

TEST_F(CategoryManager, EditingKeepsTheSymbol)
{
    manager.edit(2);
    EXPECT_TRUE(manager.isEditing());
    EXPECT_EQ(manager.newName(), row(2)->name());
    EXPECT_EQ(manager.newColorHex(), row(2)->colorHex());
    const QString icon = row(2)->icon();
    manager.setNewName(QStringLiteral("Pictures"));
    manager.setNewColorHex(QStringLiteral("#808594"));
    manager.saveForm();
    EXPECT_FALSE(manager.isEditing());
    EXPECT_EQ(row(2)->name(), QStringLiteral("Pictures"));
    EXPECT_EQ(row(2)->colorHex(), QStringLiteral("#808594"));
    EXPECT_EQ(row(2)->icon(), icon);
}

TEST_F(CategoryManager, CancellingChangesNothing)
{
    const QStringList before = names();
    manager.edit(0);
    manager.setNewName(QStringLiteral("Other"));
    manager.cancelForm();
    EXPECT_FALSE(manager.isEditing());
    manager.addNew();
    manager.setNewName(QStringLiteral("Other"));
    manager.cancelForm();
    EXPECT_FALSE(manager.isAddingNew());
    EXPECT_EQ(names(), before);
    EXPECT_FALSE(store.context().hasChanges());
}

TEST_F(CategoryManager, AnEmptyNameIsNotSavedAndOneOfBlanksIs)
{
    manager.addNew();
    EXPECT_FALSE(manager.canSave());
    manager.saveForm();
    EXPECT_TRUE(manager.isAddingNew());
    EXPECT_EQ(manager.categories()->rowCount(), 5);
    manager.setNewName(QStringLiteral("   "));
    EXPECT_TRUE(manager.canSave());
    manager.saveForm();
    EXPECT_EQ(row(5)->name(), QStringLiteral("   "));
}

TEST_F(CategoryManager, LongAndOddNamesAreKeptAsTheyAre)
{
    const QString name = QString(10000, QChar(0x00E4)) + QChar(0x0007) + QChar(0x202E);
    add(name);
    EXPECT_EQ(savedCount(), 6);
    EXPECT_EQ(store.context().fetch<ClipCategory>().back()->name(), name);
}

TEST_F(CategoryManager, MovingSwapsPlaces)
{
    const QStringList before = names();
    manager.moveCategory(1, 1);
    EXPECT_EQ(names(), (QStringList{before[0], before[2], before[1], before[3], before[4]}));
    manager.moveCategory(2, -1);
    EXPECT_EQ(names(), before);
}

TEST_F(CategoryManager, TheEndsDoNotMoveAndNothingIsSaved)
{
    const QStringList before = names();
    manager.moveCategory(0, -1);
    manager.moveCategory(4, 1);
    EXPECT_EQ(names(), before);
    EXPECT_FALSE(store.context().hasChanges());
}

TEST_F(CategoryManager, ADeletedOneLeavesTheEntriesAssignments)
{
    const QUuid id = row(0)->id();
    const auto item = std::make_shared<ClipboardItem>(
        "lark", ClipboardItemType::Text, std::nullopt, std::nullopt, std::nullopt, false);
    item->setCategoryId(id);
    store.context().insert(item);
    manager.deleteCategory(0);
    EXPECT_EQ(item->categoryId(), id);
    EXPECT_EQ(savedCount(), 4);
}

TEST_F(CategoryManager, RestoringTheDefaultsAddsThem)
{
    manager.resetDefaultCategories();
    ASSERT_EQ(manager.categories()->rowCount(), 10);
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(row(i)->sortOrder(), i / 2);
        EXPECT_TRUE(row(i)->isDefault());
    }
    EXPECT_EQ(savedCount(), 10);
}

TEST_F(CategoryManager, RowsThatAreNotThereAreLeftAlone)
{
    for (const int index : {-1, 5, 1000}) {
        manager.edit(index);
        manager.deleteCategory(index);
        manager.moveCategory(index, 1);
    }
    EXPECT_FALSE(manager.isEditing());
    EXPECT_EQ(manager.categories()->rowCount(), 5);
}

} // namespace
