#pragma once

#include <QDBusConnection>

#include <memory>

/// A connection to a message bus that nobody else in the process uses; closed when it is destroyed. Replies
/// and calls come in through the event loop of the thread that asks or registers.
class BusConnection
{
public:
    /// Null when there is no bus at the address, or it refuses. Waits for the bus: see sessionbus::answers.
    /// Any thread.
    static std::unique_ptr<BusConnection> open(const QByteArray &address);
    ~BusConnection();
    BusConnection(const BusConnection &) = delete;
    BusConnection &operator=(const BusConnection &) = delete;

    QDBusConnection &get() { return m_connection; }

private:
    explicit BusConnection(QDBusConnection connection);

    QDBusConnection m_connection;
};
