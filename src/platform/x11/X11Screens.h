#pragma once

#include "platform/Screens.h"
#include "platform/x11/X11Desktop.h"

#include <vector>

/// A monitor, in both of the coordinate systems that there are.
struct X11Monitor {
    QRect pixels;    ///< the server's pixels
    QRect frame;     ///< device-independent: the same origin, the size divided by the scale
    QRect available; ///< `frame` less what the toolkit knows of docks
};

/// The monitor's part that docks leave free, of the monitor with the centre of the active window, else with
/// the pointer, else of the first one, which is the primary; nothing without monitors. Window, pointer and
/// work area are in the server's pixels.
std::optional<QRect> visibleFrameAmong(const std::vector<X11Monitor> &monitors,
    const std::optional<QRect> &activeWindow, const std::optional<QPoint> &pointer,
    const std::optional<QRect> &workArea);

/// The monitors of an X server, as Qt has them.
class X11Screens : public Screens
{
public:
    /// Null without an X server.
    static std::unique_ptr<X11Screens> open();

    std::optional<QRect> visibleFrame() const override;

private:
    explicit X11Screens(std::shared_ptr<X11Desktop> desktop)
        : m_desktop(std::move(desktop))
    {
    }

    std::shared_ptr<X11Desktop> m_desktop;
};
