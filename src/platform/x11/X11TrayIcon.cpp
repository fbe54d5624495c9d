#include "platform/x11/X11TrayIcon.h"

#include "platform/linux/StatusItemColor.h"

#include <algorithm>
#include <array>

namespace
{

/// Asked for until the tray gives more; as much as the panels of old have room for.
constexpr int InitialSize = 22;
/// A larger tray gets its icon in the middle. One request holds a picture of this size.
constexpr int LargestSize = 240;
constexpr uint8_t AlphaDepth = 32;
constexpr uint32_t XEmbedVersion = 0;
constexpr uint32_t XEmbedMapped = 1;

/// The depth of a visual of the screen; 0 when there is no such visual.
uint8_t depthOf(const xcb_screen_t &screen, xcb_visualid_t wanted)
{
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0; xcb_depth_next(&depth)) {
        auto visual = xcb_depth_visuals_iterator(depth.data);
        for (; visual.rem > 0; xcb_visualtype_next(&visual)) {
            if (visual.data->visual_id == wanted)
                return depth.data->depth;
        }
    }
    return 0;
}

} // namespace

X11TrayIcon::X11TrayIcon(X11Connection &connection, X11TrayPainter &painter, const StatusItemButton &button,
    const X11Tray::Look &look)
    : m_connection(connection)
    , m_painter(painter)
    , m_button(button)
    , m_color(look.foreground.value_or(StatusItemColor))
    , m_visual(connection.screen().root_visual)
    , m_isTrayVertical(look.isVertical)
    , m_window(xcb_generate_id(connection.get()))
    , m_colormap(xcb_generate_id(connection.get()))
    , m_size(InitialSize, InitialSize)
{
    if (depthOf(connection.screen(), look.visual) == AlphaDepth && painter.canPaint(look.visual)) {
        m_visual = look.visual;
        m_isTransparent = true;
    }
    create();
    describe();
}

X11TrayIcon::~X11TrayIcon()
{
    // Whether the tray has ended the window already, its number is ours.
    xcb_destroy_window(m_connection.get(), m_window);
    xcb_free_colormap(m_connection.get(), m_colormap);
}

void X11TrayIcon::create()
{
    xcb_connection_t *const connection = m_connection.get();
    xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, m_colormap, m_connection.root(), m_visual);
    // A window of another depth than its parent needs all of border, colormap and background; one of the same
    // depth shows through what the parent has behind it.
    const uint32_t background = m_isTransparent ? 0 : uint32_t{XCB_BACK_PIXMAP_PARENT_RELATIVE};
    const uint32_t events = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE;
    const std::array<uint32_t, 4> values{background, 0, events, m_colormap};
    const uint32_t mask = (m_isTransparent ? XCB_CW_BACK_PIXEL : XCB_CW_BACK_PIXMAP) | XCB_CW_BORDER_PIXEL |
        XCB_CW_EVENT_MASK | XCB_CW_COLORMAP;
    xcb_create_window(connection, depthOf(m_connection.screen(), m_visual), m_window, m_connection.root(), 0,
        0, InitialSize, InitialSize, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, m_visual, mask, values.data());
}

void X11TrayIcon::describe()
{
    xcb_connection_t *const connection = m_connection.get();
    const auto setText = [&](xcb_atom_t property, xcb_atom_t type, const QByteArray &text) {
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_window, property, type, 8,
            static_cast<uint32_t>(text.size()), text.constData());
    };
    const QString &name = m_button.accessibilityDescription;
    setText(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, name.toLatin1());
    setText(m_connection.atom("_NET_WM_NAME"), m_connection.atom("UTF8_STRING"), name.toUtf8());
    setText(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, QByteArray("larkspool\0Larkspool", 20));

    // That the tray is to map it.
    const xcb_atom_t info = m_connection.atom("_XEMBED_INFO");
    const std::array<uint32_t, 2> embedding{XEmbedVersion, XEmbedMapped};
    xcb_change_property(
        connection, XCB_PROP_MODE_REPLACE, m_window, info, info, 32, embedding.size(), embedding.data());
    askForSquare(InitialSize);
}

void X11TrayIcon::askForSquare(int side)
{
    m_askedSide = side;
    // WM_SIZE_HINTS (ICCCM section 4.1.2.3): the flag PMinSize, and the minimum.
    std::array<uint32_t, 18> hints{};
    hints[0] = 1 << 4;
    hints[5] = hints[6] = static_cast<uint32_t>(side);
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NORMAL_HINTS,
        XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(), hints.data());
}

/// Trays without a size for icons give them the panel's height, and the width that they ask for.
void X11TrayIcon::onSize(const QSize &size)
{
    // The server forgets what a resized window showed, and asks for it anew.
    m_size = size;
    const int side = std::min(m_isTrayVertical ? size.width() : size.height(), LargestSize);
    if (side > m_askedSide)
        askForSquare(side);
}

X11TrayIcon::News X11TrayIcon::note(const xcb_generic_event_t &event)
{
    switch (event.response_type & 0x7f) {
    case XCB_CONFIGURE_NOTIFY: {
        const auto &configured = reinterpret_cast<const xcb_configure_notify_event_t &>(event);
        if (configured.window == m_window)
            onSize(QSize(configured.width, configured.height));
        return News::None;
    }
    case XCB_EXPOSE: {
        const auto &exposed = reinterpret_cast<const xcb_expose_event_t &>(event);
        if (exposed.window == m_window && exposed.count == 0)
            draw();
        return News::None;
    }
    case XCB_BUTTON_RELEASE:
        return isInside(reinterpret_cast<const xcb_button_release_event_t &>(event)) ? News::Clicked
                                                                                     : News::None;
    case XCB_REPARENT_NOTIFY: {
        const auto &moved = reinterpret_cast<const xcb_reparent_notify_event_t &>(event);
        return moved.window == m_window && moved.parent == m_connection.root() ? News::PutOut : News::None;
    }
    case XCB_DESTROY_NOTIFY:
        return reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window == m_window ? News::PutOut
                                                                                              : News::None;
    default:
        return News::None;
    }
}

void X11TrayIcon::setForeground(const std::optional<QColor> &color)
{
    m_color = color.value_or(StatusItemColor);
    m_image = {};
    draw();
}

void X11TrayIcon::draw()
{
    const int side = std::min({m_size.width(), m_size.height(), LargestSize});
    if (m_image.width() != side)
        m_image = m_button.image(side, m_color);
    xcb_clear_area(m_connection.get(), 0, m_window, 0, 0, 0, 0);
    if (m_image.isNull())
        return;
    const QSize margins = (m_size - m_image.size()) / 2;
    m_painter.paint(m_window, m_visual, m_image, QPoint(margins.width(), margins.height()));
}

/// The three buttons that click; the others are what wheels send.
bool X11TrayIcon::isInside(const xcb_button_release_event_t &event) const
{
    return event.event == m_window && event.detail >= XCB_BUTTON_INDEX_1 &&
        event.detail <= XCB_BUTTON_INDEX_3 && QRect(QPoint(), m_size).contains(event.event_x, event.event_y);
}
