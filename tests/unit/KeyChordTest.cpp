#include "platform/linux/KeyChord.h"

#include <gtest/gtest.h>

namespace
{

TEST(KeyChord, OfEachWayToPaste)
{
    EXPECT_EQ(keyChord(PasteChord::ControlV), (KeyChord{{KeyModifier::Control}, 'v'}));
    EXPECT_EQ(
        keyChord(PasteChord::ControlShiftV), (KeyChord{{KeyModifier::Control, KeyModifier::Shift}, 'v'}));
    EXPECT_EQ(keyChord(PasteChord::ShiftInsert), (KeyChord{{KeyModifier::Shift}, 0xff63}));
}

TEST(KeyChord, HoldsControlForCommand)
{
    EXPECT_EQ(keyChord(Keystroke{QLatin1Char('c'), true}), (KeyChord{{KeyModifier::Control}, 'c'}));
    EXPECT_EQ(keyChord(Keystroke{QLatin1Char('c'), true, true, true, true}),
        (KeyChord{{KeyModifier::Control, KeyModifier::Shift, KeyModifier::Alt}, 'c'}));
    EXPECT_EQ(keyChord(Keystroke{QLatin1Char('c')}), (KeyChord{{}, 'c'}));
}

TEST(KeyChord, NamesCharactersAsKeySymbols)
{
    EXPECT_EQ(keyChord(Keystroke{QLatin1Char('~')}).symbol, 0x7eU);
    EXPECT_EQ(keyChord(Keystroke{QChar(0xe9)}).symbol, 0xe9U);
    EXPECT_EQ(keyChord(Keystroke{QChar(0x43c)}).symbol, 0x100043cU);
}

TEST(KeyChord, NamesTheLeftModifierKeys)
{
    EXPECT_EQ(keySymbol(KeyModifier::Shift), 0xffe1U);
    EXPECT_EQ(keySymbol(KeyModifier::Control), 0xffe3U);
    EXPECT_EQ(keySymbol(KeyModifier::Alt), 0xffe9U);
}

} // namespace
