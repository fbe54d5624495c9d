#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>
#include <utility>

/// Modifier bits of a hot key, in the classic event-manager encoding. On Linux: Super, Shift, Alt, Ctrl.
enum HotKeyModifier : quint32 {
    CommandKey = 256,
    ShiftKey = 512,
    OptionKey = 2048,
    ControlKey = 4096,
};

/// The identity that a hot key is registered under.
struct HotKeyId {
    quint32 signature; ///< a four-character code
    quint32 id;
};

/// A registration; destroying it releases the key combination.
class HotKeyRef
{
public:
    virtual ~HotKeyRef() = default;
};

/// What a registration came to.
struct HotKeyRegistration {
    int status = 0; ///< 0, or the reason: a value of HotKeyStatus
    std::unique_ptr<HotKeyRef> ref;
};

/// Why a combination could not be registered; the numbers appear in a diagnostic line.
enum HotKeyStatus : int {
    HotKeyRegistered = 0,
    HotKeyExists = -9878,      ///< another program, or this one, holds it; or the user, when asked, refuses
    HotKeyInvalid = -9879,     ///< no key of this keyboard has the code
    HotKeyUnavailable = -9877, ///< the desktop offers no hot keys to programs
};

/// System-wide hot keys.
///
/// Life cycle: 1. made by loadHotKeyCenter(); 2. `installEventHandler` and `installFailureHandler`, as often
/// as wanted: the last one counts;
/// 3. `registerEventHotKey`, whose result holds the combination until it is destroyed; the centre may go
/// first. Where the desktop answers later, perhaps after a question to the user, a registration counts as
/// good until the answer is no; what it holds then is nothing. While the combination is held, it works
/// whatever the lock keys (Caps, Num, Scroll) say, follows a change of the keyboard's layout, and other
/// programs do not see the press. A press that the keyboard repeats counts once. Thread: the main thread, the
/// handler included.
class HotKeyCenter
{
public:
    virtual ~HotKeyCenter() = default;

    /// Claims the virtual key code (US layout numbering: A = 0, V = 9, Space = 49) with the modifiers.
    [[nodiscard]] virtual HotKeyRegistration registerEventHotKey(
        quint32 keyCode, quint32 modifiers, HotKeyId id) = 0;

    /// The handler for presses of any registered hot key.
    virtual void installEventHandler(std::function<void()> handler) = 0;

    /// The handler for a registration that had succeeded and turns out refused: called once for it, with the
    /// reason, a value of HotKeyStatus. Never from within `registerEventHotKey`, and not for a registration
    /// that has been released. A centre whose desktop answers at once has nothing to call it for.
    void installFailureHandler(std::function<void(int status)> handler)
    {
        m_failureHandler = std::move(handler);
    }

protected:
    /// For back ends; the handler may end this object.
    void registrationFailed(int status) const
    {
        if (const auto call = m_failureHandler)
            call(status);
    }

private:
    std::function<void(int status)> m_failureHandler;
};
