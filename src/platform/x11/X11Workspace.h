#pragma once

#include "platform/Workspace.h"
#include "platform/x11/X11Desktop.h"

/// The frontmost application of an X server, on a connection of its own.
class X11Workspace : public Workspace
{
public:
    /// Null without an X server.
    static std::unique_ptr<X11Workspace> open();

    std::shared_ptr<RunningApplication> frontmostApplication() const override;
    std::shared_ptr<RunningApplication> takeActivatedApplication() const override;

private:
    explicit X11Workspace(std::shared_ptr<X11Desktop> desktop)
        : m_desktop(std::move(desktop))
    {
    }

    std::shared_ptr<X11Desktop> m_desktop;
};
