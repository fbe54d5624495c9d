#pragma once

#include "base/Lifetime.h"
#include "base/MainQueue.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <functional>
#include <memory>

class QDBusPendingCallWatcher;

/// A method call to another program on a message bus, with a deadline. Destroying it forgets the reply. Main
/// thread only.
class BusCall
{
public:
    /// The reply, or an error: the other program's own, the bus's, or NoReply at the deadline.
    using Callback = std::function<void(const QDBusMessage &reply)>;

    /// Sends the call; `onReply` is called once, later, and may destroy the BusCall. The queue must outlive
    /// it.
    BusCall(const QDBusConnection &connection, const QDBusMessage &call, MainQueue &queue,
        std::chrono::milliseconds deadline, Callback onReply);
    ~BusCall();
    BusCall(const BusCall &) = delete;
    BusCall &operator=(const BusCall &) = delete;

private:
    void finish(const QDBusMessage &reply);

    struct DeleteLater {
        void operator()(QDBusPendingCallWatcher *watcher) const;
    };
    std::unique_ptr<QDBusPendingCallWatcher, DeleteLater> m_watcher;
    Callback m_onReply;
    Lifetime m_lifetime;
};
