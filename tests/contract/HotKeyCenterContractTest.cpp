#include "fakes/FakeHotKeyCenter.h"
#include "platform/linux/KeyCodes.h"
#include "platform/x11/X11Backends.h"
#include "support/KeyRobot.h"
#include "support/Waiting.h"
#include "support/XServer.h"

#include <linux/input-event-codes.h>

#include <gtest/gtest.h>

#include <functional>

namespace
{

constexpr quint32 V = 9;
constexpr quint32 B = 11;
constexpr quint32 CommandShift = CommandKey | ShiftKey;
constexpr HotKeyId Id{0x4C524B53, 1};

/// A desktop with hot keys, a hand on the keyboard and another program that takes hot keys.
class HotKeyWorld
{
public:
    virtual ~HotKeyWorld() = default;

    virtual HotKeyCenter &center() = 0;
    virtual void endCenter() = 0;
    virtual void press(quint32 keyCode, quint32 modifiers) = 0;
    /// Whether the other program gets the combination; it holds it until `giveBackElsewhere`.
    virtual bool takeElsewhere(quint32 keyCode, quint32 modifiers) = 0;
    virtual void giveBackElsewhere(quint32 keyCode, quint32 modifiers) = 0;
};

struct HotKeyBackend {
    const char *name;
    std::function<std::unique_ptr<HotKeyWorld>()> makeWorld;
};

class FakeWorld : public HotKeyWorld
{
public:
    HotKeyCenter &center() override { return *m_center; }
    void endCenter() override { m_center.reset(); }
    void press(quint32 keyCode, quint32 modifiers) override { m_center->press(keyCode, modifiers); }

    bool takeElsewhere(quint32 keyCode, quint32 modifiers) override
    {
        if (m_center && m_center->registered().contains({keyCode, modifiers}))
            return false;
        if (m_center)
            m_center->takeElsewhere(keyCode, modifiers);
        return true;
    }

    void giveBackElsewhere(quint32 keyCode, quint32 modifiers) override
    {
        m_center->giveBackElsewhere(keyCode, modifiers);
    }

private:
    std::unique_ptr<FakeHotKeyCenter> m_center = std::make_unique<FakeHotKeyCenter>();
};

class X11World : public HotKeyWorld
{
public:
    HotKeyCenter &center() override { return *m_center; }
    void endCenter() override { m_center.reset(); }

    void press(quint32 keyCode, quint32 modifiers) override
    {
        std::vector<int> held;
        if (modifiers & CommandKey)
            held.push_back(KEY_LEFTMETA);
        if (modifiers & ShiftKey)
            held.push_back(KEY_LEFTSHIFT);
        if (modifiers & OptionKey)
            held.push_back(KEY_LEFTALT);
        if (modifiers & ControlKey)
            held.push_back(KEY_LEFTCTRL);
        for (const int key : held)
            m_robot.down(key);
        m_robot.chord({*keycodes::evdevCode(static_cast<quint16>(keyCode))});
        for (auto key = held.rbegin(); key != held.rend(); ++key)
            m_robot.up(*key);
    }

    bool takeElsewhere(quint32 keyCode, quint32 modifiers) override
    {
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(m_other->get(),
            xcb_grab_key_checked(m_other->get(), 0, m_other->root(), bits(modifiers), key(keyCode),
                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
        return !error;
    }

    void giveBackElsewhere(quint32 keyCode, quint32 modifiers) override
    {
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(m_other->get(),
            xcb_ungrab_key_checked(m_other->get(), key(keyCode), m_other->root(), bits(modifiers))));
    }

private:
    // As on the keyboard that the server starts with.
    static uint16_t bits(quint32 modifiers)
    {
        return static_cast<uint16_t>((modifiers & CommandKey ? XCB_MOD_MASK_4 : 0) |
            (modifiers & ShiftKey ? XCB_MOD_MASK_SHIFT : 0) | (modifiers & OptionKey ? XCB_MOD_MASK_1 : 0) |
            (modifiers & ControlKey ? XCB_MOD_MASK_CONTROL : 0));
    }
    static xcb_keycode_t key(quint32 keyCode)
    {
        return static_cast<xcb_keycode_t>(
            *keycodes::evdevCode(static_cast<quint16>(keyCode)) + keycodes::XkbOffset);
    }

    XServer m_server;
    std::unique_ptr<HotKeyCenter> m_center = platform::makeX11HotKeyCenter();
    std::unique_ptr<X11Connection> m_other = X11Connection::open();
    KeyRobot m_robot;
};

const HotKeyBackend Backends[] = {
    {"Fake", [] { return std::make_unique<FakeWorld>(); }},
    {"X11", [] { return std::make_unique<X11World>(); }},
};

class HotKeyCenterContract : public ::testing::TestWithParam<HotKeyBackend>
{
protected:
    HotKeyCenterContract()
        : m_world(GetParam().makeWorld())
    {
        center().installEventHandler([this] { ++m_pressCount; });
    }

    HotKeyWorld &world() { return *m_world; }
    HotKeyCenter &center() { return m_world->center(); }
    HotKeyRegistration claim(quint32 keyCode, quint32 modifiers)
    {
        return center().registerEventHotKey(keyCode, modifiers, Id);
    }
    int pressCount() const { return m_pressCount; }

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
    int m_pressCount = 0;
};

TEST_P(HotKeyCenterContract, APressIsHeardOnce)
{
    const auto hotKey = claim(V, CommandShift);
    ASSERT_EQ(hotKey.status, HotKeyRegistered);
    ASSERT_NE(hotKey.ref, nullptr);
    world().press(V, CommandShift);
    EXPECT_TRUE(waitUntil([&] { return pressCount() == 1; }));
    EXPECT_EQ(pressCountAfterMarker(), 1);
}

TEST_P(HotKeyCenterContract, EachPressIsHeard)
{
    const auto hotKey = claim(V, CommandShift);
    for (int i = 0; i < 5; ++i)
        world().press(V, CommandShift);
    EXPECT_TRUE(waitUntil([&] { return pressCount() == 5; }));
}

TEST_P(HotKeyCenterContract, OtherCombinationsAreNotHeard)
{
    const auto hotKey = claim(V, CommandShift);
    world().press(V, CommandKey);
    world().press(V, CommandShift | ControlKey);
    world().press(B, CommandShift);
    EXPECT_EQ(pressCountAfterMarker(), 0);
}

TEST_P(HotKeyCenterContract, AllModifiersCanBeUsed)
{
    const quint32 all = CommandKey | ShiftKey | OptionKey | ControlKey;
    const auto hotKey = claim(V, all);
    ASSERT_EQ(hotKey.status, HotKeyRegistered);
    world().press(V, all);
    EXPECT_TRUE(waitUntil([&] { return pressCount() == 1; }));
}

TEST_P(HotKeyCenterContract, AReleasedCombinationIsNotHeardAndFreeForOthers)
{
    auto hotKey = claim(V, CommandShift);
    EXPECT_FALSE(world().takeElsewhere(V, CommandShift));
    hotKey.ref.reset();
    world().press(V, CommandShift);
    EXPECT_EQ(pressCountAfterMarker(), 0);
    EXPECT_TRUE(waitUntil([&] { return world().takeElsewhere(V, CommandShift); }));
}

TEST_P(HotKeyCenterContract, ACombinationThatAnotherProgramHoldsExists)
{
    ASSERT_TRUE(world().takeElsewhere(V, CommandShift));
    const auto refused = claim(V, CommandShift);
    EXPECT_EQ(refused.status, HotKeyExists);
    EXPECT_EQ(refused.ref, nullptr);
    world().giveBackElsewhere(V, CommandShift);
    EXPECT_EQ(claim(V, CommandShift).status, HotKeyRegistered);
}

TEST_P(HotKeyCenterContract, ACombinationThatThisProgramHoldsExists)
{
    const auto first = claim(V, CommandShift);
    EXPECT_EQ(claim(V, CommandShift).status, HotKeyExists);
    world().press(V, CommandShift);
    EXPECT_TRUE(waitUntil([&] { return pressCount() == 1; }));
}

TEST_P(HotKeyCenterContract, ACodeOfNoKeyIsInvalid)
{
    const auto refused = claim(9999, CommandShift);
    EXPECT_EQ(refused.status, HotKeyInvalid);
    EXPECT_EQ(refused.ref, nullptr);
}

TEST_P(HotKeyCenterContract, TheLastHandlerCounts)
{
    int laterCount = 0;
    center().installEventHandler([&] { ++laterCount; });
    const auto hotKey = claim(V, CommandShift);
    world().press(V, CommandShift);
    EXPECT_TRUE(waitUntil([&] { return laterCount == 1; }));
    EXPECT_EQ(pressCount(), 0);
}

TEST_P(HotKeyCenterContract, AHandlerMayReleaseTheCombination)
{
    auto hotKey = claim(V, CommandShift);
    int count = 0;
    center().installEventHandler([&] {
        ++count;
        hotKey.ref.reset();
    });
    world().press(V, CommandShift);
    ASSERT_TRUE(waitUntil([&] { return count == 1; }));
    EXPECT_TRUE(waitUntil([&] { return world().takeElsewhere(V, CommandShift); }));
}

TEST_P(HotKeyCenterContract, ARegistrationMayOutliveItsCenter)
{
    auto hotKey = claim(V, CommandShift);
    world().endCenter();
    EXPECT_TRUE(waitUntil([&] { return world().takeElsewhere(V, CommandShift); }));
    hotKey.ref.reset();
}

INSTANTIATE_TEST_SUITE_P(Backends, HotKeyCenterContract, ::testing::ValuesIn(Backends),
    [](const auto &backend) { return std::string(backend.param.name); });

} // namespace
