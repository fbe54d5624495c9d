#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <optional>

/// A modifier that is held; Command is Ctrl or Super, whichever the user takes.
enum class EventModifier : quint8 {
    None = 0,
    Command = 1,
    Shift = 2,
    Option = 4,
};
constexpr EventModifier operator|(EventModifier a, EventModifier b)
{
    return static_cast<EventModifier>(quint8(a) | quint8(b));
}
constexpr bool holds(EventModifier modifiers, EventModifier one)
{
    return (quint8(modifiers) & quint8(one)) != 0;
}

/// A key, not a modifier alone, that went down, or repeats, in a window of this program.
struct LocalKeyEvent {
    /// Virtual key code: Return 36 (the keypad's as well), Delete (backwards) 51, Escape 53, Left 123, Right
    /// 124, Down 125, Up 126 by what the key means; others by where it is (US layout numbering).
    quint16 keyCode = 0;
    EventModifier modifiers = EventModifier::None;
    QString characters = {}; ///< what the key types; may be empty
    bool isRepeat = false;
    /// The same press as a system-wide hot key has it: the key by where it is, whatever it means, nothing for
    /// one that has no virtual key code; and `HotKeyModifier` bits, in which Ctrl and Super are two.
    std::optional<quint16> position = std::nullopt;
    quint32 hotKeyModifiers = 0;
};

/// A turn of a wheel or a move of fingers over a window of this program.
struct LocalScrollEvent {
    double scrollingDeltaY = 0; ///< positive is up; points when precise, else notches
    bool hasPreciseScrollingDeltas = false;
};

enum class LocalEventFate { PassedOn, Consumed };

/// The events of this program's own windows, before any view sees them.
///
/// Monitors are asked in the order in which they were added, until one consumes the event. They may add and
/// end monitors, their own included; one that is added meanwhile hears the next event. Main thread only.
class LocalEvents
{
public:
    /// Destroying it removes the monitor. It may outlive the events' source.
    class Monitor
    {
    public:
        virtual ~Monitor() = default;
    };
    using KeyHandler = std::function<LocalEventFate(const LocalKeyEvent &)>;
    using ScrollHandler = std::function<LocalEventFate(const LocalScrollEvent &)>;

    virtual ~LocalEvents() = default;

    [[nodiscard]] virtual std::unique_ptr<Monitor> addKeyDownMonitor(KeyHandler handler) = 0;
    [[nodiscard]] virtual std::unique_ptr<Monitor> addScrollMonitor(ScrollHandler handler) = 0;
};
