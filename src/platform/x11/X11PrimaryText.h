#pragma once

#include "platform/x11/X11Clock.h"
#include "platform/x11/X11IncrementalSends.h"
#include "platform/x11/X11RetiredWindows.h"
#include "platform/x11/X11SelectionReceiver.h"

#include <QByteArray>

/// Owns the PRIMARY selection with the text of CLIPBOARD, for programs that paste nothing else, until another
/// program selects something (ICCCM section 2.2). Used by the owner of a connection, which passes it every
/// event.
class X11PrimaryText
{
public:
    /// Both must outlive it.
    X11PrimaryText(X11Connection &connection, X11Clock &clock);

    /// Asks the owner of CLIPBOARD for its text and takes PRIMARY over with it, then says whether that came
    /// about. It has no deadline; a new call cancels the one before, which then says nothing.
    void takeClipboard(const std::function<void(bool isTaken)> &onDone);
    /// Gives up on a CLIPBOARD that does not answer.
    void cancel();

    void note(const xcb_generic_event_t &event);

private:
    void claim(const QByteArray &utf8);
    void onSelectionRequest(const xcb_selection_request_event_t &request);
    bool convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
    bool convertMultiple(xcb_window_t requestor, xcb_atom_t property);
    void sendTargets(xcb_window_t requestor, xcb_atom_t property);
    void sendText(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type, const QByteArray &bytes);

    X11Connection &m_connection;
    X11Clock &m_clock;
    X11IncrementalSends m_sends;
    X11RetiredWindows m_retired;
    std::unique_ptr<X11SelectionReceiver> m_receiver;
    bool m_isOwner = false;
    xcb_timestamp_t m_since = 0;
    QByteArray m_text;
};
