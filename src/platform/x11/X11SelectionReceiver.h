#pragma once

#include "platform/x11/X11Connection.h"

#include <QObject>

#include <functional>

class X11RetiredWindows;

/// Receives conversions of a selection, one at a time, on an unmapped window of its own (ICCCM sections 2.4
/// and 2.7.2): plain properties and incremental ones, read in slices so that no turn of the event loop is
/// long. It has no deadline of its own; destroying it cancels.
class X11SelectionReceiver
{
public:
    enum class Outcome {
        Delivered,
        Refused,  ///< the owner does not have the target, or its answer makes no sense
        TooLarge, ///< more than the limit: `size` says how much, as far as is known
    };
    struct Result {
        Outcome outcome = Outcome::Refused;
        QByteArray bytes;
        int format = 8; ///< bits a unit: 8, 16 or 32
        xcb_atom_t type = XCB_ATOM_NONE;
        qint64 size = 0;
    };
    struct Callbacks {
        std::function<void(qint64 bytes)> onProgress;
        /// The next `request` may be made from within, unless this transfer was too large and incremental:
        /// the owner goes on with it, so that the window is of no more use.
        std::function<void(const Result &)> onDone;
    };

    X11SelectionReceiver(X11Connection &connection, X11RetiredWindows &retired, Callbacks callbacks);
    ~X11SelectionReceiver();
    X11SelectionReceiver(const X11SelectionReceiver &) = delete;
    X11SelectionReceiver &operator=(const X11SelectionReceiver &) = delete;

    void request(xcb_atom_t selection, xcb_atom_t target, xcb_timestamp_t time, qint64 limit);

    /// Whether the owner has yet to answer a request that the server got after the event of that sequence
    /// number.
    bool isUnansweredSince(uint32_t sequence) const;
    /// Whether all that is still to come is in the server already, so that the owner is not needed any more.
    bool hasEverything() const { return m_state == State::ReadingProperty; }

    void handle(const xcb_selection_notify_event_t &event);
    void handle(const xcb_property_notify_event_t &event);

private:
    enum class State { Idle, AwaitingAnswer, ReadingProperty, AwaitingChunk, ReadingChunk };

    void readFrom(State state);
    void readSlice();
    void acceptStart(const xcb_get_property_reply_t &reply);
    void acceptSlice(const xcb_get_property_reply_t &reply);
    void startIncremental(const xcb_get_property_reply_t &reply);
    void readNextSliceLater();
    void finish(Outcome outcome, qint64 size = 0);

    X11Connection &m_connection;
    X11RetiredWindows &m_retired;
    const Callbacks m_callbacks;
    const xcb_atom_t m_property;
    const xcb_atom_t m_incremental;
    const xcb_window_t m_window;
    State m_state = State::Idle;
    bool m_isIncremental = false;
    bool m_isOpen = false; ///< the owner may still write to the window
    uint32_t m_sequence = 0;
    qint64 m_limit = 0;
    uint32_t m_offset = 0; // into the property at hand, in bytes
    Result m_result;
    QObject m_turns; // ends the turns that are still to come
};
