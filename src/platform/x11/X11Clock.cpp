#include "platform/x11/X11Clock.h"

X11Clock::X11Clock(X11Connection &connection)
    : m_connection(connection)
    , m_window(xcb_generate_id(connection.get()))
{
    const uint32_t values[] = {1, XCB_EVENT_MASK_PROPERTY_CHANGE};
    xcb_create_window(connection.get(), 0, m_window, connection.root(), -1, -1, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
        values);
}

void X11Clock::note(const xcb_generic_event_t &event)
{
    switch (event.response_type & 0x7f) {
    case XCB_PROPERTY_NOTIFY:
        m_last = reinterpret_cast<const xcb_property_notify_event_t &>(event).time;
        break;
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE:
        m_last = reinterpret_cast<const xcb_key_press_event_t &>(event).time;
        break;
    default:
        break;
    }
}

xcb_timestamp_t X11Clock::now()
{
    // Appending nothing changes nothing, and is announced with the time all the same.
    xcb_change_property(
        m_connection.get(), XCB_PROP_MODE_APPEND, m_window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0, nullptr);
    const XcbReply<xcb_get_input_focus_reply_t> sync(
        xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    m_connection.processEvents();
    return m_last;
}
