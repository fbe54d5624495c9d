#pragma once

#include "platform/x11/X11Connection.h"

#include <chrono>
#include <map>

/// Requestor windows whose conversion nobody waits for any more. They live on until the owner has answered,
/// since many owners end when they write to a window that is gone.
class X11RetiredWindows
{
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit X11RetiredWindows(X11Connection &connection)
        : m_connection(connection)
    {
    }

    void add(xcb_window_t window);
    void answered(xcb_window_t window);
    /// Ends those whose owner does not answer in ten seconds.
    void check(Time now);
    bool isEmpty() const { return m_windows.empty(); }

private:
    X11Connection &m_connection;
    std::map<xcb_window_t, Time> m_windows;
};
