#pragma once

#include "support/ChildProgram.h"

#include <QString>

#include <gtest/gtest.h>

/// A message bus of a test's own, without the programs of the machine's.
class StatusTestBus
{
public:
    /// Starts it and waits until it takes connections; `isRunning` tells whether that worked.
    StatusTestBus()
        : m_program({"dbus-daemon", "--session", "--nofork", "--nosyslog", "--print-address=1"})
        , m_address(m_program.hasStarted() ? QString::fromLatin1(m_program.readLine()) : QString())
    {
    }

    bool isRunning() const { return !m_address.isEmpty(); }
    const QString &address() const { return m_address; }

private:
    ChildProgram m_program;
    QString m_address;
};
