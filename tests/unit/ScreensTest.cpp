#include "platform/x11/X11Screens.h"

#include <gtest/gtest.h>

namespace
{

// A laptop at twice the density on the left, a monitor at single density on its right.
const std::vector<X11Monitor> Two = {
    {QRect(0, 0, 2560, 1600), QRect(0, 0, 1280, 800), QRect(0, 0, 1280, 800)},
    {QRect(2560, 0, 1920, 1080), QRect(2560, 0, 1920, 1080), QRect(2560, 0, 1920, 1080)},
};

TEST(VisibleFrame, IsThatOfTheMonitorWithTheActiveWindow)
{
    EXPECT_EQ(visibleFrameAmong(Two, QRect(2500, 10, 800, 600), QPoint(5, 5), std::nullopt), Two[1].frame);
    EXPECT_EQ(visibleFrameAmong(Two, QRect(2000, 10, 800, 600), QPoint(3000, 5), std::nullopt), Two[0].frame);
}

TEST(VisibleFrame, FollowsThePointerWithoutAnActiveWindow)
{
    EXPECT_EQ(visibleFrameAmong(Two, std::nullopt, QPoint(3000, 5), std::nullopt), Two[1].frame);
    EXPECT_EQ(visibleFrameAmong(Two, QRect(-5000, 0, 10, 10), QPoint(3000, 5), std::nullopt), Two[1].frame);
}

TEST(VisibleFrame, IsThatOfThePrimaryMonitorWhenNothingElseIsKnown)
{
    EXPECT_EQ(visibleFrameAmong(Two, std::nullopt, std::nullopt, std::nullopt), Two[0].frame);
    EXPECT_EQ(visibleFrameAmong({}, std::nullopt, std::nullopt, std::nullopt), std::nullopt);
}

TEST(VisibleFrame, LeavesDocksFreeInDeviceIndependentPixels)
{
    const QRect workArea(0, 60, 4480, 1540); // a bar of 60 pixels along the top of both
    EXPECT_EQ(visibleFrameAmong(Two, QRect(0, 0, 10, 10), std::nullopt, workArea), QRect(0, 30, 1280, 770));
    EXPECT_EQ(
        visibleFrameAmong(Two, QRect(3000, 0, 10, 10), std::nullopt, workArea), QRect(2560, 60, 1920, 1020));
}

TEST(VisibleFrame, IgnoresAWorkAreaThatMissesMostOfTheMonitor)
{
    const QRect workArea(0, 0, 2560, 1600);
    EXPECT_EQ(visibleFrameAmong(Two, QRect(3000, 0, 10, 10), std::nullopt, workArea), Two[1].frame);
}

} // namespace
