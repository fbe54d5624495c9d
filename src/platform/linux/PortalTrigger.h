#pragma once

#include <QString>

#include <optional>

/// A combination of keys in the words of the XDG Shortcuts Specification: the modifiers, then the name of the
/// key's symbol as libxkbcommon has it, joined with "+", as in "LOGO+SHIFT+v". The symbol is the one that the
/// key has on a US keyboard, with the digits for the keypad.
///
/// Takes a virtual key code (US layout numbering: A = 0, V = 9, Space = 49) and a mask of HotKeyModifier.
/// Nothing when the key has no symbol there.
std::optional<QString> portalTrigger(quint32 keyCode, quint32 modifiers);
