#include "contract/StatusTestButton.h"
#include "contract/TestTray.h"
#include "platform/x11/X11Backends.h"
#include "support/Waiting.h"
#include "support/XServer.h"

#include <gtest/gtest.h>

namespace
{

/// An item on an X server of its own, with trays of the older kind.
class X11StatusBarTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_NE(m_bar, nullptr); }

    void show() { m_items.push_back(m_bar->statusItem(m_button.button(), m_button.action())); }
    void remove() { m_items.pop_back(); }
    StatusBar &bar() { return *m_bar; }
    void endBar() { m_bar.reset(); }
    StatusTestButton &button() { return m_button; }

    static bool hasIcons(TestTray &tray, size_t count)
    {
        return waitUntil([&] { return tray.icons().size() == count; });
    }
    /// Whether the icon comes to show such a pixel at a place in its window.
    static bool shows(TestTray &tray, const QPoint &place, const QColor &color)
    {
        return waitUntil([&] {
            const QImage picture = tray.icons().empty() ? QImage() : tray.picture(tray.icons().front());
            if (!picture.rect().contains(place))
                return false;
            const QRgb pixel = picture.pixel(place);
            const auto isNear = [](int one, int other) { return std::abs(one - other) <= 2; };
            return isNear(qRed(pixel), color.red()) && isNear(qGreen(pixel), color.green()) &&
                isNear(qBlue(pixel), color.blue()) && isNear(qAlpha(pixel), color.alpha());
        });
    }

private:
    XServer m_server;
    StatusTestButton m_button;
    std::unique_ptr<StatusBar> m_bar = platform::makeX11StatusBar();
    std::vector<std::unique_ptr<StatusItem>> m_items;
};

TEST_F(X11StatusBarTest, DocksInATrayThatIsThere)
{
    TestTray tray;
    show();
    EXPECT_TRUE(hasIcons(tray, 1));
}

TEST_F(X11StatusBarTest, DocksInATrayThatComesLater)
{
    show();
    EXPECT_FALSE(waitUntil([] { return false; }, std::chrono::milliseconds(50)));
    TestTray tray;
    EXPECT_TRUE(hasIcons(tray, 1));
}

TEST_F(X11StatusBarTest, DocksAgainInEachTrayThatReturns)
{
    show();
    for (int i = 0; i < 5; ++i) {
        TestTray tray({.savesIcons = i % 2 == 0});
        EXPECT_TRUE(hasIcons(tray, 1)) << i;
    }
}

TEST_F(X11StatusBarTest, DocksInTheTrayAfterOneThatEndedWithoutTakingIt)
{
    show();
    for (int i = 0; i < 3; ++i) {
        TestTray tray({.isDeaf = i < 2});
        EXPECT_TRUE(waitUntil([&] { return tray.requestCount() == 1; })) << i;
        EXPECT_TRUE(hasIcons(tray, i < 2 ? 0 : 1)) << i;
    }
}

TEST_F(X11StatusBarTest, LeavesNoWindowBehindWhenItsTrayEnds)
{
    TestTray::Options saving;
    saving.savesIcons = true;
    auto tray = std::make_unique<TestTray>(saving);
    show();
    ASSERT_TRUE(hasIcons(*tray, 1));
    const xcb_window_t icon = tray->icons().front();
    tray.reset();
    const auto observer = X11Connection::open();
    EXPECT_TRUE(waitUntil([&] {
        const XcbReply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(observer->get(), xcb_get_geometry(observer->get(), icon), nullptr));
        return geometry == nullptr;
    }));
}

TEST_F(X11StatusBarTest, MovesToATrayThatTakesOver)
{
    TestTray first;
    show();
    ASSERT_TRUE(hasIcons(first, 1));
    TestTray second;
    EXPECT_TRUE(hasIcons(second, 1));
    EXPECT_TRUE(hasIcons(first, 0));
}

TEST_F(X11StatusBarTest, DocksOnceHoweverOftenTheTrayAnnouncesItself)
{
    TestTray tray;
    show();
    ASSERT_TRUE(hasIcons(tray, 1));
    tray.announce();
    tray.announce();
    // Its answer to a click comes after its answer to the announcements.
    tray.click(tray.icons().front(), 1);
    ASSERT_TRUE(waitUntil([&] { return button().clickCount() == 1; }));
    EXPECT_EQ(tray.requestCount(), 1);
}

TEST_F(X11StatusBarTest, ReturnsToATrayThatPutItOutWhenItIsAnnouncedAgain)
{
    TestTray tray;
    show();
    ASSERT_TRUE(hasIcons(tray, 1));
    const xcb_window_t before = tray.icons().front();
    tray.putOut(before);
    ASSERT_TRUE(waitUntil([&] { return !tray.exists(before); }));
    tray.announce();
    ASSERT_TRUE(hasIcons(tray, 1));
    tray.destroy(tray.icons().front());
    ASSERT_TRUE(hasIcons(tray, 0));
    tray.announce();
    EXPECT_TRUE(hasIcons(tray, 1));
}

TEST_F(X11StatusBarTest, LetsTheTraysBackgroundShowThrough)
{
    TestTray tray;
    show();
    ASSERT_TRUE(hasIcons(tray, 1));
    const QColor background = QColor::fromRgb(TestTray::Background);
    EXPECT_TRUE(shows(tray, {0, 0}, background));
    EXPECT_TRUE(shows(tray, {11, 12}, QColor(0xd4, 0x6c, 0x00)));
    // Half of each.
    EXPECT_TRUE(shows(tray, {12, 12}, QColor((0xd4 + 0x20) / 2, (0x6c + 0x40) / 2, (0x00 + 0x80) / 2)));
}

TEST_F(X11StatusBarTest, IsTransparentInTheTraysVisual)
{
    TestTray tray({.hasAlpha = true});
    show();
    ASSERT_TRUE(hasIcons(tray, 1));
    EXPECT_TRUE(shows(tray, {11, 12}, QColor(0xd4, 0x6c, 0x00)));
    const QImage picture = tray.picture(tray.icons().front());
    ASSERT_EQ(picture.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(qAlpha(picture.pixel(0, 0)), 0);
    EXPECT_EQ(qAlpha(picture.pixel(12, 12)), 128);
}

TEST_F(X11StatusBarTest, IsDrawnInTheMiddleAtTheSizeThatTheTrayGives)
{
    TestTray tray({.iconSize = {40, 16}});
    show();
    ASSERT_TRUE(hasIcons(tray, 1));
    const QColor background = QColor::fromRgb(TestTray::Background);
    const QColor color(0xd4, 0x6c, 0x00);
    // The filled part is from 4 to 12 of 16, which begin at 12.
    EXPECT_TRUE(shows(tray, {16, 4}, color));
    EXPECT_TRUE(shows(tray, {15, 4}, background));
    EXPECT_TRUE(shows(tray, {16, 3}, background));
    tray.resize(tray.icons().front(), {48, 48});
    EXPECT_TRUE(shows(tray, {12, 12}, color));
    EXPECT_TRUE(shows(tray, {11, 12}, background));
    EXPECT_TRUE(shows(tray, {23, 35}, color));
    EXPECT_TRUE(shows(tray, {23, 36}, background));
    // Nothing of the larger one is left.
    tray.resize(tray.icons().front(), {16, 16});
    EXPECT_TRUE(shows(tray, {5, 5}, color));
    EXPECT_TRUE(shows(tray, {13, 13}, background));
}

TEST_F(X11StatusBarTest, AsksToBeAsWideAsAHorizontalTrayIsHigh)
{
    TestTray tray({.iconSize = {22, 40}});
    show();
    ASSERT_TRUE(hasIcons(tray, 1));
    EXPECT_TRUE(waitUntil([&] { return tray.minimumSize(tray.icons().front()) == QSize(40, 40); }));
}

TEST_F(X11StatusBarTest, AsksToBeAsHighAsAVerticalTrayIsWide)
{
    TestTray tray({.isVertical = true, .iconSize = {40, 22}});
    show();
    ASSERT_TRUE(hasIcons(tray, 1));
    EXPECT_TRUE(waitUntil([&] { return tray.minimumSize(tray.icons().front()) == QSize(40, 40); }));
}

TEST_F(X11StatusBarTest, AsksForASizeThatOldPanelsHaveRoomFor)
{
    TestTray tray({.iconSize = {1, 1}});
    show();
    ASSERT_TRUE(hasIcons(tray, 1));
    ASSERT_TRUE(waitUntil([&] { return !tray.picture(tray.icons().front()).isNull(); }));
    EXPECT_EQ(tray.minimumSize(tray.icons().front()), QSize(22, 22));
}

TEST_F(X11StatusBarTest, TakesTheColourThatTheTrayTells)
{
    const QColor light(0xee, 0xdd, 0xcc);
    const QColor dark(0x11, 0x22, 0x33);
    TestTray tray({.foreground = light});
    show();
    EXPECT_TRUE(shows(tray, {11, 12}, light));
    tray.setForeground(dark);
    EXPECT_TRUE(shows(tray, {11, 12}, dark));
    EXPECT_EQ(tray.requestCount(), 1);
}

TEST_F(X11StatusBarTest, ComesInAnotherVisualWhenTheTrayWantsOne)
{
    TestTray tray;
    show();
    ASSERT_TRUE(shows(tray, {11, 12}, QColor(0xd4, 0x6c, 0x00)));
    tray.setVisualWithAlpha();
    EXPECT_TRUE(shows(tray, {0, 0}, QColor(0, 0, 0, 0)));
    EXPECT_TRUE(shows(tray, {11, 12}, QColor(0xd4, 0x6c, 0x00)));
    EXPECT_TRUE(hasIcons(tray, 1));
}

TEST_F(X11StatusBarTest, EveryButtonThatClicksRunsTheActionAndTheWheelDoesNot)
{
    TestTray tray;
    show();
    ASSERT_TRUE(shows(tray, {11, 12}, QColor(0xd4, 0x6c, 0x00)));
    for (const int number : {1, 4, 5, 2, 6, 7, 3})
        tray.click(tray.icons().front(), number);
    EXPECT_TRUE(waitUntil([&] { return button().clickCount() == 3; }));
    EXPECT_FALSE(waitUntil([&] { return button().clickCount() > 3; }, std::chrono::milliseconds(200)));
}

TEST_F(X11StatusBarTest, AReleaseElsewhereIsNoClick)
{
    TestTray tray;
    show();
    ASSERT_TRUE(shows(tray, {11, 12}, QColor(0xd4, 0x6c, 0x00)));
    tray.clickAndSlideAway(tray.icons().front(), 1);
    tray.click(tray.icons().front(), 1);
    ASSERT_TRUE(waitUntil([&] { return button().clickCount() > 0; }));
    EXPECT_EQ(button().clickCount(), 1);
}

TEST_F(X11StatusBarTest, HasAName)
{
    TestTray tray;
    show();
    ASSERT_TRUE(hasIcons(tray, 1));
    EXPECT_EQ(tray.text(tray.icons().front(), "WM_NAME"), "Test item");
    EXPECT_EQ(tray.text(tray.icons().front(), "_NET_WM_NAME"), "Test item");
    EXPECT_EQ(tray.text(tray.icons().front(), "WM_CLASS"), QByteArray("larkspool\0Larkspool", 20));
}

TEST_F(X11StatusBarTest, ADestroyedItemLeavesTheTray)
{
    TestTray tray;
    show();
    show();
    ASSERT_TRUE(hasIcons(tray, 2));
    remove();
    EXPECT_TRUE(hasIcons(tray, 1));
    remove();
    EXPECT_TRUE(hasIcons(tray, 0));
}

TEST_F(X11StatusBarTest, TheActionMayDestroyItsItem)
{
    TestTray tray;
    std::unique_ptr<StatusItem> item = bar().statusItem(button().button(), [&] { item.reset(); });
    ASSERT_TRUE(shows(tray, {11, 12}, QColor(0xd4, 0x6c, 0x00)));
    tray.click(tray.icons().front(), 1);
    EXPECT_TRUE(hasIcons(tray, 0));
    EXPECT_EQ(item, nullptr);
}

TEST_F(X11StatusBarTest, ItemsOutliveTheBar)
{
    show();
    endBar();
    TestTray tray;
    EXPECT_TRUE(hasIcons(tray, 1));
}

TEST(X11StatusBarWithoutServer, IsNotThere)
{
    const QByteArray before = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":4711");
    EXPECT_EQ(platform::makeX11StatusBar(), nullptr);
    qputenv("DISPLAY", before);
}

} // namespace
