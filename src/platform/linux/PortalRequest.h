#pragma once

#include "platform/linux/BusCall.h"

#include <QObject>
#include <QVariantMap>

/// One request to a desktop portal (XDG Desktop Portal, "org.freedesktop.portal.Request"): a method that
/// answers at once with the path of a request object, which says later how it came out. Destroying it before
/// that takes the request back, and a dialogue that it has opened closes. Main thread only.
class PortalRequest : public QObject
{
    Q_OBJECT

public:
    enum class Outcome {
        Granted,
        Denied, ///< by the user
        Ended,  ///< by the portal, for reasons of its own, or refused outright
        Silent, ///< not answered before the deadline
    };
    using Callback = std::function<void(Outcome outcome, const QVariantMap &results)>;

    /// For an answer to the call, and for the outcome after that.
    struct Deadlines {
        std::chrono::milliseconds reply;
        std::chrono::milliseconds response;
    };

    /// Sends the call, which is addressed to the portal by its unique name, with the options as its last
    /// argument; they get the token of the request's path. `onDone` is called once, later, and may destroy
    /// the request. The queue must outlive it.
    PortalRequest(QDBusConnection connection, QDBusMessage call, QVariantMap options, MainQueue &queue,
        Deadlines deadlines, Callback onDone);
    ~PortalRequest() override;

    /// A token that no other request or session of this process has.
    static QString newToken();
    /// Where a portal puts the session that this connection asks for with the token.
    static QString sessionPath(const QDBusConnection &connection, const QString &token);

private Q_SLOTS:
    void responded(uint response, const QVariantMap &results);

private:
    void replied(const QDBusMessage &reply);
    void finish(Outcome outcome, const QVariantMap &results = {});

    QDBusConnection m_connection;
    const QString m_portal;
    MainQueue &m_queue;
    const std::chrono::milliseconds m_responsePatience;
    Callback m_onDone;
    QString m_path; ///< of the request object
    bool m_isOpen = true;
    std::unique_ptr<BusCall> m_call;
    Lifetime m_lifetime;
};
