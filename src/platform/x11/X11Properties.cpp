#include "platform/x11/X11Properties.h"

#include <algorithm>

namespace x11
{
namespace
{

/// A list of atoms that another client sends is no longer than this.
constexpr uint32_t MaximumAtoms = 4096;

} // namespace

qsizetype largestProperty(X11Connection &connection)
{
    constexpr qsizetype RequestHeader = 64;
    return qsizetype(xcb_get_maximum_request_length(connection.get())) * 4 - RequestHeader;
}

void setAtoms(X11Connection &connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
    const std::vector<xcb_atom_t> &atoms)
{
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
        static_cast<uint32_t>(atoms.size()), atoms.data());
}

std::vector<xcb_atom_t> atomsOf(X11Connection &connection, xcb_window_t window, xcb_atom_t property)
{
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection.get(),
        xcb_get_property(connection.get(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, MaximumAtoms),
        nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto *const atoms = static_cast<const xcb_atom_t *>(xcb_get_property_value(reply.get()));
    return {atoms, atoms + reply->value_len};
}

void notifyRequestor(
    X11Connection &connection, const xcb_selection_request_event_t &request, xcb_atom_t property)
{
    // Sent events are 32 bytes long whatever they say.
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
    xcb_send_event(connection.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, message.bytes);
}

} // namespace x11
