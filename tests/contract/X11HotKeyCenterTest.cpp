#include "platform/x11/X11Backends.h"
#include "support/KeyRobot.h"
#include "support/TestProgram.h"
#include "support/Waiting.h"
#include "support/XServer.h"

#include <linux/input-event-codes.h>

#include <QProcess>

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

constexpr quint32 V = 9;
constexpr quint32 CommandShift = CommandKey | ShiftKey;
constexpr int NumLockBit = XCB_MOD_MASK_2;

/// Super+Shift+V on a server of its own.
class X11HotKeyCenterTest : public ::testing::Test
{
protected:
    X11HotKeyCenterTest()
    {
        m_center->installEventHandler([this] { ++m_pressCount; });
        m_hotKey = m_center->registerEventHotKey(V, CommandShift, {0, 1});
    }

    void press() { m_robot.chord({KEY_LEFTMETA, KEY_LEFTSHIFT, KEY_V}); }
    bool isHeardAgain()
    {
        const int before = m_pressCount;
        press();
        return waitUntil([&] { return m_pressCount == before + 1; });
    }
    /// Whether another program gets the combination, which it keeps; in the bits of the core protocol.
    bool isGrantedElsewhere(int modifiers, int evdevCode)
    {
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(m_other->get(),
            xcb_grab_key_checked(m_other->get(), 0, m_other->root(), static_cast<uint16_t>(modifiers),
                static_cast<xcb_keycode_t>(evdevCode + 8), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
        return !error;
    }
    bool isTaken(int modifiers, int evdevCode)
    {
        const bool isTaken = !isGrantedElsewhere(modifiers, evdevCode);
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(m_other->get(),
            xcb_ungrab_key_checked(m_other->get(), static_cast<xcb_keycode_t>(evdevCode + 8), m_other->root(),
                static_cast<uint16_t>(modifiers))));
        return isTaken;
    }
    KeyRobot &robot() { return m_robot; }
    HotKeyCenter &center() { return *m_center; }
    int pressCount() const { return m_pressCount; }

private:
    XServer m_server;
    KeyRobot m_robot;
    std::unique_ptr<HotKeyCenter> m_center = platform::makeX11HotKeyCenter();
    HotKeyRegistration m_hotKey;
    std::unique_ptr<X11Connection> m_other = X11Connection::open();
    int m_pressCount = 0;
};

TEST_F(X11HotKeyCenterTest, IsHeardInEveryStateOfTheLockKeys)
{
    for (const int locks : {0, int(XCB_MOD_MASK_LOCK), NumLockBit, XCB_MOD_MASK_LOCK | NumLockBit}) {
        robot().lockModifiers(locks);
        EXPECT_TRUE(isHeardAgain()) << "locks " << locks;
    }
}

TEST_F(X11HotKeyCenterTest, IsHeardByPositionInEveryLayout)
{
    for (const char *const layout : {"de", "ru", "dvorak", "fr", "us"}) {
        ASSERT_TRUE(robot().setLayout({QString::fromLatin1(layout)}));
        EXPECT_TRUE(isHeardAgain()) << layout;
    }
}

TEST_F(X11HotKeyCenterTest, IsHeardInEveryGroup)
{
    ASSERT_TRUE(robot().setLayout({QStringLiteral("us,ru,de")}));
    for (const int group : {1, 2, 0}) {
        robot().lockGroup(group);
        EXPECT_TRUE(isHeardAgain()) << "group " << group;
    }
}

TEST_F(X11HotKeyCenterTest, FollowsSuperToAnotherModifier)
{
    ASSERT_TRUE(isHeardAgain());
    ASSERT_TRUE(robot().moveModifier(XCB_MAP_INDEX_4, XCB_MAP_INDEX_3));
    // The combination moves when the news has come, which is a moment later.
    ASSERT_TRUE(waitUntil([&] { return isTaken(XCB_MOD_MASK_3 | XCB_MOD_MASK_SHIFT, KEY_V); }));
    EXPECT_FALSE(isTaken(XCB_MOD_MASK_4 | XCB_MOD_MASK_SHIFT, KEY_V));
    EXPECT_TRUE(isHeardAgain());
}

TEST_F(X11HotKeyCenterTest, FollowsSuperToAnotherKey)
{
    ASSERT_TRUE(robot().setLayout(
        {QStringLiteral("us"), QStringLiteral("-option"), QStringLiteral("altwin:swap_alt_win")}));
    robot().chord({KEY_LEFTALT, KEY_LEFTSHIFT, KEY_V});
    EXPECT_TRUE(waitUntil([&] { return pressCount() == 1; }));
}

TEST_F(X11HotKeyCenterTest, CountsAHeldKeyOnce)
{
    ASSERT_EQ(QProcess::execute(QStringLiteral("xset"),
                  {QStringLiteral("r"), QStringLiteral("rate"), QStringLiteral("100"), QStringLiteral("50")}),
        0);
    // First that the server repeats keys at all.
    TestProgram program("plain", "Plain");
    program.show(TestProgram::Focus::Takes);
    robot().down(KEY_V);
    EXPECT_TRUE(waitUntil([&] { return program.keyPresses().size() >= 4; }));
    robot().up(KEY_V);

    robot().down(KEY_LEFTMETA);
    robot().down(KEY_LEFTSHIFT);
    robot().down(KEY_V);
    EXPECT_FALSE(waitUntil([&] { return pressCount() > 1; }, std::chrono::milliseconds(400)));
    EXPECT_EQ(pressCount(), 1);
    robot().up(KEY_V);
    // The modifiers are still down: a hand may hit the key again.
    robot().chord({KEY_V});
    EXPECT_TRUE(waitUntil([&] { return pressCount() == 2; }));
    robot().up(KEY_LEFTSHIFT);
    robot().up(KEY_LEFTMETA);
}

TEST_F(X11HotKeyCenterTest, KeepsThePressFromOtherPrograms)
{
    TestProgram program("plain", "Plain");
    program.show(TestProgram::Focus::Takes);
    ASSERT_TRUE(isHeardAgain());
    robot().chord({KEY_A});
    ASSERT_TRUE(waitUntil(
        [&] { return !program.keyPresses().empty() && program.keyPresses().back().keyCode == KEY_A + 8; }));
    for (const TestProgram::KeyPress &key : program.keyPresses())
        EXPECT_NE(key.keyCode, KEY_V + 8);
}

TEST_F(X11HotKeyCenterTest, AKeyThatIsDownAlreadyIsNoPressUntilItIsHitAgain)
{
    constexpr quint32 B = 11;
    TestProgram program("plain", "Plain");
    program.show(TestProgram::Focus::Takes);
    robot().down(KEY_LEFTCTRL);
    robot().down(KEY_B);
    const auto repeats = [&] {
        return std::ranges::count(program.keyPresses(), KEY_B + 8, &TestProgram::KeyPress::keyCode);
    };
    ASSERT_TRUE(waitUntil([&] { return repeats() >= 3; }));
    const HotKeyRegistration hotKey = center().registerEventHotKey(B, ControlKey, {0, 2});
    ASSERT_EQ(hotKey.status, HotKeyRegistered);
    // Ten repeats by the server's default pace.
    EXPECT_FALSE(waitUntil([&] { return pressCount() > 0; }, std::chrono::milliseconds(300)));
    robot().up(KEY_B);
    robot().up(KEY_LEFTCTRL);
    EXPECT_TRUE(waitUntil([&] {
        robot().chord({KEY_LEFTCTRL, KEY_B});
        return pressCount() > 0;
    }));
}

TEST_F(X11HotKeyCenterTest, LeavesNothingGrabbedWhenOneLockStateIsTaken)
{
    ASSERT_TRUE(isGrantedElsewhere(XCB_MOD_MASK_4 | NumLockBit, KEY_B));
    EXPECT_EQ(center().registerEventHotKey(11, CommandKey, {0, 2}).status, HotKeyExists);
    EXPECT_TRUE(waitUntil([&] { return isGrantedElsewhere(XCB_MOD_MASK_4, KEY_B); }));
    EXPECT_TRUE(waitUntil([&] { return isGrantedElsewhere(XCB_MOD_MASK_4 | XCB_MOD_MASK_LOCK, KEY_B); }));
}

TEST(X11HotKeyCenterWithoutServer, IsNotThere)
{
    const QByteArray before = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":4711");
    EXPECT_EQ(platform::makeX11HotKeyCenter(), nullptr);
    EXPECT_EQ(platform::makeX11Workspace(), nullptr);
    EXPECT_EQ(platform::makeX11Screens(), nullptr);
    qputenv("DISPLAY", before);
}

} // namespace
