#include "platform/wayland/FakeInputPoster.h"

#include "platform/linux/KeyChord.h"

#include <QCoreApplication>

std::unique_ptr<FakeInputPoster> FakeInputPoster::open(MainQueue &queue, const Workspace &workspace)
{
    auto connection = WaylandConnection::open();
    const auto input = connection ? connection->global(fakeinput::FakeInput.name) : std::nullopt;
    if (!input || input->version < fakeinput::VersionWithKeys || !connection->global("wl_seat"))
        return nullptr;
    std::unique_ptr<FakeInputPoster> poster(new FakeInputPoster(std::move(connection), queue, workspace));
    // The seat's keyboard first, then its keymap.
    poster->connection().roundTrip();
    poster->connection().roundTrip();
    return poster->isProcessTrusted() ? std::move(poster) : nullptr;
}

FakeInputPoster::FakeInputPoster(
    std::unique_ptr<WaylandConnection> opened, MainQueue &queue, const Workspace &workspace)
    : WaylandChordPoster(std::move(opened), queue, workspace)
    , m_input(connection().bind(*connection().global(fakeinput::FakeInput.name), fakeinput::FakeInput,
                  fakeinput::VersionWithKeys),
          WaylandObject::NoDestructor)
    , m_keymap(connection(), *connection().global("wl_seat"))
    , m_layout(queue)
{
    //: Why it is to send keys to other programs; the desktop may say it when it asks the user.
    const QString reason = QCoreApplication::translate("FakeInputPoster", "Pastes the entry that you pick");
    m_input.request(fakeinput::Authenticate, "Larkspool", reason.toUtf8());
}

void FakeInputPoster::press(PasteChord chord)
{
    m_activeLayout = 0;
    if (m_keymap.layoutCount() <= 1) {
        WaylandChordPoster::press(chord);
        return;
    }
    m_layout.read([this, chord](std::optional<uint> layout) {
        m_activeLayout = layout.value_or(0);
        if (isTargetLost())
            dropForLostTarget();
        else
            WaylandChordPoster::press(chord);
    });
}

ChordKeys FakeInputPoster::keysOf(PasteChord chord) const
{
    ChordKeys keys = WaylandChordPoster::keysOf(chord);
    keys.key = m_keymap.keyOf(keyChord(chord).symbol, m_activeLayout).value_or(keys.key);
    return keys;
}

void FakeInputPoster::sendKey(quint16 evdevCode, WaylandKeyState state)
{
    m_input.request(fakeinput::KeyboardKey, uint32_t{evdevCode}, static_cast<uint32_t>(state));
}
