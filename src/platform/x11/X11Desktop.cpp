#include "platform/x11/X11Desktop.h"

#include <QSysInfo>

#include <algorithm>
#include <ranges>

namespace
{

// A list of all windows or of all supported hints is shorter; a name much more so.
constexpr uint32_t PropertyLimit = 16384; // in units of four bytes

// EWMH, "Source indication in requests": 2 is a pager or another program that acts for the user.
constexpr uint32_t SourcePager = 2;
// EWMH, _NET_WM_DESKTOP: a window that is on all of them.
constexpr uint32_t AllDesktops = 0xffffffff;

using PropertyReply = XcbReply<xcb_get_property_reply_t>;

xcb_get_property_cookie_t askProperty(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t property)
{
    return xcb_get_property(connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, PropertyLimit);
}

QByteArray bytesOf(const PropertyReply &reply)
{
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(reply.get())),
        xcb_get_property_value_length(reply.get())};
}

std::vector<quint32> numbersOf(const PropertyReply &reply)
{
    if (!reply || reply->format != 32)
        return {};
    const auto *const values = static_cast<const quint32 *>(xcb_get_property_value(reply.get()));
    return {values, values + xcb_get_property_value_length(reply.get()) / 4};
}

QString textOf(const PropertyReply &reply)
{
    // Some programs count a closing zero in.
    return QString::fromUtf8(bytesOf(reply).split('\0').first());
}

} // namespace

std::shared_ptr<X11Desktop> X11Desktop::open()
{
    auto connection = X11Connection::open();
    if (!connection)
        return nullptr;
    return std::shared_ptr<X11Desktop>(new X11Desktop(std::move(connection)));
}

X11Desktop::X11Desktop(std::unique_ptr<X11Connection> connection)
    : m_connection(std::move(connection))
    , m_clock(*m_connection)
    , m_hostName(QSysInfo::machineHostName().toUtf8())
{
    m_connection->internAtoms({"_NET_ACTIVE_WINDOW", "_NET_SUPPORTED", "_NET_SUPPORTING_WM_CHECK",
        "_NET_CLIENT_LIST_STACKING", "_NET_WM_PID", "_GTK_APPLICATION_ID", "_KDE_NET_WM_DESKTOP_FILE"});
    m_connection->onEvent = [this](const xcb_generic_event_t &event) { onEvent(event); };
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection->get(), m_connection->root(), XCB_CW_EVENT_MASK, &events);
    readWindowManager();
}

void X11Desktop::onEvent(const xcb_generic_event_t &event)
{
    m_clock.note(event);
    const int type = event.response_type & 0x7f;
    if (type == XCB_DESTROY_NOTIFY || type == XCB_UNMAP_NOTIFY) {
        // Some window managers name a window that is gone until another one gets the focus.
        const xcb_window_t window = reinterpret_cast<const xcb_unmap_notify_event_t &>(event).window;
        if (type == XCB_DESTROY_NOTIFY && window == m_windowManager)
            readWindowManager();
        else if (m_active && m_active->id == window)
            m_active.reset();
    } else if (type == XCB_MAP_NOTIFY) {
        // A window that is put into another frame is unmapped for a moment.
        if (reinterpret_cast<const xcb_map_notify_event_t &>(event).window == m_watched)
            readActiveWindow();
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const xcb_atom_t atom = reinterpret_cast<const xcb_property_notify_event_t &>(event).atom;
        if (atom == m_connection->atom("_NET_SUPPORTED") ||
            atom == m_connection->atom("_NET_SUPPORTING_WM_CHECK"))
            readWindowManager();
        else if (atom == m_connection->atom("_NET_ACTIVE_WINDOW"))
            readActiveWindow();
    }
}

std::vector<quint32> X11Desktop::numbers(xcb_window_t window, const QByteArray &property)
{
    xcb_connection_t *const connection = m_connection->get();
    return numbersOf(PropertyReply(xcb_get_property_reply(
        connection, askProperty(connection, window, m_connection->atom(property)), nullptr)));
}

void X11Desktop::readWindowManager()
{
    m_windowManager = XCB_WINDOW_NONE;
    m_active.reset();
    const auto announced = numbers(m_connection->root(), "_NET_SUPPORTING_WM_CHECK");
    if (announced.empty())
        return;
    // The window names itself; a window manager that crashed leaves the root's property behind (EWMH,
    // _NET_SUPPORTING_WM_CHECK). It may name itself a moment later, hence the property events.
    const xcb_window_t window = announced.front();
    const uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection->get(), window, XCB_CW_EVENT_MASK, &events);
    const auto itself = numbers(window, "_NET_SUPPORTING_WM_CHECK");
    const auto supported = numbers(m_connection->root(), "_NET_SUPPORTED");
    if (itself.empty() || itself.front() != window ||
        std::ranges::find(supported, m_connection->atom("_NET_ACTIVE_WINDOW")) == supported.end())
        return;
    m_windowManager = window;
    readActiveWindow();
}

void X11Desktop::readActiveWindow()
{
    const auto active = numbers(m_connection->root(), "_NET_ACTIVE_WINDOW");
    const xcb_window_t window = active.empty() ? xcb_window_t{XCB_WINDOW_NONE} : active.front();
    watch(window);
    m_active = window == XCB_WINDOW_NONE ? std::nullopt : describe(window);
}

void X11Desktop::watch(xcb_window_t window)
{
    const auto select = [this](xcb_window_t of, uint32_t events) {
        if (of != XCB_WINDOW_NONE && of != m_windowManager)
            xcb_change_window_attributes(m_connection->get(), of, XCB_CW_EVENT_MASK, &events);
    };
    if (window != m_watched)
        select(m_watched, XCB_EVENT_MASK_NO_EVENT);
    // Also when the number is the same: it may be another window by now.
    select(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    m_watched = window;
}

std::optional<X11Window> X11Desktop::activeWindow()
{
    // The announcement may be on the wire.
    m_connection->processEvents();
    if (m_windowManager == XCB_WINDOW_NONE)
        return focusedWindow();
    // Some programs name their class only once they are in front.
    if (m_active && m_active->identity.className.isEmpty())
        m_active = describe(m_active->id);
    return m_active;
}

std::optional<X11Window> X11Desktop::describe(xcb_window_t window)
{
    xcb_connection_t *const connection = m_connection->get();
    const auto ask = [&](xcb_atom_t property) { return askProperty(connection, window, property); };
    const auto classCookie = ask(XCB_ATOM_WM_CLASS);
    const auto machineCookie = ask(XCB_ATOM_WM_CLIENT_MACHINE);
    const auto processCookie = ask(m_connection->atom("_NET_WM_PID"));
    const auto applicationCookie = ask(m_connection->atom("_GTK_APPLICATION_ID"));
    const auto fileCookie = ask(m_connection->atom("_KDE_NET_WM_DESKTOP_FILE"));
    const auto take = [&](xcb_get_property_cookie_t cookie) {
        return PropertyReply(xcb_get_property_reply(connection, cookie, nullptr));
    };
    const PropertyReply windowClass = take(classCookie);
    const PropertyReply machine = take(machineCookie);
    const PropertyReply process = take(processCookie);
    const PropertyReply application = take(applicationCookie);
    const PropertyReply file = take(fileCookie);
    if (!windowClass)
        return std::nullopt;

    const uint32_t ownPart = xcb_get_setup(connection)->resource_id_mask;
    X11Window described{window, window & ~ownPart, {}};
    WindowIdentity &identity = described.identity;
    const QByteArrayList names = bytesOf(windowClass).split('\0');
    identity.instance = QString::fromUtf8(names.value(0));
    identity.className = QString::fromUtf8(names.value(1));
    identity.applicationId = textOf(application);
    identity.desktopFile = textOf(file);
    // The number means something on the machine that the program runs on only.
    const QByteArray machineName = textOf(machine).toUtf8();
    const auto processes = numbersOf(process);
    if (!processes.empty() && (machineName.isEmpty() || machineName == m_hostName))
        identity.processIdentifier = processes.front();
    return described;
}

std::optional<X11Window> X11Desktop::focusedWindow()
{
    // Toolkits give the focus to a nameless child of their top-level window.
    xcb_window_t window = windowWithFocus();
    while (window != XCB_WINDOW_NONE && window != m_connection->root()) {
        const auto described = describe(window);
        if (!described || !described->identity.className.isEmpty())
            return described;
        window = parent(window);
    }
    return std::nullopt;
}

xcb_window_t X11Desktop::windowWithFocus()
{
    xcb_connection_t *const connection = m_connection->get();
    const XcbReply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    if (!focus)
        return XCB_WINDOW_NONE;
    if (focus->focus != XCB_INPUT_FOCUS_POINTER_ROOT)
        return focus->focus;
    const XcbReply<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(connection, xcb_query_pointer(connection, m_connection->root()), nullptr));
    return pointer ? pointer->child : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

xcb_window_t X11Desktop::parent(xcb_window_t window)
{
    const XcbReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(m_connection->get(), xcb_query_tree(m_connection->get(), window), nullptr));
    return tree ? tree->parent : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

std::vector<xcb_window_t> X11Desktop::windowsFromTop()
{
    std::vector<xcb_window_t> windows = numbers(m_connection->root(), "_NET_CLIENT_LIST_STACKING");
    if (m_windowManager == XCB_WINDOW_NONE) {
        const XcbReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
            m_connection->get(), xcb_query_tree(m_connection->get(), m_connection->root()), nullptr));
        if (!tree)
            return {};
        const xcb_window_t *const children = xcb_query_tree_children(tree.get());
        windows.assign(children, children + tree->children_len);
    }
    std::ranges::reverse(windows);
    return windows;
}

bool X11Desktop::isSameProgram(const X11Window &one, const X11Window &other)
{
    const WindowIdentity &a = one.identity;
    const WindowIdentity &b = other.identity;
    const bool haveNumbers = a.processIdentifier > 0 && b.processIdentifier > 0;
    if (haveNumbers && a.processIdentifier != b.processIdentifier)
        return false;
    if (a.className.isEmpty() && b.className.isEmpty())
        return haveNumbers || one.id == other.id;
    // Each sandbox counts its processes anew, so the number alone does not tell two programs apart. One
    // program may have windows of several classes, and may name a class only once it is in front.
    if (haveNumbers && (one.client == other.client || a.className.isEmpty() || b.className.isEmpty()))
        return true;
    return a.className == b.className;
}

std::optional<X11Window> X11Desktop::topmostLike(const X11Window &window)
{
    for (const xcb_window_t candidate : windowsFromTop()) {
        auto described = describe(candidate);
        if (described && isSameProgram(*described, window))
            return described;
    }
    return std::nullopt;
}

void X11Desktop::bringToFront(xcb_window_t window)
{
    xcb_connection_t *const connection = m_connection->get();
    const xcb_timestamp_t time = m_clock.now();
    if (m_windowManager != XCB_WINDOW_NONE) {
        switchToDesktopOf(window, time);
        askWindowManager(window, "_NET_ACTIVE_WINDOW", {SourcePager, time});
    } else {
        const uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_map_window(connection, window);
        xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        xcb_set_input_focus(connection, XCB_INPUT_FOCUS_PARENT, window, time);
    }
    m_connection->flush();
}

void X11Desktop::switchToDesktopOf(xcb_window_t window, xcb_timestamp_t time)
{
    // Asked to activate a window of another desktop, some window managers switch there, some fetch the
    // window, and some do neither.
    const auto desktop = numbers(window, "_NET_WM_DESKTOP");
    const auto current = numbers(m_connection->root(), "_NET_CURRENT_DESKTOP");
    if (desktop.empty() || current.empty() || desktop.front() == AllDesktops ||
        desktop.front() == current.front())
        return;
    askWindowManager(m_connection->root(), "_NET_CURRENT_DESKTOP", {desktop.front(), time});
}

void X11Desktop::askWindowManager(
    xcb_window_t about, const QByteArray &type, const std::array<uint32_t, 2> &data)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = about;
    message.type = m_connection->atom(type);
    std::ranges::copy(data, message.data.data32);
    xcb_send_event(m_connection->get(), 0, m_connection->root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
        reinterpret_cast<const char *>(&message));
}

std::optional<QRect> X11Desktop::geometry(xcb_window_t window)
{
    xcb_connection_t *const connection = m_connection->get();
    const auto sizeCookie = xcb_get_geometry(connection, window);
    const auto placeCookie = xcb_translate_coordinates(connection, window, m_connection->root(), 0, 0);
    const XcbReply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(connection, sizeCookie, nullptr));
    const XcbReply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(connection, placeCookie, nullptr));
    if (!size || !place)
        return std::nullopt;
    return QRect(place->dst_x, place->dst_y, size->width, size->height);
}

std::optional<QPoint> X11Desktop::pointerPosition()
{
    const XcbReply<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
        m_connection->get(), xcb_query_pointer(m_connection->get(), m_connection->root()), nullptr));
    return pointer && pointer->same_screen ? std::optional(QPoint(pointer->root_x, pointer->root_y))
                                           : std::nullopt;
}

std::optional<QRect> X11Desktop::workArea()
{
    const auto areas = numbers(m_connection->root(), "_NET_WORKAREA");
    const auto current = numbers(m_connection->root(), "_NET_CURRENT_DESKTOP");
    const size_t at = current.empty() ? 0 : size_t{current.front()} * 4;
    if (m_windowManager == XCB_WINDOW_NONE || at + 4 > areas.size())
        return std::nullopt;
    return QRect(static_cast<int>(areas[at]), static_cast<int>(areas[at + 1]),
        static_cast<int>(areas[at + 2]), static_cast<int>(areas[at + 3]));
}
