#include "fakes/FakeWorkspace.h"
#include "fakes/ManualMainQueue.h"
#include "platform/x11/X11Backends.h"
#include "support/CapturedConsole.h"
#include "support/KeyRobot.h"
#include "support/SelectionOwner.h"
#include "support/SelectionRequestor.h"
#include "support/TestProgram.h"
#include "support/Waiting.h"
#include "support/XServer.h"

#include <linux/input-event-codes.h>

#include <gtest/gtest.h>

namespace
{

using Offer = SelectionOwner::Offer;

using std::chrono::milliseconds;

constexpr int XkbOffset = 8;
// Without Mod5: the server sets it for plain clients while another group than the first is active.
constexpr int ModifierBits = 0x7f;
constexpr int DvorakV = KEY_DOT;

/// A program with the keyboard focus, on a server of its own; time is the test's.
class X11EventPosterTest : public ::testing::Test
{
protected:
    X11EventPosterTest()
    {
        m_program.show(TestProgram::Focus::Takes);
        m_workspace.bringToFront(QStringLiteral("Editor"), QStringLiteral("org.example.Editor"), -1);
    }

    void paste()
    {
        for (const KeyMotion motion : {KeyMotion::Down, KeyMotion::Up}) {
            auto event = m_poster->createKeyboardEvent(nullptr, 9, motion);
            event->flags = EventFlagCommand;
            m_poster->post(EventTapLocation::AnnotatedSession, *event);
        }
    }

    void focusOn(const char *identifier)
    {
        m_workspace.bringToFront(QString::fromLatin1(identifier), QString::fromLatin1(identifier), -1);
    }

    /// Makes another program hold the key with the modifiers (of the core protocol) as its hot key.
    ::testing::AssertionResult isHeldElsewhere(int evdevCode, int modifiers)
    {
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(m_other->get(),
            xcb_grab_key_checked(m_other->get(), 0, m_other->root(), static_cast<uint16_t>(modifiers),
                static_cast<xcb_keycode_t>(evdevCode + XkbOffset), XCB_GRAB_MODE_ASYNC,
                XCB_GRAB_MODE_ASYNC)));
        return error ? ::testing::AssertionFailure() << "refused" : ::testing::AssertionSuccess();
    }

    /// Waits until a key beyond the modifiers arrives, and says whether it is the chord.
    ::testing::AssertionResult arrives(int evdevCode, int modifiers)
    {
        const auto last = [&]() -> const TestProgram::KeyPress * {
            for (const TestProgram::KeyPress &key : program().keyPresses()) {
                if (key.keyCode != KEY_LEFTCTRL + XkbOffset && key.keyCode != KEY_LEFTSHIFT + XkbOffset)
                    return &key;
            }
            return nullptr;
        };
        if (!waitUntil([&] { return last() != nullptr; }))
            return ::testing::AssertionFailure() << "nothing arrived";
        const TestProgram::KeyPress key = *last();
        m_program.forgetKeyPresses();
        if (key.keyCode == evdevCode + XkbOffset && (key.state & ModifierBits) == modifiers)
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure()
            << "key code " << key.keyCode << " with modifiers " << (key.state & ModifierBits);
    }

    TestProgram &program() { return m_program; }
    KeyRobot &robot() { return m_robot; }
    ManualMainQueue &queue() { return m_queue; }
    EventPoster &poster() { return *m_poster; }
    void endPoster() { m_poster.reset(); }

private:
    XServer m_server;
    KeyRobot m_robot;
    TestProgram m_program{"editor", "Editor"};
    FakeWorkspace m_workspace;
    ManualMainQueue m_queue;
    std::unique_ptr<EventPoster> m_poster = platform::makeX11EventPoster(m_queue, m_workspace);
    std::unique_ptr<X11Connection> m_other = X11Connection::open();
};

TEST_F(X11EventPosterTest, PostsControlVAndReleasesAll)
{
    paste();
    EXPECT_TRUE(arrives(KEY_V, XCB_MOD_MASK_CONTROL));
    EXPECT_TRUE(waitUntil([&] { return program().keyReleaseCount() == 2; }));
}

TEST_F(X11EventPosterTest, PostsControlShiftVToATerminal)
{
    focusOn("org.gnome.Terminal");
    paste();
    EXPECT_TRUE(arrives(KEY_V, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT));
}

TEST_F(X11EventPosterTest, PostsShiftInsertWithTheClipboardsTextInPrimary)
{
    const QByteArray text = "gr\xc3\xbc\xc3\x9f dich";
    SelectionOwner clipboard(Offer{{"UTF8_STRING", text}});
    clipboard.own();
    focusOn("XTerm");
    paste();
    EXPECT_TRUE(arrives(KEY_INSERT, XCB_MOD_MASK_SHIFT));
    SelectionRequestor requestor("PRIMARY");
    EXPECT_EQ(requestor.paste("UTF8_STRING").bytes, text);
    EXPECT_EQ(requestor.paste("TEXT").bytes, text);
    EXPECT_EQ(requestor.paste("TEXT").type, "UTF8_STRING");
    EXPECT_EQ(requestor.paste("STRING").bytes, "gr\xfc\xdf dich");
    EXPECT_TRUE(requestor.paste("image/png").isRefused);
    EXPECT_TRUE(requestor.targets().contains("UTF8_STRING"));
    EXPECT_FALSE(clipboard.hasLost());
}

TEST_F(X11EventPosterTest, ServesALargePrimaryIncrementally)
{
    const QByteArray text(20'000'000, 'x');
    SelectionOwner clipboard(Offer{{"UTF8_STRING", {text, OfferedValue::Delivery::Incremental}}});
    clipboard.own();
    focusOn("XTerm");
    paste();
    ASSERT_TRUE(arrives(KEY_INSERT, XCB_MOD_MASK_SHIFT));
    SelectionRequestor requestor("PRIMARY");
    const auto reply = requestor.paste("UTF8_STRING");
    EXPECT_TRUE(reply.wasIncremental);
    EXPECT_EQ(reply.bytes, text);
    SelectionRequestor several("PRIMARY");
    several.requestMultiple({"UTF8_STRING", "STRING", "image/png"});
    ASSERT_TRUE(waitUntil([&] { return several.hasMultiple(); }));
    EXPECT_EQ(several.reply("STRING")->bytes.size(), text.size());
    EXPECT_TRUE(several.reply("image/png")->isRefused);
}

TEST_F(X11EventPosterTest, GivesPrimaryUpToAnotherProgram)
{
    SelectionOwner clipboard(Offer{{"UTF8_STRING", "pasted"}});
    clipboard.own();
    focusOn("XTerm");
    paste();
    ASSERT_TRUE(arrives(KEY_INSERT, XCB_MOD_MASK_SHIFT));
    SelectionOwner other(Offer{{"UTF8_STRING", "selected"}}, "PRIMARY");
    other.own();
    SelectionRequestor requestor("PRIMARY");
    EXPECT_EQ(requestor.paste("UTF8_STRING").bytes, "selected");
    EXPECT_FALSE(other.hasLost());
}

TEST_F(X11EventPosterTest, PostsNothingWherePrimaryWouldBeSomethingElse)
{
    SelectionOwner selected(Offer{{"UTF8_STRING", "selected"}}, "PRIMARY");
    selected.own();
    SelectionOwner picture(Offer{{"image/png", "png"}});
    picture.own();
    focusOn("XTerm");
    paste();
    ASSERT_TRUE(waitUntil([&] { return picture.requests().contains("UTF8_STRING"); }));
    // The next chord comes after the dropped one.
    focusOn("org.example.Editor");
    paste();
    ASSERT_TRUE(waitUntil([&] {
        queue().drain();
        return !program().keyPresses().empty();
    }));
    EXPECT_TRUE(arrives(KEY_V, XCB_MOD_MASK_CONTROL));
    EXPECT_FALSE(selected.hasLost());
}

TEST_F(X11EventPosterTest, GivesAClipboardThatDoesNotAnswerASecond)
{
    SelectionOwner hanging(Offer{{"UTF8_STRING", {"late", OfferedValue::Delivery::Never}}});
    hanging.own();
    focusOn("XTerm");
    paste();
    ASSERT_TRUE(waitUntil([&] { return hanging.requests().contains("UTF8_STRING"); }));
    queue().advanceBy(milliseconds(1000));
    focusOn("org.example.Editor");
    paste();
    EXPECT_TRUE(arrives(KEY_V, XCB_MOD_MASK_CONTROL));
}

TEST_F(X11EventPosterTest, FindsTheKeyByItsSymbol)
{
    ASSERT_TRUE(
        robot().setLayout({QStringLiteral("us"), QStringLiteral("-variant"), QStringLiteral("dvorak")}));
    paste();
    EXPECT_TRUE(arrives(DvorakV, XCB_MOD_MASK_CONTROL));
    ASSERT_TRUE(robot().setLayout({QStringLiteral("de"), QStringLiteral("-variant"), QStringLiteral("")}));
    paste();
    EXPECT_TRUE(arrives(KEY_V, XCB_MOD_MASK_CONTROL));
}

TEST_F(X11EventPosterTest, FindsTheKeyInTheActiveGroup)
{
    ASSERT_TRUE(
        robot().setLayout({QStringLiteral("us,us"), QStringLiteral("-variant"), QStringLiteral(",dvorak")}));
    robot().lockGroup(1);
    paste();
    EXPECT_TRUE(arrives(DvorakV, XCB_MOD_MASK_CONTROL));
    robot().lockGroup(0);
    paste();
    EXPECT_TRUE(arrives(KEY_V, XCB_MOD_MASK_CONTROL));
}

TEST_F(X11EventPosterTest, UsesTheLatinGroupsKeyUnderACyrillicOne)
{
    ASSERT_TRUE(
        robot().setLayout({QStringLiteral("us,ru"), QStringLiteral("-variant"), QStringLiteral("dvorak,")}));
    robot().lockGroup(1);
    paste();
    EXPECT_TRUE(arrives(DvorakV, XCB_MOD_MASK_CONTROL));
}

TEST_F(X11EventPosterTest, PostsShiftInsertWhereNoLayoutHasTheLetter)
{
    ASSERT_TRUE(robot().setLayout({QStringLiteral("ru"), QStringLiteral("-variant"), QStringLiteral("")}));
    paste();
    EXPECT_TRUE(arrives(KEY_INSERT, XCB_MOD_MASK_SHIFT));
    SelectionOwner clipboard(Offer{{"UTF8_STRING", "pasted"}});
    clipboard.own();
    focusOn("org.gnome.Terminal");
    paste();
    EXPECT_TRUE(arrives(KEY_INSERT, XCB_MOD_MASK_SHIFT));
    SelectionRequestor requestor("PRIMARY");
    EXPECT_EQ(requestor.paste("UTF8_STRING").bytes, "pasted");
}

TEST_F(X11EventPosterTest, WaitsForTheReleaseOfHeldKeys)
{
    robot().down(KEY_LEFTMETA);
    robot().down(KEY_LEFTSHIFT);
    ASSERT_TRUE(waitUntil([&] { return program().keyPresses().size() == 2; }));
    program().forgetKeyPresses();
    paste();
    queue().advanceBy(milliseconds(500));
    robot().up(KEY_LEFTSHIFT);
    queue().advanceBy(milliseconds(500));
    robot().up(KEY_LEFTMETA);
    // Nothing but those two has arrived so far.
    ASSERT_TRUE(waitUntil([&] { return program().keyReleaseCount() == 2; }));
    for (const TestProgram::KeyPress &key : program().keyPresses())
        EXPECT_NE(key.keyCode, KEY_V + XkbOffset);
    program().forgetKeyPresses();
    queue().advanceBy(milliseconds(10));
    EXPECT_TRUE(arrives(KEY_V, XCB_MOD_MASK_CONTROL));
}

TEST_F(X11EventPosterTest, WaitsForAHeldKeyThatIsNoModifier)
{
    robot().down(KEY_V);
    ASSERT_TRUE(waitUntil([&] { return program().keyPresses().size() == 1; }));
    program().forgetKeyPresses();
    paste();
    queue().advanceBy(milliseconds(100));
    robot().up(KEY_V);
    ASSERT_TRUE(waitUntil([&] { return program().keyReleaseCount() == 1; }));
    program().forgetKeyPresses();
    queue().advanceBy(milliseconds(10));
    EXPECT_TRUE(arrives(KEY_V, XCB_MOD_MASK_CONTROL));
}

TEST_F(X11EventPosterTest, PostsAfterTwoSecondsAllTheSameAndTakesTheKeyForStuck)
{
    robot().down(KEY_F12);
    ASSERT_TRUE(waitUntil([&] { return program().keyPresses().size() == 1; }));
    program().forgetKeyPresses();
    paste();
    queue().advanceBy(milliseconds(1990));
    // Whatever had been posted by now would arrive before this key.
    robot().chord({KEY_A});
    ASSERT_TRUE(waitUntil([&] { return program().keyReleaseCount() == 1; }));
    for (const TestProgram::KeyPress &key : program().keyPresses())
        EXPECT_TRUE(key.keyCode == KEY_F12 + XkbOffset || key.keyCode == KEY_A + XkbOffset) << key.keyCode;
    program().forgetKeyPresses();
    queue().advanceBy(milliseconds(20));
    EXPECT_TRUE(arrives(KEY_V, XCB_MOD_MASK_CONTROL));
    paste();
    EXPECT_TRUE(arrives(KEY_V, XCB_MOD_MASK_CONTROL));
    robot().up(KEY_F12);
}

TEST_F(X11EventPosterTest, KeepsLockedModifiersOutOfTheWait)
{
    robot().lockModifiers(XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2);
    paste();
    EXPECT_TRUE(arrives(KEY_V, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2));
    robot().lockModifiers(0);
}

TEST_F(X11EventPosterTest, PostsEachOfSeveralPastesThatWait)
{
    robot().down(KEY_LEFTMETA);
    paste();
    paste();
    robot().up(KEY_LEFTMETA);
    queue().advanceBy(milliseconds(10));
    // Super, and twice Ctrl and V.
    EXPECT_TRUE(waitUntil([&] { return program().keyReleaseCount() == 5; }));
}

TEST_F(X11EventPosterTest, DropsWhatWaitsWhenItEnds)
{
    robot().down(KEY_LEFTMETA);
    paste();
    endPoster();
    robot().up(KEY_LEFTMETA);
    queue().advanceBy(milliseconds(3000));
    robot().chord({KEY_A});
    ASSERT_TRUE(waitUntil([&] { return program().keyReleaseCount() == 2; }));
    for (const TestProgram::KeyPress &key : program().keyPresses())
        EXPECT_NE(key.keyCode, KEY_V + XkbOffset);
}

TEST_F(X11EventPosterTest, DropsEventsThatAreNoPaste)
{
    poster().post(EventTapLocation::AnnotatedSession, {9, KeyMotion::Down, 0});
    poster().post(EventTapLocation::AnnotatedSession, {9, KeyMotion::Up, 0});
    poster().post(EventTapLocation::AnnotatedSession, {9, KeyMotion::Up, EventFlagCommand});
    poster().post(EventTapLocation::AnnotatedSession, {0, KeyMotion::Down, EventFlagCommand});
    robot().chord({KEY_A});
    ASSERT_TRUE(waitUntil([&] { return program().keyReleaseCount() == 1; }));
    EXPECT_EQ(program().keyPresses().size(), 1U);
}

TEST_F(X11EventPosterTest, PostsShiftInsertWhereAProgramHoldsControlVAsAHotKey)
{
    ASSERT_TRUE(isHeldElsewhere(KEY_V, XCB_MOD_MASK_CONTROL));
    paste();
    EXPECT_TRUE(arrives(KEY_INSERT, XCB_MOD_MASK_SHIFT));
}

TEST_F(X11EventPosterTest, PostsShiftInsertWhereAProgramHoldsATerminalsChordAsAHotKey)
{
    SelectionOwner clipboard(Offer{{"UTF8_STRING", "pasted"}});
    clipboard.own();
    ASSERT_TRUE(isHeldElsewhere(KEY_V, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT));
    focusOn("org.gnome.Terminal");
    paste();
    EXPECT_TRUE(arrives(KEY_INSERT, XCB_MOD_MASK_SHIFT));
    SelectionRequestor requestor("PRIMARY");
    EXPECT_EQ(requestor.paste("UTF8_STRING").bytes, "pasted");
}

TEST_F(X11EventPosterTest, FindsAHotKeyThatIsHeldWithNumLockOnly)
{
    robot().lockModifiers(XCB_MOD_MASK_2);
    ASSERT_TRUE(isHeldElsewhere(KEY_V, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_2));
    paste();
    EXPECT_TRUE(arrives(KEY_INSERT, XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_2));
    robot().lockModifiers(0);
    paste();
    EXPECT_TRUE(arrives(KEY_V, XCB_MOD_MASK_CONTROL));
}

TEST_F(X11EventPosterTest, PostsNothingWhereBothChordsAreHeldAsHotKeys)
{
    CapturedConsole console;
    ASSERT_TRUE(isHeldElsewhere(KEY_V, XCB_MOD_MASK_CONTROL));
    ASSERT_TRUE(isHeldElsewhere(KEY_INSERT, XCB_MOD_MASK_SHIFT));
    paste();
    EXPECT_EQ(console.output(), "[Larkspool] No paste keys: a program holds them as a hot key\n");
    robot().chord({KEY_A});
    ASSERT_TRUE(waitUntil([&] { return program().keyReleaseCount() == 1; }));
    EXPECT_EQ(program().keyPresses().size(), 1U);
}

TEST_F(X11EventPosterTest, LeavesTheChordFreeForOthers)
{
    paste();
    ASSERT_TRUE(arrives(KEY_V, XCB_MOD_MASK_CONTROL));
    EXPECT_TRUE(isHeldElsewhere(KEY_V, XCB_MOD_MASK_CONTROL));
}

/// Two programs without a window manager, and the workspace that activates them.
class X11EventPosterActivationTest : public ::testing::Test
{
protected:
    X11EventPosterActivationTest()
    {
        m_target->show(TestProgram::Focus::Takes);
        m_application = m_workspace->frontmostApplication();
        m_other.show(TestProgram::Focus::Takes);
    }

    void paste()
    {
        for (const KeyMotion motion : {KeyMotion::Down, KeyMotion::Up})
            m_poster->post(EventTapLocation::AnnotatedSession, {9, motion, EventFlagCommand});
    }

    /// The first key beyond Control that the program has got, or 0.
    static int firstKey(const TestProgram &program)
    {
        for (const TestProgram::KeyPress &key : program.keyPresses()) {
            if (key.keyCode != KEY_LEFTCTRL + XkbOffset)
                return key.keyCode - XkbOffset;
        }
        return 0;
    }

    /// Lets the time pass, and with it what is on the wire.
    void advanceBy(milliseconds time) { m_queue.advanceBy(time); }
    /// Whether the other program has got nothing; asked by a key that would come after all others.
    bool hasOtherGotNothing()
    {
        m_robot.chord({KEY_A});
        return waitUntil([&] { return m_other.keyReleaseCount() > 0; }) && firstKey(m_other) == KEY_A;
    }

    TestProgram &target() { return *m_target; }
    TestProgram &other() { return m_other; }
    RunningApplication &application() { return *m_application; }
    void endTarget() { m_target.reset(); }

private:
    XServer m_server;
    KeyRobot m_robot;
    std::unique_ptr<TestProgram> m_target = std::make_unique<TestProgram>("target", "Target", 5'000'000);
    TestProgram m_other{"other", "Other", 5'000'001};
    std::unique_ptr<Workspace> m_workspace = platform::makeX11Workspace();
    std::shared_ptr<RunningApplication> m_application;
    ManualMainQueue m_queue;
    std::unique_ptr<EventPoster> m_poster = platform::makeX11EventPoster(m_queue, *m_workspace);
};

TEST_F(X11EventPosterActivationTest, PostsAtOnceToAProgramThatIsInFront)
{
    application().activate();
    ASSERT_TRUE(waitUntil([&] { return application().isActive(); }));
    paste();
    EXPECT_TRUE(waitUntil([&] { return firstKey(target()) == KEY_V; }));
}

TEST_F(X11EventPosterActivationTest, WaitsForAProgramThatIsNotInFrontYet)
{
    application().activate();
    other().show(TestProgram::Focus::Takes);
    paste();
    advanceBy(milliseconds(1500));
    target().show(TestProgram::Focus::Takes);
    advanceBy(milliseconds(100));
    EXPECT_TRUE(waitUntil([&] { return firstKey(target()) == KEY_V; }));
    EXPECT_EQ(other().keyPresses().size(), 0U);
}

TEST_F(X11EventPosterActivationTest, GivesAProgramThatCameLateAMomentToTakeTheKeyboard)
{
    application().activate();
    other().show(TestProgram::Focus::Takes);
    paste();
    target().show(TestProgram::Focus::Takes);
    advanceBy(milliseconds(30));
    // The window manager's announcement ran ahead of the keyboard.
    other().show(TestProgram::Focus::Takes);
    advanceBy(milliseconds(30));
    EXPECT_TRUE(hasOtherGotNothing());
}

TEST_F(X11EventPosterActivationTest, PostsNothingIntoAnotherProgramsWindow)
{
    CapturedConsole console;
    endTarget();
    application().activate();
    paste();
    advanceBy(milliseconds(2010));
    EXPECT_EQ(console.output(), "[Larkspool] No paste keys: the program that they are for is not in front\n");
    EXPECT_TRUE(hasOtherGotNothing());
}

TEST_F(X11EventPosterActivationTest, DropsTheChordThatWaitsWhenTheNextOneIsPosted)
{
    CapturedConsole console;
    endTarget();
    application().activate();
    paste();
    paste();
    advanceBy(milliseconds(10));
    EXPECT_TRUE(waitUntil([&] { return firstKey(other()) == KEY_V; }));
    EXPECT_NE(console.output(), "");
}

TEST_F(X11EventPosterActivationTest, AnActivationCountsForOneChord)
{
    application().activate();
    ASSERT_TRUE(waitUntil([&] { return application().isActive(); }));
    paste();
    ASSERT_TRUE(waitUntil([&] { return firstKey(target()) == KEY_V; }));
    other().show(TestProgram::Focus::Takes);
    paste();
    EXPECT_TRUE(waitUntil([&] { return firstKey(other()) == KEY_V; }));
}

} // namespace
