#include "platform/PlatformLoader.h"

#include "base/Console.h"
#include "platform/linux/ApplicationEvents.h"
#include "platform/linux/DBusSingleInstance.h"
#include "platform/linux/DesktopAppearance.h"
#include "platform/linux/DesktopHotKeys.h"
#include "platform/linux/DesktopLoginItem.h"
#include "platform/linux/DesktopScripting.h"
#include "platform/linux/DesktopSound.h"
#include "platform/linux/PartialEventPoster.h"
#include "platform/linux/SilentWorkspace.h"
#include "platform/linux/StatusNotifierBar.h"
#include "platform/linux/SystemLog.h"
#include "platform/null/NullBackends.h"
#include "platform/null/NullLoginItem.h"
#include "platform/wayland/WaylandBackends.h"
#include "platform/x11/X11Backends.h"

namespace platform
{
namespace
{

/// The back end, or the one that does nothing, with the reason on the console.
template<class Port, class NullBackend>
std::unique_ptr<Port> orNull(std::unique_ptr<Port> backend, const char *reason)
{
    if (backend)
        return backend;
    consoleLine(QStringLiteral("[Larkspool] ") + QString::fromLatin1(reason));
    return std::make_unique<NullBackend>();
}

/// Beside a compositor the X server that it keeps reaches just that server's own clients.
std::unique_ptr<EventPoster> makeEventPoster(MainQueue &queue, const Workspace &workspace)
{
    if (auto poster = makeWaylandEventPoster(queue, workspace))
        return poster;
    auto poster = makeX11EventPoster(queue, workspace);
    if (!poster || !hasWaylandCompositor())
        return poster;
    auto clients = makeX11Workspace();
    return clients ? std::make_unique<PartialEventPoster>(std::move(poster), std::move(clients)) : nullptr;
}

} // namespace

std::unique_ptr<Pasteboard> loadPasteboard()
{
    auto pasteboard = makeWaylandPasteboard();
    // Where a compositor lends its clipboard to nobody, it keeps its X server's in step.
    return orNull<Pasteboard, NullPasteboard>(pasteboard ? std::move(pasteboard) : makeX11Pasteboard(),
        "No clipboard: this desktop session has neither a data-control protocol nor an X server with the "
        "XFixes extension");
}

std::unique_ptr<Workspace> loadWorkspace()
{
    if (auto workspace = makeWaylandWorkspace())
        return workspace;
    auto workspace = makeX11Workspace();
    if (hasWaylandCompositor())
        return std::make_unique<SilentWorkspace>(std::move(workspace));
    return orNull<Workspace, NullWorkspace>(
        std::move(workspace), "No frontmost application: this desktop session has no display");
}

std::unique_ptr<HotKeyCenter> loadHotKeyCenter(MainQueue &queue)
{
    return orNull<HotKeyCenter, NullHotKeyCenter>(
        hasWaylandCompositor() ? makePortalHotKeyCenter(queue) : makeX11HotKeyCenter(),
        "No hot key: this desktop session has neither a shortcuts portal nor an X server with the XKB "
        "extension");
}

std::unique_ptr<EventPoster> loadEventPoster(MainQueue &queue, const Workspace &workspace)
{
    return orNull<EventPoster, NullEventPoster>(makeEventPoster(queue, workspace),
        "No paste keys: this desktop session has neither a virtual keyboard nor an X server with the XTEST "
        "extension");
}

std::unique_ptr<ScriptingService> loadScriptingService(const Workspace &workspace)
{
    const auto canPressKeys = [&workspace, isX11Session = !hasWaylandCompositor()] {
        EventLoopQueue queue;
        return isX11Session && makeX11EventPoster(queue, workspace);
    };
    return makeDesktopScripting(workspace, canPressKeys);
}

std::unique_ptr<SingleInstance> loadSingleInstance()
{
    // Nothing to tell: without a bus the store's lock still lets one instance in at a time.
    if (auto instance = makeDBusSingleInstance())
        return instance;
    return std::make_unique<NullSingleInstance>();
}

std::unique_ptr<StatusBar> loadStatusBar()
{
    return makeStatusNotifierBar(makeX11StatusBar());
}

std::unique_ptr<LocalEvents> loadLocalEvents()
{
    return std::make_unique<ApplicationEvents>();
}

std::unique_ptr<LoginItem> loadLoginItem(MainQueue &queue)
{
    auto item = makeDesktopLoginItem(queue);
    if (item)
        return std::move(item).value();
    return std::make_unique<NullLoginItem>(item.error().description);
}

std::unique_ptr<Screens> loadScreens()
{
    return orNull<Screens, NullScreens>(hasWaylandCompositor() ? makeWaylandScreens() : makeX11Screens(),
        "No screens: this desktop session has no display");
}

std::unique_ptr<UnifiedLog> loadUnifiedLog()
{
    return makeSystemLog();
}

std::unique_ptr<Appearance> loadAppearance(MainQueue &queue)
{
    return makeDesktopAppearance(queue);
}

std::unique_ptr<SystemSound> loadSystemSound()
{
    return makeDesktopSound();
}

} // namespace platform
