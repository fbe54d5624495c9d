#include "platform/linux/ClipboardQueue.h"
#include "platform/linux/ClipboardOwnContent.h"
#include "support/CapturedConsole.h"
#include "support/Waiting.h"

#include <QBuffer>
#include <QImage>

#include <gtest/gtest.h>

namespace
{

ClipboardReading text(const QByteArray &string)
{
    ClipboardReading reading;
    reading.values[PasteboardType::String] = string;
    return reading;
}

ClipboardReading image(PasteboardType type, const char *format)
{
    QImage picture(30, 20, QImage::Format_RGB32);
    picture.fill(Qt::yellow);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, format);
    ClipboardReading reading;
    reading.values[type] = bytes;
    return reading;
}

QByteArrayList everything(ClipboardQueue &queue)
{
    QByteArrayList texts;
    while (queue.advance())
        texts.append(queue.data(PasteboardType::String).value_or("nothing"));
    return texts;
}

} // namespace

TEST(ClipboardQueue, ContentsAreShownInTheOrderOfTheirNumbers)
{
    ClipboardQueue queue;
    const qint64 first = queue.reserve();
    const qint64 second = queue.reserve();
    queue.fill(second, text("second"));
    EXPECT_FALSE(queue.advance());
    EXPECT_TRUE(queue.holdsBack(first));
    EXPECT_FALSE(queue.holdsBack(second));
    queue.fill(first, text("first"));
    EXPECT_EQ(everything(queue), QByteArrayList({"first", "second"}));
    EXPECT_EQ(queue.changeCount(), second);
}

TEST(ClipboardQueue, AnAbandonedContentLeavesNoGap)
{
    ClipboardQueue queue;
    const qint64 first = queue.reserve();
    const qint64 second = queue.reserve();
    queue.fill(second, text("second"));
    queue.abandon(first);
    queue.fill(first, text("too late"));
    EXPECT_EQ(everything(queue), QByteArrayList({"second"}));
}

TEST(ClipboardQueue, TheContentAtTheStartIsCurrentWhenItIsKnown)
{
    ClipboardQueue queue;
    queue.fill(0, text("start"));
    EXPECT_FALSE(queue.advance());
    EXPECT_EQ(queue.changeCount(), 0);
    EXPECT_EQ(queue.data(PasteboardType::String), "start");
}

TEST(ClipboardQueue, TheContentAtTheStartIsForgottenAfterTheNextOne)
{
    ClipboardQueue queue;
    queue.fill(queue.reserve(), text("next"));
    EXPECT_EQ(everything(queue), QByteArrayList({"next"}));
    queue.fill(0, text("start"));
    EXPECT_FALSE(queue.advance());
    EXPECT_EQ(queue.data(PasteboardType::String), "next");
}

TEST(ClipboardQueue, BeyondTheNumberTheOldestIsDroppedWithALine)
{
    ClipboardQueue queue(ClipboardQueue::Limits{3, 1000});
    CapturedConsole console;
    for (const char *const string : {"a", "b", "c", "d"})
        queue.fill(queue.reserve(), text(string));
    EXPECT_EQ(console.output(), "[Larkspool] Dropped a waiting copy of 1 bytes: too many are waiting\n");
    EXPECT_EQ(everything(queue), QByteArrayList({"b", "c", "d"}));
}

TEST(ClipboardQueue, BeyondTheSizeOnlyTheNewestIsLeft)
{
    ClipboardQueue queue(ClipboardQueue::Limits{100, 10});
    CapturedConsole console;
    queue.fill(queue.reserve(), text("12345"));
    queue.fill(queue.reserve(), text("1234567890123"));
    EXPECT_EQ(everything(queue), QByteArrayList({"1234567890123"}));
}

TEST(ClipboardQueue, AContentThatIsStillFetchedIsNotDropped)
{
    ClipboardQueue queue(ClipboardQueue::Limits{1, 1000});
    CapturedConsole console;
    const qint64 slow = queue.reserve();
    queue.fill(queue.reserve(), text("b"));
    queue.fill(queue.reserve(), text("c"));
    queue.fill(slow, text("a"));
    EXPECT_EQ(everything(queue), QByteArrayList({"c"}));
}

TEST(ClipboardQueue, AnImageWaitsUntilItsPngIsThere)
{
    ClipboardQueue queue;
    queue.fill(queue.reserve(), image(PasteboardType::Tiff, "tiff"));
    queue.fill(queue.reserve(), text("after"));
    ASSERT_TRUE(waitUntil([&] { return queue.advance(); }));
    EXPECT_TRUE(queue.data(PasteboardType::Tiff).has_value());
    EXPECT_TRUE(queue.pngRepresentation(PasteboardType::Tiff)->startsWith("\x89PNG"));
    EXPECT_TRUE(queue.pasteboardItems().front().string(PasteboardType::Tiff) == std::nullopt);
    EXPECT_EQ(everything(queue), QByteArrayList({"after"}));
}

TEST(ClipboardQueue, OfTwoImagesTheFirstThatIsOneIsConverted)
{
    ClipboardQueue queue;
    ClipboardReading both = image(PasteboardType::Tiff, "tiff");
    both.values[PasteboardType::Png] = image(PasteboardType::Png, "png").values[PasteboardType::Png];
    queue.fill(queue.reserve(), both);
    ASSERT_TRUE(waitUntil([&] { return queue.advance(); }));
    EXPECT_TRUE(queue.pngRepresentation(PasteboardType::Tiff).has_value());
    EXPECT_EQ(queue.pngRepresentation(PasteboardType::Png), std::nullopt);
    both.values[PasteboardType::Tiff] = "broken";
    queue.fill(queue.reserve(), both);
    ASSERT_TRUE(waitUntil([&] { return queue.advance(); }));
    EXPECT_EQ(queue.pngRepresentation(PasteboardType::Tiff), std::nullopt);
    EXPECT_TRUE(queue.pngRepresentation(PasteboardType::Png).has_value());
}

TEST(ClipboardQueue, DestructionDoesNotWaitForWhatIsInLine)
{
    ClipboardQueue queue;
    for (int i = 0; i < 100; ++i)
        queue.fill(queue.reserve(), image(PasteboardType::Tiff, "tiff"));
}

TEST(ClipboardOwnContent, ATextAfterAnImageKeepsBoth)
{
    ClipboardQueue queue;
    ClipboardOwnContent own(queue);
    own.start();
    own.writeObjects({PasteboardImage{image(PasteboardType::Png, "jpeg").values[PasteboardType::Png]}});
    own.setString("caption");
    ASSERT_TRUE(waitUntil([&] { return queue.advance(); }));
    EXPECT_EQ(queue.data(PasteboardType::String), "caption");
    EXPECT_TRUE(queue.data(PasteboardType::Png)->startsWith("\x89PNG"));
    EXPECT_NE(own.snapshot().content.find("image/jpeg"), nullptr);
}

TEST(ClipboardOwnContent, WritingBeforeAStartDoesNothing)
{
    ClipboardQueue queue;
    ClipboardOwnContent own(queue);
    own.setString("text");
    EXPECT_FALSE(queue.advance());
    EXPECT_TRUE(queue.pasteboardItems().empty());
    EXPECT_TRUE(own.snapshot().content.isEmpty());
}
