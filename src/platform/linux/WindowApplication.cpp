#include "platform/linux/WindowApplication.h"

#include <utility>

WindowApplication::WindowApplication(WindowIdentity identity)
    : m_identity(std::move(identity))
{
}

std::optional<QString> WindowApplication::localizedName() const
{
    return entry() ? std::optional(entry()->name) : className();
}

std::optional<QString> WindowApplication::bundleIdentifier() const
{
    return entry() ? std::optional(entry()->id) : className();
}

std::optional<QString> WindowApplication::className() const
{
    return m_identity.className.isEmpty() ? std::nullopt : std::optional(m_identity.className);
}

const std::optional<DesktopEntry> &WindowApplication::entry() const
{
    if (!std::exchange(m_isLookedUp, true))
        m_entry = findEntry();
    return m_entry;
}
