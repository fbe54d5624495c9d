#include "platform/x11/X11Screens.h"

#include "platform/x11/X11Backends.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace
{

const X11Monitor *monitorAt(const std::vector<X11Monitor> &monitors, const QPoint &point)
{
    const auto found = std::ranges::find_if(
        monitors, [&](const X11Monitor &monitor) { return monitor.pixels.contains(point); });
    return found == monitors.end() ? nullptr : &*found;
}

/// The part of the monitor that lies within the work area, in device-independent pixels.
QRect freePart(const X11Monitor &monitor, const QRect &workArea)
{
    const QRect inside = monitor.pixels.intersected(workArea);
    // There is one work area for all monitors: with docks on inner edges, or monitors of different sizes, it
    // may miss most of one, which then says nothing about it.
    if (inside.width() * 2 < monitor.pixels.width() || inside.height() * 2 < monitor.pixels.height())
        return monitor.available;
    const double scale = double(monitor.pixels.width()) / monitor.frame.width();
    const QPoint offset = inside.topLeft() - monitor.pixels.topLeft();
    const QRect scaled(monitor.frame.topLeft() + QPointF(offset.x() / scale, offset.y() / scale).toPoint(),
        QSizeF(inside.width() / scale, inside.height() / scale).toSize());
    return scaled.intersected(monitor.available);
}

} // namespace

std::optional<QRect> visibleFrameAmong(const std::vector<X11Monitor> &monitors,
    const std::optional<QRect> &activeWindow, const std::optional<QPoint> &pointer,
    const std::optional<QRect> &workArea)
{
    if (monitors.empty())
        return std::nullopt;
    const X11Monitor *monitor = activeWindow ? monitorAt(monitors, activeWindow->center()) : nullptr;
    if (!monitor && pointer)
        monitor = monitorAt(monitors, *pointer);
    if (!monitor)
        monitor = &monitors.front();
    return workArea ? freePart(*monitor, *workArea) : monitor->available;
}

std::unique_ptr<X11Screens> X11Screens::open()
{
    auto desktop = X11Desktop::open();
    if (!desktop)
        return nullptr;
    return std::unique_ptr<X11Screens>(new X11Screens(std::move(desktop)));
}

std::optional<QRect> X11Screens::visibleFrame() const
{
    std::vector<X11Monitor> monitors;
    // The primary one comes first. Qt scales the size of a screen and leaves its origin as it is.
    for (const QScreen *const screen : QGuiApplication::screens()) {
        const QRect frame = screen->geometry();
        const QSize pixels = (QSizeF(frame.size()) * screen->devicePixelRatio()).toSize();
        monitors.push_back({QRect(frame.topLeft(), pixels), frame, screen->availableGeometry()});
    }
    const auto active = m_desktop->activeWindow();
    return visibleFrameAmong(monitors, active ? m_desktop->geometry(active->id) : std::nullopt,
        m_desktop->pointerPosition(), m_desktop->workArea());
}

std::unique_ptr<Screens> platform::makeX11Screens()
{
    return X11Screens::open();
}
