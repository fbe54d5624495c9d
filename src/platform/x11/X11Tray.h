#pragma once

#include "platform/x11/X11Connection.h"

#include <QColor>

#include <optional>

/// The tray of a connection's screen (freedesktop.org, "System Tray Protocol"): whoever owns the selection
/// _NET_SYSTEM_TRAY_Sn. Used by the owner of the connection, which passes it every event. It waits for the
/// server, never for the tray.
class X11Tray
{
public:
    /// What the tray says of the icons that it wants.
    struct Look {
        xcb_visualid_t visual = 0;        ///< 0 when it does not say
        std::optional<QColor> foreground; ///< of its text and of one-coloured icons
        bool isVertical = false;          ///< icons stand one above the other
    };

    /// The connection must outlive it.
    explicit X11Tray(X11Connection &connection);

    enum class News {
        None,
        Announced, ///< a tray is ready for icons; perhaps the same one again
        Recolored, ///< it has another foreground
        Changed,   ///< it wants another kind of window, or stands another way
        Gone,
    };
    News note(const xcb_generic_event_t &event);

    /// The tray's own window; none without a tray.
    xcb_window_t window() const { return m_window; }
    const Look &look() const { return m_look; }

    /// Asks the tray to embed a window.
    void dock(xcb_window_t icon);

private:
    void find();
    xcb_window_t owner();
    Look readLook();
    News onMessage(const xcb_client_message_event_t &message);
    News onProperty(const xcb_property_notify_event_t &event);
    std::vector<uint32_t> numbers(const QByteArray &property, xcb_atom_t type, uint32_t count);

    X11Connection &m_connection;
    xcb_atom_t m_selection;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    Look m_look;
};
