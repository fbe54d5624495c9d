#pragma once

#include "platform/x11/X11TrayIcon.h"

#include <QObject>

/// A status item in the tray of an X server, on a connection of its own. It docks whenever there is a tray.
/// Main thread only.
class X11TrayItem : public StatusItem
{
public:
    /// Null without an X server or without its RENDER extension.
    static std::unique_ptr<X11TrayItem> open(StatusItemButton button, std::function<void()> action);

private:
    X11TrayItem(std::unique_ptr<X11Connection> connection, std::unique_ptr<X11TrayPainter> painter,
        StatusItemButton button, std::function<void()> action);
    void onEvent(const xcb_generic_event_t &event);
    void dock();

    StatusItemButton m_button;
    std::function<void()> m_action;
    std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<X11TrayPainter> m_painter;
    X11Tray m_tray;
    xcb_window_t m_dockedIn = XCB_WINDOW_NONE;
    std::unique_ptr<X11TrayIcon> m_icon;
    QObject m_later; ///< calls that wait for the event loop end with it
};
