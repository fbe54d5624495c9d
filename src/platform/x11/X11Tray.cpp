#include "platform/x11/X11Tray.h"

#include <utility>

namespace
{

constexpr uint32_t RequestDock = 0; // SYSTEM_TRAY_REQUEST_DOCK
constexpr uint32_t Vertical = 1;    // _NET_SYSTEM_TRAY_ORIENTATION_VERT

QByteArray selectionName(const X11Connection &connection)
{
    int screen = 0;
    auto at = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    for (; at.rem > 1 && at.data->root != connection.root(); xcb_screen_next(&at))
        ++screen;
    return "_NET_SYSTEM_TRAY_S" + QByteArray::number(screen);
}

void selectEvents(X11Connection &connection, xcb_window_t window, uint32_t events)
{
    xcb_change_window_attributes(connection.get(), window, XCB_CW_EVENT_MASK, &events);
}

} // namespace

X11Tray::X11Tray(X11Connection &connection)
    : m_connection(connection)
    , m_selection(connection.atom(selectionName(connection)))
{
    m_connection.internAtoms({"MANAGER", "_NET_SYSTEM_TRAY_OPCODE", "_NET_SYSTEM_TRAY_VISUAL",
        "_NET_SYSTEM_TRAY_COLORS", "_NET_SYSTEM_TRAY_ORIENTATION"});
    // A tray that starts announces itself to those who look at the root window (ICCCM section 2.8).
    selectEvents(m_connection, m_connection.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    find();
}

xcb_window_t X11Tray::owner()
{
    const XcbReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_connection.get(), xcb_get_selection_owner(m_connection.get(), m_selection), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

void X11Tray::find()
{
    xcb_window_t watched = XCB_WINDOW_NONE;
    m_window = owner();
    // One that is still the owner once it is watched cannot go without notice.
    while (m_window != XCB_WINDOW_NONE && m_window != watched) {
        watched = m_window;
        selectEvents(m_connection, watched, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
        m_window = owner();
    }
    m_look = m_window == XCB_WINDOW_NONE ? Look() : readLook();
}

X11Tray::Look X11Tray::readLook()
{
    Look look;
    const auto visuals = numbers("_NET_SYSTEM_TRAY_VISUAL", XCB_ATOM_VISUALID, 1);
    if (!visuals.empty())
        look.visual = visuals.front();
    // Red, green and blue of the foreground, 16 bits each; more colours follow.
    const auto colors = numbers("_NET_SYSTEM_TRAY_COLORS", XCB_ATOM_CARDINAL, 3);
    if (colors.size() == 3)
        look.foreground = QColor(colors[0] >> 8 & 0xff, colors[1] >> 8 & 0xff, colors[2] >> 8 & 0xff);
    const auto orientation = numbers("_NET_SYSTEM_TRAY_ORIENTATION", XCB_ATOM_CARDINAL, 1);
    look.isVertical = !orientation.empty() && orientation.front() == Vertical;
    return look;
}

std::vector<uint32_t> X11Tray::numbers(const QByteArray &property, xcb_atom_t type, uint32_t count)
{
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection.get(),
        xcb_get_property(m_connection.get(), 0, m_window, m_connection.atom(property), type, 0, count),
        nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto *const values = static_cast<const uint32_t *>(xcb_get_property_value(reply.get()));
    return {values, values + reply->value_len};
}

X11Tray::News X11Tray::note(const xcb_generic_event_t &event)
{
    switch (event.response_type & 0x7f) {
    case XCB_CLIENT_MESSAGE:
        return onMessage(reinterpret_cast<const xcb_client_message_event_t &>(event));
    case XCB_PROPERTY_NOTIFY:
        return onProperty(reinterpret_cast<const xcb_property_notify_event_t &>(event));
    case XCB_DESTROY_NOTIFY:
        if (reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window != m_window)
            return News::None;
        // One that takes its place has announced itself before, or will.
        m_window = XCB_WINDOW_NONE;
        return News::Gone;
    default:
        return News::None;
    }
}

X11Tray::News X11Tray::onMessage(const xcb_client_message_event_t &message)
{
    if (message.type != m_connection.atom("MANAGER") || message.data.data32[1] != m_selection)
        return News::None;
    find();
    return m_window == XCB_WINDOW_NONE ? News::Gone : News::Announced;
}

X11Tray::News X11Tray::onProperty(const xcb_property_notify_event_t &event)
{
    if (event.window != m_window)
        return News::None;
    const Look before = std::exchange(m_look, readLook());
    if (m_look.visual != before.visual || m_look.isVertical != before.isVertical)
        return News::Changed;
    return m_look.foreground == before.foreground ? News::None : News::Recolored;
}

void X11Tray::dock(xcb_window_t icon)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = m_window;
    message.type = m_connection.atom("_NET_SYSTEM_TRAY_OPCODE");
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = RequestDock;
    message.data.data32[2] = icon;
    xcb_send_event(
        m_connection.get(), 0, m_window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&message));
}
