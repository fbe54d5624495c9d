#include "platform/linux/AccessibilityKeys.h"

#include "platform/linux/SessionBus.h"

#include <utility>

namespace
{

using std::chrono::seconds;

constexpr seconds ReplyPatience{2};
/// For a sign of life of the accessibility bus.
constexpr seconds BusPatience{1};

// AtspiKeySynthType: the value is a key symbol to press and release, or modifiers to lock or unlock.
constexpr uint TypeSymbol = 3;
constexpr uint TypeLockModifiers = 5;
constexpr uint TypeUnlockModifiers = 6;

/// X Window System Protocol, SETofKEYMASK. Alt is where every layout has it by default.
int maskOf(KeyModifier modifier)
{
    switch (modifier) {
    case KeyModifier::Shift:
        return 1 << 0;
    case KeyModifier::Control:
        return 1 << 2;
    case KeyModifier::Alt:
        break;
    }
    return 1 << 3;
}

QDBusMessage keyCall(int value, uint type)
{
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.a11y.atspi.Registry"),
        QStringLiteral("/org/a11y/atspi/registry/deviceeventcontroller"),
        QStringLiteral("org.a11y.atspi.DeviceEventController"), QStringLiteral("GenerateKeyboardEvent"));
    call << value << QString() << type;
    return call;
}

} // namespace

AccessibilityKeys::AccessibilityKeys(
    QDBusConnection sessionBus, MainQueue &queue, std::function<bool()> canPressKeys)
    : m_sessionBus(std::move(sessionBus))
    , m_queue(queue)
    , m_canPressKeys(std::move(canPressKeys))
{
}

AccessibilityKeys::~AccessibilityKeys()
{
    unlock();
}

void AccessibilityKeys::prepare(Callback onDone)
{
    m_onDone = std::move(onDone);
    if (!m_canPressKeys()) {
        finish(Outcome::Unavailable);
        return;
    }
    if (m_bus && m_bus->get().isConnected()) {
        finish(Outcome::Done);
        return;
    }
    const QString name = QStringLiteral("org.a11y.Bus");
    const QDBusMessage call = QDBusMessage::createMethodCall(
        name, QStringLiteral("/org/a11y/bus"), name, QStringLiteral("GetAddress"));
    m_call = std::make_unique<BusCall>(m_sessionBus, call, m_queue, ReplyPatience,
        [this](const QDBusMessage &reply) { addressReceived(reply); });
}

void AccessibilityKeys::addressReceived(const QDBusMessage &reply)
{
    if (reply.type() == QDBusMessage::ReplyMessage)
        connect(reply.arguments().value(0).toString().toLatin1());
    else
        finish(Outcome::Unavailable);
}

void AccessibilityKeys::connect(const QByteArray &address)
{
    m_thread.post([this, address] {
        // Shared, since a function that is handed over has to be one that can be copied.
        auto bus = std::make_shared<std::unique_ptr<BusConnection>>();
        if (sessionbus::answers(address, BusPatience))
            *bus = BusConnection::open(address);
        m_inbox.post([this, bus] {
            m_bus = std::move(*bus);
            finish(m_bus ? Outcome::Done : Outcome::Unavailable);
        });
    });
}

void AccessibilityKeys::press(const KeyChord &chord, Callback onDone)
{
    m_onDone = std::move(onDone);
    m_events.clear();
    int modifiers = 0;
    for (const KeyModifier modifier : chord.modifiers)
        modifiers |= maskOf(modifier);
    if (modifiers != 0)
        m_events.push_back({modifiers, TypeLockModifiers});
    m_events.push_back({static_cast<int>(chord.symbol), TypeSymbol});
    if (modifiers != 0)
        m_events.push_back({modifiers, TypeUnlockModifiers});
    m_nextEvent = 0;
    sendNext();
}

void AccessibilityKeys::sendNext()
{
    if (m_nextEvent == m_events.size()) {
        finish(Outcome::Done);
        return;
    }
    const Event event = m_events[m_nextEvent++];
    m_call = std::make_unique<BusCall>(m_bus->get(), keyCall(event.value, event.type), m_queue, ReplyPatience,
        [this](const QDBusMessage &reply) {
            if (reply.type() == QDBusMessage::ReplyMessage) {
                sendNext();
                return;
            }
            const bool isSilent = reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.NoReply");
            const bool isUntouched = m_nextEvent == 1 && !isSilent;
            unlock();
            finish(isUntouched ? Outcome::Unavailable : Outcome::Failed);
        });
}

void AccessibilityKeys::unlock()
{
    if (m_nextEvent > 0 && m_nextEvent < m_events.size())
        m_bus->get().send(keyCall(m_events.back().value, m_events.back().type));
    m_events.clear();
    m_nextEvent = 0;
}

void AccessibilityKeys::finish(Outcome outcome)
{
    m_call.reset();
    QString reason;
    if (outcome == Outcome::Unavailable)
        reason = QStringLiteral("no accessibility service that presses keys");
    else if (outcome == Outcome::Failed)
        reason = QStringLiteral("the desktop's accessibility service did not take the keys");
    if (const Callback onDone = std::exchange(m_onDone, nullptr))
        onDone(outcome, reason);
}
