#include "app/SettingsWindow.h"

#include "base/Console.h"

#include <QGuiApplication>
#include <QIcon>
#include <QKeyEvent>
#include <QQmlComponent>
#include <QQuickItem>

SettingsWindow::SettingsWindow(QQmlEngine &engine, std::unique_ptr<SettingsView> view)
    : m_view(std::move(view))
{
    //: The title of a window.
    setTitle(tr("Larkspool Settings"));
    // One for all windows: of each other one the toolkit would keep the pictures.
    if (QGuiApplication::windowIcon().isNull())
        QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/larkspool/AppIcon.svg")));
    setFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
        Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint);
    setMinimumSize(Size);
    setMaximumSize(Size);
    resize(Size);
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Larkspool/Settings/Settings.qml")));
    // The toolkit would not survive the attempt otherwise.
    if (component.isReady()) {
        m_content.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(
            {{QStringLiteral("view"), QVariant::fromValue(m_view.get())}})));
    }
    if (!m_content) {
        consoleLine(
            QStringLiteral("[Larkspool] The settings window has no content: ") + component.errorString());
        return;
    }
    m_content->setParentItem(contentItem());
    m_content->setSize(Size);
    m_content->setFocus(true);
}

SettingsWindow::~SettingsWindow() = default;

void SettingsWindow::centerIn(const QRect &frame)
{
    QRect geometry(QPoint(), Size);
    geometry.moveCenter(frame.center());
    setPosition(geometry.topLeft());
}

void SettingsWindow::makeKeyAndOrderFront()
{
    show();
    raise();
    requestActivate();
}

void SettingsWindow::keyPressEvent(QKeyEvent *event)
{
    event->ignore();
    QQuickWindow::keyPressEvent(event);
    if (!event->isAccepted() && event->key() == Qt::Key_Escape)
        close();
}

bool SettingsWindow::event(QEvent *event)
{
    const bool isHandled = QQuickWindow::event(event);
    if (event->type() == QEvent::Close && event->isAccepted())
        Q_EMIT closed();
    return isHandled;
}
