#pragma once

#include "platform/x11/X11Connection.h"

#include <QImage>

#include <optional>
#include <vector>

/// A hand-written tray of the older kind (System Tray Protocol, XEmbed) on the test's X server, over the
/// whole upper edge of the screen: on a connection of its own, driven by the test's event loop.
class TestTray
{
public:
    struct Options {
        /// Wants icons of a visual with alpha.
        bool hasAlpha = false;
        std::optional<QColor> foreground{};
        bool isVertical = false;
        QSize iconSize{24, 24};
        /// Icons outlive a tray that ends.
        bool savesIcons = false;
        /// Takes none of the icons that ask.
        bool isDeaf = false;
    };
    static constexpr QRgb Background = 0xff204080;

    /// Takes the selection and announces itself.
    TestTray()
        : TestTray(Options())
    {
    }
    explicit TestTray(Options options);
    ~TestTray();

    /// The icons that are embedded, in the order in which they came.
    const std::vector<xcb_window_t> &icons();
    /// How often one asked to be embedded.
    int requestCount();

    /// Says once more that it is there.
    void announce();
    void putOut(xcb_window_t icon);
    void destroy(xcb_window_t icon);
    void resize(xcb_window_t icon, const QSize &size);
    void setForeground(const QColor &color);
    void setVisualWithAlpha();

    /// Presses and releases a button in the middle of the icon.
    void click(xcb_window_t icon, int button);
    /// Presses in the middle of the icon and releases far from it.
    void clickAndSlideAway(xcb_window_t icon, int button);

    /// What the icon's window shows, with its alpha if it has any; null until the server can tell.
    QImage picture(xcb_window_t icon);
    QByteArray text(xcb_window_t icon, const char *property);
    /// The least size that the icon asks for.
    QSize minimumSize(xcb_window_t icon);
    /// Whether the window exists.
    bool exists(xcb_window_t window);

private:
    void setProperties();
    void onEvent(const xcb_generic_event_t &event);
    void embed(xcb_window_t icon);
    bool wantsToBeMapped(xcb_window_t icon);
    void movePointer(const QPoint &place);
    void button(int number, int type);
    QPoint middleOf(xcb_window_t icon);

    const Options m_options;
    std::unique_ptr<X11Connection> m_connection;
    xcb_window_t m_window;
    std::vector<xcb_window_t> m_icons;
    int m_requestCount = 0;
};
