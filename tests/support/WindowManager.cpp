#include "support/WindowManager.h"

#include "platform/x11/X11Connection.h"
#include "support/TestProgram.h"
#include "support/Waiting.h"

namespace
{

bool isThere(X11Connection &connection, const QByteArray &property)
{
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection.get(),
        xcb_get_property(connection.get(), 0, connection.root(), connection.atom(property),
            XCB_GET_PROPERTY_TYPE_ANY, 0, 1),
        nullptr));
    return reply && reply->type != XCB_ATOM_NONE;
}

/// While it starts, the focus that a new window was given may be taken back.
bool givesFocus()
{
    TestProgram probe("probe", "Probe");
    probe.show(TestProgram::Focus::Awaits, std::chrono::milliseconds(200));
    return probe.hasFocus();
}

} // namespace

WindowManager::WindowManager()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *const variable : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME"})
        environment.insert(QString::fromLatin1(variable), m_home.path());
    m_process.setProcessEnvironment(environment);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.start(QStringLiteral("openbox"), {QStringLiteral("--sm-disable")});
    if (!m_process.waitForStarted())
        return;
    const auto connection = X11Connection::open();
    m_isRunning = connection && waitUntil([&] {
        return isThere(*connection, "_NET_SUPPORTING_WM_CHECK") && isThere(*connection, "_NET_SUPPORTED") &&
            isThere(*connection, "_NET_CLIENT_LIST") && givesFocus();
    });
}

WindowManager::~WindowManager()
{
    m_process.terminate();
    if (!m_process.waitForFinished(5000))
        kill();
}

void WindowManager::kill()
{
    m_process.kill();
    m_process.waitForFinished(5000);
}
