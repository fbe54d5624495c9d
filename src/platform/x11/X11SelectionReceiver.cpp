#include "platform/x11/X11SelectionReceiver.h"

#include "platform/x11/X11RetiredWindows.h"

#include <QTimer>

#include <algorithm>
#include <cstring>

namespace
{

constexpr uint32_t SliceBytes = 1024 * 1024;

/// An owner may claim any size: more than this is believed when it comes.
constexpr qint64 LargestReserve = 256LL * 1024 * 1024;

qint64 byteCount(const xcb_get_property_reply_t &reply)
{
    return qint64(reply.value_len) * (reply.format / 8);
}

xcb_window_t makeWindow(X11Connection &connection)
{
    const xcb_window_t window = xcb_generate_id(connection.get());
    const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, window, connection.root(), -1, -1, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    return window;
}

} // namespace

X11SelectionReceiver::X11SelectionReceiver(
    X11Connection &connection, X11RetiredWindows &retired, Callbacks callbacks)
    : m_connection(connection)
    , m_retired(retired)
    , m_callbacks(std::move(callbacks))
    , m_property(connection.atom("LARKSPOOL_SELECTION"))
    , m_incremental(connection.atom("INCR"))
    , m_window(makeWindow(connection))
{
}

X11SelectionReceiver::~X11SelectionReceiver()
{
    if (m_isOpen)
        m_retired.add(m_window);
    else
        xcb_destroy_window(m_connection.get(), m_window);
}

void X11SelectionReceiver::request(
    xcb_atom_t selection, xcb_atom_t target, xcb_timestamp_t time, qint64 limit)
{
    m_result = {};
    m_isIncremental = false;
    m_limit = limit;
    m_state = State::AwaitingAnswer;
    m_isOpen = true;
    // What an owner left there without being asked is no part of the answer.
    xcb_delete_property(m_connection.get(), m_window, m_property);
    m_sequence =
        xcb_convert_selection(m_connection.get(), m_window, selection, target, m_property, time).sequence;
}

bool X11SelectionReceiver::isUnansweredSince(uint32_t sequence) const
{
    // Sequence numbers wrap around.
    return m_state == State::AwaitingAnswer && static_cast<int32_t>(m_sequence - sequence) > 0;
}

void X11SelectionReceiver::handle(const xcb_selection_notify_event_t &event)
{
    if (event.requestor != m_window || m_state != State::AwaitingAnswer)
        return;
    m_callbacks.onProgress(0);
    if (event.property == XCB_ATOM_NONE)
        finish(Outcome::Refused);
    else
        readFrom(State::ReadingProperty);
}

void X11SelectionReceiver::handle(const xcb_property_notify_event_t &event)
{
    const bool isChunk = event.window == m_window && event.atom == m_property &&
        event.state == XCB_PROPERTY_NEW_VALUE && m_state == State::AwaitingChunk;
    if (isChunk)
        readFrom(State::ReadingChunk);
}

void X11SelectionReceiver::readFrom(State state)
{
    m_state = state;
    m_offset = 0;
    readSlice();
}

void X11SelectionReceiver::readSlice()
{
    // The server deletes the property with its last slice, which tells an incremental owner to go on.
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection.get(),
        xcb_get_property(m_connection.get(), 1, m_window, m_property, XCB_GET_PROPERTY_TYPE_ANY, m_offset / 4,
            SliceBytes / 4),
        nullptr));
    if (!reply)
        finish(Outcome::Refused);
    else if (m_offset == 0)
        acceptStart(*reply);
    else
        acceptSlice(*reply);
}

/// The first slice of a property tells what it is.
void X11SelectionReceiver::acceptStart(const xcb_get_property_reply_t &reply)
{
    const bool isChunk = m_state == State::ReadingChunk;
    const qint64 total = m_result.bytes.size() + byteCount(reply) + reply.bytes_after;
    if (reply.type == XCB_ATOM_NONE && isChunk) {
        m_state = State::AwaitingChunk; // the event was about something that is gone again
    } else if (reply.type == XCB_ATOM_NONE) {
        finish(Outcome::Refused);
    } else if (reply.type == m_incremental && !isChunk) {
        startIncremental(reply);
    } else if (isChunk && byteCount(reply) == 0 && reply.bytes_after == 0) {
        finish(Outcome::Delivered); // an empty chunk is the end
    } else if (total > m_limit) {
        if (!isChunk)
            xcb_delete_property(m_connection.get(), m_window, m_property);
        finish(Outcome::TooLarge, total);
    } else {
        m_result.type = reply.type;
        m_result.format = reply.format;
        if (!isChunk)
            m_result.bytes.reserve(total);
        acceptSlice(reply);
    }
}

void X11SelectionReceiver::acceptSlice(const xcb_get_property_reply_t &reply)
{
    const qint64 count = byteCount(reply);
    m_result.bytes.append(static_cast<const char *>(xcb_get_property_value(&reply)), count);
    m_callbacks.onProgress(count);
    if (reply.bytes_after > 0 && count > 0) {
        m_offset += static_cast<uint32_t>(count);
        readNextSliceLater();
    } else if (m_state == State::ReadingChunk) {
        m_state = State::AwaitingChunk;
    } else {
        finish(Outcome::Delivered);
    }
}

/// The value is a lower bound of the size (ICCCM section 2.7.2).
void X11SelectionReceiver::startIncremental(const xcb_get_property_reply_t &reply)
{
    uint32_t claimed = 0;
    if (byteCount(reply) >= 4)
        std::memcpy(&claimed, xcb_get_property_value(&reply), sizeof claimed);
    m_isIncremental = true;
    if (claimed > m_limit) {
        finish(Outcome::TooLarge, claimed);
        return;
    }
    m_result.bytes.reserve(std::min<qint64>(claimed, LargestReserve));
    m_state = State::AwaitingChunk;
}

void X11SelectionReceiver::readNextSliceLater()
{
    QTimer::singleShot(0, &m_turns, [this] {
        readSlice();
        m_connection.processEvents();
    });
}

void X11SelectionReceiver::finish(Outcome outcome, qint64 size)
{
    m_state = State::Idle;
    // The owner of a transfer that is cut short has been told to go on: it writes to the window once more.
    m_isOpen = m_isIncremental && outcome != Outcome::Delivered;
    Result result = std::exchange(m_result, {});
    result.outcome = outcome;
    result.size = size;
    if (outcome != Outcome::Delivered)
        result.bytes.clear();
    else if (result.bytes.capacity() > result.bytes.size() + result.bytes.size() / 4)
        result.bytes.squeeze();
    m_callbacks.onDone(result);
}
