#pragma once

#include "platform/wayland/WaylandChordPoster.h"

/// Posts the paste chord with a keyboard of its own (virtual-keyboard-unstable-v1), which has just the keys
/// of the chords, each in its place on a PC keyboard. What the user holds on another keyboard does not mix
/// with it, and the layout in use does not matter.
class VirtualKeyboardPoster : public WaylandChordPoster
{
public:
    /// Null when the compositor has no virtual keyboards or no seat. The references must outlive it.
    static std::unique_ptr<VirtualKeyboardPoster> open(MainQueue &queue, const Workspace &workspace);

private:
    VirtualKeyboardPoster(
        std::unique_ptr<WaylandConnection> connection, MainQueue &queue, const Workspace &workspace);
    void sendKey(quint16 evdevCode, WaylandKeyState state) override;
    void sendModifiers(std::optional<PasteChord> chord) override;
    bool sendKeymap();

    WaylandObject m_seat;
    WaylandObject m_manager;
    WaylandObject m_keyboard;
};
