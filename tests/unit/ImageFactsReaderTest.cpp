#include "ui/history/ImageFactsReader.h"
#include "support/TemporaryStore.h"
#include "support/TestImages.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

namespace
{

class ImageFactsTest : public ::testing::Test
{
protected:
    std::shared_ptr<ClipboardItem> add(const QByteArray &bytes)
    {
        auto item = std::make_shared<ClipboardItem>(
            "a.png", ClipboardItemType::Image, bytes, std::nullopt, std::nullopt, false);
        m_store.context().insert(item);
        return item;
    }
    std::optional<ImageFacts> factsOf(const ClipboardItem &item)
    {
        EXPECT_TRUE(waitUntil([&] { return m_reader.facts(item).has_value(); }));
        return m_reader.facts(item);
    }

    TemporaryStore m_store;
    ImageFactsReader m_reader{m_store.filePath()};
};

TEST_F(ImageFactsTest, AreTheSizeInBytesAndInPixels)
{
    const QByteArray bytes = testimages::plain({1920, 1080}, Qt::red);
    const auto item = add(bytes);
    ASSERT_TRUE(m_store.context().save());
    EXPECT_FALSE(m_reader.facts(*item));
    const auto facts = factsOf(*item);
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->byteCount, bytes.size());
    EXPECT_EQ(facts->pixelSize, QSize(1920, 1080));
}

TEST_F(ImageFactsTest, AreToldOnceWhenTheyAreKnown)
{
    const auto item = add(testimages::plain({64, 48}, Qt::red));
    ASSERT_TRUE(m_store.context().save());
    std::vector<QUuid> told;
    QObject::connect(&m_reader, &ImageFactsReader::found, [&told](const QUuid &id) { told.push_back(id); });
    for (int i = 0; i < 5; ++i)
        EXPECT_FALSE(m_reader.facts(*item));
    ASSERT_TRUE(waitUntil([&] { return !told.empty(); }));
    (void)factsOf(*item);
    EXPECT_EQ(told, std::vector<QUuid>{item->id()});
}

TEST_F(ImageFactsTest, OfBrokenBytesAreTheirCountAlone)
{
    const auto item = add(QByteArray(5000, 'x'));
    ASSERT_TRUE(m_store.context().save());
    const auto facts = factsOf(*item);
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->byteCount, 5000);
    EXPECT_FALSE(facts->pixelSize.isValid());
}

TEST_F(ImageFactsTest, AreFoundOutOnceAnEntryIsSaved)
{
    const auto item = add(testimages::plain({64, 48}, Qt::red));
    EXPECT_FALSE(m_reader.facts(*item));
    ASSERT_TRUE(m_store.context().save());
    EXPECT_EQ(factsOf(*item)->pixelSize, QSize(64, 48));
}

TEST_F(ImageFactsTest, ThatAreKnownAreNotReadAgain)
{
    const auto item = add(testimages::plain({64, 48}, Qt::red));
    ASSERT_TRUE(m_store.context().save());
    ASSERT_TRUE(factsOf(*item));
    m_store.context().remove(item);
    ASSERT_TRUE(m_store.context().save());
    EXPECT_EQ(m_reader.facts(*item)->pixelSize, QSize(64, 48));
}

TEST_F(ImageFactsTest, AreRememberedUpToABound)
{
    const QByteArray bytes = testimages::plain({8, 8}, Qt::red);
    std::vector<std::shared_ptr<ClipboardItem>> items;
    for (qsizetype i = 0; i <= ImageFactsReader::MostRemembered; ++i)
        items.push_back(add(bytes));
    ASSERT_TRUE(m_store.context().save());
    for (const auto &item : items)
        ASSERT_TRUE(factsOf(*item));
    EXPECT_TRUE(m_reader.facts(*items.back()));
    // The one that was asked for longest ago has gone.
    EXPECT_FALSE(m_reader.facts(*items.front()));
}

TEST_F(ImageFactsTest, ThatAreStillSoughtWhenTheReaderGoesDoNoHarm)
{
    std::vector<std::shared_ptr<ClipboardItem>> items;
    for (int i = 0; i < 50; ++i)
        items.push_back(add(testimages::plain({64, 48}, Qt::red)));
    ASSERT_TRUE(m_store.context().save());
    auto reader = std::make_unique<ImageFactsReader>(m_store.filePath());
    for (const auto &item : items)
        EXPECT_FALSE(reader->facts(*item));
    reader.reset();
}

} // namespace
