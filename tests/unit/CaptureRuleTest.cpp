#include "capture/CaptureRule.h"

#include "base/FileReader.h"

#include "fakes/FakePasteboard.h"
#include "platform/ImageCodec.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace
{

using Type = PasteboardType;

std::optional<Capture> captureOf(const FakePasteboard::Content &content)
{
    FakePasteboard pasteboard;
    pasteboard.copy(content);
    pasteboard.advance();
    const auto capture = captureFrom(pasteboard);
    if (!capture || !capture->imageFile)
        return capture;
    return withImageFile(*capture, readRegularFile(*capture->imageFile, 1'000'000));
}

QImage picture()
{
    QImage image(40, 30, QImage::Format_ARGB32);
    image.fill(QColor(20, 120, 200, 128));
    return image;
}

QByteArray png()
{
    return image::pngRepresentation(picture()).value_or(QByteArray());
}

/// A TIFF file by hand: 2 x 1 pixels, RGB, uncompressed, little-endian.
QByteArray tiff(quint32 width = 2, quint32 height = 1)
{
    QByteArray bytes("II*\0\x08\0\0\0", 8);
    const auto put16 = [&bytes](quint16 v) { bytes.append(reinterpret_cast<const char *>(&v), 2); };
    const auto put32 = [&bytes](quint32 v) { bytes.append(reinterpret_cast<const char *>(&v), 4); };
    const auto entry = [&](quint16 tag, quint16 type, quint32 count, quint32 value) {
        put16(tag);
        put16(type);
        put32(count);
        put32(value);
    };
    put16(9);
    entry(256, 4, 1, width);
    entry(257, 4, 1, height);
    entry(258, 3, 3, 8 + 2 + 9 * 12 + 4); // bits per sample, behind the directory
    entry(259, 3, 1, 1);
    entry(262, 3, 1, 2);
    entry(273, 4, 1, 8 + 2 + 9 * 12 + 4 + 6);
    entry(277, 3, 1, 3);
    entry(278, 4, 1, height);
    entry(279, 4, 1, 6);
    put32(0);
    for (int i = 0; i < 3; ++i)
        put16(8);
    bytes.append("\xff\x00\x00\x00\xff\x00", 6);
    return bytes;
}

class CopiedFile : public ::testing::Test
{
protected:
    QByteArray path(const char *name) const
    {
        return QFile::encodeName(m_folder.filePath(QLatin1String(name)));
    }
    QByteArray address(const char *name) const
    {
        return QUrl::fromLocalFile(m_folder.filePath(QLatin1String(name))).toEncoded();
    }
    void write(const char *name, const QByteArray &bytes) const
    {
        QFile file(m_folder.filePath(QLatin1String(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir m_folder;
};

TEST(Capture, NothingIsTakenFromAnEmptyPasteboard)
{
    EXPECT_FALSE(captureOf({}));
}

TEST(Capture, TextIsTakenAsItStands)
{
    const auto capture = captureOf({{Type::String, "  two words \n"}});
    ASSERT_TRUE(capture);
    EXPECT_EQ(capture->type, ClipboardItemType::Text);
    EXPECT_EQ(capture->content, "  two words \n");
    EXPECT_FALSE(capture->imageData);
}

TEST(Capture, WhiteSpaceAloneIsNotTaken)
{
    EXPECT_FALSE(captureOf({{Type::String, " \t\r\n\u00a0"}}));
    EXPECT_FALSE(captureOf({{Type::String, ""}}));
}

TEST(Capture, AWebAddressInTextIsAUrlWithoutTheSpaceAroundIt)
{
    const auto capture = captureOf({{Type::String, "  https://example.org/a \n"}});
    ASSERT_TRUE(capture);
    EXPECT_EQ(capture->type, ClipboardItemType::Url);
    EXPECT_EQ(capture->content, "https://example.org/a");
}

TEST(Capture, AnAddressWithoutAHostInTextStaysText)
{
    EXPECT_EQ(captureOf({{Type::String, "tel:+4312345"}})->type, ClipboardItemType::Text);
}

TEST(Capture, AUrlOfThePasteboardIsTakenAsItStands)
{
    const auto capture = captureOf({{Type::Url, "mailto:ann@example.org"}, {Type::String, "Ann"}});
    ASSERT_TRUE(capture);
    EXPECT_EQ(capture->type, ClipboardItemType::Url);
    EXPECT_EQ(capture->content, "mailto:ann@example.org");
}

TEST(Capture, AUrlWithoutASchemeFallsThroughToTheText)
{
    const auto capture = captureOf({{Type::Url, "/home/ann/report.pdf"}, {Type::String, "report"}});
    ASSERT_TRUE(capture);
    EXPECT_EQ(capture->type, ClipboardItemType::Text);
    EXPECT_EQ(capture->content, "report");
    EXPECT_FALSE(captureOf({{Type::Url, "/home/ann/report.pdf"}}));
}

TEST(Capture, AnImageWithoutANameIsNamedByTheSizeOfItsPng)
{
    const auto capture = captureOf({{Type::Png, png()}});
    ASSERT_TRUE(capture);
    EXPECT_EQ(capture->type, ClipboardItemType::Image);
    ASSERT_TRUE(capture->imageData);
    EXPECT_EQ(capture->content, "Image (" + QByteArray::number(capture->imageData->size() / 1024) + " KB)");
    EXPECT_EQ(image::decode(*capture->imageData)->pixelColor(3, 3), picture().pixelColor(3, 3));
}

TEST(Capture, ATiffIsTakenBeforeAPngAndBecomesOne)
{
    const auto capture = captureOf({{Type::Tiff, tiff()}, {Type::Png, png()}});
    ASSERT_TRUE(capture);
    EXPECT_TRUE(capture->imageData->startsWith("\x89PNG"));
    EXPECT_EQ(image::decode(*capture->imageData)->size(), QSize(2, 1));
}

TEST(Capture, ABrokenTiffLeavesTheWordToThePng)
{
    const auto capture = captureOf({{Type::Tiff, "II*broken"}, {Type::Png, png()}});
    ASSERT_TRUE(capture);
    EXPECT_EQ(image::decode(*capture->imageData)->size(), QSize(40, 30));
}

TEST(Capture, ATiffThatClaimsAHugePictureIsNoImage)
{
    const auto capture = captureOf({{Type::Tiff, tiff(200'000, 200'000)}, {Type::String, "text"}});
    ASSERT_TRUE(capture);
    EXPECT_EQ(capture->type, ClipboardItemType::Text);
}

TEST(Capture, ABrokenPngLeavesTheWordToTheText)
{
    QByteArray broken = png();
    broken.truncate(broken.size() / 2);
    EXPECT_EQ(captureOf({{Type::Png, broken}, {Type::String, "text"}})->type, ClipboardItemType::Text);
    EXPECT_FALSE(captureOf({{Type::Png, broken}}));
}

TEST(Capture, AnImageIsNamedByItsFileElseByItsTitle)
{
    EXPECT_EQ(captureOf({{Type::Png, png()}, {Type::FileUrl, "file:///home/ann/a%20b.pdf"},
                            {Type::UrlName, "title"}})
                  ->content,
        "/home/ann/a b.pdf");
    EXPECT_EQ(
        captureOf({{Type::Png, png()}, {Type::FileUrl, "file:///home/ann/a%FFb.png"}})->content, "a%FFb.png");
    EXPECT_EQ(captureOf({{Type::Png, png()}, {Type::UrlName, "title"}})->content, "title");
}

TEST(Capture, AnImageComesBeforeTheAddressAndTheTextBesideIt)
{
    const auto capture =
        captureOf({{Type::Png, png()}, {Type::Url, "https://example.org/a.png"}, {Type::String, "text"}});
    EXPECT_EQ(capture->type, ClipboardItemType::Image);
}

TEST_F(CopiedFile, AFileIsTakenWithItsPath)
{
    write("report.pdf", "%PDF");
    const auto capture = captureOf({{Type::FileUrl, address("report.pdf")}, {Type::String, "report.pdf"}});
    ASSERT_TRUE(capture);
    EXPECT_EQ(capture->type, ClipboardItemType::File);
    EXPECT_EQ(capture->content, path("report.pdf"));
    EXPECT_FALSE(capture->imageData);
}

TEST_F(CopiedFile, AnImageFileIsTakenWithItsBytesUnchangedWhateverTheCaseOfItsExtension)
{
    write("photo.JPG", "not really a jpeg");
    const auto capture = captureOf({{Type::FileUrl, address("photo.JPG")}});
    ASSERT_TRUE(capture);
    EXPECT_EQ(capture->type, ClipboardItemType::Image);
    EXPECT_EQ(capture->content, path("photo.JPG"));
    EXPECT_EQ(capture->imageData, "not really a jpeg");
}

TEST_F(CopiedFile, EveryImageExtensionCounts)
{
    for (const auto *const name :
        {"a.png", "a.jpg", "a.jpeg", "a.gif", "a.heic", "a.webp", "a.tiff", "a.bmp", "a.ico"}) {
        write(name, "x");
        EXPECT_EQ(captureOf({{Type::FileUrl, address(name)}})->type, ClipboardItemType::Image) << name;
    }
    write("a.svg", "x");
    EXPECT_EQ(captureOf({{Type::FileUrl, address("a.svg")}})->type, ClipboardItemType::File);
}

TEST_F(CopiedFile, AnImageFileThatIsGoneIsTakenAsAFile)
{
    EXPECT_EQ(captureOf({{Type::FileUrl, address("gone.png")}})->type, ClipboardItemType::File);
}

TEST_F(CopiedFile, AFolderWithAnImagesNameIsTakenAsAFile)
{
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(QStringLiteral("folder.png")));
    EXPECT_EQ(captureOf({{Type::FileUrl, address("folder.png")}})->type, ClipboardItemType::File);
}

TEST_F(CopiedFile, APipeWithAnImagesNameIsTakenAsAFileWithoutWaitingForIt)
{
    ASSERT_EQ(mkfifo(path("pipe.png").constData(), 0600), 0);
    EXPECT_EQ(captureOf({{Type::FileUrl, address("pipe.png")}})->type, ClipboardItemType::File);
}

TEST_F(CopiedFile, AFileWithAPreviewIsTakenAsAnImageWithTheFilesPath)
{
    write("drawing.pdf", "%PDF");
    const auto capture = captureOf({{Type::FileUrl, address("drawing.pdf")}, {Type::Tiff, tiff()}});
    ASSERT_TRUE(capture);
    EXPECT_EQ(capture->type, ClipboardItemType::Image);
    EXPECT_EQ(capture->content, path("drawing.pdf"));
}

} // namespace
