#pragma once

#include "platform/Workspace.h"
#include "platform/x11/X11Desktop.h"

/// The frontmost application of an X server, on a connection of its own. An application is known by the
/// desktop file of its window; one without such a file by its window's class, for both its name and its
/// identifier.
class X11Workspace : public Workspace
{
public:
    /// Null without an X server.
    static std::unique_ptr<X11Workspace> open();

    std::shared_ptr<RunningApplication> frontmostApplication() const override;

    /// The application that was last activated since the previous call; null when none was. Keys that are
    /// pressed after an activation are meant for that one.
    std::shared_ptr<RunningApplication> takeActivatedApplication() const;

private:
    explicit X11Workspace(std::shared_ptr<X11Desktop> desktop)
        : m_desktop(std::move(desktop))
    {
    }

    std::shared_ptr<X11Desktop> m_desktop;
};
