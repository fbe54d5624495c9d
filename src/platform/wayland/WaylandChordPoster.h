#pragma once

#include "platform/linux/ChordKeys.h"
#include "platform/linux/ChordPoster.h"
#include "platform/wayland/KeyProtocols.h"
#include "platform/wayland/WaylandConnection.h"
#include "platform/wayland/WaylandPrimaryText.h"

/// What the event posters of compositors have in common: a connection of their own, over which the keys of a
/// chord go one after the other. No compositor tells which keys the user holds.
class WaylandChordPoster : public ChordPoster
{
public:
    bool isProcessTrusted() const override { return m_connection->isOpen(); }

protected:
    WaylandChordPoster(
        std::unique_ptr<WaylandConnection> connection, MainQueue &queue, const Workspace &workspace);
    ~WaylandChordPoster() override;

    virtual ChordKeys keysOf(PasteChord chord) const { return chordKeys(chord); }
    virtual void sendKey(quint16 evdevCode, WaylandKeyState state) = 0;
    /// Called when the modifiers of the chord have been pressed, and with nothing when they have been
    /// released.
    virtual void sendModifiers(std::optional<PasteChord>) {}

    WaylandConnection &connection() { return *m_connection; }

private:
    bool isKeyHeld() override { return false; }
    void ignoreHeldKeys() override {}
    void pressKeys(PasteChord chord) override;
    void takePrimaryText(std::function<void(bool isTaken)> onDone) override;
    void cancelPrimaryText() override;

    const std::unique_ptr<WaylandConnection> m_connection;
    const std::unique_ptr<WaylandPrimaryText> m_primary; ///< null where there is none
};
