#pragma once

#include "platform/RunningApplication.h"

#include <memory>

/// The desktop's view of running programs.
///
/// Life cycle: made once by loadWorkspace(), asked at any time, main thread only. It follows the desktop's
/// own announcements, so that a call reads what is known and waits for no other program.
class Workspace
{
public:
    virtual ~Workspace() = default;

    /// The application whose window has the keyboard focus; null when none has or the desktop does not tell.
    virtual std::shared_ptr<RunningApplication> frontmostApplication() const = 0;
};
