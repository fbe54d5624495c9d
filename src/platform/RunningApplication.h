#pragma once

#include <QString>

#include <optional>

/// A program that has, or had, a window: a handle that stays valid, and says less, when the program ends.
/// Main thread only. Owned by whoever asked for it.
class RunningApplication
{
public:
    virtual ~RunningApplication() = default;

    /// The name that the desktop shows for it (its desktop file's, in the user's language), else its own.
    virtual std::optional<QString> localizedName() const = 0;

    /// Its desktop id ("org.mozilla.firefox"), else the class that its windows name (WM_CLASS, app_id).
    virtual std::optional<QString> bundleIdentifier() const = 0;

    /// Its process, or -1 when it is not known.
    virtual qint64 processIdentifier() const = 0;

    /// Asks the desktop to bring the window that was in front to the front again, with keyboard focus. The
    /// desktop may take its time or refuse; `isActive` tells.
    virtual void activate() = 0;

    /// Whether it is the frontmost application now.
    virtual bool isActive() const = 0;
};
