#include "platform/x11/X11EventPoster.h"

#include "base/Console.h"
#include "platform/linux/KeyCodes.h"
#include "platform/x11/X11Backends.h"

#include <xcb/xtest.h>

#include <linux/input-event-codes.h>

namespace
{

constexpr quint16 VirtualV = 9;
constexpr std::chrono::milliseconds RoundTime{10};
constexpr int RoundLimit = 200; // 2 s
constexpr int SettleRounds = 5;
constexpr std::chrono::seconds ClipboardDeadline{1};

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
    : m_connection(std::move(connection))
    , m_keyboard(std::move(keyboard))
    , m_clock(*m_connection)
    , m_primary(*m_connection, m_clock)
    , m_queue(queue)
    , m_workspace(workspace)
    , m_activations(dynamic_cast<const X11Workspace *>(&workspace))
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

bool X11EventPoster::isProcessTrustedWithPrompt()
{
    return isProcessTrusted();
}

std::unique_ptr<EventSource> X11EventPoster::createEventSource(int)
{
    return std::make_unique<EventSource>();
}

std::unique_ptr<KeyEvent> X11EventPoster::createKeyboardEvent(
    const EventSource *, quint16 keyCode, KeyMotion motion)
{
    if (!keycodes::evdevCode(keyCode))
        return nullptr;
    return std::make_unique<KeyEvent>(KeyEvent{keyCode, motion, 0});
}

void X11EventPoster::post(EventTapLocation, const KeyEvent &event)
{
    if (event.keyCode != VirtualV || event.flags != EventFlagCommand)
        return;
    if (event.motion == KeyMotion::Down) {
        m_isCommandVDown = true;
        return;
    }
    if (!std::exchange(m_isCommandVDown, false))
        return;
    m_waiting.push_back(m_activations ? m_activations->takeActivatedApplication() : nullptr);
    if (m_waiting.size() > 1)
        return;
    m_roundsLeft = RoundLimit;
    awaitTurn();
}

void X11EventPoster::awaitTurn()
{
    const bool isLastRound = m_roundsLeft-- == 0;
    const bool isHeld = isKeyHeld();
    const bool isInFront = isTargetInFront();
    if (!isInFront && (isLastRound || m_waiting.size() > 1)) {
        // With another one behind it the user has moved on.
        drop("the program that they are for is not in front");
    } else if (isInFront && (!isHeld || isLastRound)) {
        if (isHeld)
            m_stuckKeys = pressedKeys();
        postFirst();
    } else {
        m_queue.asyncAfter(RoundTime, m_lifetime.guard([this] { awaitTurn(); }));
    }
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

bool X11EventPoster::isTargetInFront()
{
    const auto &target = m_waiting.front();
    if (!target)
        return true;
    if (!target->isActive()) {
        m_roundsToSettle = SettleRounds;
        return false;
    }
    // One that comes late gets the time to take the keyboard that the others have had.
    return m_roundsToSettle-- <= 0;
}

void X11EventPoster::postFirst()
{
    const PasteChord chord = chordOfFocusedProgram();
    // Where no layout has the letter, GTK finds no Ctrl+V on any key, while Shift+Insert pastes in all
    // toolkits: in terminals PRIMARY, elsewhere CLIPBOARD.
    const bool hasLetter = m_keyboard->keyOf(keysymbol::SmallV).has_value();
    if (chord != PasteChord::ShiftInsert && hasLetter && isFree(chord)) {
        postKeys(chord);
        finishFirst();
    } else if (!isFree(PasteChord::ShiftInsert)) {
        drop("a program holds them as a hot key");
    } else if (chord == PasteChord::ControlV) {
        postKeys(PasteChord::ShiftInsert);
        finishFirst();
    } else {
        postWithPrimary();
    }
}

void X11EventPoster::finishFirst()
{
    m_waiting.pop_front();
    m_roundsLeft = RoundLimit;
    m_roundsToSettle = 0;
    // Later: what has called this must not be replaced yet.
    if (!m_waiting.empty())
        m_queue.async(m_lifetime.guard([this] { awaitTurn(); }));
}

void X11EventPoster::drop(const char *reason)
{
    consoleLine(QStringLiteral("[Larkspool] No paste keys: ") + QString::fromLatin1(reason));
    finishFirst();
}

void X11EventPoster::postWithPrimary()
{
    const int number = ++m_primaryNumber;
    const auto finish = [this, number](bool isTaken) {
        if (number == m_primaryNumber)
            finishWithPrimary(isTaken);
    };
    m_primary.takeClipboard(finish);
    m_queue.asyncAfter(ClipboardDeadline, m_lifetime.guard([this, number, finish] {
        if (number == m_primaryNumber)
            m_primary.cancel();
        finish(false);
    }));
}

void X11EventPoster::finishWithPrimary(bool isTaken)
{
    ++m_primaryNumber;
    if (isTaken)
        postKeys(PasteChord::ShiftInsert);
    finishFirst();
}

PasteChord X11EventPoster::chordOfFocusedProgram() const
{
    const auto application = m_workspace.frontmostApplication();
    if (!application)
        return PasteChord::ControlV;
    return pasteChord(application->bundleIdentifier().value_or(QString()),
        executableName(application->processIdentifier()));
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

void X11EventPoster::postKeys(PasteChord chord)
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
