#include "contract/StatusTestBus.h"
#include "contract/StatusTestButton.h"
#include "contract/StatusTestWatcher.h"
#include "contract/TestTray.h"
#include "platform/linux/StatusNotifierBar.h"
#include "platform/x11/X11Backends.h"
#include "support/CapturedConsole.h"
#include "support/Waiting.h"
#include "support/XServer.h"

#include <gtest/gtest.h>

namespace
{

using Host = StatusTestWatcher::Host;

/// An item on a desktop that may have a tray of each kind.
class StatusBarMoveTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (!m_bus.isRunning() && !qEnvironmentVariableIsSet("CI"))
            GTEST_SKIP() << "dbus-daemon is not installed";
        ASSERT_TRUE(m_bus.isRunning());
    }

    const QString &address() const { return m_bus.address(); }
    void killBus() { m_bus.kill(); }
    void show()
    {
        m_item = platform::makeStatusNotifierBar(platform::makeX11StatusBar(), address())
                     ->statusItem(m_button.button(), m_button.action());
    }
    void remove() { m_item.reset(); }
    StatusTestButton &button() { return m_button; }

    static bool isIn(const StatusTestWatcher &watcher)
    {
        return waitUntil([&] { return watcher.items().size() == 1; });
    }
    static bool isIn(TestTray &tray)
    {
        return waitUntil([&] { return tray.icons().size() == 1; });
    }
    static bool isGoneFrom(TestTray &tray)
    {
        return waitUntil([&] { return tray.icons().empty(); });
    }

private:
    XServer m_server;
    StatusTestBus m_bus;
    StatusTestButton m_button;
    std::unique_ptr<StatusItem> m_item;
};

TEST_F(StatusBarMoveTest, WithBothKindsOnlyTheNewerShowsIt)
{
    StatusTestWatcher watcher(address());
    TestTray tray;
    show();
    ASSERT_TRUE(isIn(watcher));
    EXPECT_FALSE(waitUntil([&] { return tray.requestCount() > 0; }, std::chrono::milliseconds(300)));
}

TEST_F(StatusBarMoveTest, WithTheOlderKindAloneThatShowsIt)
{
    TestTray tray;
    show();
    ASSERT_TRUE(isIn(tray));
    tray.click(tray.icons().front(), 1);
    EXPECT_TRUE(waitUntil([&] { return button().clickCount() == 1; }));
}

TEST_F(StatusBarMoveTest, WithoutABusTheOlderTrayShowsIt)
{
    const QString nowhere = QStringLiteral("unix:path=/nonexistent/bus");
    TestTray tray;
    const auto bar = platform::makeStatusNotifierBar(platform::makeX11StatusBar(), nowhere);
    const auto item = bar->statusItem(button().button(), button().action());
    EXPECT_TRUE(isIn(tray));
}

TEST_F(StatusBarMoveTest, MovesToTheOlderTrayWhenTheWatcherGoesAndBack)
{
    TestTray tray;
    show();
    ASSERT_TRUE(isIn(tray));
    for (int i = 0; i < 3; ++i) {
        {
            StatusTestWatcher watcher(address());
            EXPECT_TRUE(isIn(watcher)) << i;
            EXPECT_TRUE(isGoneFrom(tray)) << i;
        }
        EXPECT_TRUE(isIn(tray)) << i;
    }
}

TEST_F(StatusBarMoveTest, MovesWithTheHostOfAWatcherThatStays)
{
    TestTray tray;
    StatusTestWatcher watcher(address(), Host::Absent);
    show();
    ASSERT_TRUE(isIn(tray));
    EXPECT_EQ(watcher.registrationCount(), 0);
    watcher.setHost(Host::Present);
    EXPECT_TRUE(isIn(watcher));
    EXPECT_TRUE(isGoneFrom(tray));
    watcher.setHost(Host::Absent);
    EXPECT_TRUE(isIn(tray));
    watcher.setHost(Host::Present);
    EXPECT_TRUE(isGoneFrom(tray));
    EXPECT_EQ(watcher.registrationCount(), 1);
}

TEST_F(StatusBarMoveTest, IsInTheOlderTrayWhileTheWatcherRefusesIt)
{
    TestTray tray;
    StatusTestWatcher watcher(address());
    watcher.refusesItems = true;
    show();
    ASSERT_TRUE(isIn(tray));
    watcher.refusesItems = false;
    watcher.setHost(Host::Present);
    EXPECT_TRUE(isIn(watcher));
    EXPECT_TRUE(isGoneFrom(tray));
}

TEST_F(StatusBarMoveTest, IsInTheOlderTrayWhileTheWatcherHangs)
{
    TestTray tray;
    StatusTestWatcher watcher(address());
    watcher.isSilent = true;
    show();
    ASSERT_TRUE(waitUntil([&] { return tray.icons().size() == 1; }, std::chrono::seconds(30)));
    watcher.isSilent = false;
    EXPECT_TRUE(waitUntil([&] { return watcher.items().size() == 1; }, std::chrono::seconds(30)));
    EXPECT_TRUE(isGoneFrom(tray));
}

TEST_F(StatusBarMoveTest, MovesToTheOlderTrayWhenTheBusDies)
{
    TestTray tray;
    {
        StatusTestWatcher watcher(address());
        show();
        ASSERT_TRUE(isIn(watcher));
        killBus();
        EXPECT_TRUE(isIn(tray));
    }
}

TEST_F(StatusBarMoveTest, ADestroyedItemLeavesBoth)
{
    TestTray tray;
    show();
    ASSERT_TRUE(isIn(tray));
    remove();
    EXPECT_TRUE(isGoneFrom(tray));
    StatusTestWatcher watcher(address());
    EXPECT_FALSE(waitUntil([&] { return watcher.questionCount() > 0; }, std::chrono::milliseconds(200)));
    EXPECT_TRUE(tray.icons().empty());
}

TEST_F(StatusBarMoveTest, WithoutAnyTrayNothingIsSaid)
{
    CapturedConsole console;
    show();
    EXPECT_FALSE(waitUntil([] { return false; }, std::chrono::milliseconds(200)));
    remove();
    EXPECT_EQ(console.output(), "");
}

} // namespace
