#include "base/MainQueue.h"
#include "base/Lifetime.h"

#include "fakes/ManualMainQueue.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{

using namespace std::chrono_literals;

/// The real queue and the one of the tests, with the same promises.
class Queue : public ::testing::TestWithParam<const char *>
{
protected:
    void SetUp() override
    {
        if (std::string(GetParam()) == "EventLoop")
            m_queue = std::make_unique<EventLoopQueue>();
        else
            m_queue = std::make_unique<ManualMainQueue>();
    }
    bool runUntil(const std::function<bool()> &condition)
    {
        auto *const manual = dynamic_cast<ManualMainQueue *>(m_queue.get());
        for (int step = 0; manual && step < 1000 && !condition(); ++step)
            manual->advanceBy(1ms);
        return manual ? condition() : waitUntil(condition);
    }

    std::unique_ptr<MainQueue> m_queue;
    std::string m_calls;
};

TEST_P(Queue, RunsBlocksLaterAndInOrder)
{
    m_queue->async([this] { m_calls += 'a'; });
    m_queue->async([this] { m_calls += 'b'; });
    EXPECT_EQ(m_calls, "");
    EXPECT_TRUE(runUntil([this] { return m_calls == "ab"; })) << m_calls;
}

TEST_P(Queue, RunsDelayedBlocksByTheirDueTimes)
{
    m_queue->asyncAfter(40ms, [this] { m_calls += 'c'; });
    m_queue->asyncAfter(5ms, [this] { m_calls += 'a'; });
    m_queue->asyncAfter(20ms, [this] { m_calls += 'b'; });
    EXPECT_TRUE(runUntil([this] { return m_calls == "abc"; })) << m_calls;
}

TEST_P(Queue, RepeatsATimerUntilItIsDestroyed)
{
    std::unique_ptr<MainQueue::Timer> timer;
    timer = m_queue->scheduledTimer(2ms, [&] {
        m_calls += 't';
        if (m_calls.size() == 3)
            timer.reset();
    });
    EXPECT_TRUE(runUntil([this] { return m_calls.size() == 3; }));
    m_queue->asyncAfter(20ms, [this] { m_calls += '!'; });
    EXPECT_TRUE(runUntil([this] { return m_calls.back() == '!'; }));
    EXPECT_EQ(m_calls, "ttt!");
}

TEST_P(Queue, ABlockMayScheduleAnother)
{
    m_queue->async([this] { m_queue->async([this] { m_calls += 'x'; }); });
    EXPECT_TRUE(runUntil([this] { return m_calls == "x"; }));
}

INSTANTIATE_TEST_SUITE_P(MainQueue, Queue, ::testing::Values("EventLoop", "Manual"),
    [](const auto &tested) { return std::string(tested.param); });

TEST(EventLoopQueue, TakesBlocksFromOtherThreads)
{
    EventLoopQueue queue;
    std::thread::id ranOn;
    std::thread other([&] { queue.async([&ranOn] { ranOn = std::this_thread::get_id(); }); });
    other.join();
    EXPECT_TRUE(waitUntil([&ranOn] { return ranOn == std::this_thread::get_id(); }));
}

TEST(EventLoopQueue, DropsWaitingBlocksWithItself)
{
    bool ran = false;
    {
        EventLoopQueue queue;
        queue.async([&ran] { ran = true; });
    }
    EventLoopQueue next;
    bool nextRan = false;
    next.async([&nextRan] { nextRan = true; });
    EXPECT_TRUE(waitUntil([&nextRan] { return nextRan; }));
    EXPECT_FALSE(ran);
}

TEST(Lifetime, GuardedClosuresDoNothingOnceTheirOwnerIsGone)
{
    int calls = 0;
    std::function<void()> closure;
    {
        const Lifetime lifetime;
        closure = lifetime.guard([&calls] { ++calls; });
        closure();
    }
    closure();
    EXPECT_EQ(calls, 1);
}

} // namespace
