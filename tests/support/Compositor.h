#pragma once

#include "support/ChildProgram.h"

#include <QTemporaryDir>

#include <map>
#include <memory>

/// A Wayland compositor of a test's own, without a screen or input devices. While it lives, $WAYLAND_DISPLAY
/// names it; with it goes every client. It runs as an unprivileged user, since some refuse root, and without
/// a message bus but for Mutter, which has one of its own, since it does not start otherwise.
class Compositor
{
public:
    enum class Kind { Sway, KWin, Mutter };
    /// Whether programs may use KWin's restricted interfaces without a desktop file that says so.
    enum class Access { Open, Restricted };

    /// Settings that it finds at its start: the text of each file, by the file's name in $XDG_CONFIG_HOME.
    using Settings = std::map<const char *, const char *>;

    /// Starts it and waits until it takes connections; `isRunning` tells whether that worked.
    explicit Compositor(Kind kind, Access access = Access::Open, const Settings &settings = {});
    ~Compositor();
    Compositor(const Compositor &) = delete;
    Compositor &operator=(const Compositor &) = delete;

    bool isRunning() const { return m_isRunning; }
    /// Ends it, as at the end of a session or in a crash.
    void end() { m_program.reset(); }
    /// Has sway do something (sway(5)); true when it has.
    bool command(const QByteArray &words);
    /// The windows that it tells a new client of; its older clients have been told before.
    size_t windowCount() const;

private:
    QByteArray path(const char *name) const;
    QByteArrayList environment(Access access) const;
    QByteArrayList commandLine(Kind kind);
    void startBus();
    void write(const QByteArray &name, const QByteArray &text) const;
    void handOver(const QByteArray &name) const;

    QTemporaryDir m_folder;
    std::unique_ptr<ChildProgram> m_bus;
    std::unique_ptr<ChildProgram> m_program;
    QByteArray m_previousDisplay;
    bool m_isRunning = false;
};
