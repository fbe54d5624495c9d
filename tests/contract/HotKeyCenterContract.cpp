#include "contract/HotKeyCenterContract.h"

void PrintTo(const HotKeyBackend &backend, std::ostream *stream)
{
    *stream << backend.name;
}

TEST_P(HotKeyCenterContract, APressIsHeardOnce)
{
    const auto hotKey = claim(V, CommandShift);
    ASSERT_EQ(hotKey.status, HotKeyRegistered);
    ASSERT_NE(hotKey.ref, nullptr);
    world().press(V, CommandShift);
    EXPECT_TRUE(waitUntil([&] { return pressCount() == 1; }));
    EXPECT_EQ(pressCountAfterMarker(), 1);
    EXPECT_TRUE(failures().empty());
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
    EXPECT_TRUE(isRefused(V, CommandShift, HotKeyExists));
    world().giveBackElsewhere(V, CommandShift);
    const auto hotKey = claim(V, CommandShift);
    EXPECT_EQ(hotKey.status, HotKeyRegistered);
    world().press(V, CommandShift);
    EXPECT_TRUE(waitUntil([&] { return pressCount() == 1; }));
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
