#include "platform/linux/PortalTrigger.h"

#include "platform/HotKeyCenter.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace
{

struct KeyName {
    quint32 keyCode;
    const char *name;
};

// The two keys that only Japanese keyboards have, Yen and Underscore, have no symbol of their own: 93, 94.
constexpr std::array KeyNames = {
    // Letters
    KeyName{0, "a"},
    KeyName{11, "b"},
    KeyName{8, "c"},
    KeyName{2, "d"},
    KeyName{14, "e"},
    KeyName{3, "f"},
    KeyName{5, "g"},
    KeyName{4, "h"},
    KeyName{34, "i"},
    KeyName{38, "j"},
    KeyName{40, "k"},
    KeyName{37, "l"},
    KeyName{46, "m"},
    KeyName{45, "n"},
    KeyName{31, "o"},
    KeyName{35, "p"},
    KeyName{12, "q"},
    KeyName{15, "r"},
    KeyName{1, "s"},
    KeyName{17, "t"},
    KeyName{32, "u"},
    KeyName{9, "v"},
    KeyName{13, "w"},
    KeyName{7, "x"},
    KeyName{16, "y"},
    KeyName{6, "z"},
    // Digits
    KeyName{18, "1"},
    KeyName{19, "2"},
    KeyName{20, "3"},
    KeyName{21, "4"},
    KeyName{23, "5"},
    KeyName{22, "6"},
    KeyName{26, "7"},
    KeyName{28, "8"},
    KeyName{25, "9"},
    KeyName{29, "0"},
    // Punctuation
    KeyName{50, "grave"},
    KeyName{27, "minus"},
    KeyName{24, "equal"},
    KeyName{33, "bracketleft"},
    KeyName{30, "bracketright"},
    KeyName{42, "backslash"},
    KeyName{41, "semicolon"},
    KeyName{39, "apostrophe"},
    KeyName{43, "comma"},
    KeyName{47, "period"},
    KeyName{44, "slash"},
    KeyName{10, "less"},
    // Editing and white space
    KeyName{36, "Return"},
    KeyName{48, "Tab"},
    KeyName{49, "space"},
    KeyName{51, "BackSpace"},
    KeyName{53, "Escape"},
    KeyName{114, "Insert"},
    KeyName{117, "Delete"},
    // Modifiers and locks
    KeyName{55, "Super_L"},
    KeyName{54, "Super_R"},
    KeyName{56, "Shift_L"},
    KeyName{60, "Shift_R"},
    KeyName{58, "Alt_L"},
    KeyName{61, "Alt_R"},
    KeyName{59, "Control_L"},
    KeyName{62, "Control_R"},
    KeyName{57, "Caps_Lock"},
    KeyName{110, "Menu"},
    // Movement
    KeyName{123, "Left"},
    KeyName{124, "Right"},
    KeyName{125, "Down"},
    KeyName{126, "Up"},
    KeyName{115, "Home"},
    KeyName{119, "End"},
    KeyName{116, "Page_Up"},
    KeyName{121, "Page_Down"},
    // Function keys
    KeyName{122, "F1"},
    KeyName{120, "F2"},
    KeyName{99, "F3"},
    KeyName{118, "F4"},
    KeyName{96, "F5"},
    KeyName{97, "F6"},
    KeyName{98, "F7"},
    KeyName{100, "F8"},
    KeyName{101, "F9"},
    KeyName{109, "F10"},
    KeyName{103, "F11"},
    KeyName{111, "F12"},
    KeyName{105, "F13"},
    KeyName{107, "F14"},
    KeyName{113, "F15"},
    KeyName{106, "F16"},
    KeyName{64, "F17"},
    KeyName{79, "F18"},
    KeyName{80, "F19"},
    KeyName{90, "F20"},
    // Keypad
    KeyName{82, "KP_0"},
    KeyName{83, "KP_1"},
    KeyName{84, "KP_2"},
    KeyName{85, "KP_3"},
    KeyName{86, "KP_4"},
    KeyName{87, "KP_5"},
    KeyName{88, "KP_6"},
    KeyName{89, "KP_7"},
    KeyName{91, "KP_8"},
    KeyName{92, "KP_9"},
    KeyName{65, "KP_Decimal"},
    KeyName{67, "KP_Multiply"},
    KeyName{69, "KP_Add"},
    KeyName{71, "Num_Lock"},
    KeyName{75, "KP_Divide"},
    KeyName{76, "KP_Enter"},
    KeyName{78, "KP_Subtract"},
    KeyName{81, "KP_Equal"},
    KeyName{95, "KP_Separator"},
    // Korean keyboards
    KeyName{102, "Hangul_Hanja"},
    KeyName{104, "Hangul"},
    // Volume
    KeyName{74, "XF86AudioMute"},
    KeyName{73, "XF86AudioLowerVolume"},
    KeyName{72, "XF86AudioRaiseVolume"},
};

struct ModifierName {
    quint32 bit;
    const char *name;
};

constexpr std::array ModifierNames = {
    ModifierName{CommandKey, "LOGO"},
    ModifierName{ControlKey, "CTRL"},
    ModifierName{OptionKey, "ALT"},
    ModifierName{ShiftKey, "SHIFT"},
};

} // namespace

std::optional<QString> portalTrigger(quint32 keyCode, quint32 modifiers)
{
    const auto *const key = std::ranges::find(KeyNames, keyCode, &KeyName::keyCode);
    if (key == KeyNames.end())
        return std::nullopt;
    QStringList words;
    for (const ModifierName &modifier : ModifierNames) {
        if (modifiers & modifier.bit)
            words.append(QString::fromLatin1(modifier.name));
    }
    words.append(QString::fromLatin1(key->name));
    return words.join(QLatin1Char('+'));
}
