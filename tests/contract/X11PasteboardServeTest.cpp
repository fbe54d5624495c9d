#include "contract/X11PasteboardFixture.h"

#include "platform/ImageCodec.h"

#include <QBuffer>
#include <QImage>

#include <algorithm>

using namespace std::chrono_literals;

namespace
{

class X11PasteboardServe : public X11PasteboardFixture
{
protected:
    /// Own content, and the moment when other clients see it.
    void write(const QByteArray &string)
    {
        pasteboard().clearContents();
        pasteboard().setString(string);
        waitForOwnership();
    }
    void write(const PasteboardObject &object)
    {
        pasteboard().clearContents();
        pasteboard().writeObjects({object});
        waitForOwnership();
    }
    void waitForOwnership()
    {
        ASSERT_TRUE(waitUntil([this] { return clipboardOwner() != XCB_WINDOW_NONE; }));
    }
};

QByteArrayList sorted(QByteArrayList list)
{
    std::sort(list.begin(), list.end());
    return list;
}

QByteArray encoded(const char *format)
{
    QImage image(20, 10, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

QByteArray largeBytes()
{
    QByteArray bytes(50 * 1000 * 1000, 'a');
    for (qsizetype i = 0; i < bytes.size(); i += 1000)
        bytes[i] = static_cast<char>('a' + (i / 1000) % 26);
    return bytes;
}

} // namespace

TEST_F(X11PasteboardServe, ATextIsServedInEveryEncoding)
{
    open();
    write("grüße, 世界 \xf0\x9f\x98\x80");
    SelectionRequestor client;
    EXPECT_EQ(sorted(client.targets()),
        QByteArrayList({"STRING", "TEXT", "UTF8_STRING", "text/plain", "text/plain;charset=utf-8"}));
    for (const char *const target : {"UTF8_STRING", "text/plain", "text/plain;charset=utf-8"}) {
        const auto reply = client.paste(target);
        EXPECT_EQ(reply.bytes, "grüße, 世界 \xf0\x9f\x98\x80") << target;
        EXPECT_EQ(reply.type, target);
    }
    EXPECT_EQ(client.paste("STRING").bytes,
        "gr\xfc\xdf"
        "e, ?? ?");
    EXPECT_EQ(client.paste("TEXT").type, "UTF8_STRING");
    EXPECT_EQ(client.paste("TIMESTAMP").bytes.size(), 4);
    EXPECT_EQ(client.paste("TIMESTAMP").type, "INTEGER");
}

TEST_F(X11PasteboardServe, TextOfTheOwnersChoiceIsLatin1WhereThatIsEnough)
{
    open();
    write("grün");
    const auto reply = SelectionRequestor().paste("TEXT");
    EXPECT_EQ(reply.type, "STRING");
    EXPECT_EQ(reply.bytes, "gr\xfcn");
}

TEST_F(X11PasteboardServe, AnAddressIsServedWithoutAText)
{
    open();
    write(PasteboardUrl{"https://example.org/ä"});
    SelectionRequestor client;
    EXPECT_EQ(sorted(client.targets()), QByteArrayList({"text/uri-list", "text/x-moz-url"}));
    EXPECT_EQ(client.paste("text/uri-list").bytes, "https://example.org/ä\r\n");
    const QString lines = QStringLiteral("https://example.org/ä\nhttps://example.org/ä");
    EXPECT_EQ(client.paste("text/x-moz-url").bytes,
        QByteArray(reinterpret_cast<const char *>(lines.utf16()), lines.size() * 2));
    EXPECT_TRUE(client.paste("UTF8_STRING").isRefused);
}

TEST_F(X11PasteboardServe, AnImageIsServedAsItIsAndInOtherFormats)
{
    open();
    const QByteArray png = encoded("png");
    write(PasteboardImage{png});
    SelectionRequestor client;
    EXPECT_TRUE(client.targets().contains("image/jpeg"));
    EXPECT_FALSE(client.targets().contains("UTF8_STRING"));
    EXPECT_EQ(client.paste("image/png").bytes, png);
    for (const char *const target : {"image/jpeg", "image/bmp"}) {
        const auto picture = image::decode(client.paste(target).bytes);
        ASSERT_TRUE(picture.has_value()) << target;
        EXPECT_EQ(picture->size(), QSize(20, 10)) << target;
    }
}

TEST_F(X11PasteboardServe, AnImageFileOfAnotherFormatIsServedAsPngToo)
{
    open();
    const QByteArray jpeg = encoded("jpeg");
    write(PasteboardImage{jpeg});
    SelectionRequestor client;
    EXPECT_EQ(client.paste("image/jpeg").bytes, jpeg);
    const QByteArray png = client.paste("image/png").bytes;
    EXPECT_TRUE(png.startsWith("\x89PNG"));
    EXPECT_TRUE(image::decode(png).has_value());
}

TEST_F(X11PasteboardServe, BytesThatAreNoImageAreRefused)
{
    open();
    write(PasteboardImage{"no image"});
    EXPECT_TRUE(SelectionRequestor().paste("image/png").isRefused);
}

TEST_F(X11PasteboardServe, FiftyMegabytesGoToTwoReadersAtOnce)
{
    open();
    const QByteArray large = largeBytes();
    write(large);
    SelectionRequestor one;
    SelectionRequestor two;
    one.request("UTF8_STRING");
    two.request("STRING");
    ASSERT_TRUE(waitUntil([&] { return one.reply("UTF8_STRING") && two.reply("STRING"); }, 60s));
    EXPECT_TRUE(one.reply("UTF8_STRING")->wasIncremental);
    EXPECT_TRUE(one.reply("UTF8_STRING")->bytes == large);
    EXPECT_TRUE(two.reply("STRING")->bytes == large);
}

TEST_F(X11PasteboardServe, SeveralTargetsAreServedAtOnce)
{
    open();
    pasteboard().clearContents();
    const QByteArray large = largeBytes();
    pasteboard().setString(large);
    pasteboard().writeObjects({PasteboardImage{encoded("png")}, PasteboardUrl{"https://example.org"}});
    waitForOwnership();
    SelectionRequestor client;
    client.requestMultiple(
        {"UTF8_STRING", "text/uri-list", "image/bmp", "MULTIPLE", "x-not/there", "STRING"});
    ASSERT_TRUE(waitUntil([&] { return client.hasMultiple(); }, 60s));
    EXPECT_TRUE(client.reply("UTF8_STRING")->bytes == large);
    EXPECT_TRUE(client.reply("STRING")->bytes == large);
    EXPECT_EQ(client.reply("text/uri-list")->bytes, "https://example.org\r\n");
    EXPECT_TRUE(image::decode(client.reply("image/bmp")->bytes).has_value());
    EXPECT_TRUE(client.reply("x-not/there")->isRefused);
    EXPECT_TRUE(client.reply("MULTIPLE")->isRefused);
}

TEST_F(X11PasteboardServe, AReaderWithoutAPropertyGetsItUnderTheTargetsName)
{
    open();
    write("text");
    SelectionRequestor client;
    client.isObsolete = true;
    EXPECT_EQ(client.paste("UTF8_STRING").bytes, "text");
}

TEST_F(X11PasteboardServe, AReaderThatTakesNothingIsDropped)
{
    ClipboardLimits limits = patientLimits();
    limits.stalledReceiver = 1s;
    open(limits);
    write(largeBytes());
    SelectionRequestor stalled;
    stalled.stalls = true;
    stalled.request("UTF8_STRING");
    ASSERT_TRUE(waitUntil([&] { return stalled.isWatched(); }));
    EXPECT_TRUE(waitUntil([&] { return !stalled.isWatched(); }));
    EXPECT_EQ(stalled.reply("UTF8_STRING"), std::nullopt);
    EXPECT_EQ(SelectionRequestor().paste("UTF8_STRING").bytes.size(), largeBytes().size());
}

TEST_F(X11PasteboardServe, AReaderThatDiesIsForgotten)
{
    open();
    write(largeBytes());
    {
        SelectionRequestor dying;
        dying.stalls = true;
        dying.request("UTF8_STRING");
        ASSERT_TRUE(waitUntil([&] { return dying.isWatched(); }));
    }
    EXPECT_EQ(SelectionRequestor().paste("UTF8_STRING").bytes.size(), largeBytes().size());
}

TEST_F(X11PasteboardServe, WhatIsOnItsWayToAReaderSurvivesTheNextCopy)
{
    open();
    const QByteArray large = largeBytes();
    write(large);
    SelectionRequestor client;
    client.request("UTF8_STRING");
    ASSERT_TRUE(waitUntil([&] { return client.isWatched(); }));
    copy({{"UTF8_STRING", "next"}});
    ASSERT_TRUE(waitUntil([&] { return client.reply("UTF8_STRING").has_value(); }, 60s));
    EXPECT_TRUE(client.reply("UTF8_STRING")->bytes == large);
}
