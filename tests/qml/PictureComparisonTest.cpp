#include "PictureComparison.h"

#include <QColor>
#include <QPainter>

#include <gtest/gtest.h>

using pictures::compare;

/// That the comparison lets through what no eye sees, and nothing else.
namespace
{

/// Something like a card with lines of letters on it.
QImage card(const QPoint &shift = {}, const QColor &ink = QColor(28, 28, 30))
{
    QImage image(300, 200, QImage::Format_RGB32);
    image.fill(QColor(247, 247, 248));
    QPainter painter(&image);
    painter.translate(shift);
    painter.fillRect(20, 20, 260, 130, Qt::white);
    for (int line = 0; line < 4; ++line) {
        for (int letter = 0; letter < 20; ++letter)
            painter.fillRect(90 + 8 * letter, 34 + 19 * line, 5, 9, ink);
    }
    return image;
}

TEST(PictureComparison, FindsNoDifferenceBetweenAPictureAndItself)
{
    EXPECT_EQ(compare(card(), card()).differentShare, 0);
    EXPECT_TRUE(compare(card(), card()).isSame());
}

TEST(PictureComparison, TellsAPictureThatIsShiftedByAPixel)
{
    for (const QPoint shift : {QPoint(1, 0), QPoint(0, 1), QPoint(-1, 0), QPoint(0, -1)}) {
        const auto comparison = compare(card(), card(shift));
        EXPECT_FALSE(comparison.isSame());
        EXPECT_GT(comparison.differentShare, 0.01);
    }
}

TEST(PictureComparison, TellsASingleLetterThatIsMissing)
{
    QImage seen = card();
    QPainter(&seen).fillRect(90, 34, 5, 9, Qt::white);
    EXPECT_DOUBLE_EQ(compare(card(), seen).differentShare, 45.0 / (300 * 200));
    EXPECT_FALSE(compare(card(), seen).isSame());
}

TEST(PictureComparison, ForgivesShadesThatNoEyeTellsApart)
{
    EXPECT_TRUE(compare(card(), card({}, QColor(40, 40, 42))).isSame());
    EXPECT_FALSE(compare(card(), card({}, QColor(41, 28, 30))).isSame());
    EXPECT_FALSE(compare(card(), card({}, QColor(28, 41, 30))).isSame());
    EXPECT_FALSE(compare(card(), card({}, QColor(28, 28, 43))).isSame());
}

TEST(PictureComparison, ForgivesAFewPixelsOnly)
{
    QImage seen = card();
    const auto allowed = int(pictures::LargestShare * 300 * 200);
    for (int x = 0; x < allowed; ++x)
        seen.setPixelColor(x, 0, Qt::black);
    EXPECT_TRUE(compare(card(), seen).isSame());
    seen.setPixelColor(allowed, 0, Qt::black);
    EXPECT_FALSE(compare(card(), seen).isSame());
}

TEST(PictureComparison, TellsAPictureOfAnotherSize)
{
    EXPECT_FALSE(compare(card(), card().copy(0, 0, 300, 199)).isSame());
    EXPECT_FALSE(compare(card(), QImage()).isSame());
}

TEST(PictureComparison, TellsThatThereIsNothingToCompareWith)
{
    EXPECT_FALSE(compare(QImage(), card()).isSame());
    EXPECT_FALSE(compare(QImage(), QImage()).isSame());
}

TEST(PictureComparison, ShowsWhereTheDifferencesAre)
{
    QImage seen = card();
    seen.setPixelColor(7, 11, Qt::black);
    const QImage map = compare(card(), seen).map;
    EXPECT_EQ(map.pixelColor(7, 11), QColor(230, 0, 0));
    EXPECT_EQ(map.pixelColor(8, 11), QColor(253, 253, 253));
}

} // namespace
