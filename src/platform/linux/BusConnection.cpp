#include "platform/linux/BusConnection.h"

#include <atomic>

std::unique_ptr<BusConnection> BusConnection::open(const QByteArray &address)
{
    static std::atomic<int> count = 0;
    const QString name = QStringLiteral("larkspool-%1").arg(++count);
    auto connection = std::unique_ptr<BusConnection>(
        new BusConnection(QDBusConnection::connectToBus(QString::fromLatin1(address), name)));
    return connection->m_connection.isConnected() ? std::move(connection) : nullptr;
}

BusConnection::BusConnection(QDBusConnection connection)
    : m_connection(std::move(connection))
{
}

BusConnection::~BusConnection()
{
    const QString name = m_connection.name();
    // Closed with the last reference to it, of which the table of names holds one.
    m_connection = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(name);
}
