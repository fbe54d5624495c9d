#pragma once

#include <QLatin1String>

/// Names that all clients of the desktop portal (XDG Desktop Portal) need.
namespace portal
{

inline constexpr QLatin1String Name("org.freedesktop.portal.Desktop");
inline constexpr QLatin1String Path("/org/freedesktop/portal/desktop");
inline constexpr QLatin1String SessionInterface("org.freedesktop.portal.Session");

} // namespace portal
