#pragma once

#include "platform/x11/X11Backends.h"
#include "support/SelectionOwner.h"
#include "support/SelectionRequestor.h"
#include "support/Waiting.h"
#include "support/XServer.h"

#include <gtest/gtest.h>

/// An X server of the test's own, a pasteboard on it, and any number of other clients.
class X11PasteboardFixture : public ::testing::Test
{
protected:
    /// Time runs out by itself in no test that does not say so.
    static ClipboardLimits patientLimits()
    {
        ClipboardLimits limits;
        limits.noProgress = std::chrono::hours(1);
        return limits;
    }

    void open(const ClipboardLimits &limits = patientLimits())
    {
        m_pasteboard = platform::makeX11Pasteboard(limits);
        ASSERT_NE(m_pasteboard, nullptr);
    }
    void close() { m_pasteboard.reset(); }

    Pasteboard &pasteboard() { return *m_pasteboard; }

    /// A new client that owns the clipboard.
    SelectionOwner &copy(const SelectionOwner::Offer &offer)
    {
        SelectionOwner &owner = makeOwner(offer);
        owner.own();
        return owner;
    }
    /// A new client that does not own it yet.
    SelectionOwner &makeOwner(const SelectionOwner::Offer &offer)
    {
        m_owners.push_back(std::make_unique<SelectionOwner>(offer));
        return *m_owners.back();
    }

    bool advances(std::chrono::milliseconds deadline = std::chrono::seconds(20))
    {
        return waitUntil([this] { return pasteboard().advance(); }, deadline);
    }
    std::optional<QByteArray> text() { return pasteboard().data(PasteboardType::String); }
    /// The next content's text; nothing when no content comes, or it has none.
    std::optional<QByteArray> nextText() { return advances() ? text() : std::nullopt; }

    /// Asks the clipboard manager to save the owner's content, and waits for the answer: whether it did.
    std::optional<bool> isSavedByManager(SelectionOwner &owner)
    {
        EXPECT_TRUE(
            waitUntil([] { return SelectionRequestor("CLIPBOARD_MANAGER").owner() != XCB_WINDOW_NONE; }));
        owner.askToSave();
        EXPECT_TRUE(waitUntil([&] { return owner.isSaved().has_value(); }));
        return owner.isSaved();
    }

    /// Who owns the clipboard as a client asks the server.
    xcb_window_t clipboardOwner() { return SelectionRequestor().owner(); }

    XServer m_server;

private:
    std::unique_ptr<Pasteboard> m_pasteboard;
    std::vector<std::unique_ptr<SelectionOwner>> m_owners;
};
