#include "contract/StatusTestWatcher.h"

#include "support/Waiting.h"

#include <QDBusArgument>
#include <QDBusPendingCall>
#include <QDBusVariant>

#include <gtest/gtest.h>

namespace
{

const QString Service = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString Path = QStringLiteral("/StatusNotifierWatcher");
const QString ItemPath = QStringLiteral("/StatusNotifierItem");
const QString ItemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString PropertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

QDBusConnection connectTo(const QString &busAddress)
{
    static int count = 0;
    return QDBusConnection::connectToBus(busAddress, QStringLiteral("test watcher %1").arg(++count));
}

} // namespace

StatusTestWatcher::StatusTestWatcher(const QString &busAddress, Host host)
    : m_connection(connectTo(busAddress))
    , m_host(host)
{
    m_lives.setConnection(m_connection);
    m_lives.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&m_lives, &QDBusServiceWatcher::serviceUnregistered, this,
        [this](const QString &item) { m_items.removeAll(item); });
    EXPECT_TRUE(m_connection.registerVirtualObject(Path, this));
    EXPECT_TRUE(m_connection.registerService(Service));
}

StatusTestWatcher::~StatusTestWatcher()
{
    QDBusConnection::disconnectFromBus(m_connection.name());
}

void StatusTestWatcher::setHost(Host host)
{
    m_host = host;
    m_connection.send(QDBusMessage::createSignal(Path, Service,
        host == Host::Present ? QStringLiteral("StatusNotifierHostRegistered")
                              : QStringLiteral("StatusNotifierHostUnregistered")));
}

QString StatusTestWatcher::introspect(const QString &) const
{
    return {};
}

bool StatusTestWatcher::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    ++m_questionCount;
    if (isSilent)
        return true;
    const QString argument = message.arguments().value(0).toString();
    if (message.interface() == PropertiesInterface && message.member() == QStringLiteral("Get") &&
        argument == Service &&
        message.arguments().value(1).toString() == QStringLiteral("IsStatusNotifierHostRegistered")) {
        connection.send(message.createReply(QVariant::fromValue(QDBusVariant(m_host == Host::Present))));
        return true;
    }
    if (message.interface() != Service || message.member() != QStringLiteral("RegisterStatusNotifierItem"))
        return false;
    if (refusesItems) {
        connection.send(message.createErrorReply(QDBusError::AccessDenied, QStringLiteral("no room")));
        return true;
    }
    registerItem(argument);
    connection.send(message.createReply());
    return true;
}

void StatusTestWatcher::registerItem(const QString &item)
{
    ++m_registrationCount;
    if (m_items.contains(item))
        return;
    m_items.append(item);
    m_lives.addWatchedService(item);
}

QVariantMap StatusTestWatcher::properties(const QString &item)
{
    QDBusMessage question =
        QDBusMessage::createMethodCall(item, ItemPath, PropertiesInterface, QStringLiteral("GetAll"));
    question << ItemInterface;
    return qdbus_cast<QVariantMap>(wait(question).arguments().value(0));
}

bool StatusTestWatcher::call(const QString &item, const char *method, const QVariantList &arguments)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(item, ItemPath, ItemInterface, QString::fromLatin1(method));
    message.setArguments(arguments);
    return wait(message).type() == QDBusMessage::ReplyMessage;
}

/// The item lives on this thread too: its event loop has to run.
QDBusMessage StatusTestWatcher::wait(const QDBusMessage &message)
{
    const QDBusPendingCall pending = m_connection.asyncCall(message);
    EXPECT_TRUE(waitUntil([&] { return pending.isFinished(); })) << "no answer";
    return pending.reply();
}
