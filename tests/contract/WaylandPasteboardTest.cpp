#include "fakes/FakeWorkspace.h"
#include "platform/ImageCodec.h"
#include "platform/linux/ClipboardTargets.h"
#include "platform/wayland/WaylandBackends.h"
#include "support/CapturedConsole.h"
#include "support/ClipboardOwner.h"
#include "support/Compositor.h"
#include "support/TestImages.h"
#include "support/Waiting.h"
#include "support/WaylandProgram.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>

using namespace std::chrono_literals;
using Delivery = PipedValue::Delivery;

namespace
{

constexpr char Text[] = "text/plain;charset=utf-8";

/// Pseudo-random ASCII: a piece in the wrong place shows.
QByteArray largeText(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    quint32 state = 12345;
    for (char &byte : bytes) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<char>('a' + (state >> 24U) % 26U);
    }
    return bytes;
}

/// A compositor of the test's own, a pasteboard on it, and any number of other programs.
class WaylandPasteboardFixture : public ::testing::Test
{
protected:
    WaylandPasteboardFixture(Compositor::Kind kind, Compositor::Access access)
        : m_compositor(kind, access)
    {
    }

    void SetUp() override { ASSERT_TRUE(m_compositor.isRunning()); }

    /// Time runs out by itself in no test that does not say so.
    static ClipboardLimits patientLimits()
    {
        ClipboardLimits limits;
        limits.noProgress = 1h;
        return limits;
    }

    void open(const ClipboardLimits &limits = patientLimits())
    {
        m_pasteboard = platform::makeWaylandPasteboard(limits);
        ASSERT_NE(m_pasteboard, nullptr);
    }

    Compositor &compositor() { return m_compositor; }
    Pasteboard &pasteboard() { return *m_pasteboard; }

    ClipboardOwner &newProgram(size_t seat = 0)
    {
        m_programs.push_back(ClipboardOwner::open(seat));
        return *m_programs.back();
    }
    /// A new program puts something on the clipboard.
    ClipboardOwner &copy(const ClipboardOwner::Offer &offer, size_t seat = 0)
    {
        ClipboardOwner &owner = newProgram(seat);
        owner.own(offer);
        return owner;
    }
    /// The program ends.
    void end(const ClipboardOwner &program)
    {
        std::erase_if(m_programs, [&](const auto &candidate) { return candidate.get() == &program; });
    }

    bool advances()
    {
        return waitUntil([this] { return pasteboard().advance(); }, 20s);
    }
    std::optional<QByteArray> text() { return pasteboard().data(PasteboardType::String); }
    /// The next content's text; nothing when no content comes, or it has none.
    std::optional<QByteArray> nextText() { return advances() ? text() : std::nullopt; }

    /// Own content, and the moment when others see it.
    void write(const QByteArray &string)
    {
        const ClipboardOwner &program = newProgram();
        const size_t before = program.history().size();
        pasteboard().clearContents();
        pasteboard().setString(string);
        ASSERT_TRUE(waitUntil([&] { return program.history().size() > before; }));
    }
    bool offers(const ClipboardOwner &program, const char *type)
    {
        return waitUntil([&] { return program.types().value_or(QByteArrayList()).contains(type); });
    }

private:
    Compositor m_compositor;
    std::unique_ptr<Pasteboard> m_pasteboard;
    std::vector<std::unique_ptr<ClipboardOwner>> m_programs;
};

/// Tells of its windows.
class WaylandPasteboardTest : public WaylandPasteboardFixture
{
protected:
    WaylandPasteboardTest()
        : WaylandPasteboardFixture(Compositor::Kind::Sway, Compositor::Access::Open)
    {
    }

    /// A program with a window puts a text on the clipboard, as a user has it done: by a key.
    void copyInWindow(WaylandProgram &program, const QByteArray &string)
    {
        FakeWorkspace workspace;
        EventLoopQueue queue;
        const auto keys = platform::makeWaylandEventPoster(queue, workspace);
        ASSERT_TRUE(program.open());
        for (const KeyMotion motion : {KeyMotion::Down, KeyMotion::Up})
            keys->post(EventTapLocation::AnnotatedSession, {9, motion, EventFlagCommand});
        ASSERT_TRUE(waitUntil([&] { return program.keyReleaseCount() >= 2; }));
        program.copy(string);
        ASSERT_EQ(nextText(), string);
    }
};

/// Tells nobody of its windows.
class SilentWaylandPasteboardTest : public WaylandPasteboardFixture
{
protected:
    SilentWaylandPasteboardTest()
        : WaylandPasteboardFixture(Compositor::Kind::KWin, Compositor::Access::Restricted)
    {
    }
};

/// The time that the other threads of this process have spent, in clock ticks.
qint64 ticksOfOtherThreads()
{
    qint64 ticks = 0;
    const QDir threads(QStringLiteral("/proc/self/task"));
    for (const QString &thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(threads.filePath(thread + QStringLiteral("/stat")));
        if (thread.toInt() == ::gettid() || !file.open(QIODevice::ReadOnly))
            continue;
        const QByteArray line = file.readAll();
        // The name, in parentheses, may hold anything. User and system time are fields 14 and 15 (proc(5)).
        const QByteArrayList fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
        ticks += fields.value(11).toLongLong() + fields.value(12).toLongLong();
    }
    return ticks;
}

} // namespace

TEST_F(WaylandPasteboardTest, TheContentAtTheStartIsCurrent)
{
    copy({{Text, "early"}});
    open();
    ASSERT_TRUE(waitUntil([&] { return text() == "early"; }));
    EXPECT_EQ(pasteboard().changeCount(), 0);
    EXPECT_FALSE(pasteboard().advance());
}

TEST_F(WaylandPasteboardTest, OpeningDoesNotWaitForTheOwnerAtTheStart)
{
    copy({{Text, PipedValue("never", Delivery::Never)}});
    open();
    EXPECT_FALSE(pasteboard().advance());
    copy({{Text, "next"}});
    EXPECT_EQ(nextText(), "next");
}

TEST_F(WaylandPasteboardTest, OneTextAndTheExtrasAreAskedFor)
{
    open();
    ClipboardOwner &owner =
        copy({{Text, "text"}, {"text/plain", "text"}, {"TEXT", "text"}, {"text/html", "<b>text</b>"}});
    EXPECT_EQ(nextText(), "text");
    ASSERT_TRUE(waitUntil([&] { return owner.requests().contains("text/html"); }));
    EXPECT_EQ(owner.requests(), QByteArrayList({Text, "text/html"}));
}

TEST_F(WaylandPasteboardTest, ATextIsServedInEveryEncoding)
{
    open();
    write("grüße, 世界");
    ClipboardOwner &program = newProgram();
    for (const char *const type : {Text, "text/plain", "UTF8_STRING", "TEXT"}) {
        EXPECT_TRUE(program.types()->contains(type)) << type;
        EXPECT_EQ(program.paste(type), "grüße, 世界") << type;
    }
    EXPECT_EQ(program.paste("STRING"),
        "gr\xfc\xdf"
        "e, ??");
    EXPECT_EQ(program.paste("image/png"), "");
}

TEST_F(WaylandPasteboardTest, ATextThatIsWrittenAfterOthersHaveSeenTheClearingIsServed)
{
    open();
    ClipboardOwner &program = newProgram();
    const size_t before = program.history().size();
    pasteboard().clearContents();
    ASSERT_TRUE(waitUntil([&] { return program.history().size() > before; }));
    EXPECT_FALSE(program.types()->contains(Text));
    pasteboard().setString("late");
    ASSERT_TRUE(offers(program, Text));
    EXPECT_EQ(program.paste(Text), "late");
}

TEST_F(WaylandPasteboardTest, ATextThatIsAddedAfterTheNextCopyDoesNotTakeTheClipboardBack)
{
    ClipboardLimits limits;
    limits.noProgress = 200ms;
    open(limits);
    write("own");
    ASSERT_TRUE(advances());
    const ClipboardOwner &next = copy({{Text, PipedValue("never", Delivery::Never)}});
    pasteboard().setString("late");
    // Whatever is done about the text is done by then.
    ASSERT_TRUE(waitUntil([&] { return next.isGivenUp(); }));
    EXPECT_FALSE(next.hasLost());
    EXPECT_EQ(text(), "late");
}

TEST_F(WaylandPasteboardTest, AnAddressIsServedWithoutAText)
{
    open();
    ClipboardOwner &program = newProgram();
    pasteboard().clearContents();
    pasteboard().writeObjects({PasteboardUrl{"https://example.org/ä"}});
    ASSERT_TRUE(offers(program, "text/uri-list"));
    EXPECT_FALSE(program.types()->contains(Text));
    EXPECT_EQ(program.paste("text/uri-list"), "https://example.org/ä\r\n");
}

TEST_F(WaylandPasteboardTest, AnImageIsServedAsItIsAndInOtherFormats)
{
    open();
    ClipboardOwner &program = newProgram();
    const QByteArray png = testimages::plain({20, 10}, Qt::darkGreen);
    pasteboard().clearContents();
    pasteboard().writeObjects({PasteboardImage{png}});
    ASSERT_TRUE(offers(program, "image/png"));
    EXPECT_FALSE(program.types()->contains(Text));
    EXPECT_EQ(program.paste("image/png"), png);
    for (const char *const type : {"image/jpeg", "image/bmp"}) {
        ASSERT_TRUE(program.types()->contains(type)) << type;
        const auto picture = image::decode(program.paste(type).value_or(QByteArray()));
        ASSERT_TRUE(picture.has_value()) << type;
        EXPECT_EQ(picture->size(), QSize(20, 10)) << type;
    }
}

TEST_F(WaylandPasteboardTest, ThirtyMegabytesComeWhole)
{
    open();
    const QByteArray large = largeText(30'000'000);
    copy({{Text, PipedValue(large)}});
    ASSERT_TRUE(advances());
    EXPECT_TRUE(text() == large);
}

TEST_F(WaylandPasteboardTest, ThirtyMegabytesGoWholeToTwoReaders)
{
    open();
    const QByteArray large = largeText(30'000'000);
    write(large);
    EXPECT_TRUE(newProgram().paste(Text) == large);
    EXPECT_TRUE(newProgram().paste("STRING") == large);
}

TEST_F(WaylandPasteboardTest, WhatIsOnItsWayToAReaderSurvivesTheNextCopy)
{
    open();
    const QByteArray large = largeText(5'000'000);
    write(large);
    ClipboardOwner &reader = newProgram();
    reader.stall(Text);
    ASSERT_TRUE(waitUntil([&] { return reader.hasStalledBytes(); }));
    copy({{Text, "next"}});
    ASSERT_TRUE(waitUntil([&] { return pasteboard().advance() && text() == "next"; }));
    EXPECT_TRUE(reader.takeStalled() == large);
}

TEST_F(WaylandPasteboardTest, AnOwnerThatNeverWritesIsGivenUp)
{
    ClipboardLimits limits;
    limits.noProgress = 200ms;
    open(limits);
    const ClipboardOwner &owner = copy({{Text, PipedValue("never", Delivery::Never)}});
    EXPECT_TRUE(waitUntil([&] { return owner.isGivenUp(); }));
    EXPECT_FALSE(pasteboard().advance());
    copy({{Text, "next"}});
    EXPECT_EQ(nextText(), "next");
}

TEST_F(WaylandPasteboardTest, HalfATextIsNone)
{
    ClipboardLimits limits;
    limits.noProgress = 200ms;
    open(limits);
    const ClipboardOwner &owner = copy({{Text, PipedValue("first half and second", Delivery::Stalled)}});
    EXPECT_TRUE(waitUntil([&] { return owner.isGivenUp(); }));
    EXPECT_FALSE(pasteboard().advance());
    copy({{Text, "next"}});
    EXPECT_EQ(nextText(), "next");
}

TEST_F(WaylandPasteboardTest, WhatCameBeforeTheOwnerHungIsKept)
{
    ClipboardLimits limits;
    limits.noProgress = 200ms;
    open(limits);
    copy({{Text, "text"}, {"image/png", PipedValue("", Delivery::Never)}});
    EXPECT_EQ(nextText(), "text");
    EXPECT_EQ(pasteboard().data(PasteboardType::Png), std::nullopt);
}

TEST_F(WaylandPasteboardTest, AnOwnerThatClosesThePipeAtOnceHasAnEmptyText)
{
    open();
    copy({{Text, PipedValue("", Delivery::ClosedAtOnce)}});
    EXPECT_EQ(nextText(), "");
}

TEST_F(WaylandPasteboardTest, AnOwnerThatDoesNotDeliverHoldsTheNextCopyBackForAMomentOnly)
{
    open();
    for (const Delivery delivery : {Delivery::Never, Delivery::Stalled}) {
        ClipboardOwner &owner = copy({{Text, PipedValue("first half and second", delivery)}});
        ASSERT_TRUE(waitUntil([&] { return owner.requests().contains(Text); }));
        copy({{Text, "next"}});
        EXPECT_EQ(nextText(), "next");
        EXPECT_FALSE(pasteboard().advance());
    }
}

TEST_F(WaylandPasteboardTest, AnOwnerThatHangsInAnExtraHoldsNothingBack)
{
    ClipboardLimits limits = patientLimits();
    limits.heldBackWithoutProgress = 1h;
    limits.heldBack = 1h;
    open(limits);
    copy({{Text, "text"}, {"text/html", PipedValue("", Delivery::Never)}});
    EXPECT_EQ(nextText(), "text");
    copy({{Text, "next"}});
    EXPECT_EQ(nextText(), "next");
}

TEST_F(WaylandPasteboardTest, OwnWritesDoNotWaitForAnOwnerThatNeverAnswers)
{
    open();
    ClipboardOwner &owner = copy({{Text, PipedValue("never", Delivery::Never)}});
    ASSERT_TRUE(waitUntil([&] { return owner.requests().contains(Text); }));
    write("own");
    EXPECT_EQ(newProgram().paste(Text), "own");
    EXPECT_EQ(nextText(), "own");
}

TEST_F(WaylandPasteboardTest, ALargeCopyIsNotLostToTheOneThatFollowsAtOnce)
{
    ClipboardLimits limits = patientLimits();
    limits.heldBackWithoutProgress = 20s;
    limits.heldBack = 60s;
    open(limits);
    const QByteArray large = largeText(8'000'000);
    ClipboardOwner &first = copy({{Text, PipedValue(large)}});
    ASSERT_TRUE(waitUntil([&] { return first.requests().contains(Text); }));
    copy({{Text, "small"}});
    ASSERT_TRUE(advances());
    EXPECT_TRUE(text() == large);
    EXPECT_EQ(nextText(), "small");
}

TEST_F(WaylandPasteboardTest, ATooLargeTextIsSkippedWithOneLine)
{
    ClipboardLimits limits = patientLimits();
    limits.target = 100000;
    CapturedConsole console;
    open(limits);
    const ClipboardOwner &large =
        copy({{Text, PipedValue(largeText(200001))}, {"UTF8_STRING", PipedValue(largeText(200001))}});
    ASSERT_TRUE(waitUntil([&] { return !large.requests().isEmpty() && large.hasWritten(); }));
    copy({{Text, PipedValue(largeText(100000))}});
    EXPECT_EQ(nextText(), largeText(100000));
    EXPECT_EQ(
        console.output(), "[Larkspool] Skipped a copy of 100001 bytes: larger than the store can hold\n");
}

TEST_F(WaylandPasteboardTest, OfASecretOnlyTheHintIsAskedFor)
{
    open();
    ClipboardOwner &owner = copy({{Text, "hunter2"}, {clipboard::SecretHint, "secret"}});
    ASSERT_TRUE(advances());
    EXPECT_TRUE(pasteboard().pasteboardItems().empty());
    copy({{Text, "next"}});
    EXPECT_EQ(nextText(), "next");
    EXPECT_EQ(owner.requests(), QByteArrayList({clipboard::SecretHint}));
}

TEST_F(WaylandPasteboardTest, APublicHintHidesNothing)
{
    open();
    copy({{Text, "text"}, {clipboard::SecretHint, "public"}});
    EXPECT_EQ(nextText(), "text");
}

TEST_F(WaylandPasteboardTest, OfTwoHundredChangesInARowThoseThatComeAreInOrderAndTheLastOneComes)
{
    open();
    constexpr int Count = 200;
    ClipboardOwner &owner = newProgram();
    std::vector<int> found;
    const auto takeAll = [&] {
        while (pasteboard().advance())
            found.push_back(text().value_or("-1").toInt());
        return !found.empty() && found.back() == Count;
    };
    for (int number = 1; number <= Count; ++number) {
        owner.own({{Text, PipedValue(QByteArray::number(number))}});
        // Some of the owner's answers get through, and others come too late.
        waitUntil([turns = number % 4]() mutable { return turns-- == 0; });
        takeAll();
    }
    EXPECT_TRUE(waitUntil(takeAll));
    // Rising without doubles.
    EXPECT_EQ(std::ranges::adjacent_find(found, std::greater_equal()), found.end())
        << ::testing::PrintToString(found);
    EXPECT_GT(found.front(), 0);
}

TEST_F(WaylandPasteboardTest, AReaderThatTakesNothingIsDroppedAndDisturbsNobody)
{
    ClipboardLimits limits = patientLimits();
    limits.stalledReceiver = 1s;
    open(limits);
    const QByteArray large = largeText(5'000'000);
    write(large);
    ClipboardOwner &stalled = newProgram();
    stalled.stall(Text);
    ASSERT_TRUE(waitUntil([&] { return stalled.hasStalledBytes(); }));
    EXPECT_FALSE(stalled.isStalledPipeClosed());
    EXPECT_TRUE(newProgram().paste(Text) == large);
    EXPECT_TRUE(waitUntil([&] { return stalled.isStalledPipeClosed(); }));
    EXPECT_LT(stalled.takeStalled().size(), large.size());
    EXPECT_TRUE(newProgram().paste(Text) == large);
}

TEST_F(WaylandPasteboardTest, AReaderThatEndsInTheMiddleIsForgotten)
{
    open();
    const QByteArray large = largeText(5'000'000);
    write(large);
    ClipboardOwner &ending = newProgram();
    ending.stall(Text);
    ASSERT_TRUE(waitUntil([&] { return ending.hasStalledBytes(); }));
    end(ending);
    EXPECT_TRUE(newProgram().paste(Text) == large);
}

TEST_F(WaylandPasteboardTest, OwnContentDoesNotComeBackAsACopy)
{
    open();
    write("own");
    EXPECT_EQ(nextText(), "own");
    const qint64 number = pasteboard().changeCount();
    copy({{Text, "next"}});
    EXPECT_EQ(nextText(), "next");
    EXPECT_EQ(pasteboard().changeCount(), number + 1);
}

TEST_F(WaylandPasteboardTest, AClipboardThatIsClearedOnPurposeStaysEmpty)
{
    open();
    const ClipboardOwner &observer = newProgram();
    ClipboardOwner &owner = copy({{Text, "text"}});
    EXPECT_EQ(nextText(), "text");
    owner.clear();
    const size_t cleared = owner.history().size();
    ClipboardOwner &next = copy({{Text, "next"}});
    EXPECT_EQ(nextText(), "next");
    ASSERT_TRUE(waitUntil([&] { return owner.history().size() > cleared; }));
    // Between the two there was nothing.
    EXPECT_EQ(owner.history().size(), cleared + 1);
    EXPECT_EQ(owner.history()[cleared - 1], QByteArrayList());
    EXPECT_EQ(owner.history()[cleared], QByteArrayList({Text}));
    EXPECT_FALSE(next.hasLost());
    EXPECT_EQ(observer.types(), QByteArrayList({Text}));
}

TEST_F(WaylandPasteboardTest, AContentOutlivesTheWindowOfItsOwner)
{
    open();
    auto program = std::make_unique<WaylandProgram>("org.example.Editor");
    ASSERT_NO_FATAL_FAILURE(copyInWindow(*program, "from a window"));
    const qint64 number = pasteboard().changeCount();
    ClipboardOwner &reader = newProgram();
    const size_t before = reader.history().size();
    program.reset();
    // Nothing for a moment, then the kept content.
    ASSERT_TRUE(waitUntil([&] { return reader.history().size() > before && reader.types(); }));
    EXPECT_EQ(reader.paste(Text), "from a window");
    EXPECT_FALSE(pasteboard().advance());
    EXPECT_EQ(pasteboard().changeCount(), number);
}

TEST_F(WaylandPasteboardTest, TheClipboardsOfAllSeatsAreFollowedAndWritten)
{
    open();
    ASSERT_TRUE(compositor().command("seat seat1 fallback true"));
    ASSERT_TRUE(waitUntil([] { return ClipboardOwner::open(1) != nullptr; }));
    copy({{Text, "of the other seat"}}, 1);
    EXPECT_EQ(nextText(), "of the other seat");
    EXPECT_EQ(newProgram(0).types(), std::nullopt);
    copy({{Text, "of the first seat"}}, 0);
    EXPECT_EQ(nextText(), "of the first seat");
    const ClipboardOwner &other = newProgram(1);
    const size_t before = other.history().size();
    write("own");
    ASSERT_TRUE(waitUntil([&] { return other.history().size() > before; }));
    EXPECT_EQ(newProgram(0).paste(Text), "own");
    EXPECT_EQ(newProgram(1).paste(Text), "own");
    EXPECT_EQ(nextText(), "own");
    EXPECT_FALSE(pasteboard().advance());
}

TEST_F(WaylandPasteboardTest, WhatIsThereSurvivesTheCompositor)
{
    CapturedConsole console;
    open();
    copy({{Text, "copied"}});
    ASSERT_TRUE(waitUntil([&] { return pasteboard().advance(); }));
    write("before");
    compositor().end();
    EXPECT_TRUE(waitUntil([&] { return !console.output().empty(); }));
    pasteboard().clearContents();
    pasteboard().setString("after");
    EXPECT_EQ(text(), "copied");
    EXPECT_EQ(nextText(), "before");
    EXPECT_EQ(nextText(), "after");
    EXPECT_EQ(
        console.output(), "[Larkspool] The compositor is gone: the clipboard is not followed any more\n");
}

TEST_F(WaylandPasteboardTest, ThePasteboardRestsWhenTheCompositorIsGone)
{
    CapturedConsole console;
    open();
    write("own");
    compositor().end();
    ASSERT_TRUE(waitUntil([&] { return !console.output().empty(); }));
    const qint64 ticks = ticksOfOtherThreads();
    QElapsedTimer elapsed;
    elapsed.start();
    // A thread that never rests would have most of that time.
    waitUntil([&] { return elapsed.hasExpired(500); });
    EXPECT_LE(ticksOfOtherThreads() - ticks, 3);
}

TEST_F(SilentWaylandPasteboardTest, AContentOutlivesItsOwner)
{
    open();
    const QByteArray odd("bad \xff, end\0", 11);
    ClipboardOwner &owner =
        copy({{Text, "text"}, {"application/x-thing", PipedValue(odd)}, {"application/y-last", "last"}});
    EXPECT_EQ(nextText(), "text");
    const qint64 number = pasteboard().changeCount();
    // What is asked for last tells that the one before has come.
    ASSERT_TRUE(waitUntil([&] { return owner.requests().contains("application/y-last"); }));
    ClipboardOwner &reader = newProgram();
    const size_t before = reader.history().size();
    end(owner);
    ASSERT_TRUE(waitUntil([&] { return reader.history().size() > before && reader.types(); }));
    EXPECT_EQ(reader.paste(Text), "text");
    EXPECT_EQ(reader.paste("STRING"), "text");
    EXPECT_EQ(reader.paste("application/x-thing"), odd);
    EXPECT_FALSE(pasteboard().advance());
    EXPECT_EQ(pasteboard().changeCount(), number);
}

TEST_F(SilentWaylandPasteboardTest, TheContentAtTheStartOutlivesItsOwner)
{
    ClipboardOwner &owner = copy({{Text, "early"}});
    open();
    ASSERT_TRUE(waitUntil([&] { return text() == "early"; }));
    ClipboardOwner &reader = newProgram();
    const size_t before = reader.history().size();
    end(owner);
    ASSERT_TRUE(waitUntil([&] { return reader.history().size() > before && reader.types(); }));
    EXPECT_EQ(reader.paste(Text), "early");
    EXPECT_EQ(pasteboard().changeCount(), 0);
}

TEST_F(SilentWaylandPasteboardTest, AKeptContentThatIsClearedIsNotPutBack)
{
    open();
    ClipboardOwner &owner = copy({{Text, "text"}});
    EXPECT_EQ(nextText(), "text");
    ClipboardOwner &other = newProgram();
    const size_t before = other.history().size();
    end(owner);
    ASSERT_TRUE(waitUntil([&] { return other.history().size() > before && other.types(); }));
    other.clear();
    const size_t cleared = other.history().size();
    EXPECT_EQ(other.types(), std::nullopt);
    ClipboardOwner &next = copy({{Text, "next"}});
    EXPECT_EQ(nextText(), "next");
    ASSERT_TRUE(waitUntil([&] { return other.history().size() > cleared; }));
    EXPECT_EQ(other.history()[cleared], QByteArrayList({Text}));
    EXPECT_FALSE(next.hasLost());
}

TEST_F(SilentWaylandPasteboardTest, ACopyThatIsGoneBeforeItWasReadLeavesTheLastContentOnTheClipboard)
{
    open();
    copy({{Text, "whole"}});
    EXPECT_EQ(nextText(), "whole");
    ClipboardOwner &ending = copy({{Text, PipedValue("never", Delivery::Never)}});
    ASSERT_TRUE(waitUntil([&] { return ending.requests().contains(Text); }));
    ClipboardOwner &reader = newProgram();
    const size_t before = reader.history().size();
    end(ending);
    ASSERT_TRUE(waitUntil([&] { return reader.history().size() > before && reader.types(); }));
    EXPECT_EQ(reader.paste(Text), "whole");
    EXPECT_FALSE(pasteboard().advance());
}

TEST_F(SilentWaylandPasteboardTest, ASecretIsNotKept)
{
    open();
    ClipboardOwner &owner = copy({{Text, "hunter2"}, {clipboard::SecretHint, "secret"}});
    ASSERT_TRUE(advances());
    const ClipboardOwner &observer = newProgram();
    const size_t before = observer.history().size();
    end(owner);
    ASSERT_TRUE(waitUntil([&] { return observer.history().size() > before; }));
    EXPECT_EQ(observer.types(), std::nullopt);
    ClipboardOwner &next = copy({{Text, "next"}});
    EXPECT_EQ(nextText(), "next");
    ASSERT_TRUE(waitUntil([&] { return observer.types().has_value(); }));
    EXPECT_EQ(observer.types(), QByteArrayList({Text}));
    EXPECT_EQ(observer.history().size(), before + 2);
    EXPECT_FALSE(next.hasLost());
}

TEST_F(SilentWaylandPasteboardTest, OwnContentIsReplacedByTheNextCopyAndNotTakenBack)
{
    open();
    write("own");
    EXPECT_EQ(nextText(), "own");
    ClipboardOwner &owner = copy({{Text, "other"}});
    EXPECT_EQ(nextText(), "other");
    ClipboardOwner &reader = newProgram();
    const size_t before = reader.history().size();
    end(owner);
    ASSERT_TRUE(waitUntil([&] { return reader.history().size() > before && reader.types(); }));
    EXPECT_EQ(reader.paste(Text), "other");
}

TEST(WaylandPasteboard, ThereIsNoneWithoutACompositor)
{
    const QByteArray display = qgetenv("WAYLAND_DISPLAY");
    for (const char *const name : {"", "/nowhere/wayland-1"}) {
        qputenv("WAYLAND_DISPLAY", name);
        EXPECT_EQ(platform::makeWaylandPasteboard(), nullptr) << name;
        EXPECT_FALSE(platform::hasWaylandCompositor()) << name;
    }
    qputenv("WAYLAND_DISPLAY", display);
}

TEST(WaylandPasteboard, ThereIsNoneWhereTheCompositorLendsItsClipboardToNobody)
{
    const Compositor mutter(Compositor::Kind::Mutter);
    ASSERT_TRUE(mutter.isRunning());
    EXPECT_TRUE(platform::hasWaylandCompositor());
    EXPECT_EQ(platform::makeWaylandPasteboard(), nullptr);
}
