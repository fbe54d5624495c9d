#pragma once

#include "base/MainQueue.h"
#include "platform/HotKeyCenter.h"

#include <memory>

namespace platform
{

/// Hot keys by way of the desktop portal. Null without a session bus; whether the desktop has the portal
/// turns out with the first hot key. The queue must outlive it.
std::unique_ptr<HotKeyCenter> makePortalHotKeyCenter(MainQueue &queue);

} // namespace platform
