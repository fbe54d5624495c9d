#include "store/StoredImage.h"
#include "support/TemporaryStore.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace
{

class StoredImageTest : public ::testing::Test
{
protected:
    std::shared_ptr<ClipboardItem> save(const QByteArray &bytes)
    {
        auto item = std::make_shared<ClipboardItem>(
            "a.png", ClipboardItemType::Image, bytes, std::nullopt, std::nullopt, false);
        m_store.context().insert(item);
        EXPECT_TRUE(m_store.context().save());
        return item;
    }
    std::unique_ptr<StoredImage> open(const ClipboardItem &item) const
    {
        return StoredImage::open(m_store.filePath(), item.rowId(), item.id());
    }

    TemporaryStore m_store;
};

QByteArray noise(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    quint32 state = 1;
    for (char &byte : bytes)
        byte = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
    return bytes;
}

TEST_F(StoredImageTest, GivesTheBytesOfTheRow)
{
    const QByteArray bytes = noise(1'000'003);
    const auto image = open(*save(bytes));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), bytes.size());
    EXPECT_EQ(image->readAll(), bytes);
}

TEST_F(StoredImageTest, CanBeReadFromAnyPlace)
{
    const QByteArray bytes = noise(100'000);
    const auto image = open(*save(bytes));
    ASSERT_TRUE(image->seek(70'000));
    EXPECT_EQ(image->read(10), bytes.mid(70'000, 10));
    EXPECT_EQ(image->peek(10), bytes.mid(70'010, 10));
    ASSERT_TRUE(image->seek(0));
    EXPECT_EQ(image->read(8), bytes.first(8));
    ASSERT_TRUE(image->seek(99'995));
    EXPECT_EQ(image->read(100), bytes.last(5));
    EXPECT_TRUE(image->atEnd());
}

TEST_F(StoredImageTest, IsNoneOfAnotherEntryInTheSameRow)
{
    const auto item = save("bytes");
    EXPECT_FALSE(StoredImage::open(m_store.filePath(), item->rowId(), QUuid::createUuid()));
}

TEST_F(StoredImageTest, IsNoneWithoutARowWithoutBytesAndWithoutAFile)
{
    const auto item = save("bytes");
    const auto text = std::make_shared<ClipboardItem>(
        "text", ClipboardItemType::Text, std::nullopt, std::nullopt, std::nullopt, false);
    m_store.context().insert(text);
    ASSERT_TRUE(m_store.context().save());
    EXPECT_FALSE(open(*text));
    EXPECT_FALSE(StoredImage::open(m_store.filePath(), item->rowId() + 100, item->id()));
    EXPECT_FALSE(StoredImage::open(m_store.filePath() + QStringLiteral(".none"), item->rowId(), item->id()));
    EXPECT_FALSE(QFile::exists(m_store.filePath() + QStringLiteral(".none")));
}

TEST_F(StoredImageTest, ShowsTheBytesAsTheyWereWhenItWasOpened)
{
    const QByteArray bytes = noise(500'000);
    const auto item = save(bytes);
    const auto image = open(*item);
    m_store.context().remove(item);
    ASSERT_TRUE(m_store.context().save());
    EXPECT_EQ(image->readAll(), bytes);
    EXPECT_FALSE(open(*item));
}

TEST_F(StoredImageTest, IsReadOnAnyThreadWhileTheStoreIsWritten)
{
    const QByteArray bytes = noise(300'000);
    const auto item = save(bytes);
    std::atomic_int right = 0;
    constexpr int Rounds = 20;
    std::thread reader([this, item, &bytes, &right] {
        for (int round = 0; round < Rounds; ++round) {
            const auto image = open(*item);
            right += image && image->readAll() == bytes;
        }
    });
    for (int round = 0; round < Rounds; ++round)
        save(noise(10'000));
    reader.join();
    EXPECT_EQ(right, Rounds);
}

} // namespace
