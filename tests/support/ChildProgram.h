#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <sys/types.h>

/// A program that a test starts. Made with posix_spawn: the thread sanitizer loses sight of a thread that
/// forks by other means.
class ChildProgram
{
public:
    enum class Output { Piped, Discarded };

    /// Starts it, found along $PATH; its error output goes nowhere.
    explicit ChildProgram(const QByteArrayList &commandLine, Output output = Output::Piped);
    /// Ends it, if need be by force.
    ~ChildProgram();
    ChildProgram(const ChildProgram &) = delete;
    ChildProgram &operator=(const ChildProgram &) = delete;

    bool hasStarted() const { return m_process > 0; }
    /// Its whole input.
    void writeAll(const QByteArray &input);
    /// Its next line of output, without the end of line; empty at the end, or after ten seconds without one.
    QByteArray readLine();
    /// Its output until it closes it.
    QByteArray readAll();
    /// Waits for its end; its exit code, or -1.
    int waitForExit();

private:
    void closeInput();

    pid_t m_process = 0;
    int m_input = -1;
    int m_output = -1;
};
