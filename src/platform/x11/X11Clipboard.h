#pragma once

#include "platform/linux/ClipboardOwnContent.h"
#include "platform/linux/ClipboardPace.h"
#include "platform/linux/ThreadInbox.h"
#include "platform/linux/ThreadedPasteboard.h"
#include "platform/x11/X11ClipboardKeeper.h"
#include "platform/x11/X11ContentFetch.h"
#include "platform/x11/X11RetiredWindows.h"
#include "platform/x11/X11SelectionServer.h"

#include <QTimer>

#include <deque>
#include <list>

/// The CLIPBOARD selection: watches its owners, fetches their contents into the line, serves this program's
/// own content, and keeps the last content alive when its owner goes away. Lives on a thread of its own,
/// whose event loop drives it; destroying it cancels everything.
class X11Clipboard : public ClipboardFollower
{
public:
    /// Null when the server is not there or lacks XFixes 5. The inbox is that of this thread; the queue and
    /// the own content outlive it.
    static std::unique_ptr<X11Clipboard> open(
        ThreadInbox &inbox, ClipboardQueue &queue, ClipboardOwnContent &own, const ClipboardLimits &limits);
    ~X11Clipboard() override;

    void takeOverWithOwn() override;

private:
    /// What is served when this program owns the clipboard.
    enum class Served { Nothing, Own, Kept };
    using Time = std::chrono::steady_clock::time_point;

    X11Clipboard(std::unique_ptr<X11Connection> connection, uint8_t fixesEvent, ThreadInbox &inbox,
        ClipboardQueue &queue, ClipboardOwnContent &own, const ClipboardLimits &limits);

    void start();
    void fetchInitial(xcb_timestamp_t time);
    void onEvent(const xcb_generic_event_t &event);
    void onProperty(const xcb_property_notify_event_t &event);
    void onRequest(const xcb_selection_request_event_t &event);
    void onOwner(const xcb_generic_event_t &event);
    void onClipboardOwner(const xcb_generic_event_t &event);
    void onClosed();

    void leaveToOthers(uint32_t sequence);
    void fetch(qint64 number, xcb_timestamp_t time);
    void onReadable(const ContentFetch &fetch);
    void onEnded(const ContentFetch &fetch);
    void keep(qint64 number, const ClipboardContent &content);
    void publishCleared();
    void takeOverIfLeft();
    void acquire(Served served, xcb_timestamp_t time);
    void save(xcb_timestamp_t time, X11ClipboardKeeper::Answer answer);
    bool isFetchingLatest() const;
    void withServerTime(std::function<void(xcb_timestamp_t)> use);
    ClipboardContent served() const;

    void sweepLater();
    void sweep();
    void tick();
    void startTicking();

    const std::unique_ptr<X11Connection> m_connection;
    const uint8_t m_fixesEvent;
    ClipboardQueue &m_queue;
    ClipboardOwnContent &m_own;
    const ClipboardLimits m_limits;
    const xcb_window_t m_window;
    X11RetiredWindows m_retired;
    X11SelectionServer m_server;
    X11ClipboardKeeper m_keeper;

    Served m_served = Served::Nothing;
    Served m_acquiring = Served::Nothing;
    qint64 m_acquiredOwn = 0;

    /// The last content that was published, and its number.
    ClipboardContent m_kept;
    qint64 m_keptNumber = 0;
    /// The number of what the clipboard's owner of now holds.
    qint64 m_latest = 0;
    bool m_isLatestComplete = false;
    bool m_hasOtherOwner = false;
    /// When the owner went away, unless the clipboard has another one since.
    std::optional<xcb_timestamp_t> m_leftAt;

    std::list<std::unique_ptr<X11ContentFetch>> m_fetches;
    std::vector<X11ClipboardKeeper::Answer> m_saveAnswers;
    std::deque<std::function<void(xcb_timestamp_t)>> m_timeUses;
    QTimer m_ticks;
    QObject m_turns;
};
