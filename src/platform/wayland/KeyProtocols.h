#pragma once

#include <wayland-util.h>

/// A keyboard of a program's own (virtual-keyboard-unstable-v1).
namespace virtualkeyboard
{

enum ManagerRequest : uint32_t { CreateKeyboard = 0 };
/// Keymap: format, descriptor, bytes. Key: milliseconds, evdev code, state. Modifiers: the bits that are
/// held, latched and locked, and the group.
enum KeyboardRequest : uint32_t { Keymap = 0, Key = 1, Modifiers = 2, DestroyKeyboard = 3 };

extern const wl_interface Manager;
extern const wl_interface Keyboard;

} // namespace virtualkeyboard

/// Keys that KWin takes for those of its own keyboard (org_kde_kwin_fake_input), from programs whose desktop
/// file asks for it.
namespace fakeinput
{

/// Authenticate: name and purpose of the program. KeyboardKey: evdev code, state.
enum Request : uint32_t { Authenticate = 0, KeyboardKey = 10 };
/// The version that brought keys.
inline constexpr uint32_t VersionWithKeys = 4;

extern const wl_interface FakeInput;

} // namespace fakeinput

/// States of a key, in both.
enum class WaylandKeyState : uint32_t { Released = 0, Pressed = 1 };
