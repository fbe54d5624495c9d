#include "PictureScene.h"

#include "support/Waiting.h"

#include <QFontInfo>
#include <QGuiApplication>
#include <QIcon>
#include <QQmlEngine>
#include <QStyleHints>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

PictureScene::PictureScene()
    : m_locale(qEnvironmentVariable("PICTURE_LANGUAGE", QStringLiteral("en_GB")))
    , m_direction(qEnvironmentVariable("PICTURE_DIRECTION") == u"rtl" ? Qt::RightToLeft : Qt::LeftToRight)
{
}

PictureScene::~PictureScene()
{
    QGuiApplication::setLayoutDirection(Qt::LayoutDirectionAuto);
}

void PictureScene::settle(QQmlEngine &engine)
{
    QGuiApplication::setFont(QFont(QStringLiteral("DejaVu Sans")));
    ASSERT_EQ(QFontInfo(QGuiApplication::font()).family(), QStringLiteral("DejaVu Sans"));
    ASSERT_EQ(QFontInfo(QFont(QStringLiteral("monospace"))).family(), QStringLiteral("DejaVu Sans Mono"))
        << "FONTCONFIG_FILE is to be tests/qml/fonts.conf, as ctest sets it";
    QLocale::setDefault(m_locale);
    m_translations.emplace(m_locale);
    QGuiApplication::setLayoutDirection(m_direction);
    // A cursor that blinks is not always to be seen.
    QGuiApplication::styleHints()->setCursorFlashTime(0);
    QIcon::setThemeName(QStringLiteral("no such theme"));
    QObject::connect(&engine, &QQmlEngine::warnings, &engine, [](const QList<QQmlError> &warnings) {
        for (const QQmlError &warning : warnings)
            ADD_FAILURE() << warning.toString().toStdString();
    });
}

void PictureScene::waitUntilActive()
{
    window()->requestActivate();
    ASSERT_TRUE(waitUntil([this] { return window()->isExposed() && window()->isActive(); }));
}

void PictureScene::moveMouse(const QPointF &place)
{
    QMouseEvent move(
        QEvent::MouseMove, place, window()->mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window(), &move);
}

void PictureScene::click(const QPointF &place, Qt::MouseButton button)
{
    const QPointF global = window()->mapToGlobal(place);
    QMouseEvent press(QEvent::MouseButtonPress, place, global, button, button, Qt::NoModifier);
    QCoreApplication::sendEvent(window(), &press);
    QMouseEvent release(QEvent::MouseButtonRelease, place, global, button, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window(), &release);
}

void PictureScene::press(Qt::Key key, Qt::KeyboardModifiers modifiers, const QString &text)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QCoreApplication::sendEvent(window(), &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
    QCoreApplication::sendEvent(window(), &release);
}

void PictureScene::hold(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QCoreApplication::sendEvent(window(), &press);
}

QString PictureScene::textOf(const QQuickItem &item)
{
    return item.inherits("QQuickText") ? item.property("text").toString() : QString();
}

QPointF PictureScene::placeOf(const QString &text) const
{
    QList<QPointF> places;
    visitVisible([&](const QQuickItem &item) {
        if (textOf(item) == text)
            places.append(item.mapToScene({item.width() / 2, item.height() / 2}));
    });
    EXPECT_EQ(places.size(), 1) << text.toStdString();
    return places.value(0);
}

QPointF PictureScene::inLayout(const QPointF &place) const
{
    return m_direction == Qt::RightToLeft ? QPointF(window()->width() - place.x(), place.y()) : place;
}

QString PictureScene::shown(const char *context, const char *text)
{
    return QCoreApplication::translate(context, text).remove(u'&');
}

QRectF PictureScene::placeOfText(const QQuickItem &text)
{
    QRectF place(QPointF(), text.size());
    // The content of an entry. Paths are what is without its middle where there is no room.
    const bool isAlignedByItself =
        text.property("isUrl").isValid() || text.property("elide").toInt() == Qt::ElideMiddle;
    const qreal width = text.property("contentWidth").toReal();
    if (isAlignedByItself || text.inherits("QQuickTextInput") || text.inherits("QQuickTextEdit"))
        return place;
    place.adjust(text.property("leftPadding").toReal(), 0, -text.property("rightPadding").toReal(), 0);
    switch (text.property("effectiveHorizontalAlignment").toInt()) {
    case Qt::AlignLeft:
        place.setWidth(width);
        break;
    case Qt::AlignRight:
        place.setLeft(place.right() - width);
        break;
    default:
        break;
    }
    return place;
}

bool PictureScene::isInSight(const QQuickItem &item, const QRectF &place)
{
    for (const QQuickItem *around = item.parentItem(); around; around = around->parentItem()) {
        if (around->clip() && !around->mapRectToScene({QPointF(), around->size()}).intersects(place))
            return false;
    }
    return true;
}

std::vector<PictureScene::Drawn> PictureScene::drawn() const
{
    constexpr std::array Kinds{"QQuickText", "QQuickTextInput", "QQuickTextEdit", "QQuickImage",
        "QQuickRectangle", "CardFace", "RoundedBox"};
    std::vector<Drawn> found;
    visitVisible([&](const QQuickItem &item) {
        const auto *const kind =
            std::ranges::find_if(Kinds, [&](const char *name) { return item.inherits(name); });
        if (kind == Kinds.end() || item.size().isEmpty())
            return;
        const bool isText = item.property("contentWidth").isValid();
        const QRectF place = item.mapRectToScene(isText ? placeOfText(item) : QRectF({}, item.size()));
        if (isInSight(item, place))
            found.push_back({QLatin1String(*kind) + u' ' + textOf(item), place});
    });
    return found;
}

bool PictureScene::isComplete() const
{
    constexpr int Ready = 1;
    bool isEveryPictureReady = true;
    visitVisible([&](const QQuickItem &item) {
        if (item.inherits("QQuickImage") && !item.property("source").toString().isEmpty())
            isEveryPictureReady = isEveryPictureReady && item.property("status").toInt() == Ready;
    });
    return isEveryPictureReady;
}

QImage PictureScene::picture()
{
    QImage latest;
    const bool isSteady = waitUntil([this, &latest] {
        const QImage previous = std::exchange(latest, window()->grabWindow());
        return isComplete() && latest == previous;
    });
    EXPECT_TRUE(isSteady);
    return latest.convertToFormat(QImage::Format_RGB32);
}
