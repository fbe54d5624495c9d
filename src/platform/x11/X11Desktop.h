#pragma once

#include "platform/linux/DesktopEntries.h"
#include "platform/x11/X11Clock.h"

#include <QRect>

#include <array>
#include <optional>
#include <utility>
#include <vector>

/// A top-level window and what it says about its program.
struct X11Window {
    xcb_window_t id = XCB_WINDOW_NONE;
    uint32_t client = 0; ///< what the numbers of all things of its connection to the server begin with
    WindowIdentity identity;
};

/// The windows of an X server as its window manager announces them (EWMH), or, without a window manager that
/// does, as the server has them. Main thread. It waits for the server, never for a program; a window that
/// vanishes at any moment is nothing special.
class X11Desktop
{
public:
    /// Null without an X server.
    static std::shared_ptr<X11Desktop> open();

    /// The window with the keyboard focus. With a window manager that tells (_NET_ACTIVE_WINDOW) this is what
    /// it announced last; else the server is asked.
    std::optional<X11Window> activeWindow();

    /// What a window says about its program now; nothing when it is gone.
    std::optional<X11Window> describe(xcb_window_t window);

    /// The topmost window of the same program; nothing when it has none.
    std::optional<X11Window> topmostLike(const X11Window &window);

    /// Asks for the window to be in front, on its workspace, with the keyboard focus.
    void bringToFront(xcb_window_t window);

    /// Keeps in mind whose program was activated last, until it is taken.
    void noteActivated(const X11Window &window) { m_activated = window; }
    std::optional<X11Window> takeActivated() { return std::exchange(m_activated, std::nullopt); }

    /// A window's place on the screen, in pixels of the server's; nothing when it is gone.
    std::optional<QRect> geometry(xcb_window_t window);
    /// The pointer's place.
    std::optional<QPoint> pointerPosition();
    /// The part of the screen that docks leave free, in pixels of the server's (_NET_WORKAREA of the current
    /// desktop).
    std::optional<QRect> workArea();

    /// The application that a window belongs to.
    std::optional<DesktopEntry> entryOf(const X11Window &window)
    {
        return m_entries.entryOf(window.identity);
    }

    /// Whether both belong to one program: by process where it is known of both, and then by connection or
    /// class too; else by class; with neither only when they are the same window. The number of a window
    /// alone says little: the server gives it again.
    static bool isSameProgram(const X11Window &one, const X11Window &other);

private:
    explicit X11Desktop(std::unique_ptr<X11Connection> connection);
    void onEvent(const xcb_generic_event_t &event);
    void readWindowManager();
    void readActiveWindow();
    void watch(xcb_window_t window);
    std::optional<X11Window> focusedWindow();
    xcb_window_t windowWithFocus();
    xcb_window_t parent(xcb_window_t window);
    std::vector<xcb_window_t> windowsFromTop();
    void switchToDesktopOf(xcb_window_t window, xcb_timestamp_t time);
    void askWindowManager(xcb_window_t about, const QByteArray &type, const std::array<uint32_t, 2> &data);
    std::vector<quint32> numbers(xcb_window_t window, const QByteArray &property);

    std::unique_ptr<X11Connection> m_connection;
    X11Clock m_clock;
    DesktopEntries m_entries;
    QByteArray m_hostName;
    xcb_window_t m_windowManager = XCB_WINDOW_NONE; ///< its own window; none when there is no EWMH one
    xcb_window_t m_watched = XCB_WINDOW_NONE;
    std::optional<X11Window> m_active;
    std::optional<X11Window> m_activated;
};
