#include <QDir>
#include <QFile>
#include <QImageReader>

#include <gtest/gtest.h>

#include <cstdlib>

namespace
{

const QString Name = QStringLiteral("org.larkspool.Larkspool");

QImage drawing(const QString &suffix, int side)
{
    QFile file(QStringLiteral(ICON_FOLDER "/") + Name + suffix);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QImageReader reader(&file, QByteArrayLiteral("svg"));
    reader.setScaledSize({side, side});
    return reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QImage picture(int side)
{
    return QImage(
        QStringLiteral(ICON_FOLDER "/hicolor/%1x%1/apps/").arg(side) + Name + QStringLiteral(".png"))
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/// How far a component of a pixel is off, 0 to 255, in the mean.
double meanDifference(const QImage &one, const QImage &other)
{
    qint64 sum = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (qsizetype i = 0; i < 4 * one.width(); ++i)
            sum += std::abs(one.constScanLine(y)[i] - other.constScanLine(y)[i]);
    }
    return static_cast<double>(sum) / (4.0 * one.width() * one.height());
}

TEST(IconSizesTest, ThePicturesShowTheDrawings)
{
    for (const int side : {16, 22, 24, 32, 48, 64, 128, 256, 512}) {
        const QImage shown = picture(side);
        ASSERT_EQ(shown.size(), QSize(side, side)) << side;
        const QString suffix = side <= 32 ? QStringLiteral("-small.svg") : QStringLiteral(".svg");
        const QImage drawn = drawing(suffix, side);
        ASSERT_EQ(drawn.size(), QSize(side, side)) << side;
        // Another version of the toolkit may smooth edges in another way.
        EXPECT_LT(meanDifference(shown, drawn), 1.0) << side << ": run scripts/icon-sizes";
    }
}

TEST(IconSizesTest, TheSmallDrawingIsAnotherOne)
{
    // Otherwise the test above would not tell the two apart.
    EXPECT_GT(meanDifference(picture(32), drawing(QStringLiteral(".svg"), 32)), 5.0);
}

TEST(IconSizesTest, TheCornersAreTransparentAndTheMiddleIsNot)
{
    for (const int side : {16, 48, 512}) {
        const QImage shown = picture(side);
        EXPECT_LT(shown.pixelColor(0, 0).alpha(), 128) << side;
        EXPECT_EQ(shown.pixelColor(side / 2, side / 2).alpha(), 255) << side;
    }
}

} // namespace
