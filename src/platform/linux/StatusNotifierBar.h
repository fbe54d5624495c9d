#pragma once

#include "platform/StatusBar.h"

namespace platform
{

/// A bar whose items show by D-Bus (StatusNotifierItem) wherever there is a tray for them, and in the older
/// bar, which may be null, wherever there is none. An item is in one of them at a time; it moves as trays
/// come and go. On the session bus, or the one at `busAddress` if that is not empty. Never null.
std::unique_ptr<StatusBar> makeStatusNotifierBar(
    std::unique_ptr<StatusBar> older, const QString &busAddress = {});

} // namespace platform
