#include "contract/HandWrittenPortal.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusError>
#include <QDBusObjectPath>

#include <algorithm>

namespace
{

const QString Path = QStringLiteral("/org/freedesktop/portal/desktop");

QVariantMap optionsOf(const QDBusMessage &message, int index)
{
    return qdbus_cast<QVariantMap>(message.arguments().value(index));
}

QString senderPart(const QDBusMessage &message)
{
    return message.service().mid(1).replace(QLatin1Char('.'), QLatin1Char('_'));
}

} // namespace

HandWrittenPortal::HandWrittenPortal(const QByteArray &busAddress)
    : m_bus(BusConnection::open(busAddress))
{
    m_bus->get().registerVirtualObject(Path, this, QDBusConnection::SubPath);
    m_bus->get().registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
}

HandWrittenPortal::~HandWrittenPortal()
{
    if (m_bus)
        vanish();
}

void HandWrittenPortal::vanish()
{
    // Calls that have come in already refer to the connection.
    m_bus->get().unregisterObject(Path, QDBusConnection::UnregisterTree);
    QCoreApplication::removePostedEvents(this);
    m_bus.reset();
}

int HandWrittenPortal::count(const char *method) const
{
    return static_cast<int>(std::ranges::count(m_calls, QString::fromLatin1(method), &Call::method));
}

QVariantMap HandWrittenPortal::options(const char *method) const
{
    const auto found = std::find_if(m_calls.rbegin(), m_calls.rend(),
        [&](const Call &call) { return call.method == QLatin1String(method); });
    return found == m_calls.rend() ? QVariantMap() : found->options;
}

void HandWrittenPortal::replyAtLast()
{
    silentMethod.clear();
    m_bus->get().send(m_withheld.takeFirst().createReply());
}

void HandWrittenPortal::closeSession()
{
    QDBusMessage signal = QDBusMessage::createSignal(
        m_sessionPath, QStringLiteral("org.freedesktop.portal.Session"), QStringLiteral("Closed"));
    signal << QVariantMap();
    m_bus->get().send(signal);
}

QString HandWrittenPortal::introspect(const QString &) const
{
    return {};
}

bool HandWrittenPortal::handleMessage(const QDBusMessage &message, const QDBusConnection &)
{
    const QString method = message.member();
    if (method == QLatin1String("Close")) {
        m_closedPaths.append(message.path());
        m_bus->get().send(message.createReply());
        return true;
    }
    // The options are the last argument of requests, and the second one for keys.
    const bool isKey = method == QLatin1String("NotifyKeyboardKeysym");
    const QVariantMap options =
        optionsOf(message, isKey ? 1 : static_cast<int>(message.arguments().size()) - 1);
    m_calls.push_back({method, options});
    if (isKey) {
        handleKey(message);
    } else if (method == silentMethod) {
        m_withheld.append(message);
    } else if (method == QLatin1String("Register")) {
        m_bus->get().send(hasRegistry
                ? message.createReply()
                : message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("No such interface")));
    } else if (method == QLatin1String("GetAll")) {
        const QVariantMap properties{
            {QStringLiteral("version"), version}, {QStringLiteral("AvailableDeviceTypes"), deviceTypes}};
        m_bus->get().send(version > 0
                ? message.createReply(properties)
                : message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such interface")));
    } else {
        handleRequest(message, options);
    }
    return true;
}

void HandWrittenPortal::handleRequest(const QDBusMessage &message, const QVariantMap &options)
{
    const QString token = options.value(QStringLiteral("handle_token")).toString();
    m_requestPath = Path + QStringLiteral("/request/%1/%2").arg(senderPart(message), token);
    if (message.member() == QLatin1String("CreateSession")) {
        m_sessionPath = Path +
            QStringLiteral("/session/%1/%2")
                .arg(senderPart(message), options.value(QStringLiteral("session_handle_token")).toString());
    }
    const QDBusMessage reply = message.createReply(QVariant::fromValue(QDBusObjectPath(m_requestPath)));
    if (!respondsFirst)
        m_bus->get().send(reply);
    respond(message.member());
    if (respondsFirst)
        m_bus->get().send(reply);
}

void HandWrittenPortal::handleKey(const QDBusMessage &message)
{
    m_keys.push_back({message.arguments().value(2).toInt(), message.arguments().value(3).toUInt()});
    const bool isRefused = firstRefusedKey >= 0 && static_cast<int>(m_keys.size()) > firstRefusedKey;
    if (message.member() == silentMethod)
        m_withheld.append(message);
    else if (isRefused)
        m_bus->get().send(message.createErrorReply(QDBusError::AccessDenied, QStringLiteral("No")));
    else
        m_bus->get().send(message.createReply());
}

void HandWrittenPortal::respond(const QString &method)
{
    const bool isStart = method == QLatin1String("Start");
    if (method == unfinishedMethod || (isStart && decision == Decision::Waits))
        return;
    uint response = 0;
    QVariantMap results;
    if (method == QLatin1String("CreateSession")) {
        if (namesSession)
            results.insert(QStringLiteral("session_handle"), m_sessionPath);
    } else if (isStart && decision == Decision::Denies) {
        response = 1;
    } else if (isStart && decision == Decision::Ends) {
        response = 2;
    } else if (isStart) {
        results.insert(QStringLiteral("devices"), decision == Decision::Grants ? 1U : 2U);
        if (version >= 2)
            results.insert(QStringLiteral("restore_token"), QStringLiteral("token-%1").arg(count("Start")));
    }
    QDBusMessage signal = QDBusMessage::createSignal(
        m_requestPath, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
    signal << response << results;
    m_bus->get().send(signal);
}
