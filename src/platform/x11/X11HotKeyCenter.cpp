#include "platform/x11/X11HotKeyCenter.h"

#include "platform/linux/KeyCodes.h"
#include "platform/x11/X11Backends.h"
#include "platform/x11/X11Keyboard.h"
#include "platform/x11/XkbProtocol.h"

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <limits>

namespace
{

constexpr quint16 AllModifierBits = 0xff;
/// How often a key that was down before it became a hot key is looked at, until it is up.
constexpr std::chrono::milliseconds ReleaseInterval{20};

/// What a combination is to the server, on the keyboard of the moment.
struct Chord {
    xcb_keycode_t key = 0;
    quint16 modifiers = 0;

    bool operator==(const Chord &) const = default;
};

} // namespace

/// The connection and what is grabbed on it.
class X11HotKeyCenter::Grabs
{
public:
    Grabs(std::unique_ptr<X11Connection> connection, std::unique_ptr<X11Keyboard> keyboard);

    int add(quint64 id, quint32 keyCode, quint32 modifiers);
    void remove(quint64 id);

    std::function<void()> handler;

private:
    struct HotKey {
        quint64 id;
        quint32 keyCode;
        quint32 modifiers;
        std::optional<Chord> chord; ///< nothing while the keyboard has no such chord, or it was refused
        bool isDown = false;
    };

    std::optional<Chord> chordOf(quint32 keyCode, quint32 modifiers);
    std::vector<quint16> lockStates(const Chord &chord) const;
    bool grab(const Chord &chord);
    void ungrab(const Chord &chord);
    void onEvent(const xcb_generic_event_t &event);
    void onKeyPress(const xcb_key_press_event_t &event);
    void onKeyRelease(const xcb_key_release_event_t &event);
    void onKeyboardChange();
    void lookForReleases();

    std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<X11Keyboard> m_keyboard;
    quint16 m_lockBits;
    std::vector<HotKey> m_hotKeys;
    QTimer m_releaseTimer;
};

X11HotKeyCenter::Grabs::Grabs(
    std::unique_ptr<X11Connection> connection, std::unique_ptr<X11Keyboard> keyboard)
    : m_connection(std::move(connection))
    , m_keyboard(std::move(keyboard))
    , m_lockBits(m_keyboard->lockBits())
{
    // Without it each repeat comes as a release and a press, like a key that is hit again.
    xcb_discard_reply(m_connection->get(),
        xcb_xkb_per_client_flags(m_connection->get(), XCB_XKB_ID_USE_CORE_KBD,
            XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0,
            0, 0)
            .sequence);
    m_connection->onEvent = [this](const xcb_generic_event_t &event) { onEvent(event); };
    m_releaseTimer.setInterval(ReleaseInterval);
    QObject::connect(&m_releaseTimer, &QTimer::timeout, [this] { lookForReleases(); });
    m_connection->flush();
}

std::optional<Chord> X11HotKeyCenter::Grabs::chordOf(quint32 keyCode, quint32 modifiers)
{
    using namespace keysymbol;
    if (keyCode > std::numeric_limits<quint16>::max())
        return std::nullopt;
    const auto evdevCode = keycodes::evdevCode(static_cast<quint16>(keyCode));
    if (!evdevCode || !m_keyboard->hasKey(*evdevCode + keycodes::XkbOffset))
        return std::nullopt;
    Chord chord{static_cast<xcb_keycode_t>(*evdevCode + keycodes::XkbOffset), 0};
    if (modifiers & ShiftKey)
        chord.modifiers |= XCB_MOD_MASK_SHIFT;
    if (modifiers & ControlKey)
        chord.modifiers |= XCB_MOD_MASK_CONTROL;
    if (modifiers & CommandKey) {
        const quint16 bit = m_keyboard->modifierBit({SuperLeft, SuperRight});
        if (bit == 0)
            return std::nullopt;
        chord.modifiers |= bit;
    }
    if (modifiers & OptionKey) {
        const quint16 bit = m_keyboard->modifierBit({AltLeft, AltRight});
        if (bit == 0)
            return std::nullopt;
        chord.modifiers |= bit;
    }
    return chord;
}

std::vector<quint16> X11HotKeyCenter::Grabs::lockStates(const Chord &chord) const
{
    const int locks = m_lockBits & ~chord.modifiers;
    std::vector<quint16> states;
    for (int state = 0; state <= AllModifierBits; ++state) {
        if ((state & ~locks) == 0)
            states.push_back(static_cast<quint16>(chord.modifiers | state));
    }
    return states;
}

bool X11HotKeyCenter::Grabs::grab(const Chord &chord)
{
    xcb_connection_t *const connection = m_connection->get();
    std::vector<xcb_void_cookie_t> cookies;
    for (const quint16 state : lockStates(chord)) {
        cookies.push_back(xcb_grab_key_checked(
            connection, 0, m_connection->root(), state, chord.key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    bool isGranted = xcb_connection_has_error(connection) == 0;
    for (const xcb_void_cookie_t cookie : cookies) {
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(connection, cookie));
        isGranted = isGranted && !error;
    }
    if (!isGranted)
        ungrab(chord);
    return isGranted;
}

void X11HotKeyCenter::Grabs::ungrab(const Chord &chord)
{
    for (const quint16 state : lockStates(chord))
        xcb_ungrab_key(m_connection->get(), chord.key, m_connection->root(), state);
    m_connection->flush();
}

int X11HotKeyCenter::Grabs::add(quint64 id, quint32 keyCode, quint32 modifiers)
{
    // News of the keyboard may be on the wire.
    m_connection->processEvents();
    const auto chord = chordOf(keyCode, modifiers);
    if (!chord)
        return HotKeyInvalid;
    // The server lets a client grab a combination twice, and one release would end both.
    const bool isHeld =
        std::ranges::any_of(m_hotKeys, [&](const HotKey &hotKey) { return hotKey.chord == chord; });
    const bool isGranted = !isHeld && grab(*chord);
    if (isGranted) {
        // A hand that has just chosen the combination may hold it still. What then repeats is no press; and
        // the release goes to the window that has had the press.
        const bool isDown = m_keyboard->pressedKeys()[chord->key];
        m_hotKeys.push_back({id, keyCode, modifiers, chord, isDown});
        if (isDown)
            m_releaseTimer.start();
    }
    m_connection->processEvents();
    return isGranted ? HotKeyRegistered : HotKeyExists;
}

void X11HotKeyCenter::Grabs::remove(quint64 id)
{
    const auto found = std::ranges::find(m_hotKeys, id, &HotKey::id);
    if (found == m_hotKeys.end())
        return;
    if (found->chord)
        ungrab(*found->chord);
    m_hotKeys.erase(found);
}

void X11HotKeyCenter::Grabs::onEvent(const xcb_generic_event_t &event)
{
    if (m_keyboard->note(event)) {
        onKeyboardChange();
        return;
    }
    switch (event.response_type & 0x7f) {
    case XCB_KEY_PRESS:
        onKeyPress(reinterpret_cast<const xcb_key_press_event_t &>(event));
        break;
    case XCB_KEY_RELEASE:
        onKeyRelease(reinterpret_cast<const xcb_key_release_event_t &>(event));
        break;
    default:
        break;
    }
}

void X11HotKeyCenter::Grabs::onKeyPress(const xcb_key_press_event_t &event)
{
    const auto isPressed = [&](const HotKey &hotKey) {
        if (!hotKey.chord || hotKey.chord->key != event.detail)
            return false;
        const int locks = m_lockBits & ~hotKey.chord->modifiers;
        return (event.state & AllModifierBits & ~locks) == hotKey.chord->modifiers;
    };
    const auto found = std::ranges::find_if(m_hotKeys, isPressed);
    if (found == m_hotKeys.end() || found->isDown)
        return;
    found->isDown = true;
    // A copy: the handler may register, release, or install another handler.
    if (const auto call = handler)
        call();
}

void X11HotKeyCenter::Grabs::onKeyRelease(const xcb_key_release_event_t &event)
{
    for (HotKey &hotKey : m_hotKeys) {
        if (hotKey.chord && hotKey.chord->key == event.detail)
            hotKey.isDown = false;
    }
}

void X11HotKeyCenter::Grabs::lookForReleases()
{
    const std::bitset<256> pressed = m_keyboard->pressedKeys();
    // Repeats from before may be on the wire.
    m_connection->processEvents();
    for (HotKey &hotKey : m_hotKeys)
        hotKey.isDown = hotKey.isDown && hotKey.chord && pressed[hotKey.chord->key];
    if (std::ranges::none_of(m_hotKeys, &HotKey::isDown))
        m_releaseTimer.stop();
}

void X11HotKeyCenter::Grabs::onKeyboardChange()
{
    const quint16 newLockBits = m_keyboard->lockBits();
    const bool areLocksChanged = newLockBits != m_lockBits;
    const std::bitset<256> pressed = m_keyboard->pressedKeys();
    for (HotKey &hotKey : m_hotKeys) {
        const auto chord = chordOf(hotKey.keyCode, hotKey.modifiers);
        if (chord == hotKey.chord && !areLocksChanged)
            continue;
        if (hotKey.chord)
            ungrab(*hotKey.chord);
        hotKey.chord = chord;
        // A release may have been missed in between, and would cost the next press.
        hotKey.isDown = hotKey.isDown && chord && pressed[chord->key];
    }
    m_lockBits = newLockBits;
    for (HotKey &hotKey : m_hotKeys) {
        if (hotKey.chord && !grab(*hotKey.chord))
            hotKey.chord.reset();
    }
}

class X11HotKeyCenter::Registration : public HotKeyRef
{
public:
    Registration(const std::shared_ptr<Grabs> &grabs, quint64 id)
        : m_grabs(grabs)
        , m_id(id)
    {
    }
    ~Registration() override
    {
        if (const auto grabs = m_grabs.lock())
            grabs->remove(m_id);
    }
    Registration(const Registration &) = delete;
    Registration &operator=(const Registration &) = delete;

private:
    std::weak_ptr<Grabs> m_grabs;
    quint64 m_id;
};

std::unique_ptr<X11HotKeyCenter> X11HotKeyCenter::open()
{
    auto connection = X11Connection::open();
    if (!connection)
        return nullptr;
    auto keyboard = X11Keyboard::open(*connection);
    if (!keyboard)
        return nullptr;
    return std::unique_ptr<X11HotKeyCenter>(
        new X11HotKeyCenter(std::make_shared<Grabs>(std::move(connection), std::move(keyboard))));
}

X11HotKeyCenter::X11HotKeyCenter(std::shared_ptr<Grabs> grabs)
    : m_grabs(std::move(grabs))
{
}
X11HotKeyCenter::~X11HotKeyCenter() = default;

HotKeyRegistration X11HotKeyCenter::registerEventHotKey(quint32 keyCode, quint32 modifiers, HotKeyId)
{
    const quint64 id = m_nextId++;
    const int status = m_grabs->add(id, keyCode, modifiers);
    if (status != HotKeyRegistered)
        return {status, nullptr};
    return {status, std::make_unique<Registration>(m_grabs, id)};
}

void X11HotKeyCenter::installEventHandler(std::function<void()> handler)
{
    m_grabs->handler = std::move(handler);
}

std::unique_ptr<HotKeyCenter> platform::makeX11HotKeyCenter()
{
    return X11HotKeyCenter::open();
}
