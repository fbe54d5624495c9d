#include "fakes/ManualMainQueue.h"

struct ManualMainQueue::State {
    std::chrono::milliseconds now{0};
    // By due time; equal times keep the order of scheduling.
    std::multimap<std::chrono::milliseconds, Block> blocks;
};

/// Puts itself back in line on each tick while it lives.
class ManualMainQueue::ManualTimer : public MainQueue::Timer
{
public:
    ManualTimer(const std::shared_ptr<State> &state, std::chrono::milliseconds interval, Block block)
        : m_block(std::make_shared<Block>(std::move(block)))
    {
        schedule(state, interval, m_block);
    }

private:
    static void schedule(const std::weak_ptr<State> &weakState, std::chrono::milliseconds interval,
        const std::weak_ptr<Block> &weakBlock)
    {
        const auto state = weakState.lock();
        if (!state)
            return;
        state->blocks.emplace(state->now + interval, [weakState, interval, weakBlock] {
            if (const auto block = weakBlock.lock()) {
                schedule(weakState, interval, weakBlock);
                (*block)();
            }
        });
    }

    std::shared_ptr<Block> m_block;
};

ManualMainQueue::ManualMainQueue()
    : m_state(std::make_shared<State>())
{
}
ManualMainQueue::~ManualMainQueue() = default;

void ManualMainQueue::advanceBy(std::chrono::milliseconds step)
{
    const auto end = m_state->now + step;
    while (!m_state->blocks.empty() && m_state->blocks.begin()->first <= end) {
        auto first = m_state->blocks.extract(m_state->blocks.begin());
        m_state->now = std::max(m_state->now, first.key());
        first.mapped()();
    }
    m_state->now = end;
}

void ManualMainQueue::async(Block block)
{
    m_state->blocks.emplace(m_state->now, std::move(block));
}

void ManualMainQueue::asyncAfter(std::chrono::milliseconds delay, Block block)
{
    m_state->blocks.emplace(m_state->now + delay, std::move(block));
}

std::unique_ptr<MainQueue::Timer> ManualMainQueue::scheduledTimer(
    std::chrono::milliseconds interval, Block block)
{
    return std::make_unique<ManualTimer>(m_state, interval, std::move(block));
}
