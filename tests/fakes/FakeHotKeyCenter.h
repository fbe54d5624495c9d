#pragma once

#include "platform/HotKeyCenter.h"

#include <set>
#include <vector>

/// Hot keys in memory: tests press them. Codes above 127 are on no key.
class FakeHotKeyCenter : public HotKeyCenter
{
public:
    using Combination = std::pair<quint32, quint32>; ///< key code, modifiers

    FakeHotKeyCenter();

    /// Presses and releases a combination, as a user would; the handler hears of it when it is registered.
    void press(quint32 keyCode, quint32 modifiers);
    /// Another program takes the combination, or gives it back.
    void takeElsewhere(quint32 keyCode, quint32 modifiers) { m_elsewhere.insert({keyCode, modifiers}); }
    void giveBackElsewhere(quint32 keyCode, quint32 modifiers) { m_elsewhere.erase({keyCode, modifiers}); }
    /// What every registration comes to from now on; 0 leaves it to the combination.
    void failWith(int status) { m_failure = status; }
    /// The desktop, which has taken its time, refuses what is registered now.
    void refuseLater(int status);
    /// Tells of a refusal, whatever is registered.
    void callFailureHandler(int status) { registrationFailed(status); }

    /// What is registered now.
    const std::set<Combination> &registered() const { return *m_registered; }
    /// The identities of all registrations so far that succeeded.
    const std::vector<HotKeyId> &ids() const { return m_ids; }

    HotKeyRegistration registerEventHotKey(quint32 keyCode, quint32 modifiers, HotKeyId id) override;
    void installEventHandler(std::function<void()> handler) override { m_handler = std::move(handler); }

private:
    std::shared_ptr<std::set<Combination>> m_registered;
    std::set<Combination> m_elsewhere;
    std::vector<HotKeyId> m_ids;
    std::function<void()> m_handler;
    int m_failure = 0;
};
