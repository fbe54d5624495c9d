#pragma once

#include "platform/x11/X11Connection.h"

/// The server's time, for requests that must carry a real one (ICCCM 2.1, "Acquiring selection ownership").
/// It comes with a hidden window. Used by the owner of a connection, which passes it every event.
class X11Clock
{
public:
    /// The connection must outlive it; the window ends with the connection.
    explicit X11Clock(X11Connection &connection);

    void note(const xcb_generic_event_t &event);

    /// The time now, in one round trip; from within the connection's `onEvent`, the time of the last event.
    xcb_timestamp_t now();

    xcb_window_t window() const { return m_window; }

private:
    X11Connection &m_connection;
    xcb_window_t m_window;
    xcb_timestamp_t m_last = XCB_CURRENT_TIME;
};
