#pragma once

#include "platform/x11/X11Connection.h"

#include <functional>

/// The clipboard manager that owners ask to save their content before they end: owner of CLIPBOARD_MANAGER
/// while nobody else is, with the target SAVE_TARGETS (freedesktop.org's clipboard manager specification;
/// ICCCM sections 2.6.3 and 2.8).
class X11ClipboardKeeper
{
public:
    using Answer = std::function<void(bool isSaved)>;
    /// Calls the answer once the clipboard's content is with this program, or can not be had.
    using Save = std::function<void(xcb_timestamp_t time, Answer answer)>;

    /// The window is one of this program's that owns selections.
    X11ClipboardKeeper(X11Connection &connection, xcb_window_t window, Save save);

    /// Becomes the manager unless there is one.
    void takeIfFree(xcb_timestamp_t time);
    void handle(const xcb_selection_request_event_t &request);

private:
    void reportSaved(const xcb_selection_request_event_t &request);
    void announce(xcb_timestamp_t time);

    X11Connection &m_connection;
    const xcb_window_t m_window;
    const Save m_save;
    xcb_timestamp_t m_ownedSince = XCB_CURRENT_TIME;
};
