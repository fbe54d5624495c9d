#include "contract/X11PasteboardFixture.h"

#include "support/CapturedConsole.h"

#include <QFile>
#include <QTimer>

using namespace std::chrono_literals;
using Delivery = OfferedValue::Delivery;

namespace
{

OfferedValue incremental(const QByteArray &bytes, qsizetype chunkBytes = 64 * 1024)
{
    OfferedValue value(bytes, Delivery::Incremental);
    value.chunkBytes = chunkBytes;
    return value;
}

OfferedValue dribbling(const QByteArray &bytes)
{
    OfferedValue value = incremental(bytes, 1);
    value.chunkDelay = 20ms;
    return value;
}

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

/// Some hundred bytes that claim 60000 x 60000 pixels.
QByteArray tiffBomb()
{
    QByteArray tiff("II*\0\x08\0\0\0", 8);
    const auto u16 = [&](quint16 value) { tiff.append(reinterpret_cast<const char *>(&value), 2); };
    const auto u32 = [&](quint32 value) { tiff.append(reinterpret_cast<const char *>(&value), 4); };
    const auto entry = [&](quint16 tag, quint16 type, quint32 value) {
        u16(tag);
        u16(type);
        u32(1);
        u32(value);
    };
    u16(9);
    entry(256, 4, 60000); // width
    entry(257, 4, 60000); // height
    entry(258, 3, 8);     // bits a sample
    entry(259, 3, 1);     // not compressed
    entry(262, 3, 1);     // grey
    entry(273, 4, 200);   // where the pixels start
    entry(277, 3, 1);     // samples a pixel
    entry(278, 4, 60000); // rows a strip
    entry(279, 4, 100);   // bytes in the strip
    u32(0);
    return tiff.leftJustified(300, '\0');
}

int lineCount(const std::string &output, const char *part)
{
    int count = 0;
    for (size_t at = output.find(part); at != std::string::npos; at = output.find(part, at + 1))
        ++count;
    return count;
}

class X11PasteboardFetch : public X11PasteboardFixture
{
protected:
    /// What goes to the console about a copy that is too large and leaves nothing.
    std::string outputOfSkipping(const OfferedValue &value, qint64 limit)
    {
        ClipboardLimits limits = patientLimits();
        limits.target = limit;
        CapturedConsole console;
        open(limits);
        SelectionOwner &owner =
            copy({{"UTF8_STRING", value}, {"STRING", value}, {"text/html", "kept for nobody"}});
        // The manager answers when there is no more to come from the owner.
        EXPECT_EQ(isSavedByManager(owner), false);
        EXPECT_FALSE(pasteboard().advance());
        copy({{"UTF8_STRING", "next"}});
        EXPECT_EQ(nextText(), "next");
        return console.output();
    }
};

} // namespace

TEST_F(X11PasteboardFetch, NoCallWaitsForAnOwnerThatNeverAnswers)
{
    open();
    SelectionOwner &silent = makeOwner({{"UTF8_STRING", "never"}});
    silent.isSilent = true;
    silent.own();
    ASSERT_TRUE(waitUntil([&] { return !silent.requests().isEmpty(); }));
    EXPECT_FALSE(pasteboard().advance());
    EXPECT_EQ(pasteboard().changeCount(), 0);
    EXPECT_TRUE(pasteboard().pasteboardItems().empty());
    copy({{"UTF8_STRING", "next"}});
    EXPECT_EQ(nextText(), "next");
}

TEST_F(X11PasteboardFetch, OwnWritesDoNotWaitForAnOwnerThatNeverAnswers)
{
    open();
    SelectionOwner &silent = makeOwner({{"UTF8_STRING", "never"}});
    silent.isSilent = true;
    silent.own();
    ASSERT_TRUE(waitUntil([&] { return !silent.requests().isEmpty(); }));
    pasteboard().clearContents();
    pasteboard().setString("own");
    EXPECT_EQ(nextText(), "own");
    EXPECT_EQ(SelectionRequestor().paste("UTF8_STRING").bytes, "own");
}

TEST_F(X11PasteboardFetch, WhatCameBeforeTheOwnerHungIsKept)
{
    ClipboardLimits limits;
    limits.noProgress = 200ms;
    open(limits);
    copy({{"UTF8_STRING", "text"}, {"image/png", OfferedValue("", Delivery::Never)}});
    EXPECT_EQ(nextText(), "text");
    EXPECT_EQ(pasteboard().data(PasteboardType::Png), std::nullopt);
}

TEST_F(X11PasteboardFetch, AnOwnerThatHangsInAnExtraHoldsNothingBack)
{
    open();
    copy({{"UTF8_STRING", "text"}, {"text/html", OfferedValue("", Delivery::Never)}});
    EXPECT_EQ(nextText(), "text");
    copy({{"UTF8_STRING", "next"}});
    EXPECT_EQ(nextText(), "next");
}

TEST_F(X11PasteboardFetch, AnOwnerThatDiesInTheMiddleLeavesNothingBehind)
{
    open();
    OfferedValue cut = incremental(largeText(1000000));
    cut.chunksBeforeDeath = 3;
    SelectionOwner &dying = copy({{"UTF8_STRING", cut}});
    ASSERT_TRUE(waitUntil([&] { return dying.hasExited(); }));
    copy({{"UTF8_STRING", "next"}});
    EXPECT_EQ(nextText(), "next");
    EXPECT_FALSE(pasteboard().advance());
}

TEST_F(X11PasteboardFetch, AnOwnerThatDribblesIsGivenUp)
{
    ClipboardLimits limits;
    limits.noProgress = 400ms;
    open(limits);
    SelectionOwner &owner =
        copy({{"UTF8_STRING", "text"}, {"image/png", dribbling(QByteArray(1000000, 'x'))}});
    // It never stops delivering, and would go on for hours.
    EXPECT_EQ(nextText(), "text");
    EXPECT_EQ(pasteboard().data(PasteboardType::Png), std::nullopt);
    EXPECT_FALSE(owner.hasExited());
}

TEST_F(X11PasteboardFetch, AClaimOfFourGigabytesIsSkippedWithOneLine)
{
    OfferedValue claim = incremental("little");
    claim.claimedBytes = 4294967295U;
    EXPECT_EQ(outputOfSkipping(claim, ClipboardLimits().target),
        "[Larkspool] Skipped a copy of 4294967295 bytes: larger than the store can hold\n");
}

TEST_F(X11PasteboardFetch, ATooLargeTextIsSkippedWithOneLine)
{
    EXPECT_EQ(outputOfSkipping(OfferedValue(largeText(100001)), 100000),
        "[Larkspool] Skipped a copy of 100001 bytes: larger than the store can hold\n");
}

TEST_F(X11PasteboardFetch, ATextThatGrowsTooLargeOnItsWayIsSkippedWithOneLine)
{
    OfferedValue growing = incremental(largeText(100001), 10000);
    growing.claimedBytes = 10;
    EXPECT_EQ(outputOfSkipping(growing, 100000),
        "[Larkspool] Skipped a copy of 100001 bytes: larger than the store can hold\n");
}

TEST_F(X11PasteboardFetch, ATooLargeImageLeavesTheRest)
{
    ClipboardLimits limits = patientLimits();
    limits.target = 1000;
    CapturedConsole console;
    open(limits);
    copy({{"UTF8_STRING", "text"}, {"image/tiff", incremental(largeText(5000))}, {"text/uri-list", "a:b"}});
    EXPECT_EQ(nextText(), "text");
    EXPECT_EQ(pasteboard().data(PasteboardType::Url), "a:b");
    EXPECT_EQ(pasteboard().data(PasteboardType::Tiff), std::nullopt);
    EXPECT_EQ(lineCount(console.output(), "Skipped"), 1);
}

TEST_F(X11PasteboardFetch, ExtrasBeyondTheirLimitAreLeftOutSilently)
{
    ClipboardLimits limits = patientLimits();
    limits.extras = 1000;
    CapturedConsole console;
    open(limits);
    SelectionOwner &owner = copy({{"UTF8_STRING", "text"}, {"text/a", OfferedValue(largeText(600))},
        {"text/b", OfferedValue(largeText(600))}, {"text/c", incremental(largeText(600))},
        {"text/d", OfferedValue(largeText(400))}});
    EXPECT_EQ(nextText(), "text");
    ASSERT_EQ(isSavedByManager(owner), true);
    owner.exit();
    ASSERT_TRUE(waitUntil([&] { return clipboardOwner() != XCB_WINDOW_NONE; }));
    SelectionRequestor client;
    EXPECT_EQ(client.paste("text/a").bytes, largeText(600));
    EXPECT_TRUE(client.paste("text/b").isRefused);
    EXPECT_TRUE(client.paste("text/c").isRefused);
    EXPECT_EQ(client.paste("text/d").bytes, largeText(400));
    EXPECT_EQ(console.output(), "");
}

TEST_F(X11PasteboardFetch, ATextAtTheLimitIsTaken)
{
    ClipboardLimits limits = patientLimits();
    limits.target = 100000;
    open(limits);
    const QByteArray text = largeText(100000);
    copy({{"UTF8_STRING", OfferedValue(text)}});
    EXPECT_EQ(nextText(), text);
    copy({{"UTF8_STRING", incremental(text)}});
    EXPECT_EQ(nextText(), text);
}

TEST_F(X11PasteboardFetch, TextsAreMadeWellFormed)
{
    open();
    const std::vector<std::pair<QByteArray, QByteArray>> utf8 = {
        {QByteArray("a\xff z"), "a\xef\xbf\xbd z"},
        {QByteArray("in\0ner", 6), QByteArray("in\0ner", 6)},
        {QByteArray("terminated\0", 11), "terminated"},
        {QByteArray("two\0\0", 5), QByteArray("two\0", 4)},
    };
    for (const auto &[offered, read] : utf8) {
        copy({{"UTF8_STRING", OfferedValue(offered)}});
        EXPECT_EQ(nextText(), read);
    }
}

TEST_F(X11PasteboardFetch, StringIsLatin1UnlessItsTypeSaysOtherwise)
{
    open();
    copy({{"STRING",
        "gr\xfc\xdf"
        "e"}});
    EXPECT_EQ(nextText(), "grüße");
    OfferedValue modern("grüße");
    modern.type = "UTF8_STRING";
    copy({{"STRING", modern}});
    EXPECT_EQ(nextText(), "grüße");
}

TEST_F(X11PasteboardFetch, ARefusedTextIsAskedForInTheNextEncoding)
{
    open();
    copy({{"text/plain;charset=utf-8", OfferedValue("", Delivery::Refused)}, {"STRING", "plain"}});
    EXPECT_EQ(nextText(), "plain");
}

TEST_F(X11PasteboardFetch, AnOwnerWithoutAListOfTargetsIsAskedForItsText)
{
    open();
    SelectionOwner &old = makeOwner({{"STRING", "old"}});
    old.refusesTargets = true;
    old.own();
    EXPECT_EQ(nextText(), "old");
    EXPECT_EQ(old.requests(), QByteArrayList({"TARGETS", "UTF8_STRING", "STRING"}));
}

TEST_F(X11PasteboardFetch, OneTextAndNoTargetsWithEffectsAreAskedFor)
{
    open();
    SelectionOwner &owner = copy({{"UTF8_STRING", "text"}, {"STRING", "text"}, {"TEXT", "text"},
        {"text/html", "<b>text</b>"}, {"INSERT_SELECTION", ""}, {"GTK_TEXT_BUFFER_CONTENTS", "pointer"}});
    EXPECT_EQ(nextText(), "text");
    ASSERT_TRUE(waitUntil([&] { return owner.requests().contains("text/html"); }));
    EXPECT_EQ(owner.requests(), QByteArrayList({"TARGETS", "UTF8_STRING", "text/html"}));
}

TEST_F(X11PasteboardFetch, ListsOfAddressesAreReadByTheLine)
{
    open();
    copy({{"text/uri-list",
        "# a comment\r\n\r\nhttps://example.org/\r\nfile:///tmp/a%20b\r\nfile:///tmp/c\r\n"}});
    ASSERT_TRUE(advances());
    EXPECT_EQ(pasteboard().data(PasteboardType::FileUrl), "file:///tmp/a%20b");
    EXPECT_EQ(pasteboard().data(PasteboardType::Url), "https://example.org/");
}

TEST_F(X11PasteboardFetch, ATiffThatClaimsMoreThanItHoldsIsNoImage)
{
    open();
    copy({{"image/tiff", OfferedValue(tiffBomb())}});
    ASSERT_TRUE(advances());
    EXPECT_TRUE(pasteboard().data(PasteboardType::Tiff).has_value());
    EXPECT_EQ(pasteboard().pngRepresentation(PasteboardType::Tiff), std::nullopt);
}

TEST_F(X11PasteboardFetch, AHundredFastCopiesOfOwnersThatEndWhenTheyLoseAreAllKept)
{
    open();
    constexpr int Count = 100;
    int copied = 0;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        SelectionOwner &owner =
            makeOwner({{"UTF8_STRING", OfferedValue("copy " + QByteArray::number(copied))}});
        owner.exitsOnLoss = true;
        owner.own();
        if (++copied == Count)
            timer.stop();
    });
    timer.start(20ms);
    QByteArrayList expected;
    QByteArrayList found;
    for (int i = 0; i < Count; ++i)
        expected.append("copy " + QByteArray::number(i));
    waitUntil(
        [&] {
            while (pasteboard().advance())
                found.append(text().value_or("nothing"));
            return found.size() == Count;
        },
        20s);
    EXPECT_EQ(found, expected);
}

TEST_F(X11PasteboardFetch, FiftyMegabytesComeWhole)
{
    open();
    const QByteArray large = largeText(50 * 1000 * 1000);
    copy({{"UTF8_STRING", incremental(large, 256 * 1024)}});
    ASSERT_TRUE(advances(60s));
    EXPECT_TRUE(text() == large);
}

TEST_F(X11PasteboardFetch, ALargePropertyInOnePieceComesWhole)
{
    open();
    const QByteArray large = largeText(10 * 1000 * 1000 + 1);
    copy({{"UTF8_STRING", OfferedValue(large)}});
    ASSERT_TRUE(advances(60s));
    EXPECT_TRUE(text() == large);
}

TEST_F(X11PasteboardFetch, ALargeCopyIsNotLostToTheOneThatFollowsAtOnce)
{
    ClipboardLimits limits = patientLimits();
    limits.heldBackWithoutProgress = 20s;
    limits.heldBack = 60s;
    open(limits);
    const QByteArray large = largeText(8 * 1000 * 1000);
    SelectionOwner &first = copy({{"UTF8_STRING", incremental(large, 16 * 1024)}});
    ASSERT_TRUE(waitUntil([&] { return first.requests().contains("UTF8_STRING"); }));
    copy({{"UTF8_STRING", "small"}});
    ASSERT_TRUE(advances(60s));
    EXPECT_TRUE(text() == large);
    EXPECT_EQ(nextText(), "small");
}

TEST_F(X11PasteboardFetch, ACopyThatStoppedComingHoldsTheNextOneBackForAMomentOnly)
{
    open();
    OfferedValue stuck = incremental(largeText(1000000));
    stuck.chunkDelay = 1h;
    SelectionOwner &first = copy({{"UTF8_STRING", stuck}});
    ASSERT_TRUE(waitUntil([&] { return first.requests().contains("UTF8_STRING"); }));
    copy({{"UTF8_STRING", "next"}});
    EXPECT_EQ(nextText(), "next");
}

TEST_F(X11PasteboardFetch, ACopyThatComesSlowlyHoldsTheNextOneBackForAMomentOnly)
{
    ClipboardLimits limits = patientLimits();
    limits.heldBackWithoutProgress = 1h;
    limits.heldBack = 300ms;
    open(limits);
    SelectionOwner &first = copy({{"UTF8_STRING", dribbling(QByteArray(100000, 'x'))}});
    ASSERT_TRUE(waitUntil([&] { return first.requests().contains("UTF8_STRING"); }));
    copy({{"UTF8_STRING", "next"}});
    EXPECT_EQ(nextText(), "next");
}
