#include "ui/history/HistoryListModel.h"
#include "fakes/FixedClock.h"
#include "support/TemporaryStore.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

namespace
{

class HistoryList : public ::testing::Test
{
protected:
    std::shared_ptr<ClipboardItem> add(
        const QByteArray &content, ClipboardItemType type = ClipboardItemType::Text)
    {
        m_clock.advanceBy(1000);
        const auto item = std::make_shared<ClipboardItem>(
            content, type, std::nullopt, std::nullopt, std::nullopt, false, m_clock);
        m_store.context().insert(item);
        return item;
    }
    QStringList previews(const HistoryListModel &model) const
    {
        QStringList list;
        for (int row = 0; row < model.rowCount(); ++row)
            list.append(model.index(row).data(HistoryListModel::Preview).toString());
        return list;
    }

    TemporaryStore m_store;
    FixedClock m_clock;
};

TEST_F(HistoryList, ShowsPinnedEntriesFirstAndEachPartNewestFirst)
{
    HistoryListModel model(m_store.context(), m_clock);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    std::vector<std::shared_ptr<ClipboardItem>> items;
    for (const auto *const content : {"5", "4", "3", "2", "1"})
        items.push_back(add(content));
    items[1]->setPinned(true);
    items[3]->setPinned(true);
    EXPECT_EQ(previews(model),
        (QStringList{QStringLiteral("2"), QStringLiteral("4"), QStringLiteral("1"), QStringLiteral("3"),
            QStringLiteral("5")}));
    m_store.context().remove(items[3]);
    items[1]->setPinned(false);
    EXPECT_EQ(previews(model),
        (QStringList{QStringLiteral("1"), QStringLiteral("3"), QStringLiteral("4"), QStringLiteral("5")}));
}

TEST_F(HistoryList, APreviewIsTrimmedAndBlanksAloneShowNothing)
{
    HistoryListModel model(m_store.context(), m_clock);
    add(" \n ");
    add("\n  two\nlines \n");
    EXPECT_EQ(previews(model), (QStringList{QStringLiteral("two\nlines"), QString()}));
}

TEST_F(HistoryList, NothingOfALongTextIsShownButItsBeginning)
{
    HistoryListModel model(m_store.context(), m_clock);
    add(QByteArray(5'000'000, 'x'));
    ASSERT_TRUE(m_store.context().save());
    for (const int role : model.roleNames().keys())
        EXPECT_LT(model.index(0).data(role).toString().size(), 5000) << model.roleNames()[role].constData();
}

TEST_F(HistoryList, AFileShowsItsNameAndItsFolder)
{
    HistoryListModel model(m_store.context(), m_clock);
    add("/home/ann/report.pdf", ClipboardItemType::File);
    EXPECT_EQ(model.index(0).data(HistoryListModel::Title).toString(), QStringLiteral("report.pdf"));
    EXPECT_EQ(model.index(0).data(HistoryListModel::Folder).toString(), QStringLiteral("/home/ann"));
}

} // namespace
