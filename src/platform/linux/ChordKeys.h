#pragma once

#include "platform/linux/PasteChords.h"

#include <vector>

/// The keys of a chord by evdev code, in the order in which they are pressed.
struct ChordKeys {
    std::vector<quint16> modifiers;
    quint16 key = 0;
};

/// By their places on a US keyboard.
ChordKeys chordKeys(PasteChord chord);
