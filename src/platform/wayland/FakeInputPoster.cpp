#include "platform/wayland/FakeInputPoster.h"

#include "platform/linux/ChordKeys.h"
#include "platform/linux/KeyChord.h"
#include "platform/wayland/KeyProtocols.h"

std::unique_ptr<FakeInputPoster> FakeInputPoster::open(MainQueue &queue, const Workspace &workspace)
{
    auto connection = WaylandConnection::open();
    const auto input = connection ? connection->global(fakeinput::FakeInput.name) : std::nullopt;
    if (!input || input->version < fakeinput::VersionWithKeys || !connection->global("wl_seat"))
        return nullptr;
    std::unique_ptr<FakeInputPoster> poster(new FakeInputPoster(std::move(connection), queue, workspace));
    // The seat's keyboard first, then its keymap.
    poster->m_connection->roundTrip();
    poster->m_connection->roundTrip();
    return poster->isProcessTrusted() ? std::move(poster) : nullptr;
}

FakeInputPoster::FakeInputPoster(
    std::unique_ptr<WaylandConnection> connection, MainQueue &queue, const Workspace &workspace)
    : ChordPoster(queue, workspace)
    , m_connection(std::move(connection))
    , m_input(m_connection->bind(*m_connection->global(fakeinput::FakeInput.name), fakeinput::FakeInput,
                  fakeinput::VersionWithKeys),
          WaylandObject::NoDestructor)
    , m_keymap(*m_connection, *m_connection->global("wl_seat"))
    , m_primary(WaylandPrimaryText::open(*m_connection))
    , m_layout(queue)
{
    m_input.request(fakeinput::Authenticate, "Larkspool", "Pastes the entry that you pick");
}

void FakeInputPoster::press(PasteChord chord)
{
    m_activeLayout = 0;
    if (m_keymap.layoutCount() <= 1) {
        ChordPoster::press(chord);
        return;
    }
    m_layout.read([this, chord](std::optional<uint> layout) {
        m_activeLayout = layout.value_or(0);
        ChordPoster::press(chord);
    });
}

void FakeInputPoster::pressKeys(PasteChord chord)
{
    const auto key = [this](quint16 evdevCode, WaylandKeyState state) {
        m_input.request(fakeinput::KeyboardKey, uint32_t{evdevCode}, static_cast<uint32_t>(state));
    };
    ChordKeys keys = chordKeys(chord);
    keys.key = m_keymap.keyOf(keyChord(chord).symbol, m_activeLayout).value_or(keys.key);
    for (const quint16 modifier : keys.modifiers)
        key(modifier, WaylandKeyState::Pressed);
    key(keys.key, WaylandKeyState::Pressed);
    key(keys.key, WaylandKeyState::Released);
    for (auto modifier = keys.modifiers.rbegin(); modifier != keys.modifiers.rend(); ++modifier)
        key(*modifier, WaylandKeyState::Released);
    m_connection->flush();
}

void FakeInputPoster::takePrimaryText(std::function<void(bool isTaken)> onDone)
{
    if (m_primary)
        m_primary->takeClipboard(std::move(onDone));
    else
        onDone(false);
}

void FakeInputPoster::cancelPrimaryText()
{
    if (m_primary)
        m_primary->cancel();
}
