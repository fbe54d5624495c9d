#pragma once

#include "platform/linux/DesktopPortal.h"
#include "platform/linux/KeyPresser.h"
#include "platform/linux/PortalRequest.h"
#include "platform/linux/RestoreToken.h"

#include <vector>

/// Presses keys by way of the desktop portal (XDG Desktop Portal, "org.freedesktop.portal.RemoteDesktop"),
/// which asks the user once and, from its version 2 on, remembers the answer.
///
/// `prepare` opens a session, in the portal's own order: CreateSession, SelectDevices, Start; the last of
/// them may show the desktop's question. Before the first one it says which program asks. The session is kept
/// for the next time, until the portal closes it or goes away. The restore token spares the user the question
/// in the next session.
class RemoteDesktopPortal : public QObject, public KeyPresser
{
    Q_OBJECT

public:
    /// The queue must outlive it.
    RemoteDesktopPortal(QDBusConnection connection, MainQueue &queue, RestoreToken token);
    ~RemoteDesktopPortal() override;

    void prepare(Callback onDone) override;
    void press(const KeyChord &chord, Callback onDone) override;

private Q_SLOTS:
    void sessionClosed();

private:
    enum class Stage { Closed, Opening, Asking, Open };
    struct KeyMove {
        quint32 symbol;
        uint state;
    };

    void askForProperties();
    void createSession();
    void sessionCreated(const QString &path);
    void selectDevices();
    void start();
    void started(const QVariantMap &results);
    void request(const QString &method, const QVariantList &arguments, const QVariantMap &options,
        std::function<void(const QVariantMap &results)> onGranted);
    void requestFailed(PortalRequest::Outcome outcome);
    void pressNext();
    void breakOff();
    void endSession();
    void portalVanished(const QString &owner);
    void finish(Outcome outcome, QLatin1String reason = {});
    QDBusMessage methodCall(const QString &method) const;
    QDBusMessage keyCall(const KeyMove &move) const;

    QDBusConnection m_connection;
    MainQueue &m_queue;
    const RestoreToken m_token;
    DesktopPortal m_desktop;
    QString m_portal; ///< its unique name, once it has answered
    uint m_version = 0;
    Stage m_stage = Stage::Closed;
    QString m_session; ///< its path, from its creation on
    Callback m_onDone;
    std::unique_ptr<BusCall> m_call;
    std::unique_ptr<PortalRequest> m_request;
    std::vector<KeyMove> m_moves; ///< of the chord at hand
    size_t m_nextMove = 0;
};
