#include "app/TerminationSignals.h"

#include <QCoreApplication>

#include <csignal>

#include <sys/signalfd.h>
#include <unistd.h>

TerminationSignals::TerminationSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&signals, signal);
    // Every thread that is started from now on inherits it.
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    m_descriptor = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
}

void TerminationSignals::quitApplication()
{
    if (m_descriptor < 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, qApp, [] { QCoreApplication::quit(); });
}

TerminationSignals::~TerminationSignals()
{
    m_notifier.reset();
    if (m_descriptor >= 0)
        close(m_descriptor);
}
