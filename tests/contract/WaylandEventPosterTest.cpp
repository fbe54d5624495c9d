#include "fakes/FakeWorkspace.h"
#include "fakes/ManualMainQueue.h"
#include "platform/wayland/WaylandBackends.h"
#include "support/CapturedConsole.h"
#include "support/ClipboardOwner.h"
#include "support/Compositor.h"
#include "support/Waiting.h"
#include "support/WaylandProgram.h"

#include <QCoreApplication>

#include <linux/input-event-codes.h>

#include <gtest/gtest.h>

namespace
{

using Kind = Compositor::Kind;
using Access = Compositor::Access;
using Delivery = PipedValue::Delivery;

using std::chrono::milliseconds;

constexpr char Text[] = "text/plain;charset=utf-8";
constexpr int DvorakV = KEY_DOT;
constexpr Qt::KeyboardModifiers ControlShift = Qt::ControlModifier | Qt::ShiftModifier;

void paste(EventPoster &poster)
{
    for (const KeyMotion motion : {KeyMotion::Down, KeyMotion::Up})
        poster.post(EventTapLocation::AnnotatedSession, {9, motion, EventFlagCommand});
}

bool isModifier(int evdevCode)
{
    return evdevCode == KEY_LEFTCTRL || evdevCode == KEY_LEFTSHIFT;
}

/// The keys beyond the modifiers that the program has got.
std::vector<WaylandProgram::Key> keysOf(const WaylandProgram &program)
{
    std::vector<WaylandProgram::Key> keys = program.keyPresses();
    std::erase_if(keys, [](const WaylandProgram::Key &key) { return isModifier(key.evdevCode); });
    return keys;
}

/// Waits until a key beyond the modifiers arrives, and says whether it is the chord, and all that came.
::testing::AssertionResult arrives(WaylandProgram &program, int evdevCode, Qt::KeyboardModifiers modifiers)
{
    if (!waitUntil([&] { return !keysOf(program).empty(); }))
        return ::testing::AssertionFailure() << "nothing arrived";
    // Every key of the chord comes up again.
    if (!waitUntil([&] { return program.keyReleaseCount() >= int(program.keyPresses().size()); }))
        return ::testing::AssertionFailure() << "keys are still down";
    const auto keys = keysOf(program);
    program.forgetKeys();
    if (keys.size() == 1 && keys.front().evdevCode == evdevCode && keys.front().modifiers == modifiers)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << keys.size() << " keys, the first " << keys.front().evdevCode
                                         << " with modifiers " << std::hex << keys.front().modifiers.toInt();
}

std::string compositorName(const ::testing::TestParamInfo<Kind> &info)
{
    return info.param == Kind::Sway ? "Sway" : "KWin";
}

/// A program with the keyboard focus, on a compositor of its own; time is the test's.
class WaylandEventPosterTest : public ::testing::TestWithParam<Kind>
{
protected:
    void SetUp() override
    {
        ASSERT_NE(m_poster, nullptr);
        focusOn("org.example.Editor");
        ASSERT_TRUE(m_program.open());
    }

    void paste() { ::paste(*m_poster); }
    void focusOn(const char *identifier)
    {
        m_workspace.bringToFront(QString::fromLatin1(identifier), QString::fromLatin1(identifier), -1);
    }

    /// A new program puts something on the clipboard, and the poster has heard of it.
    static std::unique_ptr<ClipboardOwner> copy(const ClipboardOwner::Offer &offer)
    {
        auto owner = ClipboardOwner::open();
        owner->own(offer);
        // Whoever comes now is answered after everybody else has been told.
        ClipboardOwner::open();
        QCoreApplication::processEvents();
        return owner;
    }

    Compositor &compositor() { return m_compositor; }
    WaylandProgram &program() { return m_program; }
    ManualMainQueue &queue() { return m_queue; }
    EventPoster &poster() { return *m_poster; }

private:
    Compositor m_compositor{GetParam()};
    FakeWorkspace m_workspace;
    ManualMainQueue m_queue;
    std::unique_ptr<EventPoster> m_poster = platform::makeWaylandEventPoster(m_queue, m_workspace);
    WaylandProgram m_program{"org.example.Editor"};
};

} // namespace

TEST_P(WaylandEventPosterTest, PostsControlVAndReleasesAll)
{
    paste();
    EXPECT_TRUE(arrives(program(), KEY_V, Qt::ControlModifier));
}

TEST_P(WaylandEventPosterTest, TheFirstKeyArrivesInAWindowThatHasJustCome)
{
    WaylandProgram other("org.example.Other");
    ASSERT_TRUE(other.open());
    paste();
    EXPECT_TRUE(arrives(other, KEY_V, Qt::ControlModifier));
    EXPECT_TRUE(program().keyPresses().empty());
}

TEST_P(WaylandEventPosterTest, PostsControlShiftVToATerminal)
{
    focusOn("foot");
    paste();
    EXPECT_TRUE(arrives(program(), KEY_V, ControlShift));
    focusOn("org.gnome.Terminal");
    paste();
    EXPECT_TRUE(arrives(program(), KEY_V, ControlShift));
    focusOn("org.example.Editor");
    paste();
    EXPECT_TRUE(arrives(program(), KEY_V, Qt::ControlModifier));
}

TEST_P(WaylandEventPosterTest, PostsShiftInsertWithTheClipboardsTextInPrimary)
{
    const auto clipboard = copy({{Text, "grüß dich"}});
    focusOn("XTerm");
    paste();
    EXPECT_TRUE(arrives(program(), KEY_INSERT, Qt::ShiftModifier));
    EXPECT_EQ(clipboard->pastePrimary(Text), "grüß dich");
    EXPECT_EQ(clipboard->pastePrimary("STRING"), "gr\xfc\xdf dich");
    EXPECT_FALSE(clipboard->hasLost());
}

TEST_P(WaylandEventPosterTest, PutsALargeTextIntoPrimary)
{
    const QByteArray text(10'000'000, 'x');
    const auto clipboard = copy({{Text, PipedValue(text)}});
    focusOn("XTerm");
    paste();
    EXPECT_TRUE(arrives(program(), KEY_INSERT, Qt::ShiftModifier));
    EXPECT_TRUE(clipboard->pastePrimary(Text) == text);
}

TEST_P(WaylandEventPosterTest, GivesPrimaryUpToAnotherProgram)
{
    const auto clipboard = copy({{Text, "pasted"}});
    focusOn("XTerm");
    paste();
    ASSERT_TRUE(arrives(program(), KEY_INSERT, Qt::ShiftModifier));
    const auto other = ClipboardOwner::open();
    other->ownPrimary({{Text, "selected"}});
    EXPECT_EQ(clipboard->pastePrimary(Text), "selected");
    EXPECT_FALSE(other->hasLost());
    paste();
    ASSERT_TRUE(arrives(program(), KEY_INSERT, Qt::ShiftModifier));
    EXPECT_EQ(other->pastePrimary(Text), "pasted");
}

TEST_P(WaylandEventPosterTest, PostsNothingWherePrimaryWouldBeSomethingElse)
{
    const auto selected = ClipboardOwner::open();
    selected->ownPrimary({{Text, "selected"}});
    const auto picture = copy({{"image/png", "png"}});
    focusOn("XTerm");
    paste();
    // The next chord comes after the dropped one.
    focusOn("org.example.Editor");
    paste();
    queue().drain();
    EXPECT_TRUE(arrives(program(), KEY_V, Qt::ControlModifier));
    EXPECT_FALSE(selected->hasLost());
}

TEST_P(WaylandEventPosterTest, GivesAClipboardThatDoesNotAnswerASecond)
{
    const auto hanging = copy({{Text, PipedValue("late", Delivery::Never)}});
    focusOn("XTerm");
    paste();
    ASSERT_TRUE(waitUntil([&] { return hanging->requests().contains(Text); }));
    queue().advanceBy(milliseconds(1000));
    focusOn("org.example.Editor");
    paste();
    EXPECT_TRUE(arrives(program(), KEY_V, Qt::ControlModifier));
    EXPECT_TRUE(waitUntil([&] { return hanging->isGivenUp(); }));
}

TEST_P(WaylandEventPosterTest, DropsEventsThatAreNoPaste)
{
    poster().post(EventTapLocation::AnnotatedSession, {9, KeyMotion::Down, 0});
    poster().post(EventTapLocation::AnnotatedSession, {9, KeyMotion::Up, 0});
    poster().post(EventTapLocation::AnnotatedSession, {9, KeyMotion::Up, EventFlagCommand});
    poster().post(EventTapLocation::AnnotatedSession, {0, KeyMotion::Down, EventFlagCommand});
    focusOn("foot");
    paste();
    EXPECT_TRUE(arrives(program(), KEY_V, ControlShift));
}

TEST_P(WaylandEventPosterTest, IsNotTrustedWhenTheCompositorIsGone)
{
    EXPECT_TRUE(poster().isProcessTrusted());
    compositor().end();
    EXPECT_TRUE(waitUntil([&] { return !poster().isProcessTrusted(); }));
}

INSTANTIATE_TEST_SUITE_P(
    Compositors, WaylandEventPosterTest, ::testing::Values(Kind::Sway, Kind::KWin), compositorName);

namespace
{

/// Two programs, of which the other is in front, and the workspace that activates them.
class WaylandEventPosterActivationTest : public ::testing::TestWithParam<Kind>
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_target->open());
        ASSERT_TRUE(waitUntil([this] { return m_workspace->frontmostApplication() != nullptr; }));
        m_application = m_workspace->frontmostApplication();
        ASSERT_TRUE(m_other.open());
        ASSERT_TRUE(waitUntil([this] { return !m_application->isActive(); }));
    }

    void paste() { ::paste(*m_poster); }
    void advanceBy(milliseconds time) { m_queue.advanceBy(time); }

    bool isInFront(const char *identifier)
    {
        const auto frontmost = m_workspace->frontmostApplication();
        return frontmost && frontmost->bundleIdentifier() == QString::fromLatin1(identifier);
    }

    WaylandProgram &target() { return *m_target; }
    WaylandProgram &other() { return m_other; }
    RunningApplication &application() { return *m_application; }
    /// Ends it, and waits until the workspace has heard of it.
    void endTarget()
    {
        m_target.reset();
        ASSERT_TRUE(waitUntil([this] { return m_compositor.windowCount() == 1; }));
        QCoreApplication::processEvents();
    }

private:
    Compositor m_compositor{GetParam()};
    std::unique_ptr<Workspace> m_workspace = platform::makeWaylandWorkspace();
    ManualMainQueue m_queue;
    std::unique_ptr<EventPoster> m_poster = platform::makeWaylandEventPoster(m_queue, *m_workspace);
    std::unique_ptr<WaylandProgram> m_target = std::make_unique<WaylandProgram>("org.example.Target");
    WaylandProgram m_other{"org.example.Other"};
    std::shared_ptr<RunningApplication> m_application;
};

} // namespace

TEST_P(WaylandEventPosterActivationTest, PostsToTheProgramThatWasActivated)
{
    application().activate();
    paste();
    EXPECT_TRUE(waitUntil([&] { return application().isActive(); }));
    advanceBy(milliseconds(100));
    EXPECT_TRUE(arrives(target(), KEY_V, Qt::ControlModifier));
    EXPECT_TRUE(other().keyPresses().empty());
}

TEST_P(WaylandEventPosterActivationTest, TheProgramInFrontDecidesOnTheChord)
{
    WaylandProgram terminal("foot");
    ASSERT_TRUE(terminal.open());
    // The compositor may tell its other clients a little later.
    ASSERT_TRUE(waitUntil([&] { return isInFront("foot"); }));
    paste();
    EXPECT_TRUE(arrives(terminal, KEY_V, ControlShift));
}

TEST_P(WaylandEventPosterActivationTest, PostsNothingIntoAnotherProgramsWindow)
{
    CapturedConsole console;
    endTarget();
    application().activate();
    paste();
    advanceBy(milliseconds(2010));
    EXPECT_EQ(console.output(), "[Larkspool] No paste keys: the program that they are for is not in front\n");
    // What had been posted before would arrive before this chord.
    paste();
    EXPECT_TRUE(arrives(other(), KEY_V, Qt::ControlModifier));
}

TEST_P(WaylandEventPosterActivationTest, AnActivationCountsForOneChord)
{
    application().activate();
    ASSERT_TRUE(waitUntil([&] { return application().isActive(); }));
    paste();
    EXPECT_TRUE(arrives(target(), KEY_V, Qt::ControlModifier));
    ASSERT_TRUE(other().open());
    paste();
    EXPECT_TRUE(arrives(other(), KEY_V, Qt::ControlModifier));
}

INSTANTIATE_TEST_SUITE_P(
    Compositors, WaylandEventPosterActivationTest, ::testing::Values(Kind::Sway, Kind::KWin), compositorName);

namespace
{

/// The session has no message bus, which would tell KWin's active layout.
class WithoutBus
{
public:
    WithoutBus()
    {
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qunsetenv("XDG_RUNTIME_DIR");
    }
    ~WithoutBus()
    {
        restore("DBUS_SESSION_BUS_ADDRESS", m_address);
        restore("XDG_RUNTIME_DIR", m_folder);
    }
    WithoutBus(const WithoutBus &) = delete;
    WithoutBus &operator=(const WithoutBus &) = delete;

private:
    static void restore(const char *name, const QByteArray &value)
    {
        if (!value.isNull())
            qputenv(name, value);
    }

    const QByteArray m_address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QByteArray m_folder = qgetenv("XDG_RUNTIME_DIR");
};

/// Whether Ctrl and the key arrive on KWin with the settings of its keyboard.
::testing::AssertionResult arrivesWithLayout(const char *settings, int evdevCode)
{
    const WithoutBus withoutBus;
    const Compositor kwin(Kind::KWin, Access::Open, {{"kxkbrc", settings}});
    const FakeWorkspace workspace;
    ManualMainQueue queue;
    const auto poster = platform::makeWaylandEventPoster(queue, workspace);
    WaylandProgram program("org.example.Editor");
    if (!poster || !program.open())
        return ::testing::AssertionFailure() << "no window or no poster";
    paste(*poster);
    return arrives(program, evdevCode, Qt::ControlModifier);
}

} // namespace

TEST(WaylandEventPosterLayoutTest, FindsTheKeyByItsSymbol)
{
    EXPECT_TRUE(arrivesWithLayout("[Layout]\nUse=true\nLayoutList=de\n", KEY_V));
    EXPECT_TRUE(arrivesWithLayout("[Layout]\nUse=true\nLayoutList=us\nVariantList=dvorak\n", DvorakV));
}

TEST(WaylandEventPosterLayoutTest, OfSeveralLayoutsTheFirstCountsWhereNobodyTells)
{
    EXPECT_TRUE(arrivesWithLayout("[Layout]\nUse=true\nLayoutList=us,us\nVariantList=,dvorak\n", KEY_V));
    EXPECT_TRUE(arrivesWithLayout("[Layout]\nUse=true\nLayoutList=us,us\nVariantList=dvorak,\n", DvorakV));
}

TEST(WaylandEventPosterLayoutTest, UsesTheLatinLayoutsKeyUnderACyrillicOne)
{
    EXPECT_TRUE(arrivesWithLayout("[Layout]\nUse=true\nLayoutList=ru,us\nVariantList=,dvorak\n", DvorakV));
}

TEST(WaylandEventPoster, ThereIsNoneWhereTheCompositorTakesNoKeys)
{
    const FakeWorkspace workspace;
    ManualMainQueue queue;
    for (const auto &[kind, access] :
        {std::pair(Kind::KWin, Access::Restricted), std::pair(Kind::Mutter, Access::Open)}) {
        const Compositor compositor(kind, access);
        ASSERT_TRUE(compositor.isRunning());
        EXPECT_EQ(platform::makeWaylandEventPoster(queue, workspace), nullptr);
    }
}
