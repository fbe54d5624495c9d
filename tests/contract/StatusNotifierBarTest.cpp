#include "platform/linux/StatusNotifierBar.h"
#include "contract/StatusTestBus.h"
#include "contract/StatusTestButton.h"
#include "contract/StatusTestWatcher.h"
#include "platform/linux/StatusNotifierTypes.h"
#include "support/CapturedConsole.h"
#include "support/Waiting.h"

#include <QtEndian>

#include <gtest/gtest.h>

namespace
{

using Host = StatusTestWatcher::Host;

/// An item on a bus of its own, without an older bar.
class StatusNotifierBarTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (!m_bus.isRunning() && !qEnvironmentVariableIsSet("CI"))
            GTEST_SKIP() << "dbus-daemon is not installed";
        ASSERT_TRUE(m_bus.isRunning());
    }

    const QString &address() const { return m_bus.address(); }
    void show() { m_items.push_back(m_bar->statusItem(m_button.button(), m_button.action())); }
    void remove() { m_items.pop_back(); }
    void endBar() { m_bar.reset(); }
    StatusBar &bar() { return *m_bar; }
    StatusTestButton &button() { return m_button; }

    static bool hasItems(const StatusTestWatcher &watcher, int count)
    {
        return waitUntil([&] { return watcher.items().size() == count; });
    }
    /// That nothing is registered, once everything that is on its way has been answered.
    static bool staysEmpty(const StatusTestWatcher &watcher)
    {
        return !waitUntil([&] { return !watcher.items().isEmpty(); }, std::chrono::milliseconds(300));
    }

private:
    StatusTestBus m_bus;
    StatusTestButton m_button;
    std::unique_ptr<StatusBar> m_bar = platform::makeStatusNotifierBar(nullptr, m_bus.address());
    std::vector<std::unique_ptr<StatusItem>> m_items;
};

TEST_F(StatusNotifierBarTest, RegistersWithAWatcherThatIsThere)
{
    StatusTestWatcher watcher(address());
    show();
    EXPECT_TRUE(hasItems(watcher, 1));
}

TEST_F(StatusNotifierBarTest, RegistersWithAWatcherThatComesLater)
{
    show();
    EXPECT_FALSE(waitUntil([] { return false; }, std::chrono::milliseconds(100)));
    StatusTestWatcher watcher(address());
    EXPECT_TRUE(hasItems(watcher, 1));
}

TEST_F(StatusNotifierBarTest, RegistersAgainWithEachWatcherThatReplacesOne)
{
    show();
    for (int i = 0; i < 3; ++i) {
        StatusTestWatcher watcher(address());
        EXPECT_TRUE(hasItems(watcher, 1)) << i;
        EXPECT_EQ(watcher.registrationCount(), 1);
    }
}

TEST_F(StatusNotifierBarTest, WaitsForAHost)
{
    StatusTestWatcher watcher(address(), Host::Absent);
    show();
    ASSERT_TRUE(waitUntil([&] { return watcher.questionCount() > 0; }));
    EXPECT_TRUE(staysEmpty(watcher));
    watcher.setHost(Host::Present);
    EXPECT_TRUE(hasItems(watcher, 1));
}

TEST_F(StatusNotifierBarTest, RegistersOnceHoweverOftenTheHostIsReplaced)
{
    StatusTestWatcher watcher(address());
    show();
    ASSERT_TRUE(hasItems(watcher, 1));
    for (int i = 0; i < 3; ++i) {
        const int before = watcher.questionCount();
        watcher.setHost(Host::Absent);
        watcher.setHost(Host::Present);
        ASSERT_TRUE(waitUntil([&] { return watcher.questionCount() >= before + 2; }));
    }
    EXPECT_EQ(watcher.registrationCount(), 1);
}

TEST_F(StatusNotifierBarTest, SaysWhatItIs)
{
    StatusTestWatcher watcher(address());
    show();
    ASSERT_TRUE(hasItems(watcher, 1));
    const QVariantMap properties = watcher.properties(watcher.items().front());
    const auto text = [&](const char *name) {
        return properties.value(QString::fromLatin1(name)).toString().toStdString();
    };
    EXPECT_EQ(text("Category"), "ApplicationStatus");
    EXPECT_EQ(text("Id"), "larkspool");
    EXPECT_EQ(text("Title"), "Test item");
    EXPECT_EQ(text("Status"), "Active");
    EXPECT_TRUE(properties.contains(QStringLiteral("IconName")));
    EXPECT_EQ(text("IconName"), "");
    EXPECT_EQ(properties.value(QStringLiteral("ItemIsMenu")), QVariant(false));
    EXPECT_EQ(properties.value(QStringLiteral("WindowId")), QVariant(0));
    EXPECT_FALSE(properties.contains(QStringLiteral("Menu")));
    const auto argument = properties.value(QStringLiteral("ToolTip")).value<QDBusArgument>();
    EXPECT_EQ(argument.currentSignature(), QStringLiteral("(sa(iiay)ss)"));
    EXPECT_EQ(qdbus_cast<StatusNotifierToolTip>(argument).title, QStringLiteral("Test item"));
}

TEST_F(StatusNotifierBarTest, ItsPicturesAreInNetworkByteOrderWithPlainColours)
{
    StatusTestWatcher watcher(address());
    show();
    ASSERT_TRUE(hasItems(watcher, 1));
    const auto argument = watcher.properties(watcher.items().front())
                              .value(QStringLiteral("IconPixmap"))
                              .value<QDBusArgument>();
    ASSERT_EQ(argument.currentSignature(), QStringLiteral("a(iiay)"));
    std::vector<int> sizes;
    for (const StatusNotifierPixmap &pixmap : qdbus_cast<StatusNotifierPixmaps>(argument)) {
        sizes.push_back(pixmap.width);
        EXPECT_EQ(pixmap.height, pixmap.width);
        ASSERT_EQ(pixmap.pixels.size(), 4 * pixmap.width * pixmap.height);
        const auto pixel = [&](int x, int y) {
            return qFromBigEndian<quint32>(pixmap.pixels.constData() + 4 * (y * pixmap.width + x));
        };
        const int half = pixmap.width / 2;
        const quint32 opaque = pixel(half - 1, half);
        const quint32 translucent = pixel(half, half);
        EXPECT_EQ(pixel(0, 0) >> 24, 0u);
        EXPECT_EQ(opaque >> 24, 0xffu);
        EXPECT_EQ(translucent >> 24, 0x80u);
        // The colour is the same behind any alpha, but for rounding: more red than green, and no blue.
        EXPECT_NEAR(double(qRed(translucent)), double(qRed(opaque)), 2);
        EXPECT_NEAR(double(qGreen(translucent)), double(qGreen(opaque)), 2);
        EXPECT_GT(qRed(opaque), qGreen(opaque));
        EXPECT_EQ(qBlue(opaque), 0);
    }
    EXPECT_EQ(sizes, (std::vector{16, 22, 24, 32, 48, 64}));
}

TEST_F(StatusNotifierBarTest, EveryKindOfClickRunsTheActionAndTheWheelDoesNot)
{
    StatusTestWatcher watcher(address());
    show();
    ASSERT_TRUE(hasItems(watcher, 1));
    const QString item = watcher.items().front();
    int count = 0;
    for (const char *const method : {"Activate", "SecondaryActivate", "ContextMenu"}) {
        EXPECT_TRUE(watcher.call(item, method, {10, 20})) << method;
        ++count;
        EXPECT_TRUE(waitUntil([&] { return button().clickCount() == count; })) << method;
    }
    EXPECT_TRUE(watcher.call(item, "Scroll", {120, QStringLiteral("vertical")}));
    EXPECT_TRUE(watcher.call(item, "Activate", {0, 0}));
    EXPECT_TRUE(waitUntil([&] { return button().clickCount() == count + 1; }));
}

TEST_F(StatusNotifierBarTest, ADestroyedItemLeavesTheTray)
{
    StatusTestWatcher watcher(address());
    show();
    show();
    ASSERT_TRUE(hasItems(watcher, 2));
    remove();
    EXPECT_TRUE(hasItems(watcher, 1));
    remove();
    EXPECT_TRUE(hasItems(watcher, 0));
}

TEST_F(StatusNotifierBarTest, TheActionMayDestroyItsItem)
{
    StatusTestWatcher watcher(address());
    std::unique_ptr<StatusItem> item = bar().statusItem(button().button(), [&] { item.reset(); });
    ASSERT_TRUE(hasItems(watcher, 1));
    EXPECT_TRUE(watcher.call(watcher.items().front(), "Activate", {0, 0}));
    EXPECT_TRUE(hasItems(watcher, 0));
    EXPECT_EQ(item, nullptr);
}

TEST_F(StatusNotifierBarTest, ItemsOutliveTheBar)
{
    show();
    endBar();
    StatusTestWatcher watcher(address());
    EXPECT_TRUE(hasItems(watcher, 1));
}

TEST(StatusNotifierBarWithoutBus, ShowsNothingAndSaysNothing)
{
    CapturedConsole console;
    const auto bar = platform::makeStatusNotifierBar(nullptr, QStringLiteral("unix:path=/nonexistent/bus"));
    StatusTestButton button;
    auto item = bar->statusItem(button.button(), button.action());
    EXPECT_FALSE(waitUntil([] { return false; }, std::chrono::milliseconds(100)));
    item.reset();
    EXPECT_EQ(console.output(), "");
}

} // namespace
