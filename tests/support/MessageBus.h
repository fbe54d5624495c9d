#pragma once

#include "support/ChildProgram.h"

#include <QTemporaryDir>

#include <memory>

/// A message bus of a test's own, that nothing else knows of. It starts no services, but for those whose
/// files stand in its folder.
class MessageBus
{
public:
    /// Starts it and waits until it takes connections; `isRunning` tells whether that worked.
    MessageBus();
    ~MessageBus();

    bool isRunning() const { return !m_address.isEmpty(); }
    QByteArray address() const { return m_address; }
    /// Writes the service file of a program that the bus is to start when its name is asked for.
    void addService(const QByteArray &name, const QByteArray &commandLine);

    /// Stops it in its tracks: its socket takes connections, and nobody answers.
    void freeze();
    void thaw();
    /// Ends it, with all its connections.
    void end();

private:
    QTemporaryDir m_folder;
    std::unique_ptr<ChildProgram> m_program;
    QByteArray m_address;
    pid_t m_process = 0;
};
