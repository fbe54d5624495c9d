#pragma once

#include "platform/RunningApplication.h"
#include "platform/linux/DesktopEntries.h"

/// An application known by one of its windows: named by the desktop file of that window; one without such a
/// file by its window's class.
class WindowApplication : public RunningApplication
{
public:
    std::optional<QString> localizedName() const override;
    std::optional<QString> bundleIdentifier() const override;
    qint64 processIdentifier() const override { return m_identity.processIdentifier; }

protected:
    explicit WindowApplication(WindowIdentity identity);

    /// The desktop file of the window; asked for once, when it is needed.
    virtual std::optional<DesktopEntry> findEntry() const = 0;

    const WindowIdentity &identity() const { return m_identity; }

private:
    const std::optional<DesktopEntry> &entry() const;
    std::optional<QString> className() const;

    const WindowIdentity m_identity;
    mutable bool m_isLookedUp = false;
    mutable std::optional<DesktopEntry> m_entry;
};
