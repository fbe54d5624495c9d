#pragma once

#include <QtGlobal>

#include <memory>

/// Where a synthetic event enters the stream of events; the number is the platform's.
enum class EventTapLocation { AnnotatedSession = 2 };

/// Whether a key event presses or releases.
enum class KeyMotion { Down, Up };

/// Modifier flags of a synthetic key event.
enum KeyEventFlag : quint64 { EventFlagCommand = 0x100000 };

/// A key event to be posted: a plain value.
struct KeyEvent {
    quint16 keyCode = 0; ///< virtual key code, US layout numbering
    KeyMotion motion = KeyMotion::Down;
    quint64 flags = 0; ///< KeyEventFlag values
};

/// Where the events come from; some systems have none, and do without.
class EventSource
{
public:
    virtual ~EventSource() = default;
};

/// Posts synthetic key events to whatever program has the keyboard focus.
///
/// Life cycle: made by loadEventPoster(); asked and used at any time on the main thread; events that wait for
/// a held key (below) are dropped when it is destroyed.
///
/// The one chord that is posted is Command-V, "paste". A back end turns it into the chord that the focused
/// program takes for paste, and finds the key by its symbol in the active layout. Keys that the user still
/// holds do not mix with it: the chord waits for their release, up to 2 s, and is then posted all the same.
class EventPoster
{
public:
    virtual ~EventPoster() = default;

    /// Whether this process may post events, that is, whether they would arrive.
    virtual bool isProcessTrusted() const = 0;

    /// The same; asks the user for the permission when it is missing and the desktop has a way to ask.
    virtual bool isProcessTrustedWithPrompt() = 0;

    /// A source in the combined session state (0); may be null.
    virtual std::unique_ptr<EventSource> createEventSource(int state) = 0;

    /// A key event; null when it cannot be made.
    virtual std::unique_ptr<KeyEvent> createKeyboardEvent(
        const EventSource *source, quint16 keyCode, KeyMotion motion) = 0;

    /// Injects the event. Whether it has an effect is not known.
    virtual void post(EventTapLocation location, const KeyEvent &event) = 0;
};
