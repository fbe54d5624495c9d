#pragma once

#include "platform/LoginItem.h"
#include "platform/linux/PortalRequest.h"

#include <QObject>

#include <deque>

/// The login item of a program in a sandbox, which cannot write the user's autostart folder: the desktop
/// portal does (XDG Desktop Portal, "org.freedesktop.portal.Background"), and may ask the user first.
class BackgroundPortal : public QObject, public LoginItem
{
    Q_OBJECT

public:
    /// On a connection to the session bus; every request fails while it is not connected. The command is the
    /// program's name inside the sandbox. The queue must outlive it.
    BackgroundPortal(QDBusConnection connection, MainQueue &queue, QString command);

    void registerItem(Done onDone) override;
    void unregisterItem(Done onDone) override;

private Q_SLOTS:
    void ownerChanged(const QString &name, const QString &oldOwner, const QString &newOwner);

private:
    enum class Wish { Started, NotStarted };
    struct Waiting {
        Wish wish;
        Done onDone;
    };

    void join(Wish wish, Done onDone);
    void askForVersion();
    void request();
    void responded(PortalRequest::Outcome outcome, const QVariantMap &results);
    void finish(const Result<Success> &outcome);
    void fail(QLatin1String reason);

    QDBusConnection m_connection;
    MainQueue &m_queue;
    const QString m_command;
    bool m_isWatching = false;
    QString m_portal;           ///< its unique name, once it has answered the request at hand
    std::deque<Waiting> m_line; ///< the first one is at hand
    std::unique_ptr<BusCall> m_call;
    std::unique_ptr<PortalRequest> m_request;
};
