#include "platform/linux/BusCall.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>

#include <limits>
#include <utility>

BusCall::BusCall(const QDBusConnection &connection, const QDBusMessage &call, MainQueue &queue,
    std::chrono::milliseconds deadline, Callback onReply)
    : m_onReply(std::move(onReply))
{
    const auto fail = [this](QDBusError::ErrorType type, const char *text) {
        return m_lifetime.guard(
            [this, type, text] { finish(QDBusMessage::createError(type, QString::fromLatin1(text))); });
    };
    if (!connection.isConnected()) {
        queue.async(fail(QDBusError::Disconnected, "Not connected to a bus"));
        return;
    }
    m_watcher.reset(new QDBusPendingCallWatcher(connection.asyncCall(call, std::numeric_limits<int>::max())));
    QObject::connect(m_watcher.get(), &QDBusPendingCallWatcher::finished, m_watcher.get(),
        [this] { finish(m_watcher->reply()); });
    queue.asyncAfter(deadline, fail(QDBusError::NoReply, "No reply before the deadline"));
}

BusCall::~BusCall() = default;

void BusCall::finish(const QDBusMessage &reply)
{
    // The callback may end this object.
    if (const Callback onReply = std::exchange(m_onReply, nullptr))
        onReply(reply);
}

void BusCall::DeleteLater::operator()(QDBusPendingCallWatcher *watcher) const
{
    watcher->disconnect();
    watcher->deleteLater();
}
