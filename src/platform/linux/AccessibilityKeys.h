#pragma once

#include "platform/linux/BusCall.h"
#include "platform/linux/BusConnection.h"
#include "platform/linux/KeyPresser.h"
#include "platform/linux/ThreadInbox.h"
#include "platform/linux/WorkThread.h"

#include <vector>

/// Presses keys by way of the accessibility bus (AT-SPI, org.a11y.atspi.DeviceEventController), which asks
/// nobody. Modifiers are locked and unlocked instead of pressed, since that works by their meaning and not by
/// the place of a key.
///
/// The service says that it has got a chord, not whether the keys had an effect. It presses them by way of
/// the X server, and stays silent where that cannot be done: so that is asked of `canPressKeys` first.
class AccessibilityKeys : public KeyPresser
{
public:
    /// The connection is to the session bus. `canPressKeys` says whether the X server, if there is one, takes
    /// keys from programs. The queue must outlive it.
    AccessibilityKeys(QDBusConnection sessionBus, MainQueue &queue, std::function<bool()> canPressKeys);
    ~AccessibilityKeys() override;

    void prepare(Callback onDone) override;
    void press(const KeyChord &chord, Callback onDone) override;

private:
    struct Event {
        int value;
        uint type;
    };

    void addressReceived(const QDBusMessage &reply);
    void connect(const QByteArray &address);
    void sendNext();
    void unlock();
    void finish(Outcome outcome);

    QDBusConnection m_sessionBus;
    MainQueue &m_queue;
    const std::function<bool()> m_canPressKeys;
    Callback m_onDone;
    std::unique_ptr<BusConnection> m_bus;
    std::unique_ptr<BusCall> m_call;
    std::vector<Event> m_events; ///< of the chord at hand
    size_t m_nextEvent = 0;
    ThreadInbox m_inbox;
    WorkThread m_thread; ///< connecting waits for the bus
};
