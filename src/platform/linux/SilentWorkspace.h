#pragma once

#include "platform/Workspace.h"

/// A desktop that tells of some programs' windows only, or of none: for those that it is silent about there
/// is one application without a name. It stands for whoever had the keyboard, and gets it back from the
/// desktop itself when this program's window goes.
class SilentWorkspace : public Workspace
{
public:
    /// Those that the desktop tells of; null when there are none.
    explicit SilentWorkspace(std::unique_ptr<Workspace> known);

    std::shared_ptr<RunningApplication> frontmostApplication() const override;
    std::shared_ptr<RunningApplication> takeActivatedApplication() const override;

private:
    const std::shared_ptr<Workspace> m_known;
};
