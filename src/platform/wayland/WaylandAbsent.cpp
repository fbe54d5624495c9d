#include "platform/wayland/WaylandBackends.h"

// In a program that is built without Wayland every session is one without a compositor.

namespace platform
{

bool hasWaylandCompositor()
{
    return false;
}

bool hasWaylandClipboard()
{
    return false;
}

std::unique_ptr<Pasteboard> makeWaylandPasteboard(const ClipboardLimits &)
{
    return nullptr;
}

std::unique_ptr<Workspace> makeWaylandWorkspace()
{
    return nullptr;
}

std::unique_ptr<EventPoster> makeWaylandEventPoster(MainQueue &, const Workspace &)
{
    return nullptr;
}

std::unique_ptr<Screens> makeWaylandScreens()
{
    return nullptr;
}

} // namespace platform
