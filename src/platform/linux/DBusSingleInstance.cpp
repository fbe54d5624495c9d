#include "platform/linux/DBusSingleInstance.h"

#include "platform/linux/ActivationToken.h"
#include "platform/linux/ApplicationAdaptor.h"
#include "platform/linux/BusConnection.h"
#include "platform/linux/SessionBus.h"

#include <QDBusError>
#include <QDBusMessage>

#include <algorithm>

namespace
{

using std::chrono::milliseconds;

/// For the whole of a claim.
constexpr milliseconds Patience{2000};
/// For a sign of life of the bus.
constexpr milliseconds BusPatience{2000};
/// How often a call that came too early looks whether it can be delivered.
constexpr milliseconds DeliveryRetry{10};

constexpr QLatin1String ActivationToken("activation-token");
constexpr QLatin1String StartupId("desktop-startup-id");

QString applicationName()
{
    return QStringLiteral("org.larkspool.Larkspool");
}

QString applicationPath()
{
    return QStringLiteral("/org/larkspool/Larkspool");
}

QVariantMap platformDataFromEnvironment()
{
    QVariantMap data;
    const auto add = [&data](QLatin1String key, const char *variable) {
        const QString value = qEnvironmentVariable(variable);
        if (!value.isEmpty())
            data.insert(key, value);
    };
    add(ActivationToken, "XDG_ACTIVATION_TOKEN");
    add(StartupId, "DESKTOP_STARTUP_ID");
    return data;
}

/// Waits for the reply, which may be an error.
QDBusMessage replyTo(const QDBusMessage &call, BusConnection &bus, const QDeadlineTimer &deadline)
{
    const auto left = static_cast<int>(deadline.remainingTime());
    return bus.get().call(call, QDBus::Block, std::max(left, 1));
}

} // namespace

DBusSingleInstance::DBusSingleInstance(QByteArray busAddress)
    : m_busAddress(std::move(busAddress))
    , m_ownPlatformData(platformDataFromEnvironment())
{
    m_delivery.setSingleShot(true);
    QObject::connect(&m_delivery, &QTimer::timeout, &m_delivery, [this] { deliver(); });
}

DBusSingleInstance::~DBusSingleInstance() = default;

SingleInstance::Claim DBusSingleInstance::claim()
{
    m_bus = BusConnection::open(m_busAddress);
    // The object is there before the name: calls that wait for the name come in with it.
    const Claim claim = m_bus && exportObject() ? claimName() : Claim::Unknown;
    if (claim != Claim::Ours) {
        m_object.reset();
        m_bus.reset();
    }
    return claim;
}

SingleInstance::Claim DBusSingleInstance::claimName()
{
    const QDeadlineTimer deadline(Patience, Qt::PreciseTimer);
    while (true) {
        const Name name = requestName(deadline);
        if (name != Name::Taken)
            return name == Name::Ours ? Claim::Ours : Claim::Unknown;
        const Owner owner = activateOwner(deadline);
        if (owner != Owner::Gone)
            return owner == Owner::Activated ? Claim::HandedOver : Claim::Failed;
        if (deadline.hasExpired())
            return Claim::Failed;
    }
}

bool DBusSingleInstance::exportObject()
{
    m_object = std::make_unique<QObject>();
    new ApplicationAdaptor(
        m_object.get(), m_bus->get(), [this](const QVariantMap &data) { activationRequested(data); });
    return m_bus->get().registerObject(applicationPath(), m_object.get());
}

DBusSingleInstance::Name DBusSingleInstance::requestName(const QDeadlineTimer &deadline)
{
    // D-Bus Specification, "org.freedesktop.DBus.RequestName".
    constexpr uint DoNotQueue = 4;
    constexpr uint PrimaryOwner = 1;
    constexpr uint Exists = 3;
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    QDBusMessage call = QDBusMessage::createMethodCall(
        bus, QStringLiteral("/org/freedesktop/DBus"), bus, QStringLiteral("RequestName"));
    call.setArguments({applicationName(), DoNotQueue});
    const QDBusMessage reply = replyTo(call, *m_bus, deadline);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return Name::Unknown;
    switch (reply.arguments().constFirst().toUInt()) {
    case PrimaryOwner:
        return Name::Ours;
    case Exists:
        return Name::Taken;
    default:
        return Name::Unknown;
    }
}

DBusSingleInstance::Owner DBusSingleInstance::activateOwner(const QDeadlineTimer &deadline)
{
    QDBusMessage call = QDBusMessage::createMethodCall(applicationName(), applicationPath(),
        QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
    call.setArguments({m_ownPlatformData});
    // An owner that has ended is not to be started once more: this process takes its place.
    call.setAutoStartService(false);
    const QDBusMessage reply = replyTo(call, *m_bus, deadline);
    if (reply.type() == QDBusMessage::ReplyMessage)
        return Owner::Activated;
    const QDBusError::ErrorType error = QDBusError(reply).type();
    // A bus reports "no reply" also for an owner that ended instead of answering.
    return error == QDBusError::ServiceUnknown || error == QDBusError::NoReply ? Owner::Gone : Owner::Refuses;
}

void DBusSingleInstance::activationRequested(const QVariantMap &platformData)
{
    m_waitingToken = platformData.value(ActivationToken, platformData.value(StartupId)).toString();
    // Later, so that the caller has its reply first; a timer's turn comes after all calls that are waiting.
    if (!m_delivery.isActive())
        m_delivery.start(0);
}

void DBusSingleInstance::deliver()
{
    if (!onActivate) {
        m_delivery.start(DeliveryRetry);
        return;
    }
    offerActivationToken(m_waitingToken);
    onActivate(m_waitingToken);
    offerActivationToken({});
}

std::unique_ptr<SingleInstance> platform::makeDBusSingleInstance()
{
    const QByteArray address = sessionbus::address();
    if (address.isEmpty())
        return nullptr;
    if (!sessionbus::answers(address, BusPatience)) {
        sessionbus::doWithout();
        return nullptr;
    }
    return std::make_unique<DBusSingleInstance>(address);
}
