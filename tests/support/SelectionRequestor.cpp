#include "support/SelectionRequestor.h"

#include "support/Waiting.h"

#include <algorithm>

SelectionRequestor::SelectionRequestor(QByteArray selection)
    : m_selection(std::move(selection))
    , m_connection(X11Connection::open())
    , m_window(xcb_generate_id(m_connection->get()))
{
    const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection->get(), XCB_COPY_FROM_PARENT, m_window, m_connection->root(), 0, 0, 1, 1,
        0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    m_connection->onEvent = [this](const xcb_generic_event_t &event) { onEvent(event); };
}

SelectionRequestor::~SelectionRequestor() = default;

xcb_atom_t SelectionRequestor::propertyFor(const QByteArray &target)
{
    return m_connection->atom(isObsolete ? target : "PASTED " + target);
}

void SelectionRequestor::request(const QByteArray &target)
{
    const xcb_atom_t property = propertyFor(target);
    m_transfers[property] = {target, {}, false, false};
    xcb_convert_selection(m_connection->get(), m_window, m_connection->atom(m_selection),
        m_connection->atom(target), isObsolete ? static_cast<xcb_atom_t>(XCB_ATOM_NONE) : property,
        XCB_CURRENT_TIME);
    m_connection->flush();
}

void SelectionRequestor::requestMultiple(const QByteArrayList &targets)
{
    m_isMultipleAnswered = false;
    std::vector<xcb_atom_t> pairs;
    for (const QByteArray &target : targets) {
        const xcb_atom_t property = propertyFor(target);
        m_transfers[property] = {target, {}, false, false};
        pairs.insert(pairs.end(), {m_connection->atom(target), property});
    }
    const xcb_atom_t list = m_connection->atom("PAIRS");
    xcb_change_property(m_connection->get(), XCB_PROP_MODE_REPLACE, m_window, list,
        m_connection->atom("ATOM_PAIR"), 32, static_cast<uint32_t>(pairs.size()), pairs.data());
    xcb_convert_selection(m_connection->get(), m_window, m_connection->atom(m_selection),
        m_connection->atom("MULTIPLE"), list, XCB_CURRENT_TIME);
    m_connection->flush();
}

std::optional<SelectionRequestor::Reply> SelectionRequestor::reply(const QByteArray &target) const
{
    for (const auto &[property, transfer] : m_transfers) {
        if (transfer.target == target && transfer.isDone)
            return transfer.reply;
    }
    return std::nullopt;
}

bool SelectionRequestor::hasMultiple() const
{
    return m_isMultipleAnswered.value_or(false) &&
        std::all_of(m_transfers.begin(), m_transfers.end(),
            [](const auto &transfer) { return transfer.second.isDone; });
}

SelectionRequestor::Reply SelectionRequestor::paste(const QByteArray &target)
{
    request(target);
    if (!waitUntil([&] { return reply(target).has_value(); }))
        return {true, false, "no answer", {}};
    return *reply(target);
}

QByteArrayList SelectionRequestor::targets()
{
    const Reply list = paste("TARGETS");
    QByteArrayList names;
    for (qsizetype at = 0; at + 4 <= list.bytes.size(); at += 4) {
        xcb_atom_t atom = XCB_ATOM_NONE;
        memcpy(&atom, list.bytes.constData() + at, sizeof atom);
        const QByteArray name = m_connection->atomName(atom);
        if (name != "TARGETS" && name != "MULTIPLE" && name != "TIMESTAMP")
            names.append(name);
    }
    return names;
}

xcb_window_t SelectionRequestor::owner()
{
    const XcbReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(m_connection->get(),
        xcb_get_selection_owner(m_connection->get(), m_connection->atom(m_selection)), nullptr));
    m_connection->processEvents();
    return reply->owner;
}

/// This client itself wants to know of properties only.
bool SelectionRequestor::isWatched()
{
    const XcbReply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        m_connection->get(), xcb_get_window_attributes(m_connection->get(), m_window), nullptr));
    m_connection->processEvents();
    return (reply->all_event_masks & XCB_EVENT_MASK_STRUCTURE_NOTIFY) != 0;
}

void SelectionRequestor::onEvent(const xcb_generic_event_t &event)
{
    const uint8_t type = event.response_type & 0x7fU;
    if (type == XCB_SELECTION_NOTIFY) {
        onAnswer(reinterpret_cast<const xcb_selection_notify_event_t &>(event));
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto &change = reinterpret_cast<const xcb_property_notify_event_t &>(event);
        if (change.state == XCB_PROPERTY_NEW_VALUE)
            onChunk(change.atom);
    }
}

void SelectionRequestor::onAnswer(const xcb_selection_notify_event_t &event)
{
    if (event.target == m_connection->atom("MULTIPLE")) {
        onMultiple(event.property);
        return;
    }
    const QByteArray target = m_connection->atomName(event.target);
    for (auto &[property, transfer] : m_transfers) {
        if (transfer.target != target || transfer.isDone)
            continue;
        transfer.reply.isRefused = event.property == XCB_ATOM_NONE;
        transfer.isDone = transfer.reply.isRefused;
        if (!transfer.isDone)
            readAnswer(property, transfer);
    }
}

/// Refused conversions are those whose property the owner has replaced by None.
void SelectionRequestor::onMultiple(xcb_atom_t property)
{
    m_isMultipleAnswered = property != XCB_ATOM_NONE;
    const auto list = read(property);
    const auto *const pairs = static_cast<const xcb_atom_t *>(xcb_get_property_value(list.get()));
    for (uint32_t i = 0; i + 1 < list->value_len; i += 2) {
        if (pairs[i + 1] == XCB_ATOM_NONE) {
            Transfer &refused = m_transfers[propertyFor(m_connection->atomName(pairs[i]))];
            refused.reply.isRefused = true;
            refused.isDone = true;
        } else {
            readAnswer(pairs[i + 1], m_transfers[pairs[i + 1]]);
        }
    }
}

void SelectionRequestor::readAnswer(xcb_atom_t property, Transfer &transfer)
{
    const auto answer = read(property);
    transfer.reply.type = m_connection->atomName(answer->type);
    if (transfer.reply.type == "INCR") {
        transfer.isIncremental = true;
        transfer.reply.wasIncremental = true;
        return;
    }
    transfer.reply.bytes = QByteArray(static_cast<const char *>(xcb_get_property_value(answer.get())),
        xcb_get_property_value_length(answer.get()));
    transfer.isDone = true;
}

void SelectionRequestor::onChunk(xcb_atom_t property)
{
    const auto found = m_transfers.find(property);
    if (found == m_transfers.end() || !found->second.isIncremental || found->second.isDone || stalls)
        return;
    const auto chunk = read(property);
    if (chunk->type == XCB_ATOM_NONE)
        return;
    Transfer &transfer = found->second;
    transfer.reply.type = m_connection->atomName(chunk->type);
    const int count = xcb_get_property_value_length(chunk.get());
    transfer.reply.bytes.append(static_cast<const char *>(xcb_get_property_value(chunk.get())), count);
    transfer.isDone = count == 0;
}

XcbReply<xcb_get_property_reply_t> SelectionRequestor::read(xcb_atom_t property)
{
    constexpr uint32_t Everything = 0x1fffffff;
    return XcbReply<xcb_get_property_reply_t>(xcb_get_property_reply(m_connection->get(),
        xcb_get_property(
            m_connection->get(), 1, m_window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, Everything),
        nullptr));
}
