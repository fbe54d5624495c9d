#include "support/XServer.h"

XServer::XServer()
    : m_previousDisplay(qgetenv("DISPLAY"))
{
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(QStringLiteral("Xvfb"),
        {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
            QStringLiteral("1280x800x24"), QStringLiteral("-nolisten"), QStringLiteral("tcp"),
            QStringLiteral("-noreset")});
    // The server writes its number once it takes connections.
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(10000))
            return;
    }
    m_display = ':' + m_process.readLine().trimmed();
    qputenv("DISPLAY", m_display);
}

XServer::~XServer()
{
    m_process.terminate();
    if (!m_process.waitForFinished(5000)) {
        m_process.kill();
        m_process.waitForFinished(5000);
    }
    qputenv("DISPLAY", m_previousDisplay);
}
