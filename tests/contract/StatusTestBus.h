#pragma once

#include "support/ChildProgram.h"

#include <QString>

#include <csignal>

/// A message bus of a test's own, without the programs of the machine's.
class StatusTestBus
{
public:
    /// Starts it and waits until it takes connections; `isRunning` tells whether that worked.
    StatusTestBus()
        : m_program(
              {"dbus-daemon", "--session", "--nofork", "--nosyslog", "--print-address=1", "--print-pid=1"})
        , m_address(m_program.hasStarted() ? QString::fromLatin1(m_program.readLine()) : QString())
        , m_process(isRunning() ? m_program.readLine().toInt() : 0)
    {
    }

    bool isRunning() const { return !m_address.isEmpty(); }
    const QString &address() const { return m_address; }
    /// Ends it at once, without a word to its clients.
    void kill() const
    {
        if (m_process > 0)
            ::kill(m_process, SIGKILL);
    }

private:
    ChildProgram m_program;
    QString m_address;
    pid_t m_process;
};
