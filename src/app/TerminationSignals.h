#pragma once

#include <QSocketNotifier>

#include <memory>

/// Turns SIGTERM, SIGINT and SIGHUP into an orderly end of the event loop. One instance, made on the main
/// thread after the application object.
class TerminationSignals
{
public:
    TerminationSignals();
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals &) = delete;
    TerminationSignals &operator=(const TerminationSignals &) = delete;

    /// From now on a signal, also one that has come since, quits the application.
    void quitApplication();

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
    int m_descriptor = -1;
};
