#include "capture/ClipboardMonitor.h"

#include "fakes/FakeFileReader.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/FixedClock.h"
#include "fakes/ManualMainQueue.h"
#include "platform/ImageCodec.h"
#include "store/Seeding.h"
#include "support/TemporaryStore.h"

#include <gtest/gtest.h>

namespace
{

using Type = PasteboardType;

class Monitor : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ::testing::internal::CaptureStdout();
        seedDefaultCategories(&m_store.container());
        ::testing::internal::GetCapturedStdout();
    }
    void start()
    {
        m_monitor = std::make_unique<ClipboardMonitor>(
            m_store.container(), m_pasteboard, m_workspace, m_fileReader, m_queue, m_clock);
        m_monitor->startMonitoring();
    }
    void tick()
    {
        m_clock.advanceBy(500);
        m_queue.advanceBy(ClipboardMonitor::PollingInterval);
    }
    void copy(const FakePasteboard::Content &content)
    {
        m_pasteboard.copy(content);
        tick();
    }
    std::vector<std::shared_ptr<ClipboardItem>> items() { return m_store.context().fetch<ClipboardItem>(); }
    QUuid category(const QString &name)
    {
        const auto found = m_store.context().fetch<ClipCategory>(
            {.predicate = [&name](const ClipCategory &c) { return c.name() == name; },
                .leading = nullptr,
                .limit = 1});
        return found.empty() ? QUuid() : found.front()->id();
    }
    /// Fills the history with this many entries, oldest first: "0", "1", ...
    void fill(int count, bool isPinned)
    {
        for (int i = 0; i < count; ++i) {
            m_clock.advanceBy(1);
            m_store.context().insert(
                std::make_shared<ClipboardItem>(QByteArray::number(i) + (isPinned ? "p" : ""),
                    ClipboardItemType::Text, std::nullopt, std::nullopt, std::nullopt, isPinned, m_clock));
        }
        ASSERT_TRUE(m_store.context().save());
    }

    TemporaryStore m_store;
    FakePasteboard m_pasteboard;
    FakeWorkspace m_workspace;
    FakeFileReader m_fileReader;
    ManualMainQueue m_queue;
    FixedClock m_clock;
    std::unique_ptr<ClipboardMonitor> m_monitor;
};

TEST_F(Monitor, WhatWasOnTheClipboardAtStartUpIsNotCaptured)
{
    m_pasteboard.copy({{Type::String, "before"}});
    m_pasteboard.advance();
    start();
    tick();
    EXPECT_TRUE(items().empty());
}

TEST_F(Monitor, ANewCopyBecomesAnEntryWithItsSourceAndCategory)
{
    start();
    m_workspace.bringToFront(QStringLiteral("Text Editor"), QStringLiteral("org.example.Editor"));
    copy({{Type::String, "hello"}});
    ASSERT_EQ(items().size(), 1U);
    const auto item = items().front();
    EXPECT_EQ(item->content(), QStringLiteral("hello"));
    EXPECT_EQ(item->sourceAppName(), QStringLiteral("Text Editor"));
    EXPECT_EQ(item->sourceAppBundleId(), QStringLiteral("org.example.Editor"));
    EXPECT_EQ(item->categoryId(), category(QStringLiteral("Text")));
    EXPECT_EQ(item->createdAt(), m_clock.now());
    EXPECT_FALSE(m_store.context().hasChanges());
}

TEST_F(Monitor, WithoutAFrontmostApplicationTheSourceIsAbsent)
{
    start();
    copy({{Type::String, "a"}});
    EXPECT_FALSE(items().front()->sourceAppName());
    EXPECT_FALSE(items().front()->sourceAppBundleId());
}

TEST_F(Monitor, EachPartOfTheSourceMayBeAbsentByItself)
{
    start();
    m_workspace.bringToFront(std::nullopt, QStringLiteral("org.example.Editor"));
    copy({{Type::String, "a"}});
    EXPECT_FALSE(items().front()->sourceAppName());
    EXPECT_EQ(items().front()->sourceAppBundleId(), QStringLiteral("org.example.Editor"));
}

TEST_F(Monitor, APollWithNothingNewLooksAtNothing)
{
    start();
    copy({{Type::String, "a"}});
    const int reads = m_pasteboard.readCount();
    tick();
    tick();
    EXPECT_EQ(m_pasteboard.readCount(), reads);
}

TEST_F(Monitor, ACopyThatGivesNothingIsNotLookedAtAgain)
{
    start();
    copy({{Type::String, "  "}});
    const int reads = m_pasteboard.readCount();
    tick();
    EXPECT_EQ(m_pasteboard.readCount(), reads);
    EXPECT_TRUE(items().empty());
}

TEST_F(Monitor, CopiesFasterThanThePollAreAllTakenInOrder)
{
    start();
    for (int i = 0; i < 100; ++i)
        m_pasteboard.copy({{Type::String, QByteArray::number(i)}});
    tick();
    ASSERT_EQ(items().size(), 100U);
    for (size_t i = 0; i < 100; ++i)
        EXPECT_EQ(items()[i]->contentUtf8(), QByteArray::number(99 - static_cast<int>(i)));
}

TEST_F(Monitor, ASecretLeavesNoEntry)
{
    start();
    m_pasteboard.copySecret({{Type::String, "hunter2"}});
    tick();
    EXPECT_TRUE(items().empty());
}

TEST_F(Monitor, ARecopyMovesToTheTopWithItsPinAndCategory)
{
    start();
    copy({{Type::String, "old"}});
    const auto old = items().front();
    const QUuid chosen = QUuid::createUuid();
    old->setPinned(true);
    old->setCategoryId(chosen);
    const QUuid oldId = old->id();
    copy({{Type::String, "newer"}});
    m_workspace.bringToFront(QStringLiteral("Browser"), std::nullopt);
    copy({{Type::String, "old"}});
    ASSERT_EQ(items().size(), 2U);
    const auto top = items().front();
    EXPECT_EQ(top->content(), QStringLiteral("old"));
    EXPECT_TRUE(top->isPinned());
    EXPECT_EQ(top->categoryId(), chosen);
    EXPECT_NE(top->id(), oldId);
    EXPECT_EQ(top->createdAt(), m_clock.now());
    EXPECT_EQ(top->sourceAppName(), QStringLiteral("Browser"));
}

TEST_F(Monitor, ARecopyOfAnEntryWithoutCategoryGetsTheDefaultOne)
{
    start();
    copy({{Type::String, "a"}});
    items().front()->setCategoryId(std::nullopt);
    copy({{Type::String, "a"}});
    EXPECT_EQ(items().front()->categoryId(), category(QStringLiteral("Text")));
}

TEST_F(Monitor, ARecopySurvivesAReopeningAsOneEntry)
{
    start();
    copy({{Type::String, "a"}});
    copy({{Type::String, "a"}});
    m_monitor.reset();
    m_store.reopen();
    EXPECT_EQ(items().size(), 1U);
}

TEST_F(Monitor, TheSameContentAsTextAndAsUrlGivesTwoEntries)
{
    start();
    copy({{Type::String, "mailto:ann@example.org"}});
    copy({{Type::Url, "mailto:ann@example.org"}});
    ASSERT_EQ(items().size(), 2U);
    EXPECT_EQ(items()[0]->type(), ClipboardItemType::Url);
    EXPECT_EQ(items()[1]->type(), ClipboardItemType::Text);
}

TEST_F(Monitor, TheMatchIsExactByCodePoint)
{
    start();
    copy({{Type::String, "é"}});
    copy({{Type::String, "e\u0301"}});
    copy({{Type::String, "É"}});
    EXPECT_EQ(items().size(), 3U);
}

TEST_F(Monitor, ARecopiedImageTakesTheNewBytes)
{
    start();
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::red);
    copy({{Type::Png, *image::pngRepresentation(picture)}, {Type::UrlName, "logo"}});
    picture.fill(Qt::blue);
    copy({{Type::Png, *image::pngRepresentation(picture)}, {Type::UrlName, "logo"}});
    ASSERT_EQ(items().size(), 1U);
    EXPECT_EQ(items().front()->thumbnail()->pixelColor(0, 0), QColor(Qt::blue));
    EXPECT_EQ(items().front()->categoryId(), category(QStringLiteral("Image")));
}

TEST_F(Monitor, TheFirstCategoryWithTheKindsNameIsAssigned)
{
    for (const auto &found : m_store.context().fetch<ClipCategory>())
        m_store.context().remove(found);
    start();
    copy({{Type::String, "none"}});
    EXPECT_FALSE(items().front()->categoryId());
    const auto lower = std::make_shared<ClipCategory>(
        QStringLiteral("text"), QStringLiteral("#3F78F3"), QStringLiteral("doc"), 0, false);
    m_store.context().insert(lower);
    copy({{Type::String, "still none"}});
    EXPECT_FALSE(items().front()->categoryId());
    std::vector<QUuid> ids;
    for (const int sortOrder : {1, 2}) {
        const auto category = std::make_shared<ClipCategory>(
            QStringLiteral("Text"), QStringLiteral("#3F78F3"), QStringLiteral("doc"), sortOrder, false);
        m_store.context().insert(category);
        ids.push_back(category->id());
    }
    copy({{Type::String, "the first"}});
    EXPECT_EQ(items().front()->categoryId(), ids.front());
}

TEST_F(Monitor, ANewCopyIntoAFullHistoryDeletesTheOldestUnpinnedEntry)
{
    fill(3, true);
    fill(ClipboardMonitor::UnpinnedLimit, false);
    start();
    copy({{Type::String, "new"}});
    const auto all = items();
    ASSERT_EQ(all.size(), static_cast<size_t>(ClipboardMonitor::UnpinnedLimit) + 3);
    EXPECT_EQ(all.front()->contentUtf8(), "new");
    EXPECT_FALSE(m_store.context().newestItem(ClipboardItemType::Text, "0"));
    EXPECT_TRUE(m_store.context().newestItem(ClipboardItemType::Text, "1"));
    EXPECT_TRUE(m_store.context().newestItem(ClipboardItemType::Text, "0p"));
}

TEST_F(Monitor, AFullHistoryIsLeftAloneByARecopy)
{
    fill(ClipboardMonitor::UnpinnedLimit, false);
    start();
    copy({{Type::String, "0"}});
    EXPECT_EQ(items().size(), static_cast<size_t>(ClipboardMonitor::UnpinnedLimit));
}

TEST_F(Monitor, ACopiedImageFileIsAnImageWithTheFilesBytes)
{
    start();
    m_fileReader.bytes = "jpeg";
    copy({{Type::FileUrl, "file:///home/ann/photo.JPG"}});
    ASSERT_EQ(items().size(), 1U);
    EXPECT_EQ(items().front()->type(), ClipboardItemType::Image);
    EXPECT_EQ(items().front()->imageData(), "jpeg");
    EXPECT_EQ(items().front()->categoryId(), category(QStringLiteral("Image")));
}

TEST_F(Monitor, AnImageFileThatCannotBeReadIsAFile)
{
    start();
    copy({{Type::FileUrl, "file:///home/ann/photo.jpg"}});
    EXPECT_EQ(items().front()->type(), ClipboardItemType::File);
    EXPECT_FALSE(items().front()->hasImageData());
}

TEST_F(Monitor, CopiesAfterAnImageFileOnAHangingDiskWaitForItInOrder)
{
    start();
    m_fileReader.isHanging = true;
    m_fileReader.bytes = "png";
    m_pasteboard.copy({{Type::FileUrl, "file:///net/a.png"}});
    m_pasteboard.copy({{Type::String, "after"}});
    tick();
    tick();
    EXPECT_TRUE(items().empty());
    m_fileReader.answerNext();
    m_queue.drain();
    ASSERT_EQ(items().size(), 2U);
    EXPECT_EQ(items()[0]->contentUtf8(), "after");
    EXPECT_EQ(items()[1]->contentUtf8(), "/net/a.png");
}

TEST_F(Monitor, AnImageFileThatComesAfterTheMonitorsEndIsForgotten)
{
    start();
    m_fileReader.isHanging = true;
    copy({{Type::FileUrl, "file:///net/a.png"}});
    m_monitor.reset();
    m_fileReader.answerNext();
    EXPECT_TRUE(items().empty());
}

TEST_F(Monitor, DoesNothingOnceItIsGone)
{
    start();
    m_monitor.reset();
    copy({{Type::String, "a"}});
    EXPECT_TRUE(items().empty());
}

} // namespace
