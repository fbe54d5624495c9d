#pragma once

#include "platform/ScriptingService.h"
#include "platform/Workspace.h"

#include <functional>
#include <memory>

namespace platform
{

/// Scripts that press a key, by the services that desktops offer for it: the remote-desktop portal, else the
/// accessibility bus. `canPressKeys` says whether there is an X server that takes keys from programs; it is
/// asked when that matters. The workspace must outlive it. Never null; where nothing can be had each script
/// fails with the reason.
std::unique_ptr<ScriptingService> makeDesktopScripting(
    const Workspace &workspace, std::function<bool()> canPressKeys);

} // namespace platform
