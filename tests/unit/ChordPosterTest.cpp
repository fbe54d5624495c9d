#include "platform/linux/ChordPoster.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualMainQueue.h"
#include "support/CapturedConsole.h"

#include <gtest/gtest.h>

#include <utility>

using namespace std::chrono_literals;

namespace
{

using Chords = std::vector<PasteChord>;

const char NotInFront[] = "[Larkspool] No paste keys: the program that they are for is not in front\n";

/// A desktop in memory that also tells who was activated.
class ActivatingWorkspace : public FakeWorkspace
{
public:
    std::shared_ptr<RunningApplication> takeActivatedApplication() const override
    {
        return std::exchange(activated, nullptr);
    }

    mutable std::shared_ptr<RunningApplication> activated;
};

/// Keeps what would be pressed; tests say what the user holds and what the clipboard answers.
class KeptChords : public ChordPoster
{
public:
    using ChordPoster::ChordPoster;

    bool isProcessTrusted() const override { return true; }

    bool isHeld = false;
    int ignoredCount = 0;
    int cancelCount = 0;
    std::function<void(bool isTaken)> answer;
    Chords pressed;

private:
    bool isKeyHeld() override { return isHeld; }
    void ignoreHeldKeys() override
    {
        ++ignoredCount;
        isHeld = false;
    }
    void pressKeys(PasteChord chord) override { pressed.push_back(chord); }
    void takePrimaryText(std::function<void(bool isTaken)> onDone) override { answer = std::move(onDone); }
    void cancelPrimaryText() override { ++cancelCount; }
};

class ChordPosterTest : public ::testing::Test
{
protected:
    ChordPosterTest() { bringToFront("org.example.Editor"); }

    std::shared_ptr<FakeWorkspace::Application> bringToFront(const char *identifier)
    {
        return m_workspace.bringToFront(QString::fromLatin1(identifier), QString::fromLatin1(identifier), -1);
    }
    void paste()
    {
        for (const KeyMotion motion : {KeyMotion::Down, KeyMotion::Up})
            m_poster->post(EventTapLocation::AnnotatedSession, {9, motion, EventFlagCommand});
    }

    ActivatingWorkspace &workspace() { return m_workspace; }
    ManualMainQueue &queue() { return m_queue; }
    KeptChords &poster() { return *m_poster; }
    const Chords &pressed() { return m_poster->pressed; }
    void endPoster() { m_poster.reset(); }

private:
    ActivatingWorkspace m_workspace;
    ManualMainQueue m_queue;
    std::unique_ptr<KeptChords> m_poster = std::make_unique<KeptChords>(m_queue, m_workspace);
};

} // namespace

TEST_F(ChordPosterTest, TheProgramInFrontDecidesOnTheChord)
{
    paste();
    bringToFront("foot");
    paste();
    EXPECT_EQ(pressed(), Chords({PasteChord::ControlV, PasteChord::ControlShiftV}));
}

TEST_F(ChordPosterTest, NobodyInFrontGetsControlV)
{
    workspace().leaveNobodyInFront();
    paste();
    EXPECT_EQ(pressed(), Chords({PasteChord::ControlV}));
}

TEST_F(ChordPosterTest, AChordIsCompleteWithItsRelease)
{
    poster().post(EventTapLocation::AnnotatedSession, {9, KeyMotion::Up, EventFlagCommand});
    poster().post(EventTapLocation::AnnotatedSession, {9, KeyMotion::Down, EventFlagCommand});
    EXPECT_TRUE(pressed().empty());
    poster().post(EventTapLocation::AnnotatedSession, {9, KeyMotion::Up, EventFlagCommand});
    EXPECT_EQ(pressed().size(), 1U);
}

TEST_F(ChordPosterTest, OtherEventsAreDropped)
{
    for (const KeyMotion motion : {KeyMotion::Down, KeyMotion::Up}) {
        poster().post(EventTapLocation::AnnotatedSession, {9, motion, 0});
        poster().post(EventTapLocation::AnnotatedSession, {0, motion, EventFlagCommand});
    }
    queue().advanceBy(3s);
    EXPECT_TRUE(pressed().empty());
}

TEST_F(ChordPosterTest, WaitsForTheReleaseOfHeldKeys)
{
    poster().isHeld = true;
    paste();
    queue().advanceBy(1s);
    EXPECT_TRUE(pressed().empty());
    poster().isHeld = false;
    queue().advanceBy(10ms);
    EXPECT_EQ(pressed().size(), 1U);
    EXPECT_EQ(poster().ignoredCount, 0);
}

TEST_F(ChordPosterTest, TakesAKeyThatIsDownForTwoSecondsForStuck)
{
    poster().isHeld = true;
    paste();
    queue().advanceBy(1990ms);
    EXPECT_TRUE(pressed().empty());
    queue().advanceBy(10ms);
    EXPECT_EQ(pressed().size(), 1U);
    EXPECT_EQ(poster().ignoredCount, 1);
}

TEST_F(ChordPosterTest, PostsEachOfSeveralPastesThatWait)
{
    poster().isHeld = true;
    paste();
    paste();
    poster().isHeld = false;
    queue().advanceBy(10ms);
    EXPECT_EQ(pressed().size(), 2U);
}

TEST_F(ChordPosterTest, PostsAtOnceToTheActivatedProgramInFront)
{
    workspace().activated = bringToFront("org.example.Target");
    paste();
    EXPECT_EQ(pressed().size(), 1U);
}

TEST_F(ChordPosterTest, GivesAProgramThatComesLateAMomentToTakeTheKeyboard)
{
    const auto target = bringToFront("foot");
    bringToFront("org.example.Other");
    workspace().activated = target;
    paste();
    queue().advanceBy(500ms);
    EXPECT_TRUE(pressed().empty());
    workspace().bringToFront(target);
    queue().advanceBy(40ms);
    EXPECT_TRUE(pressed().empty());
    queue().advanceBy(60ms);
    EXPECT_EQ(pressed(), Chords({PasteChord::ControlShiftV}));
}

TEST_F(ChordPosterTest, PostsNothingWhereTheActivatedProgramDoesNotCome)
{
    const auto target = bringToFront("org.example.Target");
    bringToFront("org.example.Other");
    workspace().activated = target;
    CapturedConsole console;
    paste();
    queue().advanceBy(1990ms);
    EXPECT_EQ(console.output(), "");
    queue().advanceBy(10ms);
    EXPECT_EQ(console.output(), NotInFront);
    workspace().bringToFront(target);
    queue().advanceBy(3s);
    EXPECT_TRUE(pressed().empty());
}

TEST_F(ChordPosterTest, TheNextChordEndsTheWaitForAProgramThatIsNotInFront)
{
    const auto target = bringToFront("org.example.Target");
    bringToFront("foot");
    workspace().activated = target;
    CapturedConsole console;
    paste();
    paste();
    queue().advanceBy(10ms);
    EXPECT_EQ(pressed(), Chords({PasteChord::ControlShiftV}));
    EXPECT_EQ(console.output(), NotInFront);
}

TEST_F(ChordPosterTest, AnActivationCountsForOneChord)
{
    workspace().activated = bringToFront("org.example.Target");
    paste();
    bringToFront("foot");
    paste();
    EXPECT_EQ(pressed(), Chords({PasteChord::ControlV, PasteChord::ControlShiftV}));
}

TEST_F(ChordPosterTest, PostsShiftInsertOnceThePrimarySelectionHasTheText)
{
    bringToFront("xterm");
    paste();
    ASSERT_TRUE(poster().answer);
    EXPECT_TRUE(pressed().empty());
    poster().answer(true);
    EXPECT_EQ(pressed(), Chords({PasteChord::ShiftInsert}));
}

TEST_F(ChordPosterTest, PostsNoShiftInsertWithoutAText)
{
    bringToFront("xterm");
    paste();
    ASSERT_TRUE(poster().answer);
    poster().answer(false);
    bringToFront("org.example.Editor");
    paste();
    EXPECT_EQ(pressed(), Chords({PasteChord::ControlV}));
    EXPECT_EQ(poster().cancelCount, 0);
}

TEST_F(ChordPosterTest, GivesTheClipboardASecond)
{
    bringToFront("xterm");
    paste();
    queue().advanceBy(999ms);
    EXPECT_EQ(poster().cancelCount, 0);
    queue().advanceBy(1ms);
    EXPECT_EQ(poster().cancelCount, 1);
    // An answer that comes after all counts for nothing, not even while the next one is awaited.
    const auto late = poster().answer;
    paste();
    late(true);
    EXPECT_TRUE(pressed().empty());
    poster().answer(true);
    EXPECT_EQ(pressed(), Chords({PasteChord::ShiftInsert}));
    queue().advanceBy(3s);
    EXPECT_EQ(poster().cancelCount, 1);
    EXPECT_EQ(pressed().size(), 1U);
}

TEST_F(ChordPosterTest, AChordWaitsForTheOneThatWaitsForTheClipboard)
{
    bringToFront("xterm");
    paste();
    bringToFront("org.example.Editor");
    paste();
    queue().advanceBy(100ms);
    EXPECT_TRUE(pressed().empty());
    poster().answer(true);
    queue().drain();
    EXPECT_EQ(pressed(), Chords({PasteChord::ShiftInsert, PasteChord::ControlV}));
}

TEST_F(ChordPosterTest, WhatWaitsGoesWithThePoster)
{
    poster().isHeld = true;
    workspace().activated = workspace().frontmostApplication();
    paste();
    const std::weak_ptr<RunningApplication> awaited = workspace().frontmostApplication();
    bringToFront("org.example.Other");
    EXPECT_FALSE(awaited.expired());
    endPoster();
    EXPECT_TRUE(awaited.expired());
    // Nobody is there whom the rounds that were due could touch.
    queue().advanceBy(3s);
}

TEST_F(ChordPosterTest, ThereIsNoEventForACodeOfNoKey)
{
    EXPECT_EQ(poster().createKeyboardEvent(nullptr, 9999, KeyMotion::Down), nullptr);
    EXPECT_NE(poster().createKeyboardEvent(nullptr, 9, KeyMotion::Down), nullptr);
    EXPECT_TRUE(poster().isProcessTrustedWithPrompt());
}
