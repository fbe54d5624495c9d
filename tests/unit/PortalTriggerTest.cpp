#include "platform/linux/PortalTrigger.h"

#include "platform/HotKeyCenter.h"
#include "platform/linux/KeyCodes.h"

#include <xkbcommon/xkbcommon.h>

#include <gtest/gtest.h>

#include <set>

namespace
{

std::string trigger(quint32 keyCode, quint32 modifiers = 0)
{
    return portalTrigger(keyCode, modifiers).value_or(QStringLiteral("none")).toStdString();
}

TEST(PortalTrigger, NamesTheKeysThatShortcutsAreMadeOf)
{
    struct Row {
        quint32 keyCode;
        const char *name;
    };
    const Row table[]{{0, "a"}, {9, "v"}, {6, "z"}, {18, "1"}, {29, "0"}, {49, "space"}, {36, "Return"},
        {48, "Tab"}, {53, "Escape"}, {51, "BackSpace"}, {117, "Delete"}, {27, "minus"}, {50, "grave"},
        {47, "period"}, {96, "F5"}, {111, "F12"}, {90, "F20"}, {123, "Left"}, {116, "Page_Up"}, {83, "KP_1"},
        {76, "KP_Enter"}, {69, "KP_Add"}};
    for (const Row &row : table)
        EXPECT_EQ(trigger(row.keyCode), row.name);
}

TEST(PortalTrigger, PutsTheModifiersFirst)
{
    EXPECT_EQ(trigger(9, CommandKey), "LOGO+v");
    EXPECT_EQ(trigger(9, ShiftKey), "SHIFT+v");
    EXPECT_EQ(trigger(9, OptionKey), "ALT+v");
    EXPECT_EQ(trigger(9, ControlKey), "CTRL+v");
    EXPECT_EQ(trigger(9, CommandKey | ShiftKey), "LOGO+SHIFT+v");
    EXPECT_EQ(trigger(49, CommandKey | ShiftKey | OptionKey | ControlKey), "LOGO+CTRL+ALT+SHIFT+space");
}

TEST(PortalTrigger, OtherModifierBitsAreDropped)
{
    EXPECT_EQ(trigger(9, 0xffffffff), "LOGO+CTRL+ALT+SHIFT+v");
}

TEST(PortalTrigger, AKeyWithoutASymbolHasNone)
{
    for (const quint32 keyCode : {93U, 94U, 127U, 9999U, 0xffffffffU})
        EXPECT_EQ(portalTrigger(keyCode, CommandKey), std::nullopt) << keyCode;
}

TEST(PortalTrigger, KnowsTheKeysThatTheKeyboardKnows)
{
    std::set<std::string> names;
    for (quint16 keyCode = 0; keyCode < 512; ++keyCode) {
        const bool isNameless = keyCode == 93 || keyCode == 94;
        const auto name = portalTrigger(keyCode, 0);
        EXPECT_EQ(name.has_value(), keycodes::evdevCode(keyCode) && !isNameless) << keyCode;
        if (name) {
            EXPECT_TRUE(names.insert(name->toStdString()).second) << keyCode;
        }
    }
}

TEST(PortalTrigger, EveryNameIsOneOfTheKeyboardLibrary)
{
    for (quint16 keyCode = 0; keyCode < 128; ++keyCode) {
        const auto name = portalTrigger(keyCode, 0);
        if (!name)
            continue;
        const xkb_keysym_t symbol = xkb_keysym_from_name(name->toLatin1().constData(), XKB_KEYSYM_NO_FLAGS);
        EXPECT_NE(symbol, xkb_keysym_t(XKB_KEY_NoSymbol)) << name->toStdString();
    }
}

/// The symbols of a US keyboard, by the library that most compositors use.
class UsKeyboard
{
public:
    UsKeyboard()
    {
        const xkb_rule_names names{"evdev", "pc105", "us", "", ""};
        m_context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
        m_keymap = xkb_keymap_new_from_names(m_context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    }
    ~UsKeyboard()
    {
        xkb_keymap_unref(m_keymap);
        xkb_context_unref(m_context);
    }
    UsKeyboard(const UsKeyboard &) = delete;
    UsKeyboard &operator=(const UsKeyboard &) = delete;

    bool isThere() const { return m_keymap != nullptr; }
    /// Those of the key, without a modifier and with one.
    std::set<xkb_keysym_t> symbols(quint16 evdevCode) const
    {
        std::set<xkb_keysym_t> all;
        for (xkb_level_index_t level = 0; level < 2; ++level) {
            const xkb_keysym_t *list = nullptr;
            const int count =
                xkb_keymap_key_get_syms_by_level(m_keymap, evdevCode + keycodes::XkbOffset, 0, level, &list);
            all.insert(list, list + count);
        }
        return all;
    }

private:
    xkb_context *m_context = nullptr;
    xkb_keymap *m_keymap = nullptr;
};

TEST(PortalTrigger, TheNamesAreThoseOfAUsKeyboard)
{
    const UsKeyboard keyboard;
    ASSERT_TRUE(keyboard.isThere());
    // F13 to F20 are keys of their own here, and media keys there; the second comma of a keypad is not there.
    const std::set<quint16> exceptions{105, 107, 113, 106, 64, 79, 80, 90, 95};
    int count = 0;
    for (quint16 keyCode = 0; keyCode < 128; ++keyCode) {
        const auto name = portalTrigger(keyCode, 0);
        if (!name || exceptions.contains(keyCode))
            continue;
        const xkb_keysym_t symbol = xkb_keysym_from_name(name->toLatin1().constData(), XKB_KEYSYM_NO_FLAGS);
        EXPECT_TRUE(keyboard.symbols(*keycodes::evdevCode(keyCode)).contains(symbol))
            << keyCode << " " << name->toStdString();
        ++count;
    }
    EXPECT_GT(count, 90);
}

} // namespace
