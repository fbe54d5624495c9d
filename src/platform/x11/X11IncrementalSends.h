#pragma once

#include "platform/x11/X11Connection.h"

#include <chrono>
#include <vector>

/// Sends large values to requestors in chunks, each when the one before was taken (ICCCM section 2.7.2). Any
/// number at a time, also several to one window. A requestor that is gone, or takes nothing for too long, is
/// dropped.
class X11IncrementalSends
{
public:
    using Time = std::chrono::steady_clock::time_point;

    X11IncrementalSends(X11Connection &connection, std::chrono::milliseconds stalledAfter);

    /// Announces the value on the requestor's property; the caller then sends the SelectionNotify.
    void start(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type, const QByteArray &bytes);

    void handle(const xcb_property_notify_event_t &event);
    void requestorIsGone(xcb_window_t requestor);
    void check(Time now);
    bool isEmpty() const { return m_sends.empty(); }

private:
    struct Send {
        xcb_window_t requestor;
        xcb_atom_t property;
        xcb_atom_t type;
        QByteArray bytes;
        qsizetype offset;
        Time progress;
    };

    bool sendChunk(Send &send);
    void leave(xcb_window_t requestor);

    X11Connection &m_connection;
    const std::chrono::milliseconds m_stalledAfter;
    const qsizetype m_chunkBytes;
    std::vector<Send> m_sends;
};
