#include "platform/linux/PartialEventPoster.h"
#include "fakes/FakeEventPoster.h"
#include "fakes/FakeWorkspace.h"

#include <gtest/gtest.h>

namespace
{

struct Desktop {
    std::unique_ptr<FakeEventPoster> ownedKeys = std::make_unique<FakeEventPoster>();
    std::unique_ptr<FakeWorkspace> ownedReachable = std::make_unique<FakeWorkspace>();
    FakeEventPoster &keys = *ownedKeys;
    FakeWorkspace &reachable = *ownedReachable;
    PartialEventPoster poster{std::move(ownedKeys), std::move(ownedReachable)};
};

} // namespace

TEST(PartialEventPoster, IsTrustedWhileAProgramIsInFrontThatTheEventsArriveWith)
{
    Desktop desktop;
    EXPECT_FALSE(desktop.poster.isProcessTrusted());
    desktop.reachable.bringToFront(QStringLiteral("Editor"), QStringLiteral("org.example.Editor"));
    EXPECT_TRUE(desktop.poster.isProcessTrusted());
    desktop.reachable.leaveNobodyInFront();
    EXPECT_FALSE(desktop.poster.isProcessTrusted());
}

TEST(PartialEventPoster, IsNotTrustedWhereItsPosterIsNot)
{
    Desktop desktop;
    desktop.reachable.bringToFront(QStringLiteral("Editor"), QStringLiteral("org.example.Editor"));
    desktop.keys.isTrusted = false;
    EXPECT_FALSE(desktop.poster.isProcessTrusted());
}

TEST(PartialEventPoster, AsksForThePermissionOfItsPosterWhoeverIsInFront)
{
    Desktop desktop;
    EXPECT_TRUE(desktop.poster.isProcessTrustedWithPrompt());
    EXPECT_EQ(desktop.keys.promptCount(), 0);
    desktop.keys.isTrusted = false;
    EXPECT_FALSE(desktop.poster.isProcessTrustedWithPrompt());
    EXPECT_EQ(desktop.keys.promptCount(), 1);
}

TEST(PartialEventPoster, EventsAreThoseOfItsPoster)
{
    Desktop desktop;
    const auto source = desktop.poster.createEventSource(0);
    EXPECT_EQ(desktop.keys.sourceStates(), std::vector<int>({0}));
    const auto event = desktop.poster.createKeyboardEvent(source.get(), 9, KeyMotion::Up);
    ASSERT_NE(event, nullptr);
    desktop.poster.post(EventTapLocation::AnnotatedSession, *event);
    ASSERT_EQ(desktop.keys.posted().size(), 1U);
    EXPECT_EQ(desktop.keys.posted().front().event.keyCode, 9);
    EXPECT_EQ(desktop.keys.posted().front().event.motion, KeyMotion::Up);
}
