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

    /// The application that was activated last, once: whom the keys are for that are posted next. Null when
    /// none was, or that has been told already.
    virtual std::shared_ptr<RunningApplication> takeActivatedApplication() const { return nullptr; }
};
