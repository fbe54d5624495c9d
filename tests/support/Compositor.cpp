#include "support/Compositor.h"

#include "platform/wayland/WaylandToplevels.h"
#include "support/Waiting.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

#include <algorithm>

namespace
{

constexpr uid_t Nobody = 65534;

const char SwayConfiguration[] = "xwayland disable\n"
                                 "output HEADLESS-1 mode 1280x800\n";

const char BusConfiguration[] =
    R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=%1</listen>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

/// The words before a program's that have it run as an unprivileged user, and end with a test that crashes.
QByteArrayList asNobody()
{
    QByteArrayList words{"setpriv", "--pdeathsig=TERM"};
    if (::getuid() == 0)
        words << "--reuid=65534"
              << "--regid=65534"
              << "--clear-groups";
    return words;
}

/// KWin gives nothing restricted to a client whose executable it cannot find out. Whose client is the
/// superuser's needs a privilege for that.
QByteArrayList asNobodyWhoSeesExecutables()
{
    if (::getuid() != 0)
        return asNobody();
    return asNobody() + QByteArrayList{"--inh-caps=+sys_ptrace", "--ambient-caps=+sys_ptrace"};
}

QByteArrayList globalsOf(Compositor::Kind kind, Compositor::Access access)
{
    QByteArrayList globals{"wl_seat", "wl_output", "xdg_wm_base"};
    if (kind == Compositor::Kind::Sway)
        globals << "zwlr_data_control_manager_v1"
                << "zwlr_foreign_toplevel_manager_v1"
                << "zwp_virtual_keyboard_manager_v1";
    if (kind == Compositor::Kind::KWin)
        globals << "zwlr_data_control_manager_v1";
    if (kind == Compositor::Kind::KWin && access == Compositor::Access::Open)
        globals << "org_kde_plasma_window_management"
                << "org_kde_kwin_fake_input";
    return globals;
}

/// Compositors take connections before they offer everything.
bool isReady(const QByteArrayList &globals)
{
    const auto connection = WaylandConnection::open();
    return connection && std::ranges::all_of(globals, [&](const QByteArray &interface) {
        return connection->global(interface.constData()).has_value();
    });
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
    if (kind == Kind::Mutter)
        startBus();
    const bool mustSee = kind == Kind::KWin && access == Access::Open;
    const QByteArrayList user = mustSee ? asNobodyWhoSeesExecutables() : asNobody();
    m_program = std::make_unique<ChildProgram>(
        user + QByteArrayList{"env"} + environment(access) + compositor, ChildProgram::Output::Discarded);
    qputenv("WAYLAND_DISPLAY", path("run/wayland-1"));
    m_isRunning = m_program->hasStarted() && waitUntil([&] { return isReady(globalsOf(kind, access)); });
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
        "XDG_RUNTIME_DIR=" + path("run"), "DBUS_SESSION_BUS_ADDRESS=unix:path=" + path("run/bus"),
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
        // A copy has no file capability, which would keep it from starting where there is none to be had. It
        // goes by its name.
        QFile::copy(
            QStringLiteral("/usr/bin/kwin_wayland"), m_folder.filePath(QStringLiteral("kwin_wayland")));
        handOver("kwin_wayland");
        return {path("kwin_wayland"), "--virtual", "--width", "1280", "--height", "800", "--no-lockscreen",
            "--socket", "wayland-1"};
    }
    write("sway.conf", SwayConfiguration);
    return {"sway", "--config", path("sway.conf")};
}

void Compositor::startBus()
{
    write("bus.conf", QByteArray(BusConfiguration).replace("%1", path("run/bus")));
    m_bus = std::make_unique<ChildProgram>(asNobody() +
        QByteArrayList{"dbus-daemon", "--nofork", "--config-file=" + path("bus.conf"), "--print-address=1"});
    m_bus->readLine();
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
    if (::getuid() == 0) [[maybe_unused]]
        const int status = ::chown(path(name.constData()).constData(), Nobody, Nobody);
}

bool Compositor::command(const QByteArray &words)
{
    ChildProgram message({"swaymsg", "--quiet", "--socket", path("run/sway.sock"), words});
    return message.hasStarted() && message.waitForExit() == 0;
}

size_t Compositor::windowCount() const
{
    const auto toplevels = WaylandToplevels::open();
    WaylandToplevels::Number count = 0;
    while (toplevels && toplevels->find(count + 1) != nullptr)
        ++count;
    return count;
}
