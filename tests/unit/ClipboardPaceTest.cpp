#include "platform/linux/ClipboardPace.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace
{

constexpr ClipboardPace::Time Start{};

ClipboardPace pace()
{
    return ClipboardPace(ClipboardLimits(), Start);
}

} // namespace

TEST(ClipboardPace, FiveSecondsWithoutProgressAreTheEnd)
{
    ClipboardPace transfer = pace();
    EXPECT_FALSE(transfer.hasExpired(Start + 4999ms));
    EXPECT_TRUE(transfer.hasExpired(Start + 5s));
    transfer.progressed(Start + 4s, 1024 * 1024);
    EXPECT_FALSE(transfer.hasExpired(Start + 8999ms));
    EXPECT_TRUE(transfer.hasExpired(Start + 9s));
}

TEST(ClipboardPace, AByteASecondDoesNotEarnItsTime)
{
    ClipboardPace transfer = pace();
    for (int second = 1; second < 5; ++second)
        transfer.progressed(Start + second * 1s, 1);
    EXPECT_FALSE(transfer.hasExpired(Start + 4999ms));
    EXPECT_TRUE(transfer.hasExpired(Start + 5001ms));
}

TEST(ClipboardPace, ALargeTransferEarnsItsTime)
{
    ClipboardPace transfer = pace();
    for (int second = 1; second <= 100; ++second)
        transfer.progressed(Start + second * 1s, 256 * 1024);
    EXPECT_FALSE(transfer.hasExpired(Start + 104s));
    EXPECT_TRUE(transfer.hasExpired(Start + 105s));
}

TEST(ClipboardPace, WhoHoldsOthersBackHasLessTime)
{
    ClipboardPace transfer = pace();
    transfer.holdsBack(Start + 1s);
    transfer.holdsBack(Start + 1100ms);
    EXPECT_FALSE(transfer.hasExpired(Start + 1249ms));
    EXPECT_TRUE(transfer.hasExpired(Start + 1250ms));
}

TEST(ClipboardPace, ProgressHoldsOthersBackForTwoSecondsAtMost)
{
    ClipboardPace transfer = pace();
    transfer.holdsBack(Start + 1s);
    for (auto at = Start + 1s; at < Start + 3s; at += 100ms)
        transfer.progressed(at, 1024 * 1024);
    EXPECT_FALSE(transfer.hasExpired(Start + 2999ms));
    EXPECT_TRUE(transfer.hasExpired(Start + 3s));
}
