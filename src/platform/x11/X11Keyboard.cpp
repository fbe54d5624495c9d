#include "platform/x11/X11Keyboard.h"

#include "platform/x11/XkbProtocol.h"

#include <algorithm>

namespace
{

constexpr auto CoreKeyboard = static_cast<xcb_xkb_device_spec_t>(XCB_XKB_ID_USE_CORE_KBD);
constexpr int GroupLimit = 4;

/// Brings a group into the range of a key's own (XKB protocol, "Computing effective group").
int groupInRange(int group, int count, int outOfRange)
{
    constexpr int Clamp = 0x40;
    constexpr int Redirect = 0x80;
    if (group < count)
        return group;
    if ((outOfRange & 0xc0) == Clamp)
        return count - 1;
    if ((outOfRange & 0xc0) == Redirect) {
        const int target = (outOfRange >> 4) & 0x3;
        return target < count ? target : 0;
    }
    return group % count;
}

} // namespace

std::unique_ptr<X11Keyboard> X11Keyboard::open(X11Connection &connection)
{
    const xcb_query_extension_reply_t *const extension =
        xcb_get_extension_data(connection.get(), &xcb_xkb_id);
    if (!extension || !extension->present)
        return nullptr;
    const XcbReply<xcb_xkb_use_extension_reply_t> use(xcb_xkb_use_extension_reply(connection.get(),
        xcb_xkb_use_extension(connection.get(), XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION), nullptr));
    if (!use || !use->supported)
        return nullptr;
    std::unique_ptr<X11Keyboard> keyboard(new X11Keyboard(connection, extension->first_event));
    keyboard->selectEvents();
    return keyboard;
}

X11Keyboard::X11Keyboard(X11Connection &connection, quint8 firstEvent)
    : m_connection(connection)
    , m_firstEvent(firstEvent)
{
}

void X11Keyboard::selectEvents()
{
    constexpr uint16_t Keyboard = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY;
    constexpr uint16_t Map = XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    // The parts of the map are chosen on their own, whatever is said about all of an event's details.
    constexpr uint16_t Parts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events(
        m_connection.get(), CoreKeyboard, Keyboard | Map, 0, Keyboard, Parts, Parts, nullptr);
}

bool X11Keyboard::note(const xcb_generic_event_t &event)
{
    const int type = event.response_type & 0x7f;
    // XKB's events share one number; the second byte tells them apart.
    const bool isXkbChange = type == m_firstEvent &&
        (event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event.pad0 == XCB_XKB_MAP_NOTIFY);
    if (!isXkbChange && type != XCB_MAPPING_NOTIFY)
        return false;
    m_isRead = false;
    return true;
}

bool X11Keyboard::hasKey(int keyCode) const
{
    const xcb_setup_t *const setup = xcb_get_setup(m_connection.get());
    return keyCode >= setup->min_keycode && keyCode <= setup->max_keycode;
}

void X11Keyboard::read()
{
    if (m_isRead)
        return;
    m_isRead = true;
    readSymbols();
    readModifiers();
}

void X11Keyboard::readSymbols()
{
    m_keys.fill({});
    m_symbols.clear();
    xcb_connection_t *const connection = m_connection.get();
    const XcbReply<xcb_xkb_get_map_reply_t> reply(xcb_xkb_get_map_reply(connection,
        xcb_xkb_get_map(connection, CoreKeyboard, XCB_XKB_MAP_PART_KEY_SYMS, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
            0, 0, 0, 0, 0),
        nullptr));
    if (!reply || !(reply->present & XCB_XKB_MAP_PART_KEY_SYMS))
        return;
    xcb_xkb_get_map_map_t map{};
    xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(reply.get()), reply->nTypes, reply->nKeySyms,
        reply->nKeyActions, reply->totalActions, reply->totalKeyBehaviors, reply->virtualMods,
        reply->totalKeyExplicit, reply->totalModMapKeys, reply->totalVModMapKeys, reply->present, &map);
    auto at = xcb_xkb_get_map_map_syms_rtrn_iterator(reply.get(), &map);
    for (size_t keyCode = reply->firstKeySym; at.rem > 0 && keyCode < m_keys.size(); ++keyCode) {
        const xcb_xkb_key_sym_map_t &key = *at.data;
        m_keys[keyCode] = {m_symbols.size(), key.groupInfo & 0x0f, key.groupInfo & 0xf0, key.width};
        const xcb_keysym_t *const symbols = xcb_xkb_key_sym_map_syms(&key);
        m_symbols.insert(m_symbols.end(), symbols, symbols + key.nSyms);
        xcb_xkb_key_sym_map_next(&at);
    }
}

void X11Keyboard::readModifiers()
{
    const XcbReply<xcb_get_modifier_mapping_reply_t> reply(xcb_get_modifier_mapping_reply(
        m_connection.get(), xcb_get_modifier_mapping(m_connection.get()), nullptr));
    for (auto &keys : m_modifiers)
        keys.clear();
    if (!reply)
        return;
    const xcb_keycode_t *const codes = xcb_get_modifier_mapping_keycodes(reply.get());
    const size_t perModifier = reply->keycodes_per_modifier;
    for (size_t i = 0; i < m_modifiers.size() * perModifier; ++i) {
        if (codes[i] != 0)
            m_modifiers[i / perModifier].push_back(codes[i]);
    }
}

KeySymbol X11Keyboard::symbol(int keyCode, int group, int level) const
{
    const Key &key = m_keys[static_cast<size_t>(keyCode)];
    if (key.groupCount == 0 || level >= key.width)
        return 0;
    const int inRange = groupInRange(group, key.groupCount, key.outOfRange);
    const size_t index = key.firstSymbol + static_cast<size_t>(inRange * key.width + level);
    return index < m_symbols.size() ? m_symbols[index] : 0;
}

bool X11Keyboard::hasSymbol(int keyCode, std::initializer_list<KeySymbol> symbols, int levelCount) const
{
    const Key &key = m_keys[static_cast<size_t>(keyCode)];
    for (int group = 0; group < key.groupCount; ++group) {
        for (int level = 0; level < std::min(key.width, levelCount); ++level) {
            if (std::ranges::find(symbols, symbol(keyCode, group, level)) != symbols.end())
                return true;
        }
    }
    return false;
}

quint16 X11Keyboard::modifierBit(std::initializer_list<KeySymbol> symbols)
{
    read();
    // Keymaps put some symbols on a key's upper levels only (a virtual <ALT> key, Meta on Shift+Alt); a key
    // that has the symbol plainly is the better witness.
    for (const int levelCount : {1, 255}) {
        for (size_t index = 0; index < m_modifiers.size(); ++index) {
            for (const xcb_keycode_t key : m_modifiers[index]) {
                if (hasSymbol(key, symbols, levelCount))
                    return static_cast<quint16>(1U << index);
            }
        }
    }
    return 0;
}

quint16 X11Keyboard::lockBits()
{
    return static_cast<quint16>(
        XCB_MOD_MASK_LOCK | modifierBit({keysymbol::NumLock}) | modifierBit({keysymbol::ScrollLock}));
}

std::optional<xcb_keycode_t> X11Keyboard::modifierKey(int index, std::initializer_list<KeySymbol> symbols)
{
    read();
    const auto &keys = m_modifiers[static_cast<size_t>(index)];
    const auto found =
        std::ranges::find_if(keys, [&](xcb_keycode_t key) { return hasSymbol(key, symbols, 1); });
    if (found != keys.end())
        return *found;
    return keys.empty() ? std::nullopt : std::optional(keys.front());
}

std::optional<xcb_keycode_t> X11Keyboard::keyInGroup(KeySymbol wanted, int group) const
{
    for (int keyCode = 0; keyCode < static_cast<int>(m_keys.size()); ++keyCode) {
        if (symbol(keyCode, group, 0) == wanted)
            return static_cast<xcb_keycode_t>(keyCode);
    }
    return std::nullopt;
}

std::optional<xcb_keycode_t> X11Keyboard::keyOf(KeySymbol wanted)
{
    read();
    if (const auto key = keyInGroup(wanted, activeGroup()))
        return key;
    for (int group = 0; group < GroupLimit; ++group) {
        if (const auto key = keyInGroup(wanted, group))
            return key;
    }
    return std::nullopt;
}

int X11Keyboard::activeGroup()
{
    const XcbReply<xcb_xkb_get_state_reply_t> reply(xcb_xkb_get_state_reply(
        m_connection.get(), xcb_xkb_get_state(m_connection.get(), CoreKeyboard), nullptr));
    return reply ? reply->group : 0;
}

int X11Keyboard::activeModifiers()
{
    const XcbReply<xcb_xkb_get_state_reply_t> reply(xcb_xkb_get_state_reply(
        m_connection.get(), xcb_xkb_get_state(m_connection.get(), CoreKeyboard), nullptr));
    return reply ? reply->mods : 0;
}

std::bitset<256> X11Keyboard::pressedKeys()
{
    std::bitset<256> pressed;
    const XcbReply<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(m_connection.get(), xcb_query_keymap(m_connection.get()), nullptr));
    if (!reply)
        return pressed;
    for (size_t key = 0; key < pressed.size(); ++key)
        pressed[key] = (reply->keys[key / 8] >> (key % 8)) & 1;
    return pressed;
}

std::bitset<256> X11Keyboard::lockKeys()
{
    read();
    std::bitset<256> locks;
    for (int key = 0; key < static_cast<int>(locks.size()); ++key) {
        locks[static_cast<size_t>(key)] = hasSymbol(
            key, {keysymbol::CapsLock, keysymbol::ShiftLock, keysymbol::NumLock, keysymbol::ScrollLock}, 1);
    }
    return locks;
}
