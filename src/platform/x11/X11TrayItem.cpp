#include "platform/x11/X11TrayItem.h"

std::unique_ptr<X11TrayItem> X11TrayItem::open(StatusItemButton button, std::function<void()> action)
{
    auto connection = X11Connection::open();
    if (!connection)
        return nullptr;
    auto painter = X11TrayPainter::open(*connection);
    if (!painter)
        return nullptr;
    return std::unique_ptr<X11TrayItem>(
        new X11TrayItem(std::move(connection), std::move(painter), std::move(button), std::move(action)));
}

X11TrayItem::X11TrayItem(std::unique_ptr<X11Connection> connection, std::unique_ptr<X11TrayPainter> painter,
    StatusItemButton button, std::function<void()> action)
    : m_button(std::move(button))
    , m_action(std::move(action))
    , m_connection(std::move(connection))
    , m_painter(std::move(painter))
    , m_tray(*m_connection)
{
    m_connection->onEvent = [this](const xcb_generic_event_t &event) { onEvent(event); };
    dock();
    m_connection->flush();
}

void X11TrayItem::dock()
{
    m_icon.reset();
    m_dockedIn = m_tray.window();
    if (m_dockedIn == XCB_WINDOW_NONE)
        return;
    m_icon = std::make_unique<X11TrayIcon>(*m_connection, *m_painter, m_button, m_tray.look());
    m_tray.dock(m_icon->window());
}

void X11TrayItem::onEvent(const xcb_generic_event_t &event)
{
    switch (m_tray.note(event)) {
    case X11Tray::News::Announced:
        if (!m_icon || m_dockedIn != m_tray.window())
            dock();
        return;
    case X11Tray::News::Recolored:
        if (m_icon)
            m_icon->setForeground(m_tray.look().foreground);
        return;
    case X11Tray::News::Changed:
        if (m_icon)
            dock();
        return;
    case X11Tray::News::Gone:
        m_icon.reset();
        return;
    case X11Tray::News::None:
        break;
    }
    switch (m_icon ? m_icon->note(event) : X11TrayIcon::News::None) {
    case X11TrayIcon::News::Clicked:
        // Later: the action may destroy the item, and with it the connection that this event came from.
        QMetaObject::invokeMethod(
            &m_later, [action = m_action] { action(); }, Qt::QueuedConnection);
        break;
    case X11TrayIcon::News::PutOut:
        m_icon.reset();
        break;
    case X11TrayIcon::News::None:
        break;
    }
}
