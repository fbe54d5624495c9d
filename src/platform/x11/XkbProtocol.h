#pragma once

// XCB's header names a structure member `explicit`, which C++ reserves.
#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit
