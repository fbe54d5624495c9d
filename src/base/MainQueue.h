#pragma once

#include <chrono>
#include <functional>
#include <memory>

/// The main thread's queue of work. Blocks run on the main thread, one at a time, in the order of their due
/// times. Tests inject a queue whose time they step.
class MainQueue
{
public:
    using Block = std::function<void()>;

    /// A repeating timer; destroying it invalidates it.
    class Timer
    {
    public:
        virtual ~Timer() = default;
    };

    virtual ~MainQueue() = default;

    /// Runs the block soon. May be called from any thread.
    virtual void async(Block block) = 0;

    /// Runs the block once, after the delay. Main thread only.
    virtual void asyncAfter(std::chrono::milliseconds delay, Block block) = 0;

    /// Runs the block every interval until the timer is destroyed. Main thread only. Ticks that were missed
    /// while the thread was busy are not made up for.
    [[nodiscard]] virtual std::unique_ptr<Timer> scheduledTimer(
        std::chrono::milliseconds interval, Block block) = 0;
};

/// The main queue of a program that runs Qt's event loop; made on the main thread.
class EventLoopQueue : public MainQueue
{
public:
    EventLoopQueue();
    ~EventLoopQueue() override;

    void async(Block block) override;
    void asyncAfter(std::chrono::milliseconds delay, Block block) override;
    std::unique_ptr<Timer> scheduledTimer(std::chrono::milliseconds interval, Block block) override;

private:
    class Context;
    std::unique_ptr<Context> m_context;
};
