#include "platform/x11/X11ClipboardKeeper.h"

#include "platform/x11/X11Properties.h"

X11ClipboardKeeper::X11ClipboardKeeper(X11Connection &connection, xcb_window_t window, Save save)
    : m_connection(connection)
    , m_window(window)
    , m_save(std::move(save))
{
}

void X11ClipboardKeeper::takeIfFree(xcb_timestamp_t time)
{
    const xcb_atom_t selection = m_connection.atom("CLIPBOARD_MANAGER");
    const XcbReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        m_connection.get(), xcb_get_selection_owner(m_connection.get(), selection), nullptr));
    if (!owner || owner->owner != XCB_WINDOW_NONE)
        return;
    xcb_set_selection_owner(m_connection.get(), m_window, selection, time);
    m_ownedSince = time;
    announce(time);
}

/// A manager makes itself known on the root window (ICCCM section 2.8).
void X11ClipboardKeeper::announce(xcb_timestamp_t time)
{
    union {
        xcb_client_message_event_t event;
        char bytes[32];
    } message{};
    message.event.response_type = XCB_CLIENT_MESSAGE;
    message.event.format = 32;
    message.event.window = m_connection.root();
    message.event.type = m_connection.atom("MANAGER");
    message.event.data.data32[0] = time;
    message.event.data.data32[1] = m_connection.atom("CLIPBOARD_MANAGER");
    message.event.data.data32[2] = m_window;
    xcb_send_event(
        m_connection.get(), 0, m_connection.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY, message.bytes);
}

void X11ClipboardKeeper::handle(const xcb_selection_request_event_t &request)
{
    const xcb_atom_t property = request.property != XCB_ATOM_NONE ? request.property : request.target;
    const xcb_atom_t targets = m_connection.atom("TARGETS");
    const xcb_atom_t saveTargets = m_connection.atom("SAVE_TARGETS");
    const xcb_atom_t timestamp = m_connection.atom("TIMESTAMP");
    if (request.target == saveTargets) {
        // Whichever targets the owner lists: what is kept is everything that the others follow from.
        m_save(request.time, [this, request](bool isSaved) {
            if (isSaved)
                reportSaved(request);
            else
                x11::notifyRequestor(m_connection, request, XCB_ATOM_NONE);
        });
        return;
    }
    if (request.target == targets) {
        x11::setAtoms(
            m_connection, request.requestor, property, XCB_ATOM_ATOM, {targets, timestamp, saveTargets});
    } else if (request.target == timestamp) {
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, request.requestor, property,
            XCB_ATOM_INTEGER, 32, 1, &m_ownedSince);
    } else {
        x11::notifyRequestor(m_connection, request, XCB_ATOM_NONE);
        return;
    }
    x11::notifyRequestor(m_connection, request, property);
}

/// A target with a side effect answers with an empty property of type NULL (ICCCM section 2.6.3).
void X11ClipboardKeeper::reportSaved(const xcb_selection_request_event_t &request)
{
    const xcb_atom_t property = request.property != XCB_ATOM_NONE ? request.property : request.target;
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, request.requestor, property,
        m_connection.atom("NULL"), 32, 0, nullptr);
    x11::notifyRequestor(m_connection, request, property);
}
