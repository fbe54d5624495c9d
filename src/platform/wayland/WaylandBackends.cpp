#include "platform/wayland/WaylandBackends.h"

#include "platform/wayland/FakeInputPoster.h"
#include "platform/wayland/VirtualKeyboardPoster.h"
#include "platform/wayland/WaylandClipboard.h"
#include "platform/wayland/WaylandWorkspace.h"

#include <QGuiApplication>
#include <QScreen>

namespace
{

/// Compositors place windows themselves and tell of no docks: the whole of the first screen.
class WaylandScreens : public Screens
{
public:
    std::optional<QRect> visibleFrame() const override
    {
        const QScreen *const screen = QGuiApplication::primaryScreen();
        return screen == nullptr ? std::nullopt : std::optional(screen->availableGeometry());
    }
};

} // namespace

bool platform::hasWaylandCompositor()
{
    return WaylandConnection::offeredInterfaces().has_value();
}

bool platform::hasWaylandClipboard()
{
    const auto offered = WaylandConnection::offeredInterfaces();
    return offered &&
        (offered->contains(DataControlProtocol::ext().manager().name) ||
            offered->contains(DataControlProtocol::wlr().manager().name));
}

std::unique_ptr<Pasteboard> platform::makeWaylandPasteboard(const ClipboardLimits &limits)
{
    return ThreadedPasteboard::start(
        [limits](ThreadInbox &inbox, ClipboardQueue &queue, ClipboardOwnContent &own) {
            return WaylandClipboard::open(inbox, queue, own, limits);
        });
}

std::unique_ptr<Workspace> platform::makeWaylandWorkspace()
{
    auto toplevels = WaylandToplevels::open();
    return toplevels ? std::make_unique<WaylandWorkspace>(std::move(toplevels)) : nullptr;
}

std::unique_ptr<EventPoster> platform::makeWaylandEventPoster(MainQueue &queue, const Workspace &workspace)
{
    if (auto poster = VirtualKeyboardPoster::open(queue, workspace))
        return poster;
    return FakeInputPoster::open(queue, workspace);
}

std::unique_ptr<Screens> platform::makeWaylandScreens()
{
    return std::make_unique<WaylandScreens>();
}
