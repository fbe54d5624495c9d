#pragma once

#include "base/Lifetime.h"
#include "base/MainQueue.h"
#include "platform/EventPoster.h"
#include "platform/Workspace.h"
#include "platform/linux/PasteChords.h"
#include "platform/x11/X11Clock.h"
#include "platform/x11/X11Keyboard.h"
#include "platform/x11/X11PrimaryText.h"
#include "platform/x11/X11Workspace.h"

#include <chrono>
#include <deque>

/// Posts the paste chord with the XTEST extension, on a connection of its own. Any other event is dropped.
///
/// The key of V is the one that gives the letter in the active layout, else in another one, which is where
/// toolkits look as well. Where no layout has the letter, Shift+Insert is posted instead.
///
/// Command-V is complete with its release; from then on the chord waits until no key is down, looking every
/// 10 ms, and is then posted in one piece. A key that is still down after 2 s is taken for stuck and no
/// longer waited for until it comes up. Programs that paste PRIMARY get the text of CLIPBOARD there first, as
/// its owner gives it; when there is none, or not within a second, nothing is posted to them, since they
/// would paste something else.
///
/// A chord that follows an activation by an X11 workspace is meant for that application: it waits as long for
/// it to come to the front, and is dropped, with a line on the console, when it does not, since it would
/// paste into somebody else's window.
///
/// A chord that a program holds as a hot key, this one included, would never reach its target, but set off
/// the hot key: Shift+Insert is posted in its place, and nothing when that is held as well.
class X11EventPoster : public EventPoster
{
public:
    /// Null without an X server or without its XKB or XTEST extension. The references must outlive it.
    static std::unique_ptr<X11EventPoster> open(MainQueue &queue, const Workspace &workspace);

    bool isProcessTrusted() const override;
    bool isProcessTrustedWithPrompt() override;
    std::unique_ptr<EventSource> createEventSource(int state) override;
    std::unique_ptr<KeyEvent> createKeyboardEvent(
        const EventSource *source, quint16 keyCode, KeyMotion motion) override;
    void post(EventTapLocation location, const KeyEvent &event) override;

private:
    X11EventPoster(std::unique_ptr<X11Connection> connection, std::unique_ptr<X11Keyboard> keyboard,
        MainQueue &queue, const Workspace &workspace);
    void awaitTurn();
    std::bitset<256> pressedKeys();
    bool isKeyHeld();
    bool isTargetInFront();
    void postFirst();
    void postWithPrimary();
    void finishWithPrimary(bool isTaken);
    void postKeys(PasteChord chord);
    void finishFirst();
    void drop(const char *reason);
    std::vector<xcb_keycode_t> keysOf(PasteChord chord);
    bool isFree(PasteChord chord);
    PasteChord chordOfFocusedProgram() const;

    std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<X11Keyboard> m_keyboard;
    X11Clock m_clock;
    X11PrimaryText m_primary;
    MainQueue &m_queue;
    const Workspace &m_workspace;
    const X11Workspace *m_activations; ///< the same workspace, when it tells whom it brought to the front
    bool m_isCommandVDown = false;
    /// Whom each waiting chord is for; null is whoever is in front.
    std::deque<std::shared_ptr<RunningApplication>> m_waiting;
    int m_roundsLeft = 0;
    int m_roundsToSettle = 0;
    int m_primaryNumber = 0; ///< of the current request for CLIPBOARD's text, and of none when it is over
    std::bitset<256> m_stuckKeys;
    Lifetime m_lifetime;
};
