#include "contract/PasteboardContract.h"

#include "platform/ImageCodec.h"
#include "support/Waiting.h"

#include <QBuffer>
#include <QImage>

namespace
{

QImage picture()
{
    QImage image(40, 30, QImage::Format_ARGB32);
    image.fill(QColor(20, 120, 220, 128));
    image.setPixelColor(3, 4, Qt::red);
    return image;
}

QByteArray encoded(const char *format, const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

} // namespace

void PrintTo(const PasteboardBackend &backend, std::ostream *stream)
{
    *stream << backend.name;
}

bool PasteboardContract::advances()
{
    return waitUntil([this] { return pasteboard().advance(); });
}

std::optional<QByteArray> PasteboardContract::string(PasteboardType type)
{
    const auto items = pasteboard().pasteboardItems();
    return items.size() == 1 ? items.front().string(type) : std::nullopt;
}

TEST_P(PasteboardContract, NothingWaitsAtTheStart)
{
    EXPECT_FALSE(pasteboard().advance());
    EXPECT_TRUE(pasteboard().pasteboardItems().empty());
}

TEST_P(PasteboardContract, AnotherProgramsTextIsRead)
{
    world().copy({{PasteboardType::String, "grüße"}});
    ASSERT_TRUE(advances());
    EXPECT_EQ(string(PasteboardType::String), "grüße");
    EXPECT_EQ(pasteboard().data(PasteboardType::String), "grüße");
    EXPECT_EQ(string(PasteboardType::Url), std::nullopt);
    EXPECT_EQ(pasteboard().data(PasteboardType::Png), std::nullopt);
}

TEST_P(PasteboardContract, AnEmptyTextIsAText)
{
    world().copy({{PasteboardType::String, ""}});
    ASSERT_TRUE(advances());
    EXPECT_EQ(string(PasteboardType::String), "");
}

TEST_P(PasteboardContract, TheCurrentContentStaysUntilTheNextIsAskedFor)
{
    world().copy({{PasteboardType::String, "one"}});
    ASSERT_TRUE(advances());
    const qint64 number = pasteboard().changeCount();
    world().copy({{PasteboardType::String, "two"}});
    EXPECT_EQ(pasteboard().changeCount(), number);
    EXPECT_EQ(string(PasteboardType::String), "one");
    ASSERT_TRUE(advances());
    EXPECT_GT(pasteboard().changeCount(), number);
    EXPECT_EQ(string(PasteboardType::String), "two");
    EXPECT_FALSE(pasteboard().advance());
}

TEST_P(PasteboardContract, CopiesAreShownInTheirOrder)
{
    for (const char *const text : {"a", "b", "c"})
        world().copy({{PasteboardType::String, text}});
    qint64 number = pasteboard().changeCount();
    for (const char *const text : {"a", "b", "c"}) {
        ASSERT_TRUE(advances());
        EXPECT_GT(pasteboard().changeCount(), std::exchange(number, pasteboard().changeCount()));
        EXPECT_EQ(string(PasteboardType::String), text);
    }
}

TEST_P(PasteboardContract, AddressesHaveTypesOfTheirOwn)
{
    world().copy({{PasteboardType::Url, "https://example.org/a"}, {PasteboardType::UrlName, "An example"}});
    ASSERT_TRUE(advances());
    EXPECT_EQ(string(PasteboardType::Url), "https://example.org/a");
    EXPECT_EQ(string(PasteboardType::UrlName), "An example");
    EXPECT_EQ(string(PasteboardType::FileUrl), std::nullopt);

    world().copy({{PasteboardType::FileUrl, "file:///home/ann/a%20b.txt"}});
    ASSERT_TRUE(advances());
    EXPECT_EQ(string(PasteboardType::FileUrl), "file:///home/ann/a%20b.txt");
    EXPECT_EQ(string(PasteboardType::Url), std::nullopt);
}

TEST_P(PasteboardContract, AnImageIsReadAsItIsAndAsPng)
{
    const QByteArray tiff = encoded("tiff", picture());
    world().copy({{PasteboardType::Tiff, tiff}});
    ASSERT_TRUE(advances());
    EXPECT_EQ(pasteboard().data(PasteboardType::Tiff), tiff);
    EXPECT_EQ(pasteboard().pasteboardItems().size(), 1U);
    const auto png = pasteboard().pngRepresentation(PasteboardType::Tiff);
    ASSERT_TRUE(png.has_value());
    EXPECT_TRUE(png->startsWith("\x89PNG"));
    const auto decoded = image::decode(*png);
    ASSERT_TRUE(decoded.has_value());
    EXPECT_EQ(decoded->pixelColor(3, 4), QColor(Qt::red));
    EXPECT_EQ(pasteboard().pngRepresentation(PasteboardType::Png), std::nullopt);
}

TEST_P(PasteboardContract, BrokenImageBytesAreNoImage)
{
    const QByteArray broken = encoded("png", picture()).chopped(30);
    world().copy({{PasteboardType::Png, broken}});
    ASSERT_TRUE(advances());
    EXPECT_EQ(pasteboard().data(PasteboardType::Png), broken);
    EXPECT_EQ(pasteboard().pngRepresentation(PasteboardType::Png), std::nullopt);
}

TEST_P(PasteboardContract, ASecretIsAChangeWithoutItems)
{
    world().copy({{PasteboardType::String, "before"}});
    ASSERT_TRUE(advances());
    const qint64 number = pasteboard().changeCount();
    world().copySecret({{PasteboardType::String, "hunter2"}});
    ASSERT_TRUE(advances());
    EXPECT_GT(pasteboard().changeCount(), number);
    EXPECT_TRUE(pasteboard().pasteboardItems().empty());
    EXPECT_EQ(pasteboard().data(PasteboardType::String), std::nullopt);
}

TEST_P(PasteboardContract, AnOwnTextIsReadLikeAnybodys)
{
    const qint64 number = pasteboard().changeCount();
    pasteboard().clearContents();
    pasteboard().setString("own");
    ASSERT_TRUE(advances());
    EXPECT_GT(pasteboard().changeCount(), number);
    EXPECT_EQ(string(PasteboardType::String), "own");
    EXPECT_FALSE(pasteboard().advance());
}

TEST_P(PasteboardContract, ClearingAloneIsAContentWithoutItems)
{
    world().copy({{PasteboardType::String, "before"}});
    ASSERT_TRUE(advances());
    pasteboard().clearContents();
    ASSERT_TRUE(advances());
    EXPECT_TRUE(pasteboard().pasteboardItems().empty());
}

TEST_P(PasteboardContract, EachClearingIsOneStep)
{
    pasteboard().clearContents();
    pasteboard().setString("one");
    pasteboard().clearContents();
    pasteboard().setString("two");
    ASSERT_TRUE(advances());
    EXPECT_EQ(string(PasteboardType::String), "one");
    ASSERT_TRUE(advances());
    EXPECT_EQ(string(PasteboardType::String), "two");
    EXPECT_FALSE(pasteboard().advance());
}

TEST_P(PasteboardContract, AnOwnTextCanBeAddedToTheCurrentContent)
{
    pasteboard().clearContents();
    ASSERT_TRUE(advances());
    const qint64 number = pasteboard().changeCount();
    pasteboard().setString("late");
    EXPECT_EQ(string(PasteboardType::String), "late");
    EXPECT_EQ(pasteboard().changeCount(), number);
}

TEST_P(PasteboardContract, AnOwnAddressIsReadAsItWasWritten)
{
    for (const char *const address : {"https://example.org/?q=ä b", "/no/scheme", "#fragment", "a\nb"}) {
        pasteboard().clearContents();
        pasteboard().writeObjects({PasteboardUrl{address}});
        ASSERT_TRUE(advances());
        EXPECT_EQ(string(PasteboardType::Url), address);
        EXPECT_EQ(string(PasteboardType::UrlName), std::nullopt);
        EXPECT_EQ(string(PasteboardType::String), std::nullopt);
        EXPECT_EQ(string(PasteboardType::FileUrl), std::nullopt);
    }
}

TEST_P(PasteboardContract, AnOwnFileAddressAndATextGoTogether)
{
    pasteboard().clearContents();
    pasteboard().setString("text");
    pasteboard().writeObjects({PasteboardUrl{"file:///tmp/x"}});
    ASSERT_TRUE(advances());
    EXPECT_EQ(string(PasteboardType::FileUrl), "file:///tmp/x");
    EXPECT_EQ(string(PasteboardType::String), "text");
}

TEST_P(PasteboardContract, AnOwnImageOfAnyFormatIsReadAsPng)
{
    for (const char *const format : {"png", "jpeg", "bmp", "tiff"}) {
        const QImage image = picture().convertToFormat(QImage::Format_RGB32);
        pasteboard().clearContents();
        pasteboard().writeObjects({PasteboardImage{encoded(format, image)}});
        ASSERT_TRUE(advances()) << format;
        const auto data = pasteboard().data(PasteboardType::Png);
        ASSERT_TRUE(data.has_value()) << format;
        EXPECT_TRUE(data->startsWith("\x89PNG")) << format;
        const auto png = pasteboard().pngRepresentation(PasteboardType::Png);
        ASSERT_TRUE(png.has_value()) << format;
        EXPECT_EQ(image::decode(*png)->size(), image.size()) << format;
        EXPECT_EQ(pasteboard().pasteboardItems().size(), 1U) << format;
    }
}

TEST_P(PasteboardContract, OwnBytesThatAreNoImageAreNotThere)
{
    pasteboard().clearContents();
    pasteboard().writeObjects({PasteboardImage{"no image"}});
    ASSERT_TRUE(advances());
    EXPECT_TRUE(pasteboard().pasteboardItems().empty());
    EXPECT_EQ(pasteboard().data(PasteboardType::Png), std::nullopt);
}
