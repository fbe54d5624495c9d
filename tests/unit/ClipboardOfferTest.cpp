#include "platform/linux/ClipboardOffer.h"

#include <QBuffer>
#include <QImage>

#include <gtest/gtest.h>

using clipboard::answerFor;
using clipboard::PendingImage;
using clipboard::Rendering;

namespace
{

QByteArray encoded(const char *format, Qt::GlobalColor color)
{
    QImage image(4, 3, QImage::Format_ARGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

Rendering rendered(const ClipboardContent &content, const QByteArray &target)
{
    const auto answer = answerFor(content, target);
    const auto *const rendering = std::get_if<Rendering>(&answer);
    return rendering != nullptr ? *rendering : Rendering{"nothing", "nothing"};
}

bool isRefused(const ClipboardContent &content, const QByteArray &target)
{
    return std::holds_alternative<std::monostate>(answerFor(content, target));
}

} // namespace

TEST(ClipboardOffer, TheBytesOfATargetAreTheOnesThatCame)
{
    ClipboardContent content;
    content.insert("text/plain;charset=utf-8", "a\xff");
    EXPECT_EQ(rendered(content, "text/plain;charset=utf-8").bytes, "a\xff");
    EXPECT_EQ(rendered(content, "UTF8_STRING").bytes, "a\xef\xbf\xbd");
}

TEST(ClipboardOffer, ALatin1TextIsOfferedAsUtf8)
{
    ClipboardContent content;
    content.insert("STRING", "gr\xfcn");
    EXPECT_EQ(rendered(content, "UTF8_STRING").bytes, "grün");
    EXPECT_EQ(rendered(content, "STRING").bytes, "gr\xfcn");
    EXPECT_EQ(rendered(content, "TEXT").type, "STRING");
}

TEST(ClipboardOffer, OneQuestionMarkStandsForOneCharacter)
{
    EXPECT_EQ(clipboard::latin1("aä\u00ffĀ世\xf0\x9f\x98\x80z"), "a\xe4\xff???z");
    EXPECT_EQ(clipboard::latin1(""), "");
}

TEST(ClipboardOffer, WithoutATextThereIsNone)
{
    ClipboardContent content;
    content.insert("text/html", "<b>");
    EXPECT_EQ(clipboard::offeredTargets(content), QByteArrayList({"text/html"}));
    EXPECT_TRUE(isRefused(content, "UTF8_STRING"));
    EXPECT_TRUE(isRefused(content, "image/png"));
    EXPECT_TRUE(clipboard::offeredTargets({}).isEmpty());
}

TEST(ClipboardOffer, AnImageIsMadeFromTheLosslessOne)
{
    ClipboardContent content;
    content.insert("image/jpeg", encoded("jpeg", Qt::red));
    content.insert("image/png", encoded("png", Qt::blue));
    const auto answer = answerFor(content, "image/bmp");
    const auto *const image = std::get_if<PendingImage>(&answer);
    ASSERT_NE(image, nullptr);
    const auto bmp = clipboard::encodedImage(*image);
    ASSERT_TRUE(bmp.has_value());
    EXPECT_TRUE(bmp->startsWith("BM"));
    EXPECT_EQ(QImage::fromData(*bmp).pixelColor(1, 1), QColor(Qt::blue));
}

TEST(ClipboardOffer, TransparencyBecomesWhiteWhereAFormatLacksIt)
{
    const auto jpeg = clipboard::encodedImage({encoded("png", Qt::transparent), "image/jpeg"});
    ASSERT_TRUE(jpeg.has_value());
    EXPECT_EQ(QImage::fromData(*jpeg).pixelColor(1, 1), QColor(Qt::white));
}

TEST(ClipboardOffer, BytesThatAreNoImageBecomeNone)
{
    EXPECT_EQ(clipboard::encodedImage({"no image", "image/png"}), std::nullopt);
}
