#pragma once

#include "platform/linux/ChordPoster.h"
#include "platform/wayland/WaylandConnection.h"
#include "platform/wayland/WaylandPrimaryText.h"

/// Posts the paste chord with a keyboard of its own (virtual-keyboard-unstable-v1), which has just the keys
/// of the chords, each in its place on a PC keyboard. What the user holds on another keyboard does not mix
/// with it, and the layout in use does not matter.
class VirtualKeyboardPoster : public ChordPoster
{
public:
    /// Null when the compositor has no virtual keyboards or no seat. The references must outlive it.
    static std::unique_ptr<VirtualKeyboardPoster> open(MainQueue &queue, const Workspace &workspace);

    bool isProcessTrusted() const override { return m_connection->isOpen(); }

private:
    VirtualKeyboardPoster(
        std::unique_ptr<WaylandConnection> connection, MainQueue &queue, const Workspace &workspace);
    bool isKeyHeld() override { return false; }
    void ignoreHeldKeys() override {}
    void pressKeys(PasteChord chord) override;
    void takePrimaryText(std::function<void(bool isTaken)> onDone) override;
    void cancelPrimaryText() override;
    bool sendKeymap();

    const std::unique_ptr<WaylandConnection> m_connection;
    WaylandObject m_seat;
    WaylandObject m_manager;
    WaylandObject m_keyboard;
    const std::unique_ptr<WaylandPrimaryText> m_primary; ///< null where there is none
};
