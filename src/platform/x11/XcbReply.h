#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

/// Frees what XCB allocates with malloc: replies, errors, events.
struct XcbFree {
    void operator()(void *memory) const { std::free(memory); }
};

/// A reply, error or event of XCB's; null when the request failed.
template<class T>
using XcbReply = std::unique_ptr<T, XcbFree>;
