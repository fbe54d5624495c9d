#include "support/XServer.h"

XServer::XServer()
    : m_program({"Xvfb", "-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp", "-noreset"})
    , m_previousDisplay(qgetenv("DISPLAY"))
{
    // The server writes its number once it takes connections.
    const QByteArray number = m_program.hasStarted() ? m_program.readLine() : QByteArray();
    if (number.isEmpty())
        return;
    m_display = ':' + number;
    qputenv("DISPLAY", m_display);
}

XServer::~XServer()
{
    qputenv("DISPLAY", m_previousDisplay);
}
