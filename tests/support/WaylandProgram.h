#pragma once

#include "support/ChildProgram.h"

#include <QSocketNotifier>

#include <memory>
#include <vector>

/// A program with windows on the compositor of $WAYLAND_DISPLAY: a process of its own, which tells the test's
/// event loop what happens to its windows.
class WaylandProgram
{
public:
    /// Starts it, without a window. Its application id is what compositors tell others of it.
    explicit WaylandProgram(const QByteArray &applicationId);
    ~WaylandProgram();
    WaylandProgram(const WaylandProgram &) = delete;
    WaylandProgram &operator=(const WaylandProgram &) = delete;

    /// Its process; -1 when it did not start.
    qint64 processIdentifier() const { return m_processIdentifier; }

    /// Opens another window and waits until one of its windows has the focus; whether that came about.
    bool open();
    /// Closes the window that was opened last, some time later.
    void close();
    /// As its toolkit has been told last.
    bool hasFocus() const { return m_hasFocus; }

    /// Puts a text on the clipboard. Compositors let only a program do that which has the focus and which the
    /// user has given a key.
    void copy(const QByteArray &text);

    struct Key {
        int evdevCode = 0;
        /// Held with it, as the toolkit sees them.
        Qt::KeyboardModifiers modifiers;
    };
    /// The keys that were pressed in its windows, modifiers among them.
    const std::vector<Key> &keyPresses() const { return m_keyPresses; }
    int keyReleaseCount() const { return m_keyReleaseCount; }
    void forgetKeys();

private:
    void send(const QByteArray &command) const;
    void read();
    void take(const QByteArrayList &words);

    int m_socket = -1;
    std::unique_ptr<QSocketNotifier> m_readable;
    std::unique_ptr<ChildProgram> m_program;
    QByteArray m_pending;
    qint64 m_processIdentifier = -1;
    bool m_hasFocus = false;
    std::vector<Key> m_keyPresses;
    int m_keyReleaseCount = 0;
};
