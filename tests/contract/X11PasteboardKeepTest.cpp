#include "contract/X11PasteboardFixture.h"

#include "platform/linux/ClipboardTargets.h"
#include "support/CapturedConsole.h"

using namespace std::chrono_literals;
using Delivery = OfferedValue::Delivery;

namespace
{

class X11PasteboardKeep : public X11PasteboardFixture
{
protected:
    /// Waits until the pasteboard has taken the clipboard over from an owner that is gone.
    bool isTakenOver()
    {
        return waitUntil([this] { return clipboardOwner() != XCB_WINDOW_NONE; });
    }
};

} // namespace

TEST_F(X11PasteboardKeep, AContentOutlivesItsOwner)
{
    open();
    SelectionOwner &owner = copy({{"UTF8_STRING", "text"}, {"text/html", "<b>text</b>"},
        {"application/x-thing", OfferedValue(QByteArray("\0\1\2", 3))}});
    EXPECT_EQ(nextText(), "text");
    const qint64 number = pasteboard().changeCount();
    ASSERT_TRUE(waitUntil([&] { return owner.requests().contains("text/html"); }));
    owner.exit();
    ASSERT_TRUE(isTakenOver());
    SelectionRequestor client;
    EXPECT_EQ(client.paste("UTF8_STRING").bytes, "text");
    EXPECT_EQ(client.paste("STRING").bytes, "text");
    EXPECT_EQ(client.paste("text/html").bytes, "<b>text</b>");
    EXPECT_EQ(client.paste("application/x-thing").bytes, QByteArray("\0\1\2", 3));
    EXPECT_FALSE(pasteboard().advance());
    EXPECT_EQ(pasteboard().changeCount(), number);
    EXPECT_EQ(text(), "text");
}

TEST_F(X11PasteboardKeep, BytesAreKeptAsTheyWereOffered)
{
    open();
    const QByteArray odd("bad \xff, end\0", 11);
    SelectionOwner &owner = copy({{"UTF8_STRING", OfferedValue(odd)}});
    ASSERT_TRUE(advances());
    owner.exit();
    ASSERT_TRUE(isTakenOver());
    EXPECT_EQ(SelectionRequestor().paste("UTF8_STRING").bytes, odd);
}

TEST_F(X11PasteboardKeep, AnOwnerThatClearsTheClipboardMeansIt)
{
    open();
    SelectionOwner &owner = copy({{"UTF8_STRING", "text"}});
    EXPECT_EQ(nextText(), "text");
    const qint64 number = pasteboard().changeCount();
    owner.disown();
    ASSERT_TRUE(advances());
    EXPECT_GT(pasteboard().changeCount(), number);
    EXPECT_TRUE(pasteboard().pasteboardItems().empty());
    owner.exit();
    // Whatever it does about the one that is gone is done when it has taken the next one.
    SelectionOwner &next = copy({{clipboard::SecretHint, "secret"}});
    ASSERT_TRUE(advances());
    EXPECT_FALSE(next.hasLost());
    next.disown();
    ASSERT_TRUE(advances());
    EXPECT_EQ(clipboardOwner(), static_cast<xcb_window_t>(XCB_WINDOW_NONE));
}

TEST_F(X11PasteboardKeep, ASecretIsNeitherReadNorKept)
{
    open();
    SelectionOwner &before = copy({{"UTF8_STRING", "before"}});
    EXPECT_EQ(nextText(), "before");
    SelectionOwner &owner = copy({{"UTF8_STRING", "hunter2"}, {clipboard::SecretHint, "secret"}});
    ASSERT_TRUE(advances());
    EXPECT_TRUE(pasteboard().pasteboardItems().empty());
    EXPECT_EQ(owner.requests(), QByteArrayList({"TARGETS", clipboard::SecretHint}));
    before.exit();
    owner.exit();
    // The manager's answer to the next owner comes after all that the end of this one brings about.
    SelectionOwner &probe = makeOwner({});
    ASSERT_TRUE(isSavedByManager(probe).has_value());
    EXPECT_EQ(clipboardOwner(), static_cast<xcb_window_t>(XCB_WINDOW_NONE));
    EXPECT_TRUE(SelectionRequestor().paste("UTF8_STRING").isRefused);
    EXPECT_FALSE(pasteboard().advance());
}

TEST_F(X11PasteboardKeep, AHintThatIsNotToldIsASecret)
{
    open();
    SelectionOwner &owner =
        copy({{"UTF8_STRING", "hunter2"}, {clipboard::SecretHint, OfferedValue("", Delivery::Refused)}});
    ASSERT_TRUE(advances());
    EXPECT_TRUE(pasteboard().pasteboardItems().empty());
    EXPECT_FALSE(owner.requests().contains("UTF8_STRING"));
}

TEST_F(X11PasteboardKeep, APublicHintHidesNothing)
{
    open();
    copy({{"UTF8_STRING", "text"}, {clipboard::SecretHint, "public"}});
    EXPECT_EQ(nextText(), "text");
}

TEST_F(X11PasteboardKeep, TheContentAtTheStartIsCurrentAndKept)
{
    SelectionOwner &owner = copy({{"UTF8_STRING", "early"}});
    open();
    ASSERT_TRUE(waitUntil([&] { return text() == "early"; }));
    EXPECT_EQ(pasteboard().changeCount(), 0);
    EXPECT_FALSE(pasteboard().advance());
    owner.exit();
    ASSERT_TRUE(isTakenOver());
    EXPECT_EQ(SelectionRequestor().paste("UTF8_STRING").bytes, "early");
    EXPECT_FALSE(pasteboard().advance());
}

TEST_F(X11PasteboardKeep, OpeningDoesNotWaitForTheOwnerAtTheStart)
{
    SelectionOwner &owner = makeOwner({{"UTF8_STRING", "never"}});
    owner.isSilent = true;
    owner.own();
    open();
    copy({{"UTF8_STRING", "next"}});
    EXPECT_EQ(nextText(), "next");
}

TEST_F(X11PasteboardKeep, ACopyCutByItsOwnersDeathLeavesTheLastContentOnTheClipboard)
{
    open();
    copy({{"UTF8_STRING", "whole"}});
    EXPECT_EQ(nextText(), "whole");
    OfferedValue cut(QByteArray(1000000, 'x'), Delivery::Incremental);
    cut.chunksBeforeDeath = 2;
    SelectionOwner &dying = copy({{"UTF8_STRING", cut}});
    ASSERT_TRUE(waitUntil([&] { return dying.hasExited(); }));
    ASSERT_TRUE(isTakenOver());
    EXPECT_EQ(SelectionRequestor().paste("UTF8_STRING").bytes, "whole");
    EXPECT_FALSE(pasteboard().advance());
}

TEST_F(X11PasteboardKeep, OwnContentIsReplacedByTheNextCopyAndNotTakenBack)
{
    open();
    pasteboard().clearContents();
    pasteboard().setString("own");
    EXPECT_EQ(nextText(), "own");
    ASSERT_TRUE(isTakenOver());
    SelectionOwner &owner = copy({{"UTF8_STRING", "other"}});
    EXPECT_EQ(nextText(), "other");
    owner.exit();
    ASSERT_TRUE(isTakenOver());
    EXPECT_EQ(SelectionRequestor().paste("UTF8_STRING").bytes, "other");
}

TEST_F(X11PasteboardKeep, AnOwnerMayEndWhenItIsToldThatItsContentIsSaved)
{
    open();
    OfferedValue slow(QByteArray(300000, 'h'), Delivery::Incremental);
    slow.chunkDelay = 10ms;
    SelectionOwner &owner = copy({{"UTF8_STRING", "text"}, {"text/html", slow}});
    ASSERT_EQ(isSavedByManager(owner), true);
    owner.exit();
    ASSERT_TRUE(isTakenOver());
    SelectionRequestor client;
    EXPECT_EQ(client.paste("UTF8_STRING").bytes, "text");
    EXPECT_EQ(client.paste("text/html").bytes, slow.bytes);
}

TEST_F(X11PasteboardKeep, AnotherClipboardManagerIsLeftAloneUntilItEnds)
{
    SelectionOwner other({}, "CLIPBOARD_MANAGER");
    other.own();
    const xcb_window_t theirs = SelectionRequestor("CLIPBOARD_MANAGER").owner();
    open();
    copy({{"UTF8_STRING", "text"}});
    EXPECT_EQ(nextText(), "text");
    EXPECT_EQ(SelectionRequestor("CLIPBOARD_MANAGER").owner(), theirs);
    other.exit();
    EXPECT_TRUE(waitUntil([&] {
        const xcb_window_t manager = SelectionRequestor("CLIPBOARD_MANAGER").owner();
        return manager != theirs && manager != XCB_WINDOW_NONE;
    }));
    EXPECT_TRUE(SelectionRequestor("CLIPBOARD_MANAGER").targets().contains("SAVE_TARGETS"));
}

TEST_F(X11PasteboardKeep, WithoutAServerThereIsNoPasteboard)
{
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":65533");
    EXPECT_EQ(platform::makeX11Pasteboard(), nullptr);
    qputenv("DISPLAY", display);
}

TEST(X11PasteboardServer, WhatIsThereSurvivesTheServer)
{
    auto server = std::make_unique<XServer>();
    const auto pasteboard = platform::makeX11Pasteboard();
    ASSERT_NE(pasteboard, nullptr);
    pasteboard->clearContents();
    pasteboard->setString("before");
    CapturedConsole console;
    server.reset();
    pasteboard->clearContents();
    pasteboard->setString("after");
    ASSERT_TRUE(waitUntil([&] { return pasteboard->advance(); }));
    EXPECT_EQ(pasteboard->data(PasteboardType::String), "before");
    ASSERT_TRUE(waitUntil([&] { return pasteboard->advance(); }));
    EXPECT_EQ(pasteboard->data(PasteboardType::String), "after");
    EXPECT_TRUE(
        waitUntil([&] { return console.output().find("The X server is gone") != std::string::npos; }));
}
