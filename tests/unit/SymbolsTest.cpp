#include "ui/style/Symbols.h"
#include "ui/style/SymbolProvider.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace
{

constexpr std::array Names{"app.fill", "arrow.up.arrow.down", "checkmark", "checkmark.circle.fill",
    "chevron.down", "chevron.up", "clipboard.fill", "doc", "doc.on.clipboard", "doc.on.doc.fill",
    "doc.richtext", "doc.text", "ellipsis.circle", "gear", "info.circle", "internaldrive", "keyboard",
    "line.3.horizontal.decrease.circle.fill", "link", "magnifyingglass", "pencil", "pencil.circle.fill",
    "photo", "pin", "pin.fill", "pin.slash.fill", "plus", "plus.circle.fill", "return", "tag.fill", "trash",
    "xmark.circle.fill"};

/// Pixels of a side: the sizes in use at one, one and a half and two pixels a point.
constexpr std::array Sides{9, 10, 13, 14, 15, 16, 18, 20, 22, 23, 24, 26, 30, 32, 40, 48, 64};

/// Ten pixels for each unit of the box that the symbols are drawn in.
constexpr int LargeSide = 240;

const QString Folder = QStringLiteral(":/qt/qml/Larkspool/Style/symbols");
const QColor Orange(0xff, 0x8c, 0x00);

QImage square(const QString &name, int side, const QColor &color = Orange)
{
    return symbol::image(name, {side, side}, color);
}

/// The smallest rectangle around what is drawn at all.
QRect inked(const QImage &picture)
{
    QRect area;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (qAlpha(picture.pixel(x, y)) > 0)
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

int strongestAlpha(const QImage &picture)
{
    int strongest = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            strongest = qMax(strongest, qAlpha(picture.pixel(x, y)));
    }
    return strongest;
}

/// Whether every pixel is the colour, with more or less of it covered.
bool isOfOneColour(const QImage &picture, const QColor &color)
{
    const auto isPart = [](int component, int whole, int alpha) {
        return qAbs(component * 255 - whole * alpha) <= 255;
    };
    for (int y = 0; y < picture.height(); ++y) {
        const auto *const line = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            const int alpha = qAlpha(line[x]);
            if (!isPart(qRed(line[x]), color.red(), alpha) ||
                !isPart(qGreen(line[x]), color.green(), alpha) ||
                !isPart(qBlue(line[x]), color.blue(), alpha))
                return false;
        }
    }
    return true;
}

class NamedSymbol : public ::testing::TestWithParam<const char *>
{
protected:
    QString name() const { return QString::fromLatin1(GetParam()); }
};

TEST_P(NamedSymbol, IsDrawnAtEverySize)
{
    for (const int side : Sides) {
        const QImage picture = square(name(), side);
        EXPECT_EQ(picture.size(), QSize(side, side));
        EXPECT_GE(strongestAlpha(picture), 128) << side;
    }
}

TEST_P(NamedSymbol, HasTheAskedColourOnly)
{
    for (const int side : Sides) {
        for (const QColor &color : {Orange, QColor(Qt::white), QColor(0x18, 0x18, 0x1c)})
            EXPECT_TRUE(isOfOneColour(square(name(), side, color), color)) << side;
    }
}

TEST_P(NamedSymbol, IsAsTranslucentAsItsColour)
{
    const QColor half(0xff, 0x8c, 0x00, 0x80);
    EXPECT_NEAR(strongestAlpha(square(name(), LargeSide, half)), 0x80, 1);
    EXPECT_EQ(strongestAlpha(square(name(), LargeSide, Qt::transparent)), 0);
}

TEST_P(NamedSymbol, LeavesAMarginAndFillsTheRest)
{
    const QRect area = inked(square(name(), LargeSide));
    EXPECT_TRUE(QRect(0, 0, LargeSide, LargeSide).adjusted(12, 12, -12, -12).contains(area));
    EXPECT_GE(qMax(area.width(), area.height()), 160);
    EXPECT_LE(qAbs(area.center().x() - LargeSide / 2), 10);
    EXPECT_LE(qAbs(area.center().y() - LargeSide / 2), 10);
}

TEST_P(NamedSymbol, KeepsClearOfTheEdgeFromSixteenPixelsOn)
{
    for (const int side : Sides) {
        if (side < 16)
            continue;
        EXPECT_TRUE(QRect(1, 1, side - 2, side - 2).contains(inked(square(name(), side)))) << side;
    }
}

/// What is not in SVG Tiny is left out without a word when it is drawn, and a second colour is lost in the
/// tint.
TEST_P(NamedSymbol, IsMadeOfWhiteShapesThatQtDraws)
{
    QFile file(QStringLiteral("%1/%2.svg").arg(Folder, name()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    const QSet<QString> shapes{QStringLiteral("svg"), QStringLiteral("g"), QStringLiteral("path"),
        QStringLiteral("rect"), QStringLiteral("circle")};
    ASSERT_TRUE(xml.readNextStartElement());
    EXPECT_EQ(xml.attributes().value(QStringLiteral("viewBox")), QStringLiteral("0 0 24 24"));
    do {
        if (!xml.isStartElement())
            continue;
        EXPECT_TRUE(shapes.contains(xml.name().toString())) << xml.name().toString().toStdString();
        EXPECT_FALSE(xml.attributes().hasAttribute(QStringLiteral("style")));
        for (const auto &attribute : {QStringLiteral("fill"), QStringLiteral("stroke")}) {
            const auto paint = xml.attributes().value(attribute);
            EXPECT_TRUE(
                paint.isEmpty() || paint == QStringLiteral("none") || paint == QStringLiteral("#fff"));
        }
    } while (xml.readNext() != QXmlStreamReader::EndDocument && !xml.hasError());
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
}

TEST_P(NamedSymbol, IsGivenToQmlInTheColourAndSizeAskedFor)
{
    SymbolProvider provider;
    QSize size;
    const QImage picture = provider.requestImage(name() + QStringLiteral("?#80ff8c00"), &size, {26, 26});
    EXPECT_EQ(size, QSize(26, 26));
    EXPECT_EQ(picture, square(name(), 26, QColor(0xff, 0x8c, 0x00, 0x80)));
}

INSTANTIATE_TEST_SUITE_P(All, NamedSymbol, ::testing::ValuesIn(Names));

TEST(Symbols, AreTheFilesThatAreThere)
{
    QSet<QString> files;
    for (const QString &file : QDir(Folder).entryList(QDir::Files))
        files.insert(file);
    QSet<QString> named;
    for (const char *const name : Names)
        named.insert(QLatin1String(name) + QStringLiteral(".svg"));
    EXPECT_EQ(files, named);
}

TEST(Symbols, NoTwoLookAlike)
{
    for (size_t i = 0; i < Names.size(); ++i) {
        for (size_t j = i + 1; j < Names.size(); ++j)
            EXPECT_NE(square(QLatin1String(Names[i]), 16), square(QLatin1String(Names[j]), 16))
                << Names[i] << " " << Names[j];
    }
}

TEST(Symbols, AFilledCircleHasItsGlyphCutOut)
{
    for (const auto &name : {QStringLiteral("checkmark.circle.fill"),
             QStringLiteral("line.3.horizontal.decrease.circle.fill"), QStringLiteral("pencil.circle.fill"),
             QStringLiteral("plus.circle.fill"), QStringLiteral("xmark.circle.fill")}) {
        const QImage picture = square(name, LargeSide);
        int inside = 0;
        int clear = 0;
        for (int y = 0; y < LargeSide; ++y) {
            for (int x = 0; x < LargeSide; ++x) {
                if (std::hypot(x - LargeSide / 2, y - LargeSide / 2) > 90)
                    continue;
                ++inside;
                clear += qAlpha(picture.pixel(x, y)) == 0 ? 1 : 0;
            }
        }
        EXPECT_GT(clear * 100, inside * 5) << name.toStdString();
        EXPECT_LT(clear * 100, inside * 25) << name.toStdString();
    }
}

TEST(Symbols, AnUnknownNameHasNoPicture)
{
    for (const auto &name : {QStringLiteral("star.fill"), QString(), QStringLiteral("pin.svg"),
             QStringLiteral("../Theme"), QStringLiteral("doc?")})
        EXPECT_TRUE(square(name, 16).isNull()) << name.toStdString();
}

TEST(Symbols, NoPixelsHaveNoPicture)
{
    EXPECT_TRUE(symbol::image(QStringLiteral("pin"), {0, 16}, Qt::white).isNull());
    EXPECT_TRUE(symbol::image(QStringLiteral("pin"), QSize(), Qt::white).isNull());
}

TEST(Symbols, IsNotStretchedInAnOblong)
{
    const QImage wide = symbol::image(QStringLiteral("gear"), {40, 20}, Qt::white);
    ASSERT_EQ(wide.size(), QSize(40, 20));
    EXPECT_EQ(wide.copy(10, 0, 20, 20), square(QStringLiteral("gear"), 20, Qt::white));
    EXPECT_TRUE(QRect(10, 0, 20, 20).contains(inked(wide)));
}

TEST(SymbolProvider, AnUnknownNameIsShownByTheStandIn)
{
    SymbolProvider provider;
    for (const auto &id : {QStringLiteral("star.fill?#ff8c00"), QStringLiteral("?#ff8c00")})
        EXPECT_EQ(provider.requestImage(id, nullptr, {16, 16}), square(QStringLiteral("app.fill"), 16));
}

TEST(SymbolProvider, AMissingSideIsThatOfASquare)
{
    SymbolProvider provider;
    const auto id = QStringLiteral("pin?#ff8c00");
    EXPECT_EQ(provider.requestImage(id, nullptr, {20, -1}).size(), QSize(20, 20));
    EXPECT_EQ(provider.requestImage(id, nullptr, {0, 20}).size(), QSize(20, 20));
    EXPECT_EQ(provider.requestImage(id, nullptr, {}).size(), QSize(24, 24));
}

TEST(SymbolProvider, IsBlackWithoutAColour)
{
    SymbolProvider provider;
    EXPECT_EQ(provider.requestImage(QStringLiteral("pin"), nullptr, {16, 16}),
        square(QStringLiteral("pin"), 16, Qt::black));
}

} // namespace
