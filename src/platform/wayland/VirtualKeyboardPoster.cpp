#include "platform/wayland/VirtualKeyboardPoster.h"

#include <wayland-client-protocol.h>

#include <sys/mman.h>

#include <string_view>

namespace
{

/// The keys of the chords, under the codes that PC keyboards have for them, for programs that look at those.
constexpr std::string_view ChordKeymap = R"(xkb_keymap {
xkb_keycodes "chords" {
    minimum = 8;
    maximum = 255;
    <LCTL> = 37;
    <LFSH> = 50;
    <AB04> = 55;
    <INS> = 118;
};
xkb_types "chords" { include "complete" };
xkb_compatibility "chords" { include "complete" };
xkb_symbols "chords" {
    key <LCTL> { [ Control_L ] };
    key <LFSH> { [ Shift_L ] };
    key <AB04> { [ v, V ] };
    key <INS> { [ Insert ] };
    modifier_map Control { <LCTL> };
    modifier_map Shift { <LFSH> };
};
};
)";

/// Of the real modifiers, whose places every keymap shares.
constexpr uint32_t ShiftBit = 1U << 0U;
constexpr uint32_t ControlBit = 1U << 2U;

/// A file that holds the keymap, with the zero at its end.
FileDescriptor keymapFile()
{
    FileDescriptor file(::memfd_create("larkspool-keymap", MFD_CLOEXEC));
    const size_t size = ChordKeymap.size() + 1;
    const bool isWritten =
        file.isOpen() && ::write(file.number(), ChordKeymap.data(), size) == static_cast<ssize_t>(size);
    return isWritten ? std::move(file) : FileDescriptor();
}

uint32_t modifierBits(PasteChord chord)
{
    uint32_t bits = 0;
    if (chord != PasteChord::ShiftInsert)
        bits |= ControlBit;
    if (chord != PasteChord::ControlV)
        bits |= ShiftBit;
    return bits;
}

} // namespace

std::unique_ptr<VirtualKeyboardPoster> VirtualKeyboardPoster::open(
    MainQueue &queue, const Workspace &workspace)
{
    auto connection = WaylandConnection::open();
    const bool isOffered =
        connection && connection->global(virtualkeyboard::Manager.name) && connection->global("wl_seat");
    if (!isOffered)
        return nullptr;
    std::unique_ptr<VirtualKeyboardPoster> poster(
        new VirtualKeyboardPoster(std::move(connection), queue, workspace));
    if (!poster->sendKeymap())
        return nullptr;
    // A compositor may refuse the keyboard, which ends the connection.
    poster->connection().roundTrip();
    return poster->isProcessTrusted() ? std::move(poster) : nullptr;
}

/// The keyboard is made now and kept: programs miss the first key of one that has just come.
VirtualKeyboardPoster::VirtualKeyboardPoster(
    std::unique_ptr<WaylandConnection> opened, MainQueue &queue, const Workspace &workspace)
    : WaylandChordPoster(std::move(opened), queue, workspace)
    , m_seat(connection().bind(*connection().global("wl_seat"), wl_seat_interface, 1),
          WaylandObject::NoDestructor)
    , m_manager(
          connection().bind(*connection().global(virtualkeyboard::Manager.name), virtualkeyboard::Manager, 1),
          WaylandObject::NoDestructor)
    , m_keyboard(m_manager.create(
                     virtualkeyboard::CreateKeyboard, virtualkeyboard::Keyboard, &m_seat, WaylandNewObject()),
          virtualkeyboard::DestroyKeyboard)
{
}

bool VirtualKeyboardPoster::sendKeymap()
{
    const FileDescriptor file = keymapFile();
    if (!file.isOpen())
        return false;
    constexpr uint32_t TextFormat = WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1;
    m_keyboard.request(virtualkeyboard::Keymap, TextFormat, WaylandDescriptor{file.number()},
        static_cast<uint32_t>(ChordKeymap.size() + 1));
    connection().flush();
    return true;
}

void VirtualKeyboardPoster::sendKey(quint16 evdevCode, WaylandKeyState state)
{
    constexpr uint32_t Time = 0;
    m_keyboard.request(virtualkeyboard::Key, Time, uint32_t{evdevCode}, static_cast<uint32_t>(state));
}

/// The compositor leaves it to the keyboard to say what its modifiers do.
void VirtualKeyboardPoster::sendModifiers(std::optional<PasteChord> chord)
{
    const uint32_t held = chord ? modifierBits(*chord) : 0;
    m_keyboard.request(virtualkeyboard::Modifiers, held, 0U, 0U, 0U);
}
