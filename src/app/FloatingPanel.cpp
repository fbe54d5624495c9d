#include "app/FloatingPanel.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainterPath>
#include <QScreen>

#include <algorithm>

namespace
{

/// A little outside the corners that the content draws, which are smooth where windows are composed.
constexpr int CornerRadius = 15;

QRegion roundedCorners()
{
    QPainterPath outline;
    outline.addRoundedRect(QRectF(QPointF(), FloatingPanel::Size), CornerRadius, CornerRadius);
    return QRegion(outline.toFillPolygon().toPolygon());
}

} // namespace

FloatingPanel::FloatingPanel(MainQueue &queue)
    : m_queue(queue)
{
    setTitle(QStringLiteral("Larkspool"));
    // Where nobody composes windows, what is transparent is black: the corners are cut off instead.
    setMask(roundedCorners());
    // A dialog: window managers centre it, tiling ones float it, and it gets the focus like any window.
    setFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setColor(Qt::transparent);
    setMinimumSize(Size);
    setMaximumSize(Size);
    resize(Size);
    connect(
        qGuiApp, &QGuiApplication::applicationStateChanged, this, &FloatingPanel::applicationStateChanged);
    connect(this, &QWindow::activeChanged, this, &FloatingPanel::activeChanged);
    // A monitor may be taken away under the panel, or shrink.
    const auto follow = [this](QScreen *screen) {
        connect(screen, &QScreen::geometryChanged, this, &FloatingPanel::screensChanged);
    };
    std::ranges::for_each(QGuiApplication::screens(), follow);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, follow);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &FloatingPanel::screensChanged);
}

FloatingPanel::~FloatingPanel() = default;

void FloatingPanel::setContentView(std::unique_ptr<TransparentHostingView> contentView)
{
    m_contentView = std::move(contentView);
    m_contentView->setParentItem(contentItem());
    m_contentView->setSize(Size);
    // A key may come with the panel's very first moment.
    m_contentView->setFocus(true);
}

void FloatingPanel::makeContentFirstResponder()
{
    if (m_contentView)
        m_contentView->forceActiveFocus();
}

void FloatingPanel::makeKeyAndOrderFront()
{
    if (!isVisible())
        m_hasBeenActive = false;
    show();
    raise();
    requestActivate();
}

void FloatingPanel::orderOut()
{
    hide();
}

void FloatingPanel::centerIn(const QRect &frame)
{
    QRect geometry(QPoint(), Size);
    geometry.moveCenter(frame.center());
    setPosition(geometry.topLeft());
}

void FloatingPanel::keyPressEvent(QKeyEvent *event)
{
    event->ignore();
    QQuickWindow::keyPressEvent(event);
    if (!event->isAccepted() && event->key() == Qt::Key_Escape)
        cancelOperation();
}

void FloatingPanel::cancelOperation()
{
    orderOut();
}

void FloatingPanel::applicationStateChanged(Qt::ApplicationState state)
{
    if (state == Qt::ApplicationActive)
        return;
    m_queue.async(m_lifetime.guard([this] {
        if (m_hasBeenActive && QGuiApplication::applicationState() != Qt::ApplicationActive)
            orderOut();
    }));
}

void FloatingPanel::activeChanged()
{
    m_hasBeenActive = m_hasBeenActive || (isVisible() && isActive());
}

void FloatingPanel::screensChanged()
{
    m_queue.async(m_lifetime.guard([this] {
        const bool isOnScreen = std::ranges::any_of(QGuiApplication::screens(),
            [this](const QScreen *screen) { return screen->geometry().contains(geometry()); });
        if (isVisible() && !isOnScreen)
            orderOut();
    }));
}
