#pragma once

#include "base/MainQueue.h"

#include <map>

/// A main queue whose time stands still until a test steps it.
class ManualMainQueue : public MainQueue
{
public:
    ManualMainQueue();
    ~ManualMainQueue() override;

    /// Lets the time pass: runs what falls due on the way, in order.
    void advanceBy(std::chrono::milliseconds step);
    /// Runs what is due now.
    void drain() { advanceBy(std::chrono::milliseconds(0)); }

    void async(Block block) override;
    void asyncAfter(std::chrono::milliseconds delay, Block block) override;
    std::unique_ptr<Timer> scheduledTimer(std::chrono::milliseconds interval, Block block) override;

private:
    struct State;
    class ManualTimer;
    std::shared_ptr<State> m_state;
};
