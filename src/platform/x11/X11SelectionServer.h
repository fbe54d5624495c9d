#pragma once

#include "platform/linux/ClipboardContent.h"
#include "platform/linux/ClipboardOffer.h"
#include "platform/linux/ClipboardPace.h"
#include "platform/linux/ThreadInbox.h"
#include "platform/linux/WorkThread.h"
#include "platform/x11/X11IncrementalSends.h"

#include <functional>
#include <map>
#include <vector>

/// Answers requests for a selection that this program owns (ICCCM section 2.2): TARGETS, TIMESTAMP, MULTIPLE
/// and every target that follows from the content. Large values go in chunks; pictures are encoded on another
/// thread.
class X11SelectionServer
{
public:
    using Content = std::function<ClipboardContent()>;

    /// The content is asked for at each request. The inbox is that of this thread.
    X11SelectionServer(
        X11Connection &connection, ThreadInbox &inbox, const ClipboardLimits &limits, Content content);

    /// Since when this program has owned the selection.
    void setOwnedSince(xcb_timestamp_t time) { m_ownedSince = time; }

    void handle(const xcb_selection_request_event_t &request);
    void handle(const xcb_property_notify_event_t &event) { m_sends.handle(event); }
    void requestorIsGone(xcb_window_t requestor) { m_sends.requestorIsGone(requestor); }
    void check(X11IncrementalSends::Time now) { m_sends.check(now); }
    bool isIdle() const { return m_sends.isEmpty() && m_jobs.empty(); }

private:
    struct Conversion {
        xcb_atom_t target = XCB_ATOM_NONE;
        xcb_atom_t property = XCB_ATOM_NONE; // becomes None when it is refused
    };
    /// A request, until all its conversions are there.
    struct Job {
        xcb_selection_request_event_t request{};
        bool isMultiple = false;
        std::vector<Conversion> conversions;
        int pendingImages = 0;
    };

    std::vector<Conversion> conversionsOf(const xcb_selection_request_event_t &request, bool isMultiple);
    void convert(int id, size_t index);
    void placeTargets(xcb_window_t requestor, xcb_atom_t property);
    void placeTimestamp(xcb_window_t requestor, xcb_atom_t property);
    void place(xcb_window_t requestor, xcb_atom_t property, const QByteArray &type, const QByteArray &bytes);
    void encodeLater(int id, size_t index, const clipboard::PendingImage &image);
    void acceptImage(
        int id, size_t index, const clipboard::PendingImage &image, const std::optional<QByteArray> &encoded);
    void finishIfDone(int id);

    X11Connection &m_connection;
    ThreadInbox &m_inbox;
    const Content m_content;
    const qsizetype m_largestProperty;
    xcb_timestamp_t m_ownedSince = XCB_CURRENT_TIME;
    X11IncrementalSends m_sends;
    std::map<int, Job> m_jobs;
    int m_nextJob = 0;
    /// Last, so that it ends first.
    WorkThread m_encoder;
};
