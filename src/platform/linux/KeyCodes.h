#pragma once

#include <QtGlobal>

#include <optional>

/// Key codes by physical position. A virtual key code numbers the keys of a US keyboard (A = 0, V = 9, Space
/// = 49); an evdev code is the kernel's (`linux/input-event-codes.h`). X11 and Wayland add 8 to the latter.
namespace keycodes
{

/// What X11 and XKB add to an evdev code.
inline constexpr quint16 XkbOffset = 8;

/// The kernel's code of a virtual key code; nothing when no PC keyboard has such a key.
std::optional<quint16> evdevCode(quint16 virtualKeyCode);

/// The virtual key code of the kernel's code; nothing for a key that has none (media keys, Print).
std::optional<quint16> virtualKeyCode(quint16 evdevCode);

} // namespace keycodes
