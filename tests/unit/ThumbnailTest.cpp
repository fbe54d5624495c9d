#include "ui/history/Thumbnail.h"
#include "support/TestImages.h"

#include <QFile>
#include <QPainter>
#include <QtEndian>

#include <gtest/gtest.h>

#include <utility>

namespace
{

QImage squareOf(QByteArray bytes, int side = 80)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return thumbnail::square(buffer, side);
}

QSize pixelSizeOf(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return thumbnail::pixelSize(buffer);
}

/// A PNG whose header claims another size (PNG 1.2, 4.1.1: IHDR, whose check sum is right again).
QByteArray claiming(QByteArray png, quint32 width, quint32 height)
{
    constexpr qsizetype Type = 12;
    constexpr qsizetype Data = 16;
    constexpr qsizetype Sum = 29;
    qToBigEndian(width, png.data() + Data);
    qToBigEndian(height, png.data() + Data + 4);
    quint32 sum = 0xFFFFFFFF;
    for (qsizetype i = Type; i < Sum; ++i) {
        sum ^= static_cast<quint8>(png[i]);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1 ^ (sum & 1 ? 0xEDB88320 : 0);
    }
    qToBigEndian(~sum, png.data() + Sum);
    return png;
}

/// The most memory that this process has had at once, in bytes.
qint64 peakMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    EXPECT_TRUE(status.open(QIODevice::ReadOnly));
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.simplified().split(' ')[1].toLongLong() * 1024;
    }
    ADD_FAILURE() << "no VmHWM";
    return 0;
}

void forgetPeakMemory()
{
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    ASSERT_TRUE(clear.open(QIODevice::WriteOnly));
    clear.write("5");
}

class Formats : public ::testing::TestWithParam<const char *>
{
};

TEST_P(Formats, GiveASquareAndTheirSize)
{
    const QByteArray bytes = testimages::plain({160, 100}, Qt::red, GetParam());
    const QImage square = squareOf(bytes);
    EXPECT_EQ(square.size(), QSize(80, 80));
    EXPECT_GT(square.pixelColor(40, 40).red(), 240);
    EXPECT_EQ(pixelSizeOf(bytes), QSize(160, 100));
}

INSTANTIATE_TEST_SUITE_P(Table, Formats, ::testing::Values("png", "jpg", "bmp", "webp", "tiff"));

TEST(Thumbnail, ShowsTheMiddleOfAPicture)
{
    QImage image(300, 100, QImage::Format_RGB32);
    image.fill(Qt::red);
    QPainter painter(&image);
    painter.fillRect(100, 0, 100, 100, Qt::blue);
    painter.end();
    const QImage square = squareOf(testimages::encoded(image));
    EXPECT_EQ(square.pixelColor(3, 40), QColor(Qt::blue));
    EXPECT_EQ(square.pixelColor(76, 40), QColor(Qt::blue));
}

TEST(Thumbnail, OfASmallPictureIsAsLargeAsOfALargeOne)
{
    EXPECT_EQ(squareOf(testimages::plain({16, 16}, Qt::green)).size(), QSize(80, 80));
    EXPECT_EQ(squareOf(testimages::plain({1, 1}, Qt::green)).size(), QSize(80, 80));
}

TEST(Thumbnail, KeepsWhatIsTransparent)
{
    QImage image(100, 100, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    EXPECT_EQ(squareOf(testimages::encoded(image)).pixelColor(40, 40).alpha(), 0);
}

TEST(Thumbnail, OfALongStripIsItsMiddleAndNeedsLittle)
{
    EXPECT_EQ(squareOf(testimages::plain({30'000, 10}, Qt::red)).size(), QSize(80, 80));
    EXPECT_EQ(squareOf(testimages::plain({10, 30'000}, Qt::red)).size(), QSize(80, 80));
}

TEST(Thumbnail, OfAHugePictureNeedsLittleMemory)
{
    // 144 MB of pixels, were they all there at once.
    const QByteArray png = testimages::plain({30'000, 1200}, Qt::red);
    forgetPeakMemory();
    const qint64 before = peakMemory();
    EXPECT_EQ(squareOf(png).size(), QSize(80, 80));
    EXPECT_LT(peakMemory() - before, 32 * 1024 * 1024);
}

TEST(Thumbnail, IsNoneOfWhatCannotBeMadeSmallWhileItIsDecoded)
{
    QImage image(30'000, 1200, QImage::Format_Indexed8);
    image.setColorTable({qRgb(16, 32, 48)});
    image.fill(0);
    const QByteArray png = testimages::encoded(std::exchange(image, QImage()));
    forgetPeakMemory();
    const qint64 before = peakMemory();
    EXPECT_TRUE(squareOf(png).isNull());
    EXPECT_LT(peakMemory() - before, 32 * 1024 * 1024);
    EXPECT_EQ(pixelSizeOf(png), QSize(30'000, 1200));
}

TEST(Thumbnail, IsNoneOfWhatWouldTakeSeconds)
{
    // Its header is enough: no line of it is read.
    const QByteArray png = claiming(testimages::plain({300, 200}, Qt::red), 30'000, 30'000);
    EXPECT_EQ(pixelSizeOf(png), QSize(30'000, 30'000));
    EXPECT_TRUE(squareOf(png).isNull());
}

TEST(Thumbnail, IsNoneOfBrokenBytes)
{
    const QByteArray png = testimages::plain({320, 200}, Qt::red);
    EXPECT_TRUE(squareOf(png.first(60)).isNull());
    EXPECT_TRUE(squareOf("").isNull());
    EXPECT_TRUE(squareOf("no picture").isNull());
    EXPECT_FALSE(pixelSizeOf("no picture").isValid());
}

TEST(Thumbnail, IsNoneOfADrawingThatCanReferToFiles)
{
    const QByteArray svg =
        R"(<svg xmlns="http://www.w3.org/2000/svg" width="100" height="100"><rect width="100" height="100"/></svg>)";
    EXPECT_TRUE(squareOf(svg).isNull());
    EXPECT_FALSE(pixelSizeOf(svg).isValid());
}

TEST(Thumbnail, HasRoundCornersOfTheRadius)
{
    QImage image(80, 80, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::red);
    const QImage round = thumbnail::rounded(image, 6);
    EXPECT_EQ(round.size(), image.size());
    EXPECT_EQ(round.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(round.pixelColor(79, 79).alpha(), 0);
    EXPECT_EQ(round.pixelColor(0, 40), QColor(Qt::red));
    EXPECT_EQ(round.pixelColor(7, 1), QColor(Qt::red));
    EXPECT_TRUE(thumbnail::rounded(QImage(), 6).isNull());
}

} // namespace
