#pragma once

#include "platform/x11/X11Connection.h"

#include <array>
#include <bitset>
#include <initializer_list>
#include <optional>
#include <vector>

/// Key symbols, as in <X11/keysymdef.h>.
using KeySymbol = quint32;

namespace keysymbol
{
inline constexpr KeySymbol SmallV = 0x76;
inline constexpr KeySymbol Insert = 0xff63;
inline constexpr KeySymbol NumLock = 0xff7f;
inline constexpr KeySymbol ScrollLock = 0xff14;
inline constexpr KeySymbol CapsLock = 0xffe5;
inline constexpr KeySymbol ShiftLock = 0xffe6;
inline constexpr KeySymbol ShiftLeft = 0xffe1;
inline constexpr KeySymbol ShiftRight = 0xffe2;
inline constexpr KeySymbol ControlLeft = 0xffe3;
inline constexpr KeySymbol ControlRight = 0xffe4;
inline constexpr KeySymbol AltLeft = 0xffe9;
inline constexpr KeySymbol AltRight = 0xffea;
inline constexpr KeySymbol SuperLeft = 0xffeb;
inline constexpr KeySymbol SuperRight = 0xffec;
} // namespace keysymbol

/// The keyboard as the server has it: symbols by key, group (layout) and level, and what keys modify. Read
/// from the server when first asked after a change; main thread.
class X11Keyboard
{
public:
    /// Null when the server lacks the XKB extension. The connection must outlive it.
    static std::unique_ptr<X11Keyboard> open(X11Connection &connection);

    /// Takes note of a change of layout; to be called with every event. True when the event was such a
    /// change.
    bool note(const xcb_generic_event_t &event);

    /// Whether any keyboard of this server may have the key code.
    bool hasKey(int keyCode) const;
    /// The one bit of the modifier that a key with one of the symbols sets; 0 when none does.
    quint16 modifierBit(std::initializer_list<KeySymbol> symbols);
    /// The bits of Caps Lock, Num Lock and Scroll Lock.
    quint16 lockBits();
    /// A key with one of the symbols that sets the modifier, given by its index (XCB_MAP_INDEX_*).
    std::optional<xcb_keycode_t> modifierKey(int index, std::initializer_list<KeySymbol> symbols);
    /// The key that gives the symbol without modifiers in the active group, else in the first group that has
    /// it.
    std::optional<xcb_keycode_t> keyOf(KeySymbol symbol);

    /// The bits of the modifiers that are in effect now, held or locked.
    int activeModifiers();
    /// The keys that are down now.
    std::bitset<256> pressedKeys();
    /// The keys that lock something, which a hand never holds for a chord.
    std::bitset<256> lockKeys();

private:
    struct Key {
        size_t firstSymbol = 0;
        int groupCount = 0;
        int outOfRange =
            0; ///< how a group beyond the key's own is brought into range (XKB protocol, groupInfo)
        int width = 0;
    };

    explicit X11Keyboard(X11Connection &connection, quint8 firstEvent);
    void selectEvents();
    void read();
    void readSymbols();
    void readModifiers();
    KeySymbol symbol(int keyCode, int group, int level) const;
    bool hasSymbol(int keyCode, std::initializer_list<KeySymbol> symbols, int levelCount) const;
    std::optional<xcb_keycode_t> keyInGroup(KeySymbol wanted, int group) const;
    int activeGroup();

    X11Connection &m_connection;
    quint8 m_firstEvent;
    bool m_isRead = false;
    std::array<Key, 256> m_keys;
    std::vector<KeySymbol> m_symbols;
    std::array<std::vector<xcb_keycode_t>, 8> m_modifiers;
};
