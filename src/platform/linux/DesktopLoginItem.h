#pragma once

#include "base/MainQueue.h"
#include "platform/LoginItem.h"

#include <memory>

namespace platform
{

/// The login item of the running program: by the desktop portal where the program runs in a sandbox, whose
/// folders are not the desktop's, else as an autostart entry. An error with the reason where neither can be
/// had. Needs a QCoreApplication. The queue must outlive it.
Result<std::unique_ptr<LoginItem>> makeDesktopLoginItem(MainQueue &queue);

/// Whether the program with the path runs in a sandbox: where a Flatpak has its description, there is such a
/// file, or the program is in the folder $SNAP. (Programs that a snap starts inherit the variable, too.)
bool isSandboxed(const QString &programPath, const QString &flatpakDescription);

} // namespace platform
