#include "platform/x11/X11IncrementalSends.h"

#include "platform/x11/X11Properties.h"

#include <algorithm>
#include <limits>

namespace
{

constexpr qsizetype LargestChunk = 1024LL * 1024;

void selectEvents(X11Connection &connection, xcb_window_t window, uint32_t mask)
{
    xcb_change_window_attributes(connection.get(), window, XCB_CW_EVENT_MASK, &mask);
}

} // namespace

X11IncrementalSends::X11IncrementalSends(X11Connection &connection, std::chrono::milliseconds stalledAfter)
    : m_connection(connection)
    , m_stalledAfter(stalledAfter)
    , m_chunkBytes(std::min(LargestChunk, x11::largestProperty(connection)))
{
}

void X11IncrementalSends::start(
    xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type, const QByteArray &bytes)
{
    std::erase_if(
        m_sends, [&](const Send &send) { return send.requestor == requestor && send.property == property; });
    m_sends.push_back({requestor, property, type, bytes, 0, std::chrono::steady_clock::now()});
    selectEvents(m_connection, requestor, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    const auto size =
        static_cast<uint32_t>(std::min<qint64>(bytes.size(), std::numeric_limits<int32_t>::max()));
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, requestor, property,
        m_connection.atom("INCR"), 32, 1, &size);
}

void X11IncrementalSends::handle(const xcb_property_notify_event_t &event)
{
    if (event.state != XCB_PROPERTY_DELETE)
        return;
    const auto send = std::find_if(m_sends.begin(), m_sends.end(), [&](const Send &candidate) {
        return candidate.requestor == event.window && candidate.property == event.atom;
    });
    if (send == m_sends.end() || sendChunk(*send))
        return;
    m_sends.erase(send);
    leave(event.window);
}

/// False when that was the last one: empty, which is how the requestor knows.
bool X11IncrementalSends::sendChunk(Send &send)
{
    const qsizetype count = std::min(m_chunkBytes, send.bytes.size() - send.offset);
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, send.requestor, send.property, send.type,
        8, static_cast<uint32_t>(count), send.bytes.constData() + send.offset);
    send.offset += count;
    send.progress = std::chrono::steady_clock::now();
    return count > 0;
}

void X11IncrementalSends::requestorIsGone(xcb_window_t requestor)
{
    std::erase_if(m_sends, [&](const Send &send) { return send.requestor == requestor; });
}

void X11IncrementalSends::check(Time now)
{
    const auto isStalled = [&](const Send &send) { return now - send.progress >= m_stalledAfter; };
    for (auto stalled = std::find_if(m_sends.begin(), m_sends.end(), isStalled); stalled != m_sends.end();
         stalled = std::find_if(m_sends.begin(), m_sends.end(), isStalled)) {
        const xcb_window_t requestor = stalled->requestor;
        m_sends.erase(stalled);
        leave(requestor);
    }
}

void X11IncrementalSends::leave(xcb_window_t requestor)
{
    const bool isLast = std::none_of(
        m_sends.begin(), m_sends.end(), [&](const Send &send) { return send.requestor == requestor; });
    if (isLast)
        selectEvents(m_connection, requestor, XCB_EVENT_MASK_NO_EVENT);
}
