#include "ui/history/HistoryListModel.h"
#include "fakes/FixedClock.h"
#include "support/TemporaryStore.h"
#include "support/TestImages.h"
#include "support/Waiting.h"

#include <QAbstractItemModelTester>
#include <QColor>
#include <QCoreApplication>

#include <gtest/gtest.h>

namespace
{

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

class HistoryList : public ::testing::Test
{
protected:
    std::shared_ptr<ClipboardItem> add(const QByteArray &content,
        ClipboardItemType type = ClipboardItemType::Text, std::optional<QByteArray> image = std::nullopt,
        std::optional<QString> sourceApp = std::nullopt)
    {
        m_clock.advanceBy(1000);
        const auto item = std::make_shared<ClipboardItem>(
            content, type, std::move(image), std::move(sourceApp), std::nullopt, false, m_clock);
        m_store.context().insert(item);
        return item;
    }
    std::shared_ptr<ClipCategory> addCategory(
        const char *name, const char *color = "#E84855", const char *icon = "tag.fill")
    {
        const auto category = std::make_shared<ClipCategory>(text(name), text(color), text(icon), 0, false);
        m_store.context().insert(category);
        return category;
    }
    static QString shown(const HistoryListModel &model, int role, int row = 0)
    {
        return model.index(row).data(role).toString();
    }
    QStringList previews(const HistoryListModel &model) const
    {
        QStringList list;
        for (int row = 0; row < model.rowCount(); ++row)
            list.append(shown(model, HistoryListModel::Preview, row));
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
    EXPECT_EQ(previews(model), (QStringList{text("2"), text("4"), text("1"), text("3"), text("5")}));
    m_store.context().remove(items[3]);
    items[1]->setPinned(false);
    EXPECT_EQ(previews(model), (QStringList{text("1"), text("3"), text("4"), text("5")}));
}

TEST_F(HistoryList, APreviewIsTrimmedAndBlanksAloneShowNothing)
{
    HistoryListModel model(m_store.context(), m_clock);
    add(" \n ");
    add("\n  two\nlines \n");
    EXPECT_EQ(previews(model), (QStringList{text("two\nlines"), QString()}));
}

TEST_F(HistoryList, NothingOfALongTextIsShownButItsBeginning)
{
    HistoryListModel model(m_store.context(), m_clock);
    for (const auto type : AllClipboardItemTypes)
        add(QByteArray(5'000'000, 'x'), type);
    const auto expectShort = [&model] {
        for (int row = 0; row < model.rowCount(); ++row) {
            for (const int role : model.roleNames().keys())
                EXPECT_LT(shown(model, role, row).size(), 20'000) << model.roleNames()[role].constData();
            EXPECT_LE(shown(model, HistoryListModel::Preview, row).size(), 600);
            EXPECT_LE(shown(model, HistoryListModel::Title, row).size(), 600);
        }
    };
    expectShort();
    ASSERT_TRUE(m_store.context().save());
    expectShort();
}

struct Expected {
    ClipboardItemType type;
    const char *content;
    const char *preview;
    const char *title;
    const char *folder;
    const char *label;
    const char *icon;
};

class HistoryRows : public HistoryList, public ::testing::WithParamInterface<Expected>
{
};

TEST_P(HistoryRows, SayWhatTheirKindSays)
{
    const Expected &expected = GetParam();
    HistoryListModel model(m_store.context(), m_clock);
    add(expected.content, expected.type);
    EXPECT_EQ(shown(model, HistoryListModel::Preview), text(expected.preview));
    EXPECT_EQ(shown(model, HistoryListModel::Title), text(expected.title));
    EXPECT_EQ(shown(model, HistoryListModel::Folder), text(expected.folder));
    EXPECT_EQ(shown(model, HistoryListModel::Label), text(expected.label));
    EXPECT_EQ(shown(model, HistoryListModel::Icon), text(expected.icon));
    EXPECT_EQ(shown(model, HistoryListModel::TypeName), QString::fromLatin1(storedText(expected.type)));
    EXPECT_EQ(model.index(0).data(HistoryListModel::CategoryColor).value<QColor>().alpha(), 0);
}

INSTANTIATE_TEST_SUITE_P(Table, HistoryRows,
    ::testing::Values(Expected{ClipboardItemType::Text, " a ", "a", "", "", "TEXT", "doc.text"},
        Expected{ClipboardItemType::RichText, " a ", "a", "", "", "RICHTEXT", "doc.richtext"},
        Expected{ClipboardItemType::Url, "https://a.example/b%20c", "https://a.example/b%20c", "", "", "URL",
            "link"},
        Expected{ClipboardItemType::File, "/home/ann/a%20b.pdf", "/home/ann/a b.pdf", "a b.pdf", "/home/ann",
            "FILE", "doc"},
        Expected{ClipboardItemType::File, "file:///home/ann/", "/home/ann/", "ann", "/home", "FILE", "doc"},
        Expected{ClipboardItemType::Image, "/home/ann/a%20b.png", "/home/ann/a%20b.png", "a%20b.png",
            "/home/ann", "IMAGE", "photo"},
        Expected{
            ClipboardItemType::Image, "Image (3 KB)", "Image (3 KB)", "Image (3 KB)", "", "IMAGE", "photo"}));

TEST_F(HistoryList, ASourceApplicationIsOneLineWhateverItsName)
{
    HistoryListModel model(m_store.context(), m_clock);
    add("a", ClipboardItemType::Text, std::nullopt, text("Text\nEditor\xE2\x80\xAE"));
    EXPECT_EQ(shown(model, HistoryListModel::SourceApp), text("Text␊Editor"));
    add("b", ClipboardItemType::Text, std::nullopt, QString(500, QLatin1Char('n')));
    EXPECT_EQ(shown(model, HistoryListModel::SourceApp).size(), 300);
    add("c");
    EXPECT_EQ(shown(model, HistoryListModel::SourceApp), QString());
}

TEST_F(HistoryList, AnAssignedCategoryGivesItsLabelItsSymbolAndItsColour)
{
    HistoryListModel model(m_store.context(), m_clock);
    const auto category = addCategory("Wörk\n");
    add("a")->setCategoryId(category->id());
    EXPECT_EQ(shown(model, HistoryListModel::Label), text("WÖRK␊"));
    EXPECT_EQ(shown(model, HistoryListModel::Icon), text("tag.fill"));
    EXPECT_EQ(model.index(0).data(HistoryListModel::CategoryColor).value<QColor>().rgb(), 0xFFE84855U);
    // What does not depend on it stays the kind's.
    EXPECT_EQ(shown(model, HistoryListModel::TypeName), text("text"));
}

TEST_F(HistoryList, TheRowsOfACategoryFollowItsChanges)
{
    HistoryListModel model(m_store.context(), m_clock);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const auto category = addCategory("Work");
    const auto other = addCategory("Other");
    for (int i = 0; i < 5; ++i)
        add("a");
    const auto rows = m_store.context().fetch<ClipboardItem>();
    rows[1]->setCategoryId(category->id());
    rows[2]->setCategoryId(other->id());
    rows[3]->setCategoryId(category->id());
    struct Told {
        int first;
        int last;
        QList<int> roles;
    };
    std::vector<Told> told;
    QObject::connect(&model, &QAbstractItemModel::dataChanged,
        [&told](const QModelIndex &first, const QModelIndex &last, const QList<int> &roles) {
            told.push_back({first.row(), last.row(), roles});
        });
    const auto expectTold = [&told] {
        ASSERT_EQ(told.size(), 1U);
        EXPECT_EQ(told[0].first, 1);
        EXPECT_EQ(told[0].last, 3);
        EXPECT_EQ(told[0].roles,
            (QList<int>{HistoryListModel::CategoryColor, HistoryListModel::Icon, HistoryListModel::Label}));
        told.clear();
    };
    category->setName(text("Play"));
    expectTold();
    EXPECT_EQ(shown(model, HistoryListModel::Label, 1), text("PLAY"));
    category->setColorHex(text("#00FF00"));
    expectTold();
    EXPECT_EQ(model.index(3).data(HistoryListModel::CategoryColor).value<QColor>().rgb(), 0xFF00FF00U);
    m_store.context().remove(category);
    expectTold();
    EXPECT_EQ(shown(model, HistoryListModel::Label, 1), text("TEXT"));
    EXPECT_EQ(shown(model, HistoryListModel::Icon, 1), text("doc.text"));
    EXPECT_EQ(model.index(1).data(HistoryListModel::CategoryColor).value<QColor>().alpha(), 0);
    EXPECT_EQ(shown(model, HistoryListModel::Label, 2), text("OTHER"));
    addCategory("New");
    EXPECT_TRUE(told.empty());
}

TEST_F(HistoryList, ACategoryThatComesBackIsShownAgain)
{
    HistoryListModel model(m_store.context(), m_clock);
    const auto category = addCategory("Work");
    add("a")->setCategoryId(category->id());
    m_store.context().remove(category);
    EXPECT_EQ(shown(model, HistoryListModel::Label), text("TEXT"));
    const auto again = std::make_shared<ClipCategory>(category->fields());
    m_store.context().insert(again);
    EXPECT_EQ(shown(model, HistoryListModel::Label), text("WORK"));
}

TEST_F(HistoryList, AFilesIconIsAskedForByItsPath)
{
    HistoryListModel model(m_store.context(), m_clock);
    add("/a b#c?d%25é.pdf", ClipboardItemType::File);
    EXPECT_EQ(
        shown(model, HistoryListModel::Picture), text("image://fileicon/%2Fa%20b%23c%3Fd%25%C3%A9.pdf"));
    add("text");
    EXPECT_EQ(shown(model, HistoryListModel::Picture), QString());
}

TEST_F(HistoryList, AnImageHasNoThumbnailUntilItIsSaved)
{
    HistoryListModel model(m_store.context(), m_clock);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const auto item = add("a.png", ClipboardItemType::Image, testimages::plain({64, 48}, Qt::red));
    EXPECT_EQ(shown(model, HistoryListModel::Picture), QString());
    QList<int> told;
    QObject::connect(&model, &QAbstractItemModel::dataChanged,
        [&told](const QModelIndex &, const QModelIndex &, const QList<int> &roles) { told += roles; });
    ASSERT_TRUE(m_store.context().save());
    ASSERT_TRUE(waitUntil([&told] { return told.contains(HistoryListModel::Picture); }));
    EXPECT_EQ(shown(model, HistoryListModel::Picture),
        QStringLiteral("image://thumbnail/%1/%2")
            .arg(item->rowId())
            .arg(item->id().toString(QUuid::WithoutBraces)));
}

TEST_F(HistoryList, AnImageWhoseSaveIsLateIsShownThen)
{
    HistoryListModel model(m_store.context(), m_clock);
    add("a.png", ClipboardItemType::Image, testimages::plain({64, 48}, Qt::red));
    QCoreApplication::processEvents();
    bool isTold = false;
    QObject::connect(&model, &QAbstractItemModel::dataChanged,
        [&isTold](const QModelIndex &, const QModelIndex &, const QList<int> &roles) {
            isTold = isTold || roles.contains(HistoryListModel::Picture);
        });
    ASSERT_TRUE(m_store.context().save());
    EXPECT_TRUE(waitUntil([&isTold] { return isTold; }));
}

TEST_F(HistoryList, AnImageWithoutBytesHasNothingToShow)
{
    HistoryListModel model(m_store.context(), m_clock);
    model.readImageFacts(m_store.filePath());
    add("a.png", ClipboardItemType::Image);
    ASSERT_TRUE(m_store.context().save());
    for (const int role : {HistoryListModel::Picture, HistoryListModel::PixelSize, HistoryListModel::Folder})
        EXPECT_EQ(shown(model, role), QString());
}

TEST_F(HistoryList, TheSizesOfAnImageComeLaterAndTheRowIsTold)
{
    const QByteArray bytes = testimages::plain({1920, 1080}, Qt::red);
    HistoryListModel model(m_store.context(), m_clock);
    model.readImageFacts(m_store.filePath());
    add("b");
    const auto item = add("Image", ClipboardItemType::Image, bytes);
    add("c");
    ASSERT_TRUE(m_store.context().save());
    // Nothing waits for the disk.
    EXPECT_EQ(shown(model, HistoryListModel::PixelSize, 1), QString());
    EXPECT_EQ(shown(model, HistoryListModel::Folder, 1), QString());
    bool isTold = false;
    QObject::connect(&model, &QAbstractItemModel::dataChanged,
        [&isTold](const QModelIndex &first, const QModelIndex &last, const QList<int> &roles) {
            isTold = isTold ||
                (first.row() == 1 && last.row() == 1 && roles.contains(HistoryListModel::PixelSize) &&
                    !roles.contains(HistoryListModel::Picture));
        });
    ASSERT_TRUE(waitUntil([&isTold] { return isTold; }));
    EXPECT_EQ(shown(model, HistoryListModel::PixelSize, 1), text("1920×1080"));
    EXPECT_EQ(shown(model, HistoryListModel::Folder, 1), QStringLiteral("%1 KB").arg(bytes.size() / 1024));
}

TEST_F(HistoryList, AnImageThatIsNotSavedTellsItsBytesFromMemory)
{
    HistoryListModel model(m_store.context(), m_clock);
    add("Image", ClipboardItemType::Image, QByteArray(12 * 1024 + 1000, 'x'));
    EXPECT_EQ(shown(model, HistoryListModel::Folder), text("12 KB"));
    EXPECT_EQ(shown(model, HistoryListModel::PixelSize), QString());
}

TEST_F(HistoryList, AnImageOfLessThanAKilobyteHasZero)
{
    HistoryListModel model(m_store.context(), m_clock);
    model.readImageFacts(m_store.filePath());
    add("Image", ClipboardItemType::Image, QByteArray(1023, 'x'));
    EXPECT_EQ(shown(model, HistoryListModel::Folder), text("0 KB"));
    ASSERT_TRUE(m_store.context().save());
    EXPECT_TRUE(waitUntil([&model] { return shown(model, HistoryListModel::Folder) == text("0 KB"); }));
}

TEST_F(HistoryList, WhatIsKnownOfAnImageIsNotReadFromTheStoreAgain)
{
    HistoryListModel model(m_store.context(), m_clock);
    model.readImageFacts(m_store.filePath());
    const auto item = add("Image", ClipboardItemType::Image, testimages::plain({64, 48}, Qt::red));
    ASSERT_TRUE(m_store.context().save());
    ASSERT_TRUE(waitUntil([&model] { return shown(model, HistoryListModel::PixelSize) == text("64×48"); }));
    // The bytes go behind the model's back.
    auto database = Database::open(m_store.filePath());
    ASSERT_TRUE(database);
    ASSERT_TRUE(database.value()->execute("UPDATE ClipboardItem SET imageData = NULL"));
    EXPECT_EQ(shown(model, HistoryListModel::PixelSize), text("64×48"));
    EXPECT_FALSE(item->imageData());
}

} // namespace
