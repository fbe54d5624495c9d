#include "platform/x11/X11Backends.h"

// In a program that is built without X11 every session is one without an X server.

namespace platform
{

std::unique_ptr<Pasteboard> makeX11Pasteboard(const ClipboardLimits &)
{
    return nullptr;
}

std::unique_ptr<Workspace> makeX11Workspace()
{
    return nullptr;
}

std::unique_ptr<HotKeyCenter> makeX11HotKeyCenter()
{
    return nullptr;
}

std::unique_ptr<EventPoster> makeX11EventPoster(MainQueue &, const Workspace &)
{
    return nullptr;
}

std::unique_ptr<Screens> makeX11Screens()
{
    return nullptr;
}

std::unique_ptr<StatusBar> makeX11StatusBar()
{
    return nullptr;
}

} // namespace platform
