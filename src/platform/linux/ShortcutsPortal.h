#pragma once

#include "platform/linux/DesktopPortal.h"
#include "platform/linux/PortalRequest.h"

#include <QDBusObjectPath>

/// One system-wide shortcut by way of the desktop portal (XDG Desktop Portal,
/// "org.freedesktop.portal.GlobalShortcuts"), from its making to its destruction.
///
/// Opens a session of its own, as one can bind shortcuts only once: CreateSession, BindShortcuts; the latter
/// may show the user a question. It is left out where the desktop has given the shortcut its keys with the
/// session, as the first ones did that had this portal (Plasma 5.27). What keys it gets is up to the desktop
/// and the user, now and later. When another program becomes the portal, or the desktop ends the session
/// after a while, it is bound anew.
class ShortcutsPortal : public QObject
{
    Q_OBJECT

public:
    struct Shortcut {
        /// Of letters, digits and underscores. A desktop that does not know the program shows it as the
        /// program's name, and keeps the shortcut under it.
        QString sessionToken;
        QString id;               ///< the desktop keeps the user's choice of keys under it
        QString description;      ///< for the user
        QString preferredTrigger; ///< see portalTrigger
    };
    enum class Refusal {
        NoPortal, ///< the desktop has no such portal, or it does not answer
        Refused,  ///< by the user, or by the desktop for reasons of its own
        LeftOver, ///< what has been bound before could not be bound anew: the name of the session is taken
    };
    struct Events {
        /// Once for each press, also of one that the desktop repeats as long as the keys are down. The token
        /// is for the window that the press leads to; it may be empty.
        std::function<void(const QString &activationToken)> onPress;
        /// Never before the constructor has returned, once, and nothing comes after it.
        std::function<void(Refusal refusal)> onRefusal;
    };

    /// Either event may destroy this object. The portal must outlive it.
    ShortcutsPortal(DesktopPortal &desktop, Shortcut shortcut, Events events);
    ~ShortcutsPortal() override;

private Q_SLOTS:
    void activated(
        const QDBusObjectPath &session, const QString &id, qulonglong timestamp, const QVariantMap &options);
    void deactivated(
        const QDBusObjectPath &session, const QString &id, qulonglong timestamp, const QVariantMap &options);
    void sessionClosed();

private:
    enum class Stage {
        Opening,
        Asking,
        Bound,
        Away, ///< the portal is, or the session
        Refused,
    };

    void bind();
    void askForProperties();
    void createSession();
    void sessionCreated(const QVariantMap &results);
    void bindShortcut();
    void answered(const QVariantMap &results);
    void keep();
    void request(const QString &method, const QVariantList &arguments, const QVariantMap &options,
        std::function<void(const QVariantMap &results)> onGranted);
    void requestFailed(PortalRequest::Outcome outcome);
    void portalVanished(const QString &owner);
    void portalAppeared();
    enum class Parting { Close, Forget };
    void leaveSession(Parting parting);
    void refuse(Refusal refusal);
    bool isOurs(const QDBusObjectPath &session, const QString &id) const;

    DesktopPortal &m_desktop;
    QDBusConnection m_connection;
    const Shortcut m_shortcut;
    const Events m_events;
    Stage m_stage = Stage::Opening;
    QString m_portal; ///< its unique name, once it has answered
    bool m_hasBeenBound = false;
    QString m_session;     ///< its path, from the wish for it on
    quint64 m_binding = 0; ///< counts the attempts: a session has the same path in all of them
    bool m_hasLasted = false;
    bool m_isDown = false;
    bool m_tellsReleases = false;
    std::unique_ptr<BusCall> m_call;
    std::unique_ptr<PortalRequest> m_request;
    Lifetime m_lifetime;
};
