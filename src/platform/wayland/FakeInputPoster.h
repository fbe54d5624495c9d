#pragma once

#include "platform/linux/PlasmaKeyboardLayout.h"
#include "platform/wayland/WaylandChordPoster.h"
#include "platform/wayland/WaylandKeymap.h"

/// Posts the paste chord as if it came from the user's keyboard (org_kde_kwin_fake_input). The key of V is
/// the one that gives the letter in the active layout, else in another one.
///
/// Keys that the user holds mix with the chord.
class FakeInputPoster : public WaylandChordPoster
{
public:
    /// Null when the compositor has no such protocol, or not for this program. The references must outlive
    /// it.
    static std::unique_ptr<FakeInputPoster> open(MainQueue &queue, const Workspace &workspace);

private:
    FakeInputPoster(
        std::unique_ptr<WaylandConnection> connection, MainQueue &queue, const Workspace &workspace);
    void press(PasteChord chord) override;
    ChordKeys keysOf(PasteChord chord) const override;
    void sendKey(quint16 evdevCode, WaylandKeyState state) override;

    WaylandObject m_input;
    WaylandKeymap m_keymap;
    PlasmaKeyboardLayout m_layout;
    uint32_t m_activeLayout = 0;
};
