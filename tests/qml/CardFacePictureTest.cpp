#include "support/Waiting.h"
#include "ui/history/HistoryModule.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>

#include <gtest/gtest.h>

#include <memory>
#include <tuple>

/// What a window shows of a card's face, pixel by pixel. A process has one scale: this runs once for each.
namespace
{

constexpr auto Scene = R"(
import QtQuick
import Larkspool.History
Item {
    property real cardScale: 1
    width: 260
    height: 120
    scale: cardScale
    CardFace {
        anchors.fill: parent
        anchors.margins: 20
        color: "red"
        sidebarColor: "lime"
        sidebarWidth: 61
        radius: 14
        borderWidth: 0
        borderColor: "transparent"
    }
    RoundedBox { x: 30.4; y: 40.3; width: 32; height: 32; radius: 16; color: "blue" }
}
)";

/// The card's own scale, and how far it is from the window's left and top.
class CardFacePicture : public ::testing::TestWithParam<std::tuple<qreal, qreal>>
{
protected:
    QImage shown()
    {
        registerHistoryModule();
        m_window.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
        m_window.setColor(Qt::black);
        m_window.resize(300, 160);
        QQmlComponent component(m_window.engine());
        component.setData(Scene, QUrl());
        m_item.reset(qobject_cast<QQuickItem *>(
            component.createWithInitialProperties({{QStringLiteral("cardScale"), std::get<0>(GetParam())},
                {QStringLiteral("x"), std::get<1>(GetParam())},
                {QStringLiteral("y"), std::get<1>(GetParam())}})));
        EXPECT_TRUE(m_item) << component.errorString().toStdString();
        m_item->setParentItem(m_window.contentItem());
        m_window.show();
        EXPECT_TRUE(waitUntil([this] { return m_window.isExposed(); }));
        return m_window.grabWindow().convertToFormat(QImage::Format_RGB32);
    }

    QQuickView m_window;
    std::unique_ptr<QQuickItem> m_item;
};

TEST_P(CardFacePicture, HasNoPixelOfBothItsColours)
{
    const QImage picture = shown();
    int mixed = 0;
    int sidebar = 0;
    int card = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            mixed += qRed(pixel) > 0 && qGreen(pixel) > 0;
            sidebar += qGreen(pixel) == 255;
            card += qRed(pixel) == 255;
        }
    }
    EXPECT_EQ(mixed, 0);
    EXPECT_GT(sidebar, 1000);
    EXPECT_GT(card, 5000);
}

TEST_P(CardFacePicture, HasStraightSharpEdges)
{
    const QImage picture = shown();
    // Below the box, above the corners.
    const int line = qRound(m_item->mapToScene({0, 80}).y() * m_window.effectiveDevicePixelRatio());
    // From the left on: nothing, the bar, the card, nothing. No shade lies between two of them.
    QList<QRgb> colors;
    for (int x = 0; x < picture.width(); ++x) {
        const QRgb pixel = picture.pixel(x, line);
        if (colors.isEmpty() || colors.last() != pixel)
            colors.append(pixel);
    }
    EXPECT_EQ(colors, (QList<QRgb>{0xFF000000, 0xFF00FF00, 0xFFFF0000, 0xFF000000}));
    colors.clear();
    for (int y = 0; y < picture.height(); ++y) {
        const QRgb pixel = picture.pixel(picture.width() / 2, y);
        if (colors.isEmpty() || colors.last() != pixel)
            colors.append(pixel);
    }
    EXPECT_EQ(colors, (QList<QRgb>{0xFF000000, 0xFFFF0000, 0xFF000000}));
}

TEST_P(CardFacePicture, ABoxAsWideAsHighIsDrawnSo)
{
    const QImage picture = shown();
    QRect drawn;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (qBlue(picture.pixel(x, y)) > 0)
                drawn |= QRect(x, y, 1, 1);
        }
    }
    EXPECT_EQ(drawn.width(), drawn.height());
    EXPECT_EQ(drawn.width(), qRound(32 * std::get<0>(GetParam()) * m_window.effectiveDevicePixelRatio()));
}

TEST_P(CardFacePicture, IsNotShownBeyondWhatClipsIt)
{
    const QImage whole = shown();
    // Beyond the card's lower edge, where there is nothing of it.
    QQuickItem frame(m_window.contentItem());
    frame.setClip(true);
    frame.setPosition({0, 150});
    frame.setSize({300, 10});
    m_item->setParentItem(&frame);
    m_item->setY(m_item->y() - frame.y());
    const QImage clipped = m_window.grabWindow().convertToFormat(QImage::Format_RGB32);
    QImage nothing(whole.size(), QImage::Format_RGB32);
    nothing.fill(Qt::black);
    EXPECT_NE(whole, nothing);
    EXPECT_EQ(clipped.convertToFormat(QImage::Format_RGB32), nothing);
    m_item->setParentItem(nullptr);
}

INSTANTIATE_TEST_SUITE_P(ScalesAndPlaces, CardFacePicture,
    ::testing::Combine(
        ::testing::Values(0.96, 0.976, 1, 1.01, 1.03, 1.06), ::testing::Values(10, 15.5, 17.3)));

} // namespace
