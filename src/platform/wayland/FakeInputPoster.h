#pragma once

#include "platform/linux/ChordPoster.h"
#include "platform/linux/PlasmaKeyboardLayout.h"
#include "platform/wayland/WaylandConnection.h"
#include "platform/wayland/WaylandKeymap.h"
#include "platform/wayland/WaylandPrimaryText.h"

/// Posts the paste chord as if it came from the user's keyboard (org_kde_kwin_fake_input). The key of V is
/// the one that gives the letter in the active layout, else in another one.
///
/// KWin does not tell which keys are held, and those that are mix with the chord.
class FakeInputPoster : public ChordPoster
{
public:
    /// Null when the compositor has no such protocol, or not for this program. The references must outlive
    /// it.
    static std::unique_ptr<FakeInputPoster> open(MainQueue &queue, const Workspace &workspace);

    bool isProcessTrusted() const override { return m_connection->isOpen(); }

private:
    FakeInputPoster(
        std::unique_ptr<WaylandConnection> connection, MainQueue &queue, const Workspace &workspace);
    bool isKeyHeld() override { return false; }
    void ignoreHeldKeys() override {}
    void press(PasteChord chord) override;
    void pressKeys(PasteChord chord) override;
    void takePrimaryText(std::function<void(bool isTaken)> onDone) override;
    void cancelPrimaryText() override;

    const std::unique_ptr<WaylandConnection> m_connection;
    WaylandObject m_input;
    WaylandKeymap m_keymap;
    const std::unique_ptr<WaylandPrimaryText> m_primary; ///< null where there is none
    PlasmaKeyboardLayout m_layout;
    uint32_t m_activeLayout = 0;
};
