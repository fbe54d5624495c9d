#include "store/ModelContext.h"

#include "fakes/FixedClock.h"
#include "support/TemporaryStore.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace
{

class Context : public ::testing::Test
{
protected:
    std::shared_ptr<ClipboardItem> add(
        const QByteArray &content, ClipboardItemType type = ClipboardItemType::Text, bool isPinned = false)
    {
        m_clock.advanceBy(1000);
        const auto item = std::make_shared<ClipboardItem>(
            content, type, std::nullopt, std::nullopt, std::nullopt, isPinned, m_clock);
        m_store.context().insert(item);
        return item;
    }
    QByteArrayList contents() const
    {
        QByteArrayList list;
        for (const auto &item : m_store.context().fetch<ClipboardItem>())
            list.append(item->contentUtf8());
        return list;
    }

    mutable TemporaryStore m_store;
    FixedClock m_clock;
};

/// Holds the file's write lock, as another program may for a while.
class WriteLock
{
public:
    explicit WriteLock(const QString &filePath)
    {
        sqlite3_open(QFile::encodeName(filePath).constData(), &m_database);
        EXPECT_EQ(sqlite3_exec(m_database, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    }
    ~WriteLock() { sqlite3_close(m_database); }

private:
    sqlite3 *m_database = nullptr;
};

TEST_F(Context, FetchesTheNewestFirst)
{
    add("a");
    add("b");
    add("c");
    EXPECT_EQ(contents(), (QByteArrayList{"c", "b", "a"}));
}

TEST_F(Context, EqualTimesKeepTheOrderOfInsertion)
{
    for (const auto *const content : {"a", "b", "c"}) {
        m_store.context().insert(std::make_shared<ClipboardItem>(
            content, ClipboardItemType::Text, std::nullopt, std::nullopt, std::nullopt, false, m_clock));
    }
    ASSERT_TRUE(m_store.context().save());
    EXPECT_EQ(contents(), (QByteArrayList{"c", "b", "a"}));
    m_store.reopen();
    EXPECT_EQ(contents(), (QByteArrayList{"c", "b", "a"}));
}

TEST_F(Context, FetchesByPredicateOrderAndLimit)
{
    add("a");
    add("b", ClipboardItemType::Url);
    add("c", ClipboardItemType::Text, true);
    add("d");
    const auto texts = [](const ClipboardItem &item) { return item.type() == ClipboardItemType::Text; };
    const auto found = m_store.context().fetch<ClipboardItem>(
        {.predicate = texts, .leading = &ClipboardItem::isPinned, .limit = 2});
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0]->contentUtf8(), "c");
    EXPECT_EQ(found[1]->contentUtf8(), "d");
    EXPECT_EQ(m_store.context().fetchCount<ClipboardItem>(), 4);
    EXPECT_EQ(
        m_store.context().fetchCount<ClipboardItem>({.predicate = texts, .leading = nullptr, .limit = {}}),
        3);
}

TEST_F(Context, EveryFieldSurvivesAReopening)
{
    const auto item = std::make_shared<ClipboardItem>(QByteArray("n\0l ünï", 9), ClipboardItemType::Image,
        QByteArray("\x89PNG\0\r\n", 7), QStringLiteral("Editor"), QStringLiteral("org.example.Editor"), true,
        m_clock);
    const QUuid category = QUuid::createUuid();
    item->setCategoryId(category);
    m_store.context().insert(item);
    ASSERT_TRUE(m_store.context().save());
    const ClipboardItem::Fields before = item->fields();
    m_store.reopen();
    const auto found = m_store.context().fetch<ClipboardItem>();
    ASSERT_EQ(found.size(), 1U);
    const ClipboardItem::Fields &after = found.front()->fields();
    EXPECT_EQ(after.id, before.id);
    EXPECT_EQ(after.content, before.content);
    EXPECT_EQ(after.type, before.type);
    EXPECT_EQ(found.front()->imageData(), QByteArray("\x89PNG\0\r\n", 7));
    EXPECT_EQ(after.sourceAppName, before.sourceAppName);
    EXPECT_EQ(after.sourceAppBundleId, before.sourceAppBundleId);
    EXPECT_TRUE(after.isPinned);
    EXPECT_EQ(after.createdAt, before.createdAt);
    EXPECT_EQ(after.characterCount, before.characterCount);
    EXPECT_EQ(after.categoryId, category);
}

TEST_F(Context, AbsentValuesStayAbsent)
{
    add("a");
    ASSERT_TRUE(m_store.context().save());
    m_store.reopen();
    const auto item = m_store.context().fetch<ClipboardItem>().front();
    EXPECT_FALSE(item->sourceAppName());
    EXPECT_FALSE(item->sourceAppBundleId());
    EXPECT_FALSE(item->categoryId());
    EXPECT_FALSE(item->imageData());
}

TEST_F(Context, ChangesAndDeletionsAreSaved)
{
    const auto kept = add("kept");
    const auto gone = add("gone");
    ASSERT_TRUE(m_store.context().save());
    kept->setPinned(true);
    kept->setContent("changed");
    m_store.context().remove(gone);
    ASSERT_TRUE(m_store.context().save());
    m_store.reopen();
    EXPECT_EQ(contents(), QByteArrayList{"changed"});
    EXPECT_TRUE(m_store.context().fetch<ClipboardItem>().front()->isPinned());
}

TEST_F(Context, SettingAFieldToItsValueIsNoChange)
{
    const auto item = add("a");
    ASSERT_TRUE(m_store.context().save());
    item->setPinned(false);
    EXPECT_FALSE(m_store.context().hasChanges());
}

TEST_F(Context, ARecordRemovedBeforeItIsSavedNeverReachesTheFile)
{
    const auto item = add("a");
    item->setPinned(true);
    m_store.context().remove(item);
    EXPECT_FALSE(m_store.context().hasChanges());
}

TEST_F(Context, ARemovedRecordTellsNobodyAnyMore)
{
    const auto item = add("a");
    ASSERT_TRUE(m_store.context().save());
    m_store.context().remove(item);
    ASSERT_TRUE(m_store.context().save());
    item->setPinned(true);
    EXPECT_FALSE(m_store.context().hasChanges());
}

TEST_F(Context, AFailedSaveKeepsTheChangesForTheNextOne)
{
    const auto old = add("old");
    ASSERT_TRUE(m_store.context().save());
    int failures = 0;
    m_store.context().onSaveFailed = [&failures] { ++failures; };
    {
        const WriteLock lock(m_store.filePath());
        m_store.context().remove(old);
        add("new")->setPinned(true);
        EXPECT_FALSE(m_store.context().save());
    }
    EXPECT_EQ(failures, 1);
    EXPECT_EQ(contents(), QByteArrayList{"new"});
    EXPECT_TRUE(m_store.context().hasChanges());
    add("newer");
    ASSERT_TRUE(m_store.context().save());
    m_store.reopen();
    EXPECT_EQ(contents(), (QByteArrayList{"newer", "new"}));
    EXPECT_TRUE(m_store.context().fetch<ClipboardItem>().back()->isPinned());
}

TEST_F(Context, FindsTheNewestEntryOfATypeAndContent)
{
    add("a");
    const auto newer = add("a");
    const auto url = add("a", ClipboardItemType::Url);
    EXPECT_EQ(m_store.context().newestItem(ClipboardItemType::Text, "a"), newer);
    EXPECT_EQ(m_store.context().newestItem(ClipboardItemType::Url, "a"), url);
    EXPECT_FALSE(m_store.context().newestItem(ClipboardItemType::File, "a"));
    EXPECT_FALSE(m_store.context().newestItem(ClipboardItemType::Text, "A"));
}

TEST_F(Context, FindsAnEntryByItsChangedContent)
{
    const auto item = add("before");
    item->setContent("after");
    EXPECT_FALSE(m_store.context().newestItem(ClipboardItemType::Text, "before"));
    EXPECT_EQ(m_store.context().newestItem(ClipboardItemType::Text, "after"), item);
}

TEST_F(Context, TellsLongEntriesWithTheSameBeginningApart)
{
    const QByteArray stem(50'000, 'x');
    const auto one = add(stem + "1");
    const auto two = add(stem + "2");
    ASSERT_TRUE(m_store.context().save());
    EXPECT_EQ(m_store.context().newestItem(ClipboardItemType::Text, stem + "1"), one);
    EXPECT_EQ(m_store.context().newestItem(ClipboardItemType::Text, stem + "2"), two);
    EXPECT_FALSE(m_store.context().newestItem(ClipboardItemType::Text, stem + "3"));
    m_store.reopen();
    EXPECT_TRUE(m_store.context().newestItem(ClipboardItemType::Text, stem + "1"));
}

TEST_F(Context, NamesTheOldestUnpinnedEntriesBeyondALimit)
{
    add("1", ClipboardItemType::Text, true);
    const auto second = add("2");
    const auto third = add("3");
    add("4");
    add("5");
    const auto beyond = m_store.context().unpinnedItemsBeyond(2);
    EXPECT_EQ(beyond, (std::vector{second, third}));
    EXPECT_TRUE(m_store.context().unpinnedItemsBeyond(4).empty());
    third->setPinned(true);
    EXPECT_EQ(m_store.context().unpinnedItemsBeyond(2), std::vector{second});
}

TEST_F(Context, TheFileShrinksWhenALargeHistoryIsDeleted)
{
    for (int i = 0; i < 30; ++i) {
        m_store.context().insert(std::make_shared<ClipboardItem>("picture", ClipboardItemType::Image,
            QByteArray(1'000'000, static_cast<char>(i)), std::nullopt, std::nullopt, false, m_clock));
    }
    ASSERT_TRUE(m_store.context().save());
    m_store.reopen();
    ASSERT_GT(QFileInfo(m_store.filePath()).size(), 30'000'000);
    for (const auto &item : m_store.context().fetch<ClipboardItem>())
        m_store.context().remove(item);
    ASSERT_TRUE(m_store.context().save());
    m_store.reopen();
    EXPECT_LT(QFileInfo(m_store.filePath()).size(), 1'000'000);
}

TEST_F(Context, ARowWrittenByAnotherProgramIsRead)
{
    sqlite3 *database = nullptr;
    ASSERT_EQ(sqlite3_open(QFile::encodeName(m_store.filePath()).constData(), &database), SQLITE_OK);
    ASSERT_EQ(
        sqlite3_exec(database,
            "INSERT INTO ClipboardItem (id, content, type, isPinned, createdAt, characterCount) VALUES "
            "('0b0e6a3c-6a43-4a53-9ad1-6d6d3a1c2f11', 'hello', 'text', 0, 1772355907.25, 5), "
            "('0b0e6a3c-6a43-4a53-9ad1-6d6d3a1c2f12', printf('%.*c', 50000, 'y'), 'text', 0, 1772355908, 5)",
            nullptr, nullptr, nullptr),
        SQLITE_OK)
        << sqlite3_errmsg(database);
    sqlite3_close(database);
    m_store.reopen();
    const auto items = m_store.context().fetch<ClipboardItem>();
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0]->contentUtf8(), QByteArray(50000, 'y'));
    EXPECT_EQ(items[1]->contentUtf8(), "hello");
    EXPECT_EQ(items[1]->createdAt().toMSecsSinceEpoch(), 1772355907250);
}

} // namespace
