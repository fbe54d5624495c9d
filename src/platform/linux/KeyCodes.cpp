#include "platform/linux/KeyCodes.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>

namespace keycodes
{
namespace
{

struct Pair {
    quint16 virtualKeyCode;
    quint16 evdevCode;
};

// One to one. Keys that Apple's keyboards name differently stand for those in the same place: Clear is Num
// Lock, Help is Insert, Delete is Backspace.
constexpr std::array Pairs = {
    // Letters
    Pair{0, KEY_A},
    Pair{11, KEY_B},
    Pair{8, KEY_C},
    Pair{2, KEY_D},
    Pair{14, KEY_E},
    Pair{3, KEY_F},
    Pair{5, KEY_G},
    Pair{4, KEY_H},
    Pair{34, KEY_I},
    Pair{38, KEY_J},
    Pair{40, KEY_K},
    Pair{37, KEY_L},
    Pair{46, KEY_M},
    Pair{45, KEY_N},
    Pair{31, KEY_O},
    Pair{35, KEY_P},
    Pair{12, KEY_Q},
    Pair{15, KEY_R},
    Pair{1, KEY_S},
    Pair{17, KEY_T},
    Pair{32, KEY_U},
    Pair{9, KEY_V},
    Pair{13, KEY_W},
    Pair{7, KEY_X},
    Pair{16, KEY_Y},
    Pair{6, KEY_Z},
    // Digits
    Pair{18, KEY_1},
    Pair{19, KEY_2},
    Pair{20, KEY_3},
    Pair{21, KEY_4},
    Pair{23, KEY_5},
    Pair{22, KEY_6},
    Pair{26, KEY_7},
    Pair{28, KEY_8},
    Pair{25, KEY_9},
    Pair{29, KEY_0},
    // Punctuation
    Pair{50, KEY_GRAVE},
    Pair{27, KEY_MINUS},
    Pair{24, KEY_EQUAL},
    Pair{33, KEY_LEFTBRACE},
    Pair{30, KEY_RIGHTBRACE},
    Pair{42, KEY_BACKSLASH},
    Pair{41, KEY_SEMICOLON},
    Pair{39, KEY_APOSTROPHE},
    Pair{43, KEY_COMMA},
    Pair{47, KEY_DOT},
    Pair{44, KEY_SLASH},
    Pair{10, KEY_102ND},
    // Editing and white space
    Pair{36, KEY_ENTER},
    Pair{48, KEY_TAB},
    Pair{49, KEY_SPACE},
    Pair{51, KEY_BACKSPACE},
    Pair{53, KEY_ESC},
    Pair{114, KEY_INSERT},
    Pair{117, KEY_DELETE},
    // Modifiers and locks
    Pair{55, KEY_LEFTMETA},
    Pair{54, KEY_RIGHTMETA},
    Pair{56, KEY_LEFTSHIFT},
    Pair{60, KEY_RIGHTSHIFT},
    Pair{58, KEY_LEFTALT},
    Pair{61, KEY_RIGHTALT},
    Pair{59, KEY_LEFTCTRL},
    Pair{62, KEY_RIGHTCTRL},
    Pair{57, KEY_CAPSLOCK},
    Pair{110, KEY_COMPOSE},
    // Movement
    Pair{123, KEY_LEFT},
    Pair{124, KEY_RIGHT},
    Pair{125, KEY_DOWN},
    Pair{126, KEY_UP},
    Pair{115, KEY_HOME},
    Pair{119, KEY_END},
    Pair{116, KEY_PAGEUP},
    Pair{121, KEY_PAGEDOWN},
    // Function keys
    Pair{122, KEY_F1},
    Pair{120, KEY_F2},
    Pair{99, KEY_F3},
    Pair{118, KEY_F4},
    Pair{96, KEY_F5},
    Pair{97, KEY_F6},
    Pair{98, KEY_F7},
    Pair{100, KEY_F8},
    Pair{101, KEY_F9},
    Pair{109, KEY_F10},
    Pair{103, KEY_F11},
    Pair{111, KEY_F12},
    Pair{105, KEY_F13},
    Pair{107, KEY_F14},
    Pair{113, KEY_F15},
    Pair{106, KEY_F16},
    Pair{64, KEY_F17},
    Pair{79, KEY_F18},
    Pair{80, KEY_F19},
    Pair{90, KEY_F20},
    // Keypad
    Pair{82, KEY_KP0},
    Pair{83, KEY_KP1},
    Pair{84, KEY_KP2},
    Pair{85, KEY_KP3},
    Pair{86, KEY_KP4},
    Pair{87, KEY_KP5},
    Pair{88, KEY_KP6},
    Pair{89, KEY_KP7},
    Pair{91, KEY_KP8},
    Pair{92, KEY_KP9},
    Pair{65, KEY_KPDOT},
    Pair{67, KEY_KPASTERISK},
    Pair{69, KEY_KPPLUS},
    Pair{71, KEY_NUMLOCK},
    Pair{75, KEY_KPSLASH},
    Pair{76, KEY_KPENTER},
    Pair{78, KEY_KPMINUS},
    Pair{81, KEY_KPEQUAL},
    Pair{95, KEY_KPJPCOMMA},
    // Japanese keyboards
    Pair{93, KEY_YEN},
    Pair{94, KEY_RO},
    Pair{102, KEY_HANJA},
    Pair{104, KEY_HANGEUL},
    // Volume
    Pair{74, KEY_MUTE},
    Pair{73, KEY_VOLUMEDOWN},
    Pair{72, KEY_VOLUMEUP},
};

} // namespace

std::optional<quint16> evdevCode(quint16 virtualKeyCode)
{
    const auto *const found = std::ranges::find(Pairs, virtualKeyCode, &Pair::virtualKeyCode);
    return found == Pairs.end() ? std::nullopt : std::optional(found->evdevCode);
}

std::optional<quint16> virtualKeyCode(quint16 evdevCode)
{
    const auto *const found = std::ranges::find(Pairs, evdevCode, &Pair::evdevCode);
    return found == Pairs.end() ? std::nullopt : std::optional(found->virtualKeyCode);
}

} // namespace keycodes
