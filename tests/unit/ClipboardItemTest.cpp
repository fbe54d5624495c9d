#include "store/ClipboardItem.h"

#include "fakes/FakePasteboard.h"
#include "fakes/FixedClock.h"
#include "platform/ImageCodec.h"
#include "support/TemporaryStore.h"

#include <gtest/gtest.h>

namespace
{

ClipboardItem itemOf(
    ClipboardItemType type, const QByteArray &content, std::optional<QByteArray> imageData = {})
{
    return ClipboardItem(content, type, std::move(imageData), std::nullopt, std::nullopt, false);
}

QByteArray pngOf(int width, int height)
{
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    return image::pngRepresentation(picture).value_or(QByteArray());
}

/// A pasteboard that held something before, after the item was copied to it.
class CopyToPasteboard : public ::testing::Test
{
protected:
    void copy(const ClipboardItem &item)
    {
        m_pasteboard.copy({{PasteboardType::String, "before"}});
        m_pasteboard.advance();
        item.copyToPasteboard(m_pasteboard);
        ASSERT_TRUE(m_pasteboard.advance());
        ASSERT_FALSE(m_pasteboard.advance()) << "one step of the counter";
    }
    std::optional<QByteArray> string(PasteboardType type) const
    {
        const auto items = m_pasteboard.pasteboardItems();
        return items.empty() ? std::nullopt : items.front().string(type);
    }
    bool isEmpty() const
    {
        return m_pasteboard.pasteboardItems().empty() && !m_pasteboard.data(PasteboardType::Png);
    }

    FakePasteboard m_pasteboard;
};

TEST(ClipboardItem, CreationSetsEveryField)
{
    const FixedClock clock;
    const ClipboardItem item("text", ClipboardItemType::Text, std::nullopt, QStringLiteral("Text Editor"),
        QStringLiteral("org.example.Editor"), true, clock);
    EXPECT_FALSE(item.id().isNull());
    EXPECT_EQ(item.content(), QStringLiteral("text"));
    EXPECT_EQ(item.type(), ClipboardItemType::Text);
    EXPECT_FALSE(item.imageData());
    EXPECT_EQ(item.sourceAppName(), QStringLiteral("Text Editor"));
    EXPECT_EQ(item.sourceAppBundleId(), QStringLiteral("org.example.Editor"));
    EXPECT_TRUE(item.isPinned());
    EXPECT_EQ(item.createdAt(), clock.now());
    EXPECT_EQ(item.characterCount(), 4);
    EXPECT_FALSE(item.categoryId());
}

TEST(ClipboardItem, EmptyContentHasNoCharacters)
{
    EXPECT_EQ(itemOf(ClipboardItemType::Text, "").characterCount(), 0);
}

TEST(ClipboardItem, AFlagAndAComposedLetterCountAsOneEach)
{
    EXPECT_EQ(itemOf(ClipboardItemType::Text, "🇦🇹e\u0301").characterCount(), 2);
}

TEST(ClipboardItem, ChangingTheContentDoesNotCountAgain)
{
    ClipboardItem item = itemOf(ClipboardItemType::Text, "abc");
    item.setContent("abcdef");
    EXPECT_EQ(item.characterCount(), 3);
    item.setCharacterCount(6);
    EXPECT_EQ(item.characterCount(), 6);
}

TEST(ClipboardItem, ThumbnailIsThePictureOrNothing)
{
    EXPECT_EQ(itemOf(ClipboardItemType::Image, "x", pngOf(7, 5)).thumbnail()->size(), QSize(7, 5));
    EXPECT_FALSE(itemOf(ClipboardItemType::Image, "x").thumbnail());
    EXPECT_FALSE(itemOf(ClipboardItemType::Image, "x", "no picture").thumbnail());
}

TEST_F(CopyToPasteboard, TextIsWrittenAsText)
{
    copy(itemOf(ClipboardItemType::Text, "a\nb"));
    EXPECT_EQ(string(PasteboardType::String), "a\nb");
    EXPECT_FALSE(string(PasteboardType::Url));
}

TEST_F(CopyToPasteboard, RichTextIsWrittenLikeText)
{
    copy(itemOf(ClipboardItemType::RichText, "rich"));
    EXPECT_EQ(string(PasteboardType::String), "rich");
    EXPECT_FALSE(string(PasteboardType::Url));
}

TEST_F(CopyToPasteboard, AUrlIsWrittenAsTextAndAddress)
{
    copy(itemOf(ClipboardItemType::Url, "https://example.org/a?b=c#d"));
    EXPECT_EQ(string(PasteboardType::String), "https://example.org/a?b=c#d");
    EXPECT_EQ(string(PasteboardType::Url), "https://example.org/a?b=c#d");
}

TEST_F(CopyToPasteboard, AUrlThatDoesNotParseLeavesThePasteboardEmpty)
{
    for (const auto *const text : {"http://exa mple.org/", "http://[::1", "", "http://example.org:port/"}) {
        copy(itemOf(ClipboardItemType::Url, text));
        EXPECT_TRUE(isEmpty()) << text;
    }
}

TEST_F(CopyToPasteboard, AFileIsWrittenAsAnAddressAloneWithItsPathAsItStands)
{
    copy(itemOf(ClipboardItemType::File, "/home/ann/report.pdf"));
    EXPECT_EQ(string(PasteboardType::Url), "/home/ann/report.pdf");
    EXPECT_FALSE(string(PasteboardType::String));
    EXPECT_FALSE(string(PasteboardType::FileUrl));
}

TEST_F(CopyToPasteboard, AFileWithABlankInItsNameIsWrittenToo)
{
    copy(itemOf(ClipboardItemType::File, "/home/ann/Annual report 100%.pdf"));
    EXPECT_EQ(string(PasteboardType::Url), "/home/ann/Annual report 100%.pdf");
}

TEST_F(CopyToPasteboard, AnImageIsWrittenAsAnImage)
{
    copy(itemOf(ClipboardItemType::Image, "Image (0 KB)", pngOf(3, 2)));
    const auto png = m_pasteboard.data(PasteboardType::Png);
    ASSERT_TRUE(png);
    EXPECT_EQ(image::decode(*png)->size(), QSize(3, 2));
    EXPECT_FALSE(string(PasteboardType::String));
}

TEST_F(CopyToPasteboard, AnImageWithoutBytesLeavesThePasteboardEmpty)
{
    copy(itemOf(ClipboardItemType::Image, "Image (0 KB)"));
    EXPECT_TRUE(isEmpty());
}

TEST_F(CopyToPasteboard, AnImageThatDoesNotDecodeLeavesThePasteboardEmpty)
{
    QByteArray broken = pngOf(30, 20);
    broken.truncate(broken.size() / 2);
    copy(itemOf(ClipboardItemType::Image, "Image (0 KB)", broken));
    EXPECT_TRUE(isEmpty());
}

TEST(SavedClipboardItem, KeepsNoImageBytesInMemoryAndReadsThemWhenAsked)
{
    TemporaryStore store;
    const QByteArray png = pngOf(20, 10);
    const auto item = std::make_shared<ClipboardItem>(
        "Image (0 KB)", ClipboardItemType::Image, png, std::nullopt, std::nullopt, false);
    store.context().insert(item);
    ASSERT_TRUE(store.context().save());
    EXPECT_TRUE(item->fields().imageData.isNull());
    EXPECT_TRUE(item->hasImageData());
    EXPECT_EQ(item->imageData(), png);
}

TEST(SavedClipboardItem, KeepsOnlyTheBeginningOfALongContentAndReadsTheRestWhenAsked)
{
    TemporaryStore store;
    const QByteArray content = QByteArray("0123456789abcdef").repeated(100'000);
    const auto item = std::make_shared<ClipboardItem>(
        content, ClipboardItemType::Text, std::nullopt, std::nullopt, std::nullopt, false);
    store.context().insert(item);
    ASSERT_TRUE(store.context().save());
    EXPECT_EQ(item->contentHead().size(), ClipboardItem::HeadSize);
    EXPECT_EQ(item->contentSize(), content.size());
    EXPECT_EQ(item->contentUtf8(), content);
    EXPECT_TRUE(item->contentEquals(content));
    QByteArray other = content;
    other.back() = '!';
    EXPECT_FALSE(item->contentEquals(other));
}

TEST(SavedClipboardItem, PinningALongOneKeepsItsContentInTheRow)
{
    TemporaryStore store;
    const QByteArray content(100'000, 'x');
    const auto item = std::make_shared<ClipboardItem>(
        content, ClipboardItemType::Text, std::nullopt, std::nullopt, std::nullopt, false);
    store.context().insert(item);
    ASSERT_TRUE(store.context().save());
    item->setPinned(true);
    ASSERT_TRUE(store.context().save());
    store.reopen();
    const auto items = store.context().fetch<ClipboardItem>();
    ASSERT_EQ(items.size(), 1U);
    EXPECT_TRUE(items.front()->isPinned());
    EXPECT_EQ(items.front()->contentUtf8(), content);
}

} // namespace
