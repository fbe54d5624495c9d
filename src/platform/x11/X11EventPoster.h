#pragma once

#include "platform/linux/ChordPoster.h"
#include "platform/x11/X11Clock.h"
#include "platform/x11/X11Keyboard.h"
#include "platform/x11/X11PrimaryText.h"

#include <bitset>

/// Posts the paste chord with the XTEST extension, on a connection of its own.
///
/// The key of V is the one that gives the letter in the active layout, else in another one, which is where
/// toolkits look as well. Where no layout has the letter, Shift+Insert is posted instead.
///
/// A chord that a program holds as a hot key, this one included, would never reach its target, but set off
/// the hot key: Shift+Insert is posted in its place, and nothing when that is held as well.
class X11EventPoster : public ChordPoster
{
public:
    /// Null without an X server or without its XKB or XTEST extension. The references must outlive it.
    static std::unique_ptr<X11EventPoster> open(MainQueue &queue, const Workspace &workspace);

    bool isProcessTrusted() const override;

private:
    X11EventPoster(std::unique_ptr<X11Connection> connection, std::unique_ptr<X11Keyboard> keyboard,
        MainQueue &queue, const Workspace &workspace);
    bool isKeyHeld() override;
    void ignoreHeldKeys() override;
    void press(PasteChord chord) override;
    void pressKeys(PasteChord chord) override;
    void takePrimaryText(std::function<void(bool isTaken)> onDone) override;
    void cancelPrimaryText() override;

    std::bitset<256> pressedKeys();
    std::vector<xcb_keycode_t> keysOf(PasteChord chord);
    bool isFree(PasteChord chord);

    std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<X11Keyboard> m_keyboard;
    X11Clock m_clock;
    X11PrimaryText m_primary;
    std::bitset<256> m_stuckKeys;
};
