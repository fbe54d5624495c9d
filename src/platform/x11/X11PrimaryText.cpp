#include "platform/x11/X11PrimaryText.h"

#include "platform/linux/ClipboardPace.h"
#include "platform/x11/X11Properties.h"

#include <QString>

namespace
{

// What the store keeps of a text, and how long a requestor may take nothing.
constexpr ClipboardLimits Limits;

} // namespace

X11PrimaryText::X11PrimaryText(X11Connection &connection, X11Clock &clock)
    : m_connection(connection)
    , m_clock(clock)
    , m_sends(connection, Limits.stalledReceiver)
    , m_retired(connection)
{
}

void X11PrimaryText::takeClipboard(const std::function<void(bool isTaken)> &onDone)
{
    const auto onResult = [this, onDone](const X11SelectionReceiver::Result &result) {
        const bool isText = result.outcome == X11SelectionReceiver::Outcome::Delivered && result.format == 8;
        if (isText)
            claim(result.bytes);
        onDone(isText);
    };
    m_retired.check(std::chrono::steady_clock::now());
    m_receiver = std::make_unique<X11SelectionReceiver>(m_connection, m_retired,
        X11SelectionReceiver::Callbacks{.onProgress = [](qint64) {}, .onDone = onResult});
    m_receiver->request(
        m_connection.atom("CLIPBOARD"), m_connection.atom("UTF8_STRING"), m_clock.now(), Limits.target);
    m_connection.flush();
}

void X11PrimaryText::cancel()
{
    m_receiver.reset();
    m_connection.flush();
}

void X11PrimaryText::claim(const QByteArray &utf8)
{
    m_connection.internAtoms({"TARGETS", "TIMESTAMP", "MULTIPLE", "ATOM_PAIR", "INCR", "UTF8_STRING", "TEXT",
        "text/plain", "text/plain;charset=utf-8"});
    m_text = utf8;
    // From within an event's delivery this is that event's time, which is a true one as well.
    m_since = m_clock.now();
    xcb_set_selection_owner(m_connection.get(), m_clock.window(), XCB_ATOM_PRIMARY, m_since);
    m_isOwner = true;
    m_connection.flush();
}

void X11PrimaryText::note(const xcb_generic_event_t &event)
{
    switch (event.response_type & 0x7f) {
    case XCB_SELECTION_REQUEST:
        onSelectionRequest(reinterpret_cast<const xcb_selection_request_event_t &>(event));
        break;
    case XCB_SELECTION_CLEAR:
        if (reinterpret_cast<const xcb_selection_clear_event_t &>(event).selection != XCB_ATOM_PRIMARY)
            break;
        // Sends that are under way have their own share of the bytes.
        m_isOwner = false;
        m_text.clear();
        break;
    case XCB_PROPERTY_NOTIFY:
        m_sends.handle(reinterpret_cast<const xcb_property_notify_event_t &>(event));
        if (m_receiver)
            m_receiver->handle(reinterpret_cast<const xcb_property_notify_event_t &>(event));
        break;
    case XCB_SELECTION_NOTIFY:
        m_retired.answered(reinterpret_cast<const xcb_selection_notify_event_t &>(event).requestor);
        if (m_receiver)
            m_receiver->handle(reinterpret_cast<const xcb_selection_notify_event_t &>(event));
        break;
    case XCB_DESTROY_NOTIFY:
        m_sends.requestorIsGone(reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window);
        break;
    default:
        break;
    }
}

void X11PrimaryText::onSelectionRequest(const xcb_selection_request_event_t &request)
{
    m_sends.check(std::chrono::steady_clock::now());
    // An obsolete client gives no property (ICCCM section 2.2): the target's name serves.
    const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
    bool isDone = m_isOwner && request.selection == XCB_ATOM_PRIMARY;
    if (isDone && request.target == m_connection.atom("MULTIPLE"))
        isDone = request.property != XCB_ATOM_NONE && convertMultiple(request.requestor, property);
    else if (isDone)
        isDone = convert(request.requestor, request.target, property);
    x11::notifyRequestor(m_connection, request, isDone ? property : static_cast<xcb_atom_t>(XCB_ATOM_NONE));
    m_connection.flush();
}

bool X11PrimaryText::convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property)
{
    const xcb_atom_t utf8String = m_connection.atom("UTF8_STRING");
    if (target == m_connection.atom("TARGETS")) {
        sendTargets(requestor, property);
    } else if (target == m_connection.atom("TIMESTAMP")) {
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, requestor, property, XCB_ATOM_INTEGER,
            32, 1, &m_since);
    } else if (target == XCB_ATOM_STRING) {
        // STRING is Latin-1 (ICCCM section 2.6.2); what it lacks becomes a question mark.
        sendText(requestor, property, XCB_ATOM_STRING, QString::fromUtf8(m_text).toLatin1());
    } else if (target == m_connection.atom("TEXT")) {
        sendText(requestor, property, utf8String, m_text);
    } else if (target == utf8String || target == m_connection.atom("text/plain") ||
        target == m_connection.atom("text/plain;charset=utf-8")) {
        sendText(requestor, property, target, m_text);
    } else {
        return false;
    }
    return true;
}

void X11PrimaryText::sendTargets(xcb_window_t requestor, xcb_atom_t property)
{
    std::vector<xcb_atom_t> targets;
    for (const char *const name : {"TARGETS", "TIMESTAMP", "MULTIPLE", "UTF8_STRING", "STRING", "TEXT",
             "text/plain", "text/plain;charset=utf-8"})
        targets.push_back(m_connection.atom(name));
    x11::setAtoms(m_connection, requestor, property, XCB_ATOM_ATOM, targets);
}

bool X11PrimaryText::convertMultiple(xcb_window_t requestor, xcb_atom_t property)
{
    std::vector<xcb_atom_t> pairs = x11::atomsOf(m_connection, requestor, property);
    for (size_t i = 0; i + 1 < pairs.size(); i += 2) {
        if (!convert(requestor, pairs[i], pairs[i + 1]))
            pairs[i + 1] = XCB_ATOM_NONE;
    }
    x11::setAtoms(m_connection, requestor, property, m_connection.atom("ATOM_PAIR"), pairs);
    return !pairs.empty();
}

void X11PrimaryText::sendText(
    xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type, const QByteArray &bytes)
{
    if (bytes.size() > x11::largestProperty(m_connection)) {
        m_sends.start(requestor, property, type, bytes);
        return;
    }
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, requestor, property, type, 8,
        static_cast<uint32_t>(bytes.size()), bytes.constData());
}
