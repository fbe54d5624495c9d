#pragma once

#include "platform/linux/ClipboardContent.h"
#include "platform/linux/ClipboardPace.h"
#include "platform/linux/ClipboardTargets.h"
#include "platform/x11/X11SelectionReceiver.h"

#include <deque>
#include <memory>

/// Fetches one content of the clipboard from its owner, target after target: the list of targets, the secret
/// hint, what Larkspool reads, and then what keeps the content alive for other programs.
///
/// Life cycle: made at a change of owner; `start`; `onReadable` once, when everything that Larkspool reads is
/// there (or all of it that will ever be); `onEnded` once, with or without `onReadable` before. It may be
/// destroyed at any time, but not from within its callbacks.
class X11ContentFetch
{
public:
    using Time = ClipboardPace::Time;

    struct Callbacks {
        std::function<void(X11ContentFetch &)> onReadable;
        std::function<void(X11ContentFetch &)> onEnded;
    };

    X11ContentFetch(X11Connection &connection, X11RetiredWindows &retired, const ClipboardLimits &limits,
        qint64 number, Callbacks callbacks);

    /// The time is that of the event that told of the owner: an owner refuses what was asked before it owned.
    void start(xcb_timestamp_t time);

    qint64 number() const { return m_number; }
    const ClipboardContent &content() const { return m_content; }
    bool isReadable() const { return m_isReadable; }
    bool hasEnded() const { return m_step == Step::Ended; }
    /// Whether it ended because nothing more was to be fetched.
    bool isComplete() const { return m_isComplete; }

    /// Somebody else owns the clipboard since the event of that sequence number: nothing more can be asked.
    /// What is on its way from the old owner may still come.
    void ownerChanged(uint32_t sequence);
    /// The owner is no more.
    void ownerIsGone();
    /// Ends it when it has used up its time.
    void check(Time now, bool holdsBackOthers);

    void handle(const xcb_selection_notify_event_t &event);
    void handle(const xcb_property_notify_event_t &event);

private:
    enum class Step { Targets, Hint, Text, Other, Extra, Ended };
    struct Wanted {
        Step step;
        QByteArray target;
    };

    void ask(xcb_atom_t target, qint64 limit);
    void next();
    void accept(const X11SelectionReceiver::Result &result);
    void acceptTargets(const X11SelectionReceiver::Result &result);
    void acceptHint(const X11SelectionReceiver::Result &result);
    void acceptBytes(const X11SelectionReceiver::Result &result);
    void follow(const clipboard::FetchPlan &plan);
    void skipTooLarge(qint64 size);
    void makeReceiver();
    void becomeReadable();
    void end(bool isComplete);

    X11Connection &m_connection;
    X11RetiredWindows &m_retired;
    const ClipboardLimits m_limits;
    const qint64 m_number;
    const Callbacks m_callbacks;
    ClipboardPace m_pace;
    xcb_timestamp_t m_time = XCB_CURRENT_TIME;
    Step m_step = Step::Targets;
    QByteArray m_target;
    std::deque<Wanted> m_wanted;
    ClipboardContent m_content;
    qint64 m_extraBytes = 0;
    bool m_isSuperseded = false;
    bool m_isReadable = false;
    bool m_isComplete = false;
    bool m_hasSkipped = false;
    std::vector<std::unique_ptr<X11SelectionReceiver>> m_receivers; // the last one is in use
};
