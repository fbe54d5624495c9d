#pragma once

#include "platform/StatusBar.h"
#include "platform/x11/X11Tray.h"
#include "platform/x11/X11TrayPainter.h"

#include <QSize>

/// The window of a status item, for a tray to embed (freedesktop.org, "XEmbed Protocol"). Used by the owner
/// of the connection, which passes it every event.
class X11TrayIcon
{
public:
    /// Transparent where the tray wants a visual with alpha, else with the tray's own background behind it.
    /// The references must outlive it.
    X11TrayIcon(X11Connection &connection, X11TrayPainter &painter, const StatusItemButton &button,
        const X11Tray::Look &look);
    ~X11TrayIcon();
    X11TrayIcon(const X11TrayIcon &) = delete;
    X11TrayIcon &operator=(const X11TrayIcon &) = delete;

    xcb_window_t window() const { return m_window; }

    /// Draws itself in another colour; the usual one when the tray tells none.
    void setForeground(const std::optional<QColor> &color);

    enum class News {
        None,
        Clicked,
        PutOut, ///< the tray has put it out, or ended it
    };
    News note(const xcb_generic_event_t &event);

private:
    void create();
    void describe();
    void askForSquare(int side);
    void onSize(const QSize &size);
    void draw();
    bool isInside(const xcb_button_release_event_t &event) const;

    X11Connection &m_connection;
    X11TrayPainter &m_painter;
    const StatusItemButton &m_button;
    QColor m_color;
    xcb_visualid_t m_visual;
    bool m_isTransparent = false;
    bool m_isTrayVertical;
    xcb_window_t m_window;
    xcb_colormap_t m_colormap;
    QSize m_size;
    int m_askedSide = 0;
    QImage m_image; ///< as drawn last
};
