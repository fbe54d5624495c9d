#include "platform/wayland/WaylandChordPoster.h"

WaylandChordPoster::WaylandChordPoster(
    std::unique_ptr<WaylandConnection> connection, MainQueue &queue, const Workspace &workspace)
    : ChordPoster(queue, workspace)
    , m_connection(std::move(connection))
    , m_primary(WaylandPrimaryText::open(*m_connection))
{
}

WaylandChordPoster::~WaylandChordPoster() = default;

void WaylandChordPoster::pressKeys(PasteChord chord)
{
    const ChordKeys keys = keysOf(chord);
    for (const quint16 modifier : keys.modifiers)
        sendKey(modifier, WaylandKeyState::Pressed);
    sendModifiers(chord);
    sendKey(keys.key, WaylandKeyState::Pressed);
    sendKey(keys.key, WaylandKeyState::Released);
    for (auto modifier = keys.modifiers.rbegin(); modifier != keys.modifiers.rend(); ++modifier)
        sendKey(*modifier, WaylandKeyState::Released);
    sendModifiers(std::nullopt);
    m_connection->flush();
}

void WaylandChordPoster::takePrimaryText(std::function<void(bool isTaken)> onDone)
{
    if (m_primary)
        m_primary->takeClipboard(std::move(onDone));
    else
        onDone(false);
}

void WaylandChordPoster::cancelPrimaryText()
{
    if (m_primary)
        m_primary->cancel();
}
