#pragma once

#include "platform/StatusBar.h"
#include "platform/linux/StatusNotifierWatcher.h"

/// A status item by D-Bus (freedesktop.org, "StatusNotifierItem"): the object /StatusNotifierItem on a bus
/// connection of its own. The protocol has no way to take an item out but to leave the bus. Main thread only.
class StatusNotifierItem
{
public:
    /// On the session bus, or the one at `busAddress` if that is not empty. Connecting waits for the bus,
    /// never for a tray. `onShown` is called from the event loop, once it is known whether a tray shows the
    /// item, and then at each change; it is false without a bus.
    StatusNotifierItem(const StatusItemButton &button, const std::function<void()> &action,
        const QString &busAddress, std::function<void(bool isShown)> onShown);
    ~StatusNotifierItem();
    StatusNotifierItem(const StatusNotifierItem &) = delete;
    StatusNotifierItem &operator=(const StatusNotifierItem &) = delete;

private:
    QDBusConnection m_connection;
    QObject m_object;
    StatusNotifierWatcher m_watcher;
};
