#pragma once

#include <wayland-util.h>

/// The windows of KWin (org_kde_plasma_window_management), for programs whose desktop file asks for it.
namespace plasmawindow
{

enum ManagementRequest : uint32_t { GetWindow = 1, GetWindowByUuid = 2 };
enum ManagementEvent : uint32_t { WindowAdded = 1, WindowWithUuid = 4 };
/// From this version on windows go by their UUIDs.
inline constexpr uint32_t VersionWithUuids = 13;

/// And this one brought the end of a window's object.
inline constexpr uint32_t VersionWithDestroy = 4;

enum WindowRequest : uint32_t { SetState = 0, DestroyWindow = 7 };
enum WindowEvent : uint32_t { AppIdChanged = 1, StateChanged = 2, Unmapped = 5, PidChanged = 10 };

/// A bit of the states.
inline constexpr uint32_t ActiveState = 1;

extern const wl_interface Management;
extern const wl_interface Window;

} // namespace plasmawindow
