#pragma once

#include "base/MainQueue.h"
#include "platform/EventPoster.h"
#include "platform/HotKeyCenter.h"
#include "platform/Pasteboard.h"
#include "platform/Screens.h"
#include "platform/StatusBar.h"
#include "platform/Workspace.h"
#include "platform/linux/ClipboardPace.h"

#include <memory>

/// What an X server offers, for the loader. Each is null when $DISPLAY names no server or the server lacks
/// what is needed, and each has a connection of its own.
namespace platform
{

/// CLIPBOARD as the general pasteboard (ICCCM section 2); needs the XFixes extension. Waits for the server to
/// take the connection, and for nothing else. The server going away leaves the pasteboard as it is then:
/// contents that wait are still shown, and own ones read. One line on the console says so.
std::unique_ptr<Pasteboard> makeX11Pasteboard(const ClipboardLimits &limits = {});

/// Never null where there is an X server.
std::unique_ptr<Workspace> makeX11Workspace();

/// Needs the XKB extension.
std::unique_ptr<HotKeyCenter> makeX11HotKeyCenter();

/// Needs the XKB and XTEST extensions. Both references must outlive it.
std::unique_ptr<EventPoster> makeX11EventPoster(MainQueue &queue, const Workspace &workspace);

/// Never null where there is an X server; wants a QGuiApplication.
std::unique_ptr<Screens> makeX11Screens();

/// Never null where there is an X server; its items need the RENDER extension.
std::unique_ptr<StatusBar> makeX11StatusBar();

} // namespace platform
