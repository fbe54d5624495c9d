#pragma once

#include "platform/Workspace.h"
#include "platform/wayland/WaylandToplevels.h"

/// The frontmost application of a compositor that tells of its windows.
class WaylandWorkspace : public Workspace
{
public:
    explicit WaylandWorkspace(std::shared_ptr<WaylandToplevels> toplevels);

    std::shared_ptr<RunningApplication> frontmostApplication() const override;
    std::shared_ptr<RunningApplication> takeActivatedApplication() const override;

private:
    const std::shared_ptr<WaylandToplevels> m_toplevels;
};
