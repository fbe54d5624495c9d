#include "contract/TestTray.h"

#include <xcb/xtest.h>

#include <QColor>

#include <array>
#include <cstring>

namespace
{

constexpr uint16_t Width = 600;
constexpr uint16_t Height = 100;

xcb_visualid_t visualWithAlpha(const xcb_screen_t &screen)
{
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0; xcb_depth_next(&depth)) {
        if (depth.data->depth == 32 && depth.data->visuals_len > 0)
            return xcb_depth_visuals(depth.data)->visual_id;
    }
    return 0;
}

} // namespace

TestTray::TestTray(Options options)
    : m_options(std::move(options))
    , m_connection(X11Connection::open())
    , m_window(xcb_generate_id(m_connection->get()))
{
    m_connection->onEvent = [this](const xcb_generic_event_t &event) { onEvent(event); };
    const std::array<uint32_t, 3> values{Background & 0xffffff, 1, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
    xcb_create_window(m_connection->get(), XCB_COPY_FROM_PARENT, m_window, m_connection->root(), 0, 0, Width,
        Height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
        XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    xcb_map_window(m_connection->get(), m_window);
    setProperties();
    xcb_set_selection_owner(
        m_connection->get(), m_window, m_connection->atom("_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
    announce();
}

TestTray::~TestTray() = default;

const std::vector<xcb_window_t> &TestTray::icons()
{
    // Events that came in with an answer wait for no socket.
    m_connection->processEvents();
    return m_icons;
}

int TestTray::requestCount()
{
    m_connection->processEvents();
    return m_requestCount;
}

void TestTray::setProperties()
{
    if (m_options.hasAlpha)
        setVisualWithAlpha();
    const uint32_t orientation = m_options.isVertical ? 1 : 0;
    xcb_change_property(m_connection->get(), XCB_PROP_MODE_REPLACE, m_window,
        m_connection->atom("_NET_SYSTEM_TRAY_ORIENTATION"), XCB_ATOM_CARDINAL, 32, 1, &orientation);
    if (m_options.foreground)
        setForeground(*m_options.foreground);
}

void TestTray::setVisualWithAlpha()
{
    const xcb_visualid_t visual = visualWithAlpha(m_connection->screen());
    xcb_change_property(m_connection->get(), XCB_PROP_MODE_REPLACE, m_window,
        m_connection->atom("_NET_SYSTEM_TRAY_VISUAL"), XCB_ATOM_VISUALID, 32, 1, &visual);
    m_connection->flush();
}

void TestTray::setForeground(const QColor &color)
{
    // Foreground, error, warning and success, 16 bits a channel.
    std::array<uint32_t, 12> channels{};
    channels[0] = static_cast<uint32_t>(color.red() * 0x101);
    channels[1] = static_cast<uint32_t>(color.green() * 0x101);
    channels[2] = static_cast<uint32_t>(color.blue() * 0x101);
    xcb_change_property(m_connection->get(), XCB_PROP_MODE_REPLACE, m_window,
        m_connection->atom("_NET_SYSTEM_TRAY_COLORS"), XCB_ATOM_CARDINAL, 32, channels.size(),
        channels.data());
    m_connection->flush();
}

void TestTray::announce()
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = m_connection->root();
    message.type = m_connection->atom("MANAGER");
    message.data.data32[1] = m_connection->atom("_NET_SYSTEM_TRAY_S0");
    message.data.data32[2] = m_window;
    xcb_send_event(m_connection->get(), 0, m_connection->root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
        reinterpret_cast<const char *>(&message));
    m_connection->flush();
}

void TestTray::onEvent(const xcb_generic_event_t &event)
{
    const auto forget = [this](xcb_window_t icon) { std::erase(m_icons, icon); };
    switch (event.response_type & 0x7f) {
    case XCB_CLIENT_MESSAGE: {
        const auto &message = reinterpret_cast<const xcb_client_message_event_t &>(event);
        if (message.type == m_connection->atom("_NET_SYSTEM_TRAY_OPCODE") && message.data.data32[1] == 0)
            embed(message.data.data32[2]);
        break;
    }
    case XCB_DESTROY_NOTIFY:
        forget(reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window);
        break;
    case XCB_REPARENT_NOTIFY: {
        const auto &moved = reinterpret_cast<const xcb_reparent_notify_event_t &>(event);
        if (moved.parent != m_window)
            forget(moved.window);
        break;
    }
    default:
        break;
    }
}

void TestTray::embed(xcb_window_t icon)
{
    ++m_requestCount;
    if (m_options.isDeaf)
        return;
    xcb_connection_t *const connection = m_connection->get();
    const auto left = static_cast<int16_t>(m_icons.size() * 100);
    if (m_options.savesIcons)
        xcb_change_save_set(connection, XCB_SET_MODE_INSERT, icon);
    m_icons.push_back(icon);
    xcb_reparent_window(connection, icon, m_window, left, 10);
    resize(icon, m_options.iconSize);
    if (wantsToBeMapped(icon))
        xcb_map_window(connection, icon);
    m_connection->flush();
}

bool TestTray::wantsToBeMapped(xcb_window_t icon)
{
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection->get(),
        xcb_get_property(m_connection->get(), 0, icon, m_connection->atom("_XEMBED_INFO"),
            m_connection->atom("_XEMBED_INFO"), 0, 2),
        nullptr));
    if (!reply || reply->value_len != 2)
        return false;
    return static_cast<const uint32_t *>(xcb_get_property_value(reply.get()))[1] & 1;
}

void TestTray::putOut(xcb_window_t icon)
{
    xcb_unmap_window(m_connection->get(), icon);
    xcb_reparent_window(m_connection->get(), icon, m_connection->root(), 0, 0);
    m_connection->flush();
}

void TestTray::destroy(xcb_window_t icon)
{
    xcb_destroy_window(m_connection->get(), icon);
    m_connection->flush();
}

void TestTray::resize(xcb_window_t icon, const QSize &size)
{
    const std::array<uint32_t, 2> values{
        static_cast<uint32_t>(size.width()), static_cast<uint32_t>(size.height())};
    xcb_configure_window(
        m_connection->get(), icon, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values.data());
    m_connection->flush();
}

QPoint TestTray::middleOf(xcb_window_t icon)
{
    xcb_connection_t *const connection = m_connection->get();
    const XcbReply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, icon), nullptr));
    // The tray is in the screen's corner.
    return geometry ? QPoint(geometry->x + geometry->width / 2, geometry->y + geometry->height / 2)
                    : QPoint();
}

void TestTray::movePointer(const QPoint &place)
{
    xcb_test_fake_input(m_connection->get(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, m_connection->root(),
        static_cast<int16_t>(place.x()), static_cast<int16_t>(place.y()), 0);
}

void TestTray::button(int number, int type)
{
    xcb_test_fake_input(m_connection->get(), static_cast<uint8_t>(type), static_cast<uint8_t>(number),
        XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
    m_connection->flush();
}

void TestTray::click(xcb_window_t icon, int number)
{
    movePointer(middleOf(icon));
    button(number, XCB_BUTTON_PRESS);
    button(number, XCB_BUTTON_RELEASE);
}

void TestTray::clickAndSlideAway(xcb_window_t icon, int number)
{
    movePointer(middleOf(icon));
    button(number, XCB_BUTTON_PRESS);
    movePointer(QPoint(Width, Height) + QPoint(50, 50));
    button(number, XCB_BUTTON_RELEASE);
}

QImage TestTray::picture(xcb_window_t icon)
{
    xcb_connection_t *const connection = m_connection->get();
    const XcbReply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, icon), nullptr));
    if (!geometry)
        return {};
    const XcbReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection,
        xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, icon, 0, 0, geometry->width, geometry->height,
            ~uint32_t{0}),
        nullptr));
    if (!reply)
        return {};
    QImage image(geometry->width, geometry->height,
        reply->depth == 32 ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    if (image.sizeInBytes() != xcb_get_image_data_length(reply.get()))
        return {};
    std::memcpy(image.bits(), xcb_get_image_data(reply.get()), static_cast<size_t>(image.sizeInBytes()));
    return image;
}

QByteArray TestTray::text(xcb_window_t icon, const char *property)
{
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection->get(),
        xcb_get_property(
            m_connection->get(), 0, icon, m_connection->atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 100),
        nullptr));
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(reply.get())),
        xcb_get_property_value_length(reply.get())};
}

QSize TestTray::minimumSize(xcb_window_t icon)
{
    constexpr uint32_t HasMinimum = 1 << 4;
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection->get(),
        xcb_get_property(
            m_connection->get(), 0, icon, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 0, 18),
        nullptr));
    if (!reply || reply->value_len < 7)
        return {};
    const auto *const hints = static_cast<const uint32_t *>(xcb_get_property_value(reply.get()));
    return hints[0] & HasMinimum ? QSize(static_cast<int>(hints[5]), static_cast<int>(hints[6])) : QSize();
}

bool TestTray::exists(xcb_window_t window)
{
    const XcbReply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        m_connection->get(), xcb_get_window_attributes(m_connection->get(), window), nullptr));
    return reply != nullptr;
}
