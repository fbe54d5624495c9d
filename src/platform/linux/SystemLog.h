#pragma once

#include "platform/UnifiedLog.h"

#include <memory>

namespace platform
{

/// The system's log through syslog(3): facility user, priority info, identity "larkspool", each line as
/// "category: line". Where no log daemon listens the lines are lost, which nobody is told. Never null.
std::unique_ptr<UnifiedLog> makeSystemLog();

} // namespace platform
