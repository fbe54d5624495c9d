#pragma once

#include "support/ChildProgram.h"

/// A virtual X server of a test's own. While it lives, $DISPLAY names it; with it goes every client.
class XServer
{
public:
    /// Starts Xvfb and waits until it takes connections; `isRunning` tells whether that worked.
    XServer();
    ~XServer();
    XServer(const XServer &) = delete;
    XServer &operator=(const XServer &) = delete;

    bool isRunning() const { return !m_display.isEmpty(); }
    QByteArray display() const { return m_display; }

private:
    ChildProgram m_program;
    QByteArray m_display;
    QByteArray m_previousDisplay;
};
