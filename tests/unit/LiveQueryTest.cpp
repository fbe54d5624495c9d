#include "store/LiveQuery.h"

#include "fakes/FixedClock.h"
#include "support/TemporaryStore.h"

#include <gtest/gtest.h>

#include <random>

namespace
{

using Query = LiveQuery<ClipboardItem>;
using Kind = Query::Change::Kind;

class LiveQueries : public ::testing::Test
{
protected:
    std::shared_ptr<ClipboardItem> add(const QByteArray &content, bool isPinned = false)
    {
        m_clock.advanceBy(1000);
        const auto item = std::make_shared<ClipboardItem>(
            content, ClipboardItemType::Text, std::nullopt, std::nullopt, std::nullopt, isPinned, m_clock);
        m_store.context().insert(item);
        return item;
    }
    void record(Query &query)
    {
        query.onDidChange = [this](const Query::Change &change) { m_changes.push_back(change); };
    }
    static QByteArrayList contents(const Query &query)
    {
        QByteArrayList list;
        for (const auto &item : query.rows())
            list.append(item->contentUtf8());
        return list;
    }
    void expectChange(Kind kind, qsizetype row, qsizetype fromRow)
    {
        ASSERT_EQ(m_changes.size(), 1U);
        EXPECT_EQ(m_changes.front().kind, kind);
        EXPECT_EQ(m_changes.front().row, row);
        EXPECT_EQ(m_changes.front().fromRow, fromRow);
        m_changes.clear();
    }

    TemporaryStore m_store;
    FixedClock m_clock;
    std::vector<Query::Change> m_changes;
};

TEST_F(LiveQueries, StartWithWhatIsThere)
{
    add("a");
    add("b");
    const Query query(m_store.context(), {});
    EXPECT_EQ(contents(query), (QByteArrayList{"b", "a"}));
}

TEST_F(LiveQueries, TellInsertionsAndRemovalsRowByRow)
{
    const auto a = add("a");
    Query query(m_store.context(), {});
    record(query);
    add("b");
    expectChange(Kind::Inserted, 0, 0);
    m_store.context().remove(a);
    expectChange(Kind::Removed, 1, 1);
    EXPECT_EQ(contents(query), QByteArrayList{"b"});
}

TEST_F(LiveQueries, TellAChangedFieldAsAChangeOfItsRow)
{
    const auto a = add("a");
    add("b");
    Query query(m_store.context(), {});
    record(query);
    a->setContent("A");
    expectChange(Kind::Changed, 1, 1);
}

TEST_F(LiveQueries, TellAPinAsAMoveInTheOrderOfThePanel)
{
    const auto a = add("a");
    add("b");
    add("c");
    Query query(m_store.context(), {.predicate = nullptr, .leading = &ClipboardItem::isPinned, .limit = {}});
    record(query);
    a->setPinned(true);
    expectChange(Kind::Moved, 0, 2);
    EXPECT_EQ(contents(query), (QByteArrayList{"a", "c", "b"}));
    a->setPinned(false);
    expectChange(Kind::Moved, 2, 0);
    EXPECT_EQ(contents(query), (QByteArrayList{"c", "b", "a"}));
}

TEST_F(LiveQueries, RecordsEnterAndLeaveAsThePredicateSays)
{
    const auto a = add("a");
    Query query(m_store.context(),
        {.predicate = [](const ClipboardItem &item) { return item.isPinned(); },
            .leading = nullptr,
            .limit = {}});
    record(query);
    a->setPinned(true);
    expectChange(Kind::Inserted, 0, 0);
    a->setPinned(false);
    expectChange(Kind::Removed, 0, 0);
}

TEST_F(LiveQueries, FollowTheOrderOfCategories)
{
    std::vector<std::shared_ptr<ClipCategory>> categories;
    for (int i = 0; i < 3; ++i) {
        categories.push_back(std::make_shared<ClipCategory>(
            QString::number(i), QStringLiteral("#3F78F3"), QStringLiteral("doc"), i, false));
        m_store.context().insert(categories.back());
    }
    const LiveQuery<ClipCategory> query(m_store.context(), {});
    categories[0]->setSortOrder(9);
    ASSERT_EQ(query.rows().size(), 3U);
    EXPECT_EQ(query.rows()[0], categories[1]);
    EXPECT_EQ(query.rows()[2], categories[0]);
}

TEST_F(LiveQueries, AgreeWithAFetchAfterAnyChanges)
{
    Query query(m_store.context(), {.predicate = nullptr, .leading = &ClipboardItem::isPinned, .limit = {}});
    std::vector<std::shared_ptr<ClipboardItem>> mirror;
    query.onDidChange = [&](const Query::Change &change) {
        if (change.kind == Kind::Inserted)
            mirror.insert(mirror.begin() + change.row, query.rows()[static_cast<size_t>(change.row)]);
        else if (change.kind == Kind::Removed)
            mirror.erase(mirror.begin() + change.row);
        else if (change.kind == Kind::Moved) {
            const auto moved = mirror[static_cast<size_t>(change.fromRow)];
            mirror.erase(mirror.begin() + change.fromRow);
            mirror.insert(mirror.begin() + change.row, moved);
        }
    };
    std::mt19937 random(20260301); // NOLINT: the same changes each time
    for (int step = 0; step < 2000; ++step) {
        const auto &rows = query.rows();
        const size_t pick = rows.empty() ? 0 : random() % rows.size();
        const auto action = rows.size() < 5 ? 0 : random() % 4;
        if (action < 2)
            add(QByteArray::number(step), random() % 3 == 0);
        else if (action == 2)
            rows[pick]->setPinned(!rows[pick]->isPinned());
        else
            m_store.context().remove(std::shared_ptr<ClipboardItem>(rows[pick]));
    }
    const auto fetched = m_store.context().fetch<ClipboardItem>(
        {.predicate = nullptr, .leading = &ClipboardItem::isPinned, .limit = {}});
    EXPECT_EQ(mirror, fetched);
    EXPECT_TRUE(std::equal(fetched.begin(), fetched.end(), query.rows().begin(), query.rows().end()));
}

} // namespace
