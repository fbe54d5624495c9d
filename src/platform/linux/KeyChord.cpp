#include "platform/linux/KeyChord.h"

namespace
{

// X Window System Protocol, appendix A, "Keysym encoding".
constexpr quint32 ShiftLeft = 0xffe1;
constexpr quint32 ControlLeft = 0xffe3;
constexpr quint32 AltLeft = 0xffe9;
constexpr quint32 Insert = 0xff63;
constexpr quint32 SmallV = 0x76;
constexpr quint32 UnicodeBase = 0x01000000;

/// Latin-1 characters are their own symbols.
quint32 symbolOf(QChar character)
{
    const quint32 code = character.unicode();
    const bool isLatin1 = (code >= 0x20 && code <= 0x7e) || (code >= 0xa0 && code <= 0xff);
    return isLatin1 ? code : UnicodeBase | code;
}

} // namespace

KeyChord keyChord(const Keystroke &keystroke)
{
    KeyChord chord;
    if (keystroke.isCommandDown || keystroke.isControlDown)
        chord.modifiers.push_back(KeyModifier::Control);
    if (keystroke.isShiftDown)
        chord.modifiers.push_back(KeyModifier::Shift);
    if (keystroke.isOptionDown)
        chord.modifiers.push_back(KeyModifier::Alt);
    chord.symbol = symbolOf(keystroke.character);
    return chord;
}

KeyChord keyChord(PasteChord chord)
{
    switch (chord) {
    case PasteChord::ControlV:
        break;
    case PasteChord::ControlShiftV:
        return {{KeyModifier::Control, KeyModifier::Shift}, SmallV};
    case PasteChord::ShiftInsert:
        return {{KeyModifier::Shift}, Insert};
    }
    return {{KeyModifier::Control}, SmallV};
}

quint32 keySymbol(KeyModifier modifier)
{
    switch (modifier) {
    case KeyModifier::Shift:
        return ShiftLeft;
    case KeyModifier::Alt:
        return AltLeft;
    case KeyModifier::Control:
        break;
    }
    return ControlLeft;
}
