#pragma once

#include "platform/x11/X11Connection.h"

#include <chrono>
#include <vector>

/// A program with one window on the test's X server: on a connection of its own, driven by the test's event
/// loop.
class TestProgram
{
public:
    /// WM_CLASS; no process (_NET_WM_PID) when it is negative.
    TestProgram(const QByteArray &instance, const QByteArray &className, qint64 processIdentifier = -1);
    ~TestProgram();

    /// WM_CLASS of the windows to come.
    void setClass(const QByteArray &instance, const QByteArray &className);

    enum class Focus { Awaits, Takes };
    /// Maps a window and waits until it has the keyboard focus; with `Focus::Takes` it takes it, as is needed
    /// without a window manager.
    xcb_window_t show(Focus focus, std::chrono::milliseconds deadline = std::chrono::seconds(10));
    void hide(xcb_window_t window);
    void close(xcb_window_t window);
    /// The window that `show` made last.
    xcb_window_t window() const { return m_windows.back(); }
    bool hasFocus();

    struct KeyPress {
        int keyCode;
        int state;
    };
    /// The keys that were pressed in its windows.
    const std::vector<KeyPress> &keyPresses() const { return m_keyPresses; }
    void forgetKeyPresses() { m_keyPresses.clear(); }
    int keyReleaseCount() const { return m_keyReleaseCount; }

private:
    std::unique_ptr<X11Connection> m_connection;
    QByteArray m_class;
    qint64 m_processIdentifier;
    std::vector<xcb_window_t> m_windows;
    std::vector<KeyPress> m_keyPresses;
    int m_keyReleaseCount = 0;
};
