#pragma once

#include <QProcess>
#include <QTemporaryDir>

/// An EWMH window manager (Openbox) on the test's X server. It focuses windows as they appear.
class WindowManager
{
public:
    /// Starts it and waits until it announces itself.
    WindowManager();
    ~WindowManager();

    bool isRunning() const { return m_isRunning; }
    /// Ends it at once, so that what it wrote on the root window stays there.
    void kill();

private:
    QTemporaryDir m_home;
    QProcess m_process;
    bool m_isRunning = false;
};
