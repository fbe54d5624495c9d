#include "platform/linux/StatusNotifierItem.h"

#include "platform/linux/StatusNotifierItemAdaptor.h"

namespace
{

/// A new connection: QtDBus knows each by a name of our choice.
QDBusConnection connectTo(const QString &busAddress)
{
    static int count = 0;
    const QString name = QStringLiteral("larkspool status item %1").arg(++count);
    return busAddress.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)
                                : QDBusConnection::connectToBus(busAddress, name);
}

} // namespace

StatusNotifierItem::StatusNotifierItem(const StatusItemButton &button, const std::function<void()> &action,
    const QString &busAddress, std::function<void(bool isShown)> onShown)
    : m_connection(connectTo(busAddress))
    , m_watcher(m_connection)
{
    new StatusNotifierItemAdaptor(&m_object, button, action);
    m_connection.registerObject(
        QStringLiteral("/StatusNotifierItem"), &m_object, QDBusConnection::ExportAdaptors);
    m_watcher.onShown = std::move(onShown);
    m_watcher.follow();
}

StatusNotifierItem::~StatusNotifierItem()
{
    QDBusConnection::disconnectFromBus(m_connection.name());
}
