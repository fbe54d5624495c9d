#include "platform/linux/KeyCodes.h"

#include <linux/input-event-codes.h>

#include <gtest/gtest.h>

#include <set>

namespace
{

struct Named {
    quint16 virtualKeyCode;
    quint16 evdev;
};

TEST(KeyCodes, KnowTheKeysThatShortcutsAreMadeOf)
{
    const Named keys[] = {{0, KEY_A}, {1, KEY_S}, {2, KEY_D}, {3, KEY_F}, {4, KEY_H}, {5, KEY_G}, {6, KEY_Z},
        {7, KEY_X}, {8, KEY_C}, {9, KEY_V}, {11, KEY_B}, {12, KEY_Q}, {13, KEY_W}, {14, KEY_E}, {15, KEY_R},
        {16, KEY_Y}, {17, KEY_T}, {18, KEY_1}, {19, KEY_2}, {20, KEY_3}, {21, KEY_4}, {23, KEY_5},
        {22, KEY_6}, {26, KEY_7}, {28, KEY_8}, {25, KEY_9}, {29, KEY_0}, {49, KEY_SPACE}, {36, KEY_ENTER},
        {48, KEY_TAB}, {53, KEY_ESC}, {51, KEY_BACKSPACE}, {117, KEY_DELETE}, {126, KEY_UP}, {125, KEY_DOWN},
        {123, KEY_LEFT}, {124, KEY_RIGHT}, {122, KEY_F1}, {111, KEY_F12}, {43, KEY_COMMA}, {50, KEY_GRAVE},
        {76, KEY_KPENTER}};
    for (const Named &key : keys) {
        EXPECT_EQ(keycodes::evdevCode(key.virtualKeyCode), key.evdev);
        EXPECT_EQ(keycodes::virtualKeyCode(key.evdev), key.virtualKeyCode);
    }
}

TEST(KeyCodes, AreOneToOne)
{
    std::set<quint16> evdevCodes;
    int count = 0;
    for (quint16 code = 0; code < 512; ++code) {
        const auto evdev = keycodes::evdevCode(code);
        if (!evdev)
            continue;
        ++count;
        EXPECT_TRUE(evdevCodes.insert(*evdev).second) << "evdev code " << *evdev << " appears twice";
        EXPECT_EQ(keycodes::virtualKeyCode(*evdev), code);
    }
    EXPECT_EQ(static_cast<size_t>(count), evdevCodes.size());
}

TEST(KeyCodes, CoverEveryKeyOfAPlainKeyboard)
{
    // Those from Esc to F10 without the locks, and the keypad, lie between 1 and 83.
    for (quint16 evdev = KEY_ESC; evdev <= KEY_KPDOT; ++evdev) {
        if (evdev == KEY_SCROLLLOCK)
            continue;
        EXPECT_TRUE(keycodes::virtualKeyCode(evdev)) << "evdev code " << evdev;
    }
}

TEST(KeyCodes, DoNotInventKeys)
{
    EXPECT_FALSE(keycodes::evdevCode(127));
    EXPECT_FALSE(keycodes::evdevCode(0xffff));
    EXPECT_FALSE(keycodes::virtualKeyCode(KEY_RESERVED));
    EXPECT_FALSE(keycodes::virtualKeyCode(KEY_PLAYPAUSE));
}

} // namespace
