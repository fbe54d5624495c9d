#pragma once

#include "platform/HotKeyCenter.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// A desktop with hot keys, a hand on the keyboard and another program that takes hot keys, whatever they are
/// made of.
class HotKeyWorld
{
public:
    /// When the desktop says whether a program gets a combination.
    enum class Answer {
        AtOnce, ///< in the result of the registration
        Later,  ///< by way of the handler for failures: the registration has succeeded by then
    };

    virtual ~HotKeyWorld() = default;

    virtual HotKeyCenter &center() = 0;
    virtual void endCenter() = 0;
    virtual Answer answer() const { return Answer::AtOnce; }
    /// How many registrations that succeeded the desktop has answered so far, one way or the other. Where it
    /// answers at once, that is all of them.
    virtual int answerCount(int registrationCount) const { return registrationCount; }
    virtual void press(quint32 keyCode, quint32 modifiers) = 0;
    /// Whether the other program gets the combination; it holds it until `giveBackElsewhere`.
    virtual bool takeElsewhere(quint32 keyCode, quint32 modifiers) = 0;
    virtual void giveBackElsewhere(quint32 keyCode, quint32 modifiers) = 0;
};

/// A back end that must keep the port's contract.
struct HotKeyBackend {
    std::string name;
    std::function<std::unique_ptr<HotKeyWorld>()> makeWorld;
};

/// A test's name holds its parameter.
void PrintTo(const HotKeyBackend &backend, std::ostream *stream);

class HotKeyCenterContract : public ::testing::TestWithParam<HotKeyBackend>
{
protected:
    static constexpr quint32 V = 9;
    static constexpr quint32 B = 11;
    static constexpr quint32 CommandShift = CommandKey | ShiftKey;

    HotKeyCenterContract()
        : m_world(GetParam().makeWorld())
    {
        center().installEventHandler([this] { ++m_pressCount; });
        center().installFailureHandler([this](int status) { m_failures.push_back(status); });
    }

    HotKeyWorld &world() { return *m_world; }
    HotKeyCenter &center() { return m_world->center(); }

    /// Registers, and waits for the desktop to answer.
    HotKeyRegistration claim(quint32 keyCode, quint32 modifiers)
    {
        auto registration = center().registerEventHotKey(keyCode, modifiers, {0x4C524B53, 1});
        if (registration.status == HotKeyRegistered) {
            ++m_registrationCount;
            EXPECT_TRUE(waitUntil(
                [this] { return world().answerCount(m_registrationCount) == m_registrationCount; }));
        }
        return registration;
    }

    /// Whether the desktop refuses the combination, in its own time, for this reason and once.
    bool isRefused(quint32 keyCode, quint32 modifiers, int status)
    {
        const auto refused = claim(keyCode, modifiers);
        if (world().answer() == HotKeyWorld::Answer::AtOnce)
            return refused.status == status && !refused.ref && m_failures.empty();
        return refused.status == HotKeyRegistered && refused.ref &&
            waitUntil([&] { return m_failures == std::vector<int>{status}; });
    }

    int pressCount() const { return m_pressCount; }
    const std::vector<int> &failures() const { return m_failures; }

    /// Presses a marker after what went before: when the marker has been heard, all before it has been.
    int pressCountAfterMarker()
    {
        const auto marker = claim(B, ControlKey | OptionKey);
        EXPECT_EQ(marker.status, HotKeyRegistered);
        const int before = m_pressCount;
        world().press(B, ControlKey | OptionKey);
        EXPECT_TRUE(waitUntil([&] { return m_pressCount > before; }));
        return m_pressCount - 1;
    }

private:
    std::unique_ptr<HotKeyWorld> m_world;
    int m_registrationCount = 0;
    int m_pressCount = 0;
    std::vector<int> m_failures;
};
