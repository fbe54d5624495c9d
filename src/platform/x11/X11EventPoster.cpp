#include "platform/x11/X11EventPoster.h"

#include "platform/linux/KeyCodes.h"
#include "platform/x11/X11Backends.h"

#include <xcb/xtest.h>

#include <linux/input-event-codes.h>

namespace
{

xcb_keycode_t keyAt(int evdevCode)
{
    return static_cast<xcb_keycode_t>(evdevCode + keycodes::XkbOffset);
}

bool hasTestExtension(xcb_connection_t *connection)
{
    const xcb_query_extension_reply_t *const extension = xcb_get_extension_data(connection, &xcb_test_id);
    if (!extension || !extension->present)
        return false;
    const XcbReply<xcb_test_get_version_reply_t> version(
        xcb_test_get_version_reply(connection, xcb_test_get_version(connection, 2, 2), nullptr));
    return version != nullptr;
}

} // namespace

std::unique_ptr<X11EventPoster> X11EventPoster::open(MainQueue &queue, const Workspace &workspace)
{
    auto connection = X11Connection::open();
    if (!connection || !hasTestExtension(connection->get()))
        return nullptr;
    auto keyboard = X11Keyboard::open(*connection);
    if (!keyboard)
        return nullptr;
    return std::unique_ptr<X11EventPoster>(
        new X11EventPoster(std::move(connection), std::move(keyboard), queue, workspace));
}

X11EventPoster::X11EventPoster(std::unique_ptr<X11Connection> connection,
    std::unique_ptr<X11Keyboard> keyboard, MainQueue &queue, const Workspace &workspace)
    : ChordPoster(queue, workspace)
    , m_connection(std::move(connection))
    , m_keyboard(std::move(keyboard))
    , m_clock(*m_connection)
    , m_primary(*m_connection, m_clock)
{
    m_connection->onEvent = [this](const xcb_generic_event_t &event) {
        m_clock.note(event);
        if (!m_keyboard->note(event))
            m_primary.note(event);
    };
    m_connection->flush();
}

bool X11EventPoster::isProcessTrusted() const
{
    return xcb_connection_has_error(m_connection->get()) == 0;
}

std::bitset<256> X11EventPoster::pressedKeys()
{
    // News of the keyboard may be on the wire.
    m_connection->processEvents();
    return m_keyboard->pressedKeys() & ~m_keyboard->lockKeys();
}

bool X11EventPoster::isKeyHeld()
{
    const std::bitset<256> pressed = pressedKeys();
    m_stuckKeys &= pressed;
    return (pressed & ~m_stuckKeys).any();
}

void X11EventPoster::ignoreHeldKeys()
{
    m_stuckKeys = pressedKeys();
}

void X11EventPoster::press(PasteChord chord)
{
    // Where no layout has the letter, GTK finds no Ctrl+V on any key, while Shift+Insert pastes in all
    // toolkits: in terminals PRIMARY, elsewhere CLIPBOARD.
    const bool hasLetter = m_keyboard->keyOf(keysymbol::SmallV).has_value();
    if (chord != PasteChord::ShiftInsert && hasLetter && isFree(chord)) {
        pressKeys(chord);
        finish();
    } else if (!isFree(PasteChord::ShiftInsert)) {
        drop("a program holds them as a hot key");
    } else if (chord == PasteChord::ControlV) {
        pressKeys(PasteChord::ShiftInsert);
        finish();
    } else {
        pressWithPrimary();
    }
}

void X11EventPoster::takePrimaryText(std::function<void(bool isTaken)> onDone)
{
    m_primary.takeClipboard(onDone);
}

void X11EventPoster::cancelPrimaryText()
{
    m_primary.cancel();
}

std::vector<xcb_keycode_t> X11EventPoster::keysOf(PasteChord chord)
{
    using namespace keysymbol;
    const auto control = m_keyboard->modifierKey(XCB_MAP_INDEX_CONTROL, {ControlLeft, ControlRight});
    const auto shift = m_keyboard->modifierKey(XCB_MAP_INDEX_SHIFT, {ShiftLeft, ShiftRight});
    std::vector<xcb_keycode_t> keys;
    if (chord != PasteChord::ShiftInsert)
        keys.push_back(control.value_or(keyAt(KEY_LEFTCTRL)));
    if (chord != PasteChord::ControlV)
        keys.push_back(shift.value_or(keyAt(KEY_LEFTSHIFT)));
    if (chord == PasteChord::ShiftInsert)
        keys.push_back(m_keyboard->keyOf(Insert).value_or(keyAt(KEY_INSERT)));
    else
        keys.push_back(m_keyboard->keyOf(SmallV).value_or(keyAt(KEY_V)));
    return keys;
}

bool X11EventPoster::isFree(PasteChord chord)
{
    xcb_connection_t *const connection = m_connection->get();
    const xcb_window_t root = m_connection->root();
    const xcb_keycode_t key = keysOf(chord).back();
    int modifiers = m_keyboard->activeModifiers();
    if (chord != PasteChord::ShiftInsert)
        modifiers |= XCB_MOD_MASK_CONTROL;
    if (chord != PasteChord::ControlV)
        modifiers |= XCB_MOD_MASK_SHIFT;
    const auto bits = static_cast<uint16_t>(modifiers);
    // Two programs cannot hold the same combination (X protocol, GrabKey). The server's grab keeps others
    // from being refused because of the attempt.
    xcb_grab_server(connection);
    const auto attempt =
        xcb_grab_key_checked(connection, 0, root, bits, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_ungrab_key(connection, key, root, bits);
    xcb_ungrab_server(connection);
    const XcbReply<xcb_generic_error_t> refusal(xcb_request_check(connection, attempt));
    return !refusal;
}

void X11EventPoster::pressKeys(PasteChord chord)
{
    const std::vector<xcb_keycode_t> keys = keysOf(chord);
    const auto fake = [this](uint8_t type, xcb_keycode_t key) {
        xcb_test_fake_input(m_connection->get(), type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    };
    for (const xcb_keycode_t key : keys)
        fake(XCB_KEY_PRESS, key);
    for (auto key = keys.rbegin(); key != keys.rend(); ++key)
        fake(XCB_KEY_RELEASE, *key);
    m_connection->flush();
    // Requests for PRIMARY that came in while the layout was read.
    m_connection->processEvents();
}

std::unique_ptr<EventPoster> platform::makeX11EventPoster(MainQueue &queue, const Workspace &workspace)
{
    return X11EventPoster::open(queue, workspace);
}
