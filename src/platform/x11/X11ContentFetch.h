#pragma once

#include "platform/linux/ContentFetch.h"
#include "platform/x11/X11SelectionReceiver.h"

#include <memory>
#include <vector>

/// Fetches one content of CLIPBOARD by converting the selection: its list of targets first. `start` in place
/// of `follow`.
class X11ContentFetch : public ContentFetch
{
public:
    X11ContentFetch(X11Connection &connection, X11RetiredWindows &retired, const ClipboardLimits &limits,
        qint64 number, Callbacks callbacks);

    /// The time is that of the event that told of the owner: an owner refuses what was asked before it owned.
    void start(xcb_timestamp_t time);

    /// Somebody else owns the clipboard since the event of that sequence number: nothing more can be asked.
    /// What is on its way from the old owner may still come.
    void ownerChanged(uint32_t sequence);
    /// The owner is no more.
    void ownerIsGone();

    void handle(const xcb_selection_notify_event_t &event);
    void handle(const xcb_property_notify_event_t &event);

private:
    void request(const QByteArray &target, qint64 limit) override;
    void giveUpTransfer() override;

    void makeReceiver();
    void ask(xcb_atom_t target, qint64 limit);
    void received(const X11SelectionReceiver::Result &result);
    void acceptTargets(const X11SelectionReceiver::Result &result);

    X11Connection &m_connection;
    X11RetiredWindows &m_retired;
    xcb_timestamp_t m_time = XCB_CURRENT_TIME;
    QByteArray m_target;                                            ///< empty while the list of targets is
    std::vector<std::unique_ptr<X11SelectionReceiver>> m_receivers; // the last one is in use
};
