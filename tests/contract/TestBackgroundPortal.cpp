#include "contract/TestBackgroundPortal.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace
{

const QString Path = QStringLiteral("/org/freedesktop/portal/desktop");

} // namespace

TestBackgroundPortal::TestBackgroundPortal(const QByteArray &busAddress)
    : m_bus(BusConnection::open(busAddress))
{
    m_bus->get().registerVirtualObject(Path, this, QDBusConnection::SubPath);
    m_bus->get().registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
}

TestBackgroundPortal::~TestBackgroundPortal()
{
    if (m_bus)
        vanish();
}

void TestBackgroundPortal::vanish()
{
    // Calls that have come in already refer to the connection.
    m_bus->get().unregisterObject(Path, QDBusConnection::UnregisterTree);
    QCoreApplication::removePostedEvents(this);
    m_bus.reset();
}

QString TestBackgroundPortal::introspect(const QString &) const
{
    return {};
}

bool TestBackgroundPortal::handleMessage(const QDBusMessage &message, const QDBusConnection &)
{
    const QString method = message.member();
    if (method == QLatin1String("Close")) {
        m_closedPaths.append(message.path());
        m_bus->get().send(message.createReply());
        return true;
    }
    ++m_questionCount;
    if (method == silentMethod)
        return true;
    if (method == QLatin1String("Get"))
        m_bus->get().send(versionAnswer(message));
    else if (method == QLatin1String("RequestBackground"))
        takeRequest(message);
    else
        return false;
    return true;
}

QDBusMessage TestBackgroundPortal::versionAnswer(const QDBusMessage &question) const
{
    const QVariantList known{QStringLiteral("org.freedesktop.portal.Background"), QStringLiteral("version")};
    if (version > 0 && question.arguments() == known)
        return question.createReply(QVariant::fromValue(QDBusVariant(version)));
    return question.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such interface"));
}

void TestBackgroundPortal::takeRequest(const QDBusMessage &message)
{
    const auto options = qdbus_cast<QVariantMap>(message.arguments().value(1));
    m_requests.push_back({message.arguments().value(0).toString(), options});
    const QString sender = message.service().mid(1).replace(QLatin1Char('.'), QLatin1Char('_'));
    const QString token = options.value(QStringLiteral("handle_token")).toString();
    m_requestPath = Path + QStringLiteral("/request/%1/%2").arg(sender, token);
    m_bus->get().send(message.createReply(QVariant::fromValue(QDBusObjectPath(m_requestPath))));
    if (decision != Decision::Waits)
        respond();
}

void TestBackgroundPortal::respond()
{
    const bool isWanted = m_requests.back().options.value(QStringLiteral("autostart")).toBool();
    uint response = 0;
    QVariantMap results;
    if (decision == Decision::Denies) {
        response = 1;
    } else if (decision == Decision::Ends) {
        response = 2;
    } else {
        m_startsAtLogin = decision == Decision::KeepsAutostart ||
            (isWanted && decision != Decision::AllowsWithoutAutostart);
        results.insert(QStringLiteral("background"), true);
        results.insert(QStringLiteral("autostart"), m_startsAtLogin);
    }
    QDBusMessage signal = QDBusMessage::createSignal(
        m_requestPath, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
    signal << response << results;
    m_bus->get().send(signal);
}
