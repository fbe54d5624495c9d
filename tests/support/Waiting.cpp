#include "support/Waiting.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

bool waitUntil(const std::function<bool()> &condition, std::chrono::milliseconds deadline)
{
    const QDeadlineTimer timer(deadline);
    while (!condition()) {
        if (timer.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}
