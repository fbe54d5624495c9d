#include "base/MainQueue.h"

#include <QObject>
#include <QTimer>

/// Lives on the main thread; blocks that are still waiting when it goes are dropped with it.
class EventLoopQueue::Context : public QObject
{
};

namespace
{

class EventLoopTimer : public MainQueue::Timer
{
public:
    EventLoopTimer(std::chrono::milliseconds interval, MainQueue::Block block)
    {
        // Coarse: the kernel may join wake-ups, and nothing here needs better than 5 %.
        m_timer.setTimerType(Qt::CoarseTimer);
        m_timer.setInterval(interval);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, std::move(block));
        m_timer.start();
    }

private:
    QTimer m_timer;
};

} // namespace

EventLoopQueue::EventLoopQueue()
    : m_context(std::make_unique<Context>())
{
}
EventLoopQueue::~EventLoopQueue() = default;

void EventLoopQueue::async(Block block)
{
    QMetaObject::invokeMethod(m_context.get(), std::move(block), Qt::QueuedConnection);
}

void EventLoopQueue::asyncAfter(std::chrono::milliseconds delay, Block block)
{
    QTimer::singleShot(delay, Qt::PreciseTimer, m_context.get(), std::move(block));
}

std::unique_ptr<MainQueue::Timer> EventLoopQueue::scheduledTimer(
    std::chrono::milliseconds interval, Block block)
{
    return std::make_unique<EventLoopTimer>(interval, std::move(block));
}
