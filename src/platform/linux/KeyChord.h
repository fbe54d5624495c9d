#pragma once

#include "platform/linux/KeystrokeScript.h"
#include "platform/linux/PasteChords.h"

#include <vector>

enum class KeyModifier { Control, Shift, Alt };

/// A key, by the symbol that it gives (X keysym: what X11, Wayland and the portals call it by), to be pressed
/// and released while the modifiers are held.
struct KeyChord {
    std::vector<KeyModifier> modifiers; ///< in the order in which they are pressed
    quint32 symbol = 0;

    bool operator==(const KeyChord &other) const = default;
};

/// The chord of a keystroke, with the command key's part played by Control, as on every Linux desktop.
KeyChord keyChord(const Keystroke &keystroke);
KeyChord keyChord(PasteChord chord);

/// The symbol of a modifier's left key.
quint32 keySymbol(KeyModifier modifier);
