#pragma once

#include "platform/x11/XcbReply.h"

#include <QByteArray>
#include <QSocketNotifier>

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

/// A connection to the X server of $DISPLAY, with its events delivered by the event loop of the thread that
/// made it.
///
/// Life cycle: `open`, which may fail; `onEvent` set by the owner; events arrive from the event loop;
/// `onClosed` is called once when the server goes away, after which nothing arrives and requests are dropped.
/// Everything on the thread that made it.
class X11Connection
{
public:
    /// Null when there is no display, or it refuses.
    static std::unique_ptr<X11Connection> open();
    ~X11Connection();
    X11Connection(const X11Connection &) = delete;
    X11Connection &operator=(const X11Connection &) = delete;

    std::function<void(const xcb_generic_event_t &)> onEvent;
    std::function<void()> onClosed;

    xcb_connection_t *get() const { return m_connection; }
    const xcb_screen_t &screen() const { return *m_screen; }
    xcb_window_t root() const { return m_screen->root; }

    /// The atom of a name; asked of the server once and remembered.
    xcb_atom_t atom(const QByteArray &name);
    /// Asks for many at once: one round trip.
    void internAtoms(const std::vector<QByteArray> &names);
    /// The name of an atom; empty when the server does not know it.
    QByteArray atomName(xcb_atom_t atom);

    /// Sends what is buffered.
    void flush();
    /// Delivers events that came in while a reply was awaited. The event loop does it by itself for those on
    /// the wire; call it at the end of a block of requests with replies that is not run from `onEvent`.
    void processEvents();

private:
    X11Connection(xcb_connection_t *connection, int screenNumber);

    XcbReply<xcb_generic_event_t> nextEvent();

    xcb_connection_t *m_connection;
    xcb_screen_t *m_screen;
    QSocketNotifier m_notifier;
    std::unordered_map<std::string, xcb_atom_t> m_atoms;
    std::unordered_map<xcb_atom_t, QByteArray> m_names;
    bool m_isProcessing = false;
};
