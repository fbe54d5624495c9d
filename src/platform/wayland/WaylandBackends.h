#pragma once

#include "base/MainQueue.h"
#include "platform/EventPoster.h"
#include "platform/Pasteboard.h"
#include "platform/Screens.h"
#include "platform/Workspace.h"
#include "platform/linux/ClipboardPace.h"

#include <memory>

/// What a Wayland compositor offers, for the loader. Each back end is null when $WAYLAND_DISPLAY names no
/// compositor or the compositor lacks what is needed, and each has a connection of its own.
namespace platform
{

/// Whether there is a compositor that takes connections.
bool hasWaylandCompositor();
/// Whether it lends its clipboard to programs without a window.
bool hasWaylandClipboard();

/// Needs ext-data-control-v1 or wlr-data-control. Waits for the compositor to take the connection, and for
/// nothing else. The compositor going away leaves the pasteboard as it is then: contents that wait are still
/// shown, and own ones read. One line on the console says so.
std::unique_ptr<Pasteboard> makeWaylandPasteboard(const ClipboardLimits &limits = {});

/// Needs wlr-foreign-toplevel-management or KWin's window management.
std::unique_ptr<Workspace> makeWaylandWorkspace();

/// Needs virtual-keyboard-v1 or KWin's fake input. Both references must outlive it.
std::unique_ptr<EventPoster> makeWaylandEventPoster(MainQueue &queue, const Workspace &workspace);

/// Never null where there is a compositor; wants a QGuiApplication.
std::unique_ptr<Screens> makeWaylandScreens();

} // namespace platform
