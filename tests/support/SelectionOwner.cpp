#include "support/SelectionOwner.h"

#include <QTimer>

#include <algorithm>

namespace
{

template<class Event>
const Event &as(const xcb_generic_event_t &event)
{
    return reinterpret_cast<const Event &>(event);
}

} // namespace

SelectionOwner::SelectionOwner(Offer offer, QByteArray selection)
    : m_offer(std::move(offer))
    , m_selection(std::move(selection))
    , m_connection(X11Connection::open())
    , m_window(xcb_generate_id(m_connection->get()))
{
    xcb_create_window(m_connection->get(), XCB_COPY_FROM_PARENT, m_window, m_connection->root(), 0, 0, 1, 1,
        0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    m_connection->onEvent = [this](const xcb_generic_event_t &event) { onEvent(event); };
}

SelectionOwner::~SelectionOwner() = default;

void SelectionOwner::own()
{
    const xcb_atom_t selection = m_connection->atom(m_selection);
    m_hasLost = false;
    xcb_set_selection_owner(m_connection->get(), m_window, selection, XCB_CURRENT_TIME);
    // The reply comes after the server has dealt with the request.
    const XcbReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        m_connection->get(), xcb_get_selection_owner(m_connection->get(), selection), nullptr));
    QTimer::singleShot(0, &m_turns, [this] {
        if (m_connection)
            m_connection->processEvents();
    });
}

void SelectionOwner::disown()
{
    xcb_set_selection_owner(
        m_connection->get(), XCB_WINDOW_NONE, m_connection->atom(m_selection), XCB_CURRENT_TIME);
    m_connection->flush();
}

void SelectionOwner::exit()
{
    if (!m_connection)
        return;
    // The server drops what a client sent just before it closed: a round trip makes sure of its last answer.
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection->get(), xcb_get_input_focus(m_connection->get()), nullptr));
    m_connection.reset();
}

void SelectionOwner::askToSave()
{
    xcb_convert_selection(m_connection->get(), m_window, m_connection->atom("CLIPBOARD_MANAGER"),
        m_connection->atom("SAVE_TARGETS"), m_connection->atom("SAVED"), XCB_CURRENT_TIME);
    m_connection->flush();
}

void SelectionOwner::onEvent(const xcb_generic_event_t &event)
{
    switch (event.response_type & 0x7fU) {
    case XCB_SELECTION_REQUEST:
        onRequest(as<xcb_selection_request_event_t>(event));
        break;
    case XCB_SELECTION_CLEAR:
        m_hasLost = true;
        if (exitsOnLoss)
            QTimer::singleShot(0, &m_turns, [this] { exit(); });
        break;
    case XCB_SELECTION_NOTIFY:
        m_isSaved = as<xcb_selection_notify_event_t>(event).property != XCB_ATOM_NONE;
        break;
    case XCB_PROPERTY_NOTIFY:
        onDeleted(as<xcb_property_notify_event_t>(event));
        break;
    default:
        break;
    }
}

void SelectionOwner::onRequest(const xcb_selection_request_event_t &request)
{
    const QByteArray target = m_connection->atomName(request.target);
    m_requests.append(target);
    if (isSilent)
        return;
    if (target == "TARGETS" && !refusesTargets) {
        placeTargets(request);
        notify(request, request.property);
        return;
    }
    const auto offered = m_offer.find(target);
    if (offered != m_offer.end() && offered->second.delivery == OfferedValue::Delivery::Never)
        return;
    notify(request, place(request, target) ? request.property : static_cast<xcb_atom_t>(XCB_ATOM_NONE));
}

void SelectionOwner::placeTargets(const xcb_selection_request_event_t &request)
{
    std::vector<xcb_atom_t> atoms = {m_connection->atom("TARGETS"), m_connection->atom("DELETE"),
        m_connection->atom("SAVE_TARGETS"), m_connection->atom("TIMESTAMP")};
    for (const auto &[target, value] : m_offer)
        atoms.push_back(m_connection->atom(target));
    xcb_change_property(m_connection->get(), XCB_PROP_MODE_REPLACE, request.requestor, request.property,
        XCB_ATOM_ATOM, 32, static_cast<uint32_t>(atoms.size()), atoms.data());
}

bool SelectionOwner::place(const xcb_selection_request_event_t &request, const QByteArray &target)
{
    const auto offered = m_offer.find(target);
    if (offered == m_offer.end() || offered->second.delivery == OfferedValue::Delivery::Refused)
        return false;
    const OfferedValue &value = offered->second;
    const xcb_atom_t type = value.type.isEmpty() ? request.target : m_connection->atom(value.type);
    if (value.delivery == OfferedValue::Delivery::AtOnce) {
        xcb_change_property(m_connection->get(), XCB_PROP_MODE_REPLACE, request.requestor, request.property,
            type, 8, static_cast<uint32_t>(value.bytes.size()), value.bytes.constData());
        return true;
    }
    const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection->get(), request.requestor, XCB_CW_EVENT_MASK, &mask);
    const uint32_t claimed = value.claimedBytes.value_or(static_cast<uint32_t>(value.bytes.size()));
    xcb_change_property(m_connection->get(), XCB_PROP_MODE_REPLACE, request.requestor, request.property,
        m_connection->atom("INCR"), 32, 1, &claimed);
    m_sends.push_back({request.requestor, request.property, &value, type});
    return true;
}

void SelectionOwner::notify(const xcb_selection_request_event_t &request, xcb_atom_t property)
{
    union {
        xcb_selection_notify_event_t event;
        char bytes[32];
    } message{};
    message.event.response_type = XCB_SELECTION_NOTIFY;
    message.event.time = request.time;
    message.event.requestor = request.requestor;
    message.event.selection = request.selection;
    message.event.target = request.target;
    message.event.property = property;
    xcb_send_event(m_connection->get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, message.bytes);
}

void SelectionOwner::onDeleted(const xcb_property_notify_event_t &event)
{
    const auto send = std::find_if(m_sends.begin(), m_sends.end(), [&](const Send &candidate) {
        return candidate.requestor == event.window && candidate.property == event.atom &&
            event.state == XCB_PROPERTY_DELETE;
    });
    if (send == m_sends.end())
        return;
    const auto index = static_cast<size_t>(send - m_sends.begin());
    if (send->value->chunkDelay.count() == 0) {
        sendChunk(index);
        return;
    }
    QTimer::singleShot(send->value->chunkDelay, &m_turns, [this, index] {
        if (m_connection)
            sendChunk(index);
    });
}

/// The last one is empty.
void SelectionOwner::sendChunk(size_t index)
{
    Send &send = m_sends[index];
    if (send.chunks == send.value->chunksBeforeDeath) {
        QTimer::singleShot(0, &m_turns, [this] { exit(); });
        return;
    }
    const qsizetype count = std::min(send.value->chunkBytes, send.value->bytes.size() - send.offset);
    xcb_change_property(m_connection->get(), XCB_PROP_MODE_REPLACE, send.requestor, send.property, send.type,
        8, static_cast<uint32_t>(count), send.value->bytes.constData() + send.offset);
    m_connection->flush();
    send.offset += count;
    ++send.chunks;
}
