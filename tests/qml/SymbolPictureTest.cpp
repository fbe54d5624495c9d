#include "support/Waiting.h"
#include "ui/history/HistoryModule.h"
#include "ui/style/SymbolProvider.h"
#include "ui/style/Symbols.h"

#include <QPainter>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>

#include <gtest/gtest.h>

#include <memory>
#include <tuple>

/// What a window shows of a symbol, pixel by pixel. A process has one scale: this runs once for each.
namespace
{

const QColor Paper(0x18, 0x18, 0x1c);
const QColor Ink(0xff, 0x8c, 0x00);
const QString Name = QStringLiteral("doc.text");

/// The symbol's size, and how far it is from the window's left and top, in device-independent pixels.
class SymbolPicture : public ::testing::TestWithParam<std::tuple<int, qreal>>
{
protected:
    SymbolPicture()
    {
        registerHistoryModule();
        m_window.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
        installSymbols(*m_window.engine());
        m_window.setColor(Paper);
        m_window.resize(60, 60);
        m_window.show();
    }

    int size() const { return std::get<0>(GetParam()); }
    qreal place() const { return std::get<1>(GetParam()); }
    qreal scale() const { return m_window.effectiveDevicePixelRatio(); }
    int pixels() const { return qRound(size() * scale()); }

    std::unique_ptr<QQuickItem> makeSymbol()
    {
        QQmlComponent component(m_window.engine());
        component.setData("import Larkspool.Style\nSymbol {}", QUrl());
        std::unique_ptr<QObject> made(component.createWithInitialProperties(
            {{QStringLiteral("name"), Name}, {QStringLiteral("size"), size()}, {QStringLiteral("color"), Ink},
                {QStringLiteral("x"), place()}, {QStringLiteral("y"), place()}}));
        auto *const item = qobject_cast<QQuickItem *>(made.get());
        if (!item)
            return nullptr;
        (void)made.release();
        item->setParentItem(m_window.contentItem());
        return std::unique_ptr<QQuickItem>(item);
    }

    /// The window with the symbol drawn by itself, its corner at a device pixel's.
    QImage expected(const QSize &window, int left, int top) const
    {
        QImage picture(window, QImage::Format_RGB32);
        picture.fill(Paper);
        QPainter painter(&picture);
        painter.drawImage(left, top, symbol::image(Name, {pixels(), pixels()}, Ink));
        return picture;
    }

    QQuickView m_window;
};

TEST_P(SymbolPicture, HasAPixelForEachPixelOfTheScreen)
{
    ASSERT_EQ(scale(), qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble());
    const auto item = makeSymbol();
    ASSERT_TRUE(item);
    EXPECT_DOUBLE_EQ(item->implicitWidth() * scale(), pixels());
    EXPECT_DOUBLE_EQ(item->implicitHeight() * scale(), pixels());
}

TEST_P(SymbolPicture, IsShownUnblurredAtAnyPlace)
{
    const auto item = makeSymbol();
    ASSERT_TRUE(item);
    ASSERT_TRUE(waitUntil([this] { return m_window.isExposed(); }));
    const QImage shown = m_window.grabWindow().convertToFormat(QImage::Format_RGB32);
    bool isSharp = false;
    for (const int left : {qFloor(place() * scale()), qCeil(place() * scale())}) {
        for (const int top : {qFloor(place() * scale()), qCeil(place() * scale())})
            isSharp = isSharp || shown == expected(shown.size(), left, top);
    }
    EXPECT_TRUE(isSharp);
}

INSTANTIATE_TEST_SUITE_P(SizesAndPlaces, SymbolPicture,
    ::testing::Combine(
        ::testing::Values(9, 10, 12, 13, 15, 16, 17, 20, 32), ::testing::Values(4, 5, 7.5, 10.25, 11.4)));

} // namespace
