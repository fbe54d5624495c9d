#pragma once

#include "platform/LoginItem.h"

#include <deque>
#include <optional>
#include <utility>

/// A login item whose requests come out as the test says, at once or when the test says.
class FakeLoginItem : public LoginItem
{
public:
    bool isRegistered = false;
    /// Why requests fail, when they do.
    std::optional<Error> failure;
    bool answersAtOnce = true;

    void registerItem(Done onDone) override { join(true, std::move(onDone)); }
    void unregisterItem(Done onDone) override { join(false, std::move(onDone)); }

    /// The requests that have not been answered.
    size_t waitingCount() const { return m_line.size(); }

    /// Answers the request that has waited longest.
    void answer()
    {
        const auto [wish, onDone] = std::move(m_line.front());
        m_line.pop_front();
        const auto outcome = failure ? Result<Success>(*failure) : Result<Success>(Success());
        if (outcome)
            isRegistered = wish;
        // Last: the callback may end this object.
        onDone(outcome);
    }

private:
    void join(bool wish, Done onDone)
    {
        m_line.emplace_back(wish, std::move(onDone));
        if (answersAtOnce)
            answer();
    }

    std::deque<std::pair<bool, Done>> m_line;
};
