#include "contract/ApplicationWindow.h"
#include "platform/HotKeyCenter.h"

#include <linux/input-event-codes.h>

namespace
{

class ApplicationEventsTest : public ::testing::Test
{
protected:
    ApplicationWindow window;
    std::vector<LocalKeyEvent> heard;
    std::unique_ptr<LocalEvents::Monitor> monitor =
        window.events().addKeyDownMonitor([this](const auto &key) {
            heard.push_back(key);
            return LocalEventFate::PassedOn;
        });
};

TEST_F(ApplicationEventsTest, AModifierAloneIsNoKey)
{
    for (const int key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_AltGr, Qt::Key_Meta,
             Qt::Key_Super_L, Qt::Key_Super_R, Qt::Key_CapsLock, Qt::Key_NumLock}) {
        EXPECT_EQ(window.pressKey(key, KEY_LEFTSHIFT, Qt::NoModifier), LocalEventFate::PassedOn);
    }
    EXPECT_TRUE(heard.empty());
}

TEST_F(ApplicationEventsTest, AHotKeysModifiersAreFour)
{
    window.pressKey(Qt::Key_K, KEY_K, Qt::MetaModifier);
    window.pressKey(Qt::Key_K, KEY_K, Qt::ControlModifier);
    window.pressKey(Qt::Key_K, KEY_K, Qt::AltModifier | Qt::ShiftModifier | Qt::KeypadModifier);
    window.pressKey(Qt::Key_K, KEY_K, Qt::NoModifier);
    ASSERT_EQ(heard.size(), 4U);
    EXPECT_EQ(heard[0].hotKeyModifiers, CommandKey);
    EXPECT_EQ(heard[1].hotKeyModifiers, ControlKey);
    EXPECT_EQ(heard[2].hotKeyModifiers, OptionKey | ShiftKey);
    EXPECT_EQ(heard[3].hotKeyModifiers, 0U);
}

TEST_F(ApplicationEventsTest, APositionIsThePlaceWhateverTheKeyMeans)
{
    // Where a US keyboard has V, Dvorak has K; Return may be anywhere.
    window.pressKey(Qt::Key_K, KEY_V, Qt::ControlModifier, QStringLiteral("k"));
    window.pressKey(Qt::Key_Return, KEY_V, Qt::ControlModifier);
    // A key that has no virtual key code.
    window.pressKey(Qt::Key_MediaPlay, KEY_PLAYPAUSE, Qt::ControlModifier);
    ASSERT_EQ(heard.size(), 3U);
    EXPECT_EQ(heard[0].position, 9);
    EXPECT_EQ(heard[0].keyCode, 9);
    EXPECT_EQ(heard[1].position, 9);
    EXPECT_EQ(heard[1].keyCode, 36);
    EXPECT_FALSE(heard[2].position);
}

TEST_F(ApplicationEventsTest, ARepeatIsToldAsOne)
{
    window.pressKey(Qt::Key_K, KEY_K, Qt::NoModifier);
    window.pressKey(Qt::Key_K, KEY_K, Qt::NoModifier, {}, true);
    ASSERT_EQ(heard.size(), 2U);
    EXPECT_FALSE(heard[0].isRepeat);
    EXPECT_TRUE(heard[1].isRepeat);
}

} // namespace
