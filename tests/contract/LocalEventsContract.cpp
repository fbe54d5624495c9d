#include "contract/LocalEventsContract.h"

#include <QStringList>

#include <utility>
#include <vector>

namespace
{

using Monitor = std::unique_ptr<LocalEvents::Monitor>;

constexpr auto PassedOn = LocalEventFate::PassedOn;
constexpr auto Consumed = LocalEventFate::Consumed;
constexpr quint16 A = 0;
constexpr quint16 Return = 36;
constexpr quint16 Escape = 53;
constexpr quint16 Left = 123;

} // namespace

void PrintTo(const LocalEventsBackend &backend, std::ostream *stream)
{
    *stream << backend.name;
}

TEST_P(LocalEventsContract, WithoutMonitorsTheWindowGetsEverything)
{
    EXPECT_EQ(world().press({Return, EventModifier::None, QString()}), PassedOn);
    EXPECT_EQ(world().scroll({1, false}), PassedOn);
}

TEST_P(LocalEventsContract, AKeyIsToldWithItsCode)
{
    std::vector<quint16> heard;
    const Monitor monitor = events().addKeyDownMonitor([&](const LocalKeyEvent &key) {
        heard.push_back(key.keyCode);
        return PassedOn;
    });
    const std::vector<quint16> codes{A, Return, 51, Escape, Left, 124, 125, 126};
    for (const quint16 code : codes)
        world().press({code, EventModifier::None, QString()});
    EXPECT_EQ(heard, codes);
}

TEST_P(LocalEventsContract, AKeyIsToldWithTheModifiersThatAreHeld)
{
    std::vector<EventModifier> heard;
    const Monitor monitor = events().addKeyDownMonitor([&](const LocalKeyEvent &key) {
        heard.push_back(key.modifiers);
        return PassedOn;
    });
    const std::vector held{EventModifier::None, EventModifier::Command, EventModifier::Shift,
        EventModifier::Option, EventModifier::Command | EventModifier::Shift | EventModifier::Option};
    for (const EventModifier modifiers : held)
        world().press({Return, modifiers, QString()});
    EXPECT_EQ(heard, held);
}

TEST_P(LocalEventsContract, AKeyIsToldWithWhatItTypes)
{
    QStringList heard;
    const Monitor monitor = events().addKeyDownMonitor([&](const LocalKeyEvent &key) {
        heard.append(key.characters);
        return PassedOn;
    });
    const QStringList typed{QStringLiteral("a"), QStringLiteral("ä"), QStringLiteral("🦋")};
    for (const QString &characters : typed)
        world().press({A, EventModifier::None, characters});
    EXPECT_EQ(heard, typed);
}

TEST_P(LocalEventsContract, WhatAMonitorConsumesDoesNotReachTheWindow)
{
    const Monitor monitor = events().addKeyDownMonitor(
        [](const LocalKeyEvent &key) { return key.keyCode == Return ? Consumed : PassedOn; });
    EXPECT_FALSE(reachesTheWindow(Return));
    EXPECT_TRUE(reachesTheWindow(Escape));
}

TEST_P(LocalEventsContract, EachPressIsToldOnce)
{
    int count = 0;
    const Monitor monitor = events().addKeyDownMonitor([&](const LocalKeyEvent &) {
        ++count;
        return PassedOn;
    });
    for (int i = 0; i < 3; ++i)
        world().press({Return, EventModifier::None, QString()});
    EXPECT_EQ(count, 3);
}

TEST_P(LocalEventsContract, MonitorsAreAskedInTheOrderInWhichTheyWereAdded)
{
    std::string asked;
    const auto writing = [&](char letter) {
        return [&asked, letter](const LocalKeyEvent &) {
            asked += letter;
            return PassedOn;
        };
    };
    const Monitor first = events().addKeyDownMonitor(writing('1'));
    const Monitor second = events().addKeyDownMonitor(writing('2'));
    const Monitor third = events().addKeyDownMonitor(writing('3'));
    EXPECT_TRUE(reachesTheWindow(Return));
    EXPECT_EQ(asked, "123");
}

TEST_P(LocalEventsContract, NobodyIsAskedAfterTheOneThatConsumes)
{
    bool isAsked = false;
    const Monitor first = events().addKeyDownMonitor([](const LocalKeyEvent &) { return Consumed; });
    const Monitor second = events().addKeyDownMonitor([&](const LocalKeyEvent &) {
        isAsked = true;
        return PassedOn;
    });
    EXPECT_FALSE(reachesTheWindow(Return));
    EXPECT_FALSE(isAsked);
}

TEST_P(LocalEventsContract, AnEndedMonitorHearsNothing)
{
    int count = 0;
    Monitor monitor = events().addKeyDownMonitor([&](const LocalKeyEvent &) {
        ++count;
        return Consumed;
    });
    EXPECT_FALSE(reachesTheWindow(Return));
    monitor.reset();
    EXPECT_TRUE(reachesTheWindow(Return));
    EXPECT_EQ(count, 1);
}

TEST_P(LocalEventsContract, AMonitorMayEndItself)
{
    int count = 0;
    Monitor monitor;
    // What the handler holds must live until it returns.
    const auto held = std::make_shared<int>(7);
    monitor = events().addKeyDownMonitor([&, held](const LocalKeyEvent &) {
        monitor.reset();
        count += *held;
        return Consumed;
    });
    EXPECT_FALSE(reachesTheWindow(Return));
    EXPECT_TRUE(reachesTheWindow(Return));
    EXPECT_EQ(count, 7);
}

TEST_P(LocalEventsContract, AMonitorMayEndTheOneAfterIt)
{
    bool isAsked = false;
    Monitor second;
    const Monitor first = events().addKeyDownMonitor([&](const LocalKeyEvent &) {
        second.reset();
        return PassedOn;
    });
    second = events().addKeyDownMonitor([&](const LocalKeyEvent &) {
        isAsked = true;
        return Consumed;
    });
    EXPECT_TRUE(reachesTheWindow(Return));
    EXPECT_FALSE(isAsked);
}

TEST_P(LocalEventsContract, AMonitorMayEndTheOneBeforeIt)
{
    int count = 0;
    Monitor first = events().addKeyDownMonitor([](const LocalKeyEvent &) { return PassedOn; });
    const Monitor second = events().addKeyDownMonitor([&](const LocalKeyEvent &) {
        first.reset();
        ++count;
        return PassedOn;
    });
    const Monitor third = events().addKeyDownMonitor([&](const LocalKeyEvent &) {
        ++count;
        return PassedOn;
    });
    EXPECT_TRUE(reachesTheWindow(Return));
    EXPECT_EQ(count, 2);
}

TEST_P(LocalEventsContract, AMonitorThatIsAddedMeanwhileHearsTheNextEvent)
{
    int count = 0;
    Monitor added;
    const Monitor adding = events().addKeyDownMonitor([&](const LocalKeyEvent &) {
        if (!added) {
            added = events().addKeyDownMonitor([&](const LocalKeyEvent &) {
                ++count;
                return Consumed;
            });
        }
        return PassedOn;
    });
    EXPECT_TRUE(reachesTheWindow(Return));
    EXPECT_EQ(count, 0);
    EXPECT_FALSE(reachesTheWindow(Return));
    EXPECT_EQ(count, 1);
}

TEST_P(LocalEventsContract, AMonitorMayOutliveTheSource)
{
    Monitor keys = events().addKeyDownMonitor([](const LocalKeyEvent &) { return Consumed; });
    Monitor turns = events().addScrollMonitor([](const LocalScrollEvent &) { return Consumed; });
    world().endEvents();
    EXPECT_TRUE(reachesTheWindow(Return));
    EXPECT_EQ(world().scroll({1, false}), PassedOn);
    keys.reset();
    turns.reset();
}

TEST_P(LocalEventsContract, ATurnOfAWheelIsToldInNotchesAndAMoveOfFingersInPoints)
{
    std::vector<std::pair<double, bool>> heard;
    const Monitor monitor = events().addScrollMonitor([&](const LocalScrollEvent &turn) {
        heard.emplace_back(turn.scrollingDeltaY, turn.hasPreciseScrollingDeltas);
        return PassedOn;
    });
    const std::vector<std::pair<double, bool>> turns{{1, false}, {-2, false}, {17, true}, {-3, true}};
    for (const auto &[deltaY, isPrecise] : turns)
        EXPECT_EQ(world().scroll({deltaY, isPrecise}), PassedOn);
    EXPECT_EQ(heard, turns);
}

TEST_P(LocalEventsContract, AConsumedTurnDoesNotReachTheWindowOrTheNextMonitor)
{
    bool isAsked = false;
    Monitor first = events().addScrollMonitor([](const LocalScrollEvent &) { return Consumed; });
    const Monitor second = events().addScrollMonitor([&](const LocalScrollEvent &) {
        isAsked = true;
        return PassedOn;
    });
    EXPECT_EQ(world().scroll({1, false}), Consumed);
    EXPECT_FALSE(isAsked);
    first.reset();
    EXPECT_EQ(world().scroll({1, false}), PassedOn);
    EXPECT_TRUE(isAsked);
}

TEST_P(LocalEventsContract, MonitorsOfKeysHearNoTurnsAndTheOtherWayRound)
{
    int keyCount = 0;
    int turnCount = 0;
    const Monitor keys = events().addKeyDownMonitor([&](const LocalKeyEvent &) {
        ++keyCount;
        return Consumed;
    });
    const Monitor turns = events().addScrollMonitor([&](const LocalScrollEvent &) {
        ++turnCount;
        return Consumed;
    });
    world().scroll({1, false});
    EXPECT_EQ(keyCount, 0);
    EXPECT_EQ(turnCount, 1);
    world().press({Return, EventModifier::None, QString()});
    EXPECT_EQ(keyCount, 1);
    EXPECT_EQ(turnCount, 1);
}
