#include "support/Compositor.h"

#include "platform/wayland/WaylandConnection.h"
#include "support/Waiting.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace
{

constexpr uid_t Nobody = 65534;

const char SwayConfiguration[] = "xwayland disable\n"
                                 "output HEADLESS-1 mode 1280x800\n";

/// Compositors take connections before they offer everything.
bool isReady(Compositor::Kind kind)
{
    const auto connection = WaylandConnection::open();
    return connection && connection->global("wl_seat") && connection->global("wl_output") &&
        (kind == Compositor::Kind::Mutter || connection->global("zwlr_data_control_manager_v1"));
}

} // namespace

Compositor::Compositor(Kind kind, Access access, const Settings &settings)
    : m_previousDisplay(qgetenv("WAYLAND_DISPLAY"))
{
    handOver("");
    for (const char *const folder : {"run", "config"}) {
        QDir(m_folder.path()).mkdir(QString::fromLatin1(folder));
        handOver(folder);
    }
    for (const auto &[name, text] : settings)
        write(QByteArray("config/") + name, text);
    const QByteArrayList compositor = commandLine(kind);
    QByteArrayList words;
    if (::getuid() == 0)
        words << "setpriv" << "--reuid=65534" << "--regid=65534" << "--clear-groups";
    words << "env" << environment(access) << compositor;
    m_program = std::make_unique<ChildProgram>(words, ChildProgram::Output::Discarded);
    qputenv("WAYLAND_DISPLAY", path("run/wayland-1"));
    m_isRunning = m_program->hasStarted() && waitUntil([kind] { return isReady(kind); });
}

Compositor::~Compositor()
{
    if (m_previousDisplay.isNull())
        qunsetenv("WAYLAND_DISPLAY");
    else
        qputenv("WAYLAND_DISPLAY", m_previousDisplay);
}

QByteArray Compositor::path(const char *name) const
{
    return m_folder.filePath(QString::fromLatin1(name)).toLocal8Bit();
}

QByteArrayList Compositor::environment(Access access) const
{
    QByteArrayList variables{"-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "-u", "XDG_CACHE_HOME", "-u",
        "XDG_DATA_HOME", "HOME=" + path(""), "XDG_CONFIG_HOME=" + path("config"),
        "XDG_RUNTIME_DIR=" + path("run"), "DBUS_SESSION_BUS_ADDRESS=unix:path=" + path("none"),
        "SWAYSOCK=" + path("run/sway.sock"), "WLR_BACKENDS=headless", "WLR_RENDERER=pixman",
        "WLR_LIBINPUT_NO_DEVICES=1", "KWIN_COMPOSE=Q"};
    if (access == Access::Open)
        variables << "KWIN_WAYLAND_NO_PERMISSION_CHECKS=1";
    return variables;
}

QByteArrayList Compositor::commandLine(Kind kind)
{
    if (kind == Kind::Mutter)
        return {"mutter", "--headless", "--wayland", "--no-x11", "--virtual-monitor", "1280x800",
            "--wayland-display", "wayland-1"};
    if (kind == Kind::KWin) {
        // A copy has no file capability, which would keep it from starting where there is none to be had. It goes
        // by its name.
        QFile::copy(
            QStringLiteral("/usr/bin/kwin_wayland"), m_folder.filePath(QStringLiteral("kwin_wayland")));
        handOver("kwin_wayland");
        return {path("kwin_wayland"), "--virtual", "--width", "1280", "--height", "800", "--no-lockscreen",
            "--socket", "wayland-1"};
    }
    write("sway.conf", SwayConfiguration);
    return {"sway", "--config", path("sway.conf")};
}

void Compositor::write(const QByteArray &name, const QByteArray &text) const
{
    QFile file(m_folder.filePath(QString::fromLatin1(name)));
    if (file.open(QIODevice::WriteOnly))
        file.write(text);
    handOver(name);
}

/// Gives a file to the user that the compositor runs as.
void Compositor::handOver(const QByteArray &name) const
{
    if (::getuid() == 0)
        [[maybe_unused]] const int status = ::chown(path(name.constData()).constData(), Nobody, Nobody);
}

bool Compositor::command(const QByteArray &words)
{
    ChildProgram message({"swaymsg", "--quiet", "--socket", path("run/sway.sock"), words});
    return message.hasStarted() && message.waitForExit() == 0;
}
