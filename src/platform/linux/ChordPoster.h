#pragma once

#include "base/Lifetime.h"
#include "base/MainQueue.h"
#include "platform/EventPoster.h"
#include "platform/Workspace.h"
#include "platform/linux/PasteChords.h"

#include <deque>
#include <functional>

/// What every event poster of a Linux desktop does: turns the posted Command-V into the paste chord of the
/// program in front, and chooses the moment. Any other event is dropped.
///
/// Command-V is complete with its release; from then on the chord waits until no key is down, looking every
/// 10 ms, and is then posted in one piece. A key that is still down after 2 s is taken for stuck.
///
/// A chord that follows an activation by the workspace is meant for that application: it waits as long for it
/// to come to the front, and is dropped, with a line on the console, when it does not, since it would paste
/// into somebody else's window.
class ChordPoster : public EventPoster
{
public:
    /// Both must outlive it.
    ChordPoster(MainQueue &queue, const Workspace &workspace);

    bool isProcessTrustedWithPrompt() override;
    std::unique_ptr<EventSource> createEventSource(int state) override;
    std::unique_ptr<KeyEvent> createKeyboardEvent(
        const EventSource *source, quint16 keyCode, KeyMotion motion) override;
    void post(EventTapLocation location, const KeyEvent &event) override;

protected:
    /// Whether the user holds a key that would mix with the chord.
    virtual bool isKeyHeld() = 0;
    /// The keys that are held now are no longer waited for, until they come up.
    virtual void ignoreHeldKeys() = 0;
    /// Posts the chord, or another that comes to the same; ends with `finish` or `drop`, now or later.
    virtual void press(PasteChord chord);
    /// Posts the very chord.
    virtual void pressKeys(PasteChord chord) = 0;

    /// Puts the clipboard's text where Shift+Insert pastes from in programs that paste nothing else; says
    /// once whether that came about, now or later.
    virtual void takePrimaryText(std::function<void(bool isTaken)> onDone) = 0;
    /// Gives up on a clipboard that does not answer; `onDone` may be called or not.
    virtual void cancelPrimaryText() = 0;

    /// Posts Shift+Insert once the primary selection has the text; nothing when there is none, or not within
    /// a second, since something else would be pasted.
    void pressWithPrimary();

    /// Whether the program that the chord is for has left the front meanwhile.
    bool isTargetLost() const;

    void finish();
    /// Drops the chord, whose target is not in front.
    void dropForLostTarget();
    /// The reason in plain words, for the console.
    void drop(const char *reason);

private:
    void finishWithPrimary(bool isTaken);
    void awaitTurn();
    bool isTargetInFront();
    PasteChord chordOfFocusedProgram() const;

    MainQueue &m_queue;
    const Workspace &m_workspace;
    bool m_isCommandVDown = false;
    /// Whom each waiting chord is for; null is whoever is in front.
    std::deque<std::shared_ptr<RunningApplication>> m_waiting;
    int m_roundsLeft = 0;
    int m_roundsToSettle = 0;
    int m_primaryNumber = 0; ///< of the current request for the text, and of none when it is over
    Lifetime m_lifetime;
};
