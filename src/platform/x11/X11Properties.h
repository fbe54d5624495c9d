#pragma once

#include "platform/x11/X11Connection.h"

#include <vector>

/// Properties and selection answers, in the words of ICCCM section 2.
namespace x11
{

/// How many bytes a property may have so that one request sets it.
qsizetype largestProperty(X11Connection &connection);

void setAtoms(X11Connection &connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
    const std::vector<xcb_atom_t> &atoms);

/// The atoms of a list that another client set; empty when there is none. It waits for the server, not the
/// client.
std::vector<xcb_atom_t> atomsOf(X11Connection &connection, xcb_window_t window, xcb_atom_t property);

/// Tells a requestor that its conversion is done, or with property None that it is refused.
void notifyRequestor(
    X11Connection &connection, const xcb_selection_request_event_t &request, xcb_atom_t property);

} // namespace x11
