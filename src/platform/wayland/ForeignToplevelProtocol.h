#pragma once

#include <wayland-util.h>

/// The windows of a compositor (wlr-foreign-toplevel-management-unstable-v1).
namespace foreigntoplevel
{

enum ManagerRequest : uint32_t { Stop = 0 };
enum ManagerEvent : uint32_t { ToplevelAdded = 0, ManagerFinished = 1 };

enum HandleRequest : uint32_t { Activate = 4, DestroyHandle = 7 };
enum HandleEvent : uint32_t { Title = 0, AppId = 1, State = 4, Done = 5, Closed = 6 };

/// Among the numbers in the argument of State.
inline constexpr uint32_t ActivatedState = 2;

extern const wl_interface Manager;
extern const wl_interface Handle;

} // namespace foreigntoplevel
