#pragma once

#include "platform/linux/ClipboardOwnContent.h"
#include "platform/linux/ClipboardPace.h"
#include "platform/linux/ThreadInbox.h"
#include "platform/linux/ThreadedPasteboard.h"
#include "platform/wayland/DataControlDevice.h"
#include "platform/wayland/PipeWriters.h"
#include "platform/wayland/WaylandContentFetch.h"
#include "platform/wayland/WaylandToplevels.h"

#include <QTimer>

#include <list>

/// The clipboard of a Wayland compositor (ext-data-control-v1, else wlr-data-control): watches what others
/// put there, fetches it into the line, serves this program's own content, and keeps the last content alive
/// when its owner goes away.
///
/// The compositor tells only that the clipboard is empty: because its owner has ended, or because somebody
/// has cleared it, which is to stay so. An owner that ends takes its windows along: the content is kept when
/// a window has gone shortly before, or goes at the same time, and in any case where the compositor does not
/// tell of windows.
///
/// With several seats the contents of all of them are taken, and this program's own goes to each.
class WaylandClipboard : public ClipboardFollower
{
public:
    /// Null when there is no compositor, or it lacks both protocols. The inbox is that of this thread; the
    /// queue and the own content outlive it.
    static std::unique_ptr<WaylandClipboard> open(
        ThreadInbox &inbox, ClipboardQueue &queue, ClipboardOwnContent &own, const ClipboardLimits &limits);
    ~WaylandClipboard() override;

    void takeOverWithOwn() override;
    void ownContentChanged() override;

private:
    struct Seat;
    using Offer = std::shared_ptr<DataControlOffer>;

    WaylandClipboard(std::unique_ptr<WaylandConnection> connection, const DataControlProtocol &protocol,
        const WaylandGlobal &manager, ThreadInbox &inbox, ClipboardQueue &queue, ClipboardOwnContent &own,
        const ClipboardLimits &limits);

    void addSeat(const WaylandGlobal &global);
    void removeSeat(uint32_t name);
    void onSelection(Seat &seat, const Offer &offer);
    void onClosed();

    void fetch(Seat &seat, qint64 number, const Offer &offer);
    void onReadable(const ContentFetch &fetch);
    void onEnded(const ContentFetch &fetch);
    void keep(qint64 number, const ClipboardContent &content);
    void onWindowClosed();
    bool isOwnerGone(const Seat &seat) const;
    void forgetCleared();
    void takeOverLater();
    void takeOverIfLeft(Seat &seat);

    void offerOwn();
    void offerAdditions();
    void offerTo(Seat &seat, const ClipboardContent &content);
    void send(const ClipboardContent &content, const QByteArray &type, FileDescriptor pipe);

    void sweep();
    void tick();
    void startTicking();

    const std::unique_ptr<WaylandConnection> m_connection;
    const DataControlProtocol &m_protocol;
    ThreadInbox &m_inbox;
    ClipboardQueue &m_queue;
    ClipboardOwnContent &m_own;
    const ClipboardLimits m_limits;
    /// A type that this program's own contents have, by which they are known when they come back.
    const QByteArray m_mark;
    WaylandObject m_manager;
    PipeWriters m_writers;
    int m_pendingImages = 0;
    bool m_isStarting = true;
    bool m_hasInitial = false;
    /// The own content has begun anew, and nobody else sees it yet.
    bool m_isTakingOver = false;

    /// The last content that was published, and its number.
    ClipboardContent m_kept;
    qint64 m_keptNumber = 0;

    std::list<std::unique_ptr<Seat>> m_seats;
    /// Null where the compositor does not tell of windows.
    const std::shared_ptr<WaylandToplevels> m_windows;
    std::chrono::steady_clock::time_point m_windowClosedAt;
    QTimer m_ticks;
    QTimer m_ownIsWritten;
    QTimer m_newsIsOver; ///< of windows, after the clipboard has become empty
    QObject m_turns;
    /// Last, so that it ends first.
    WorkThread m_encoder;
};
