#pragma once

#include "platform/linux/BusCall.h"

#include <QObject>

#include <map>
#include <vector>

/// The desktop portal as one connection sees it: whether there is one, and whether it knows which program
/// calls it (XDG Desktop Portal, "org.freedesktop.host.portal.Registry"). A desktop keeps what the user has
/// allowed under that name; a portal that is too old for it finds out by other means, or does without. Main
/// thread only.
class DesktopPortal : public QObject
{
    Q_OBJECT

public:
    enum class Presence {
        There,
        Silent, ///< it has not answered before the deadline
        Absent, ///< no portal, and none that can be started; or no bus
    };
    using Callback = std::function<void(Presence presence)>;

    /// Says nothing yet. The queue must outlive it.
    DesktopPortal(QDBusConnection connection, MainQueue &queue);

    /// Tells the portal which program this is, once for each program that becomes the portal; it takes that
    /// as the first call of a connection only. `onDone` is called once: at once when the portal knows and has
    /// closed what it was to close, else later; not after the end of this object.
    void introduce(std::chrono::milliseconds patience, Callback onDone);
    /// Closes a session of the portal with this unique name. Who waits for `introduce` from then on may use
    /// the session's path again.
    void closeSession(const QString &owner, const QString &session);

    const QDBusConnection &connection() const { return m_connection; }
    MainQueue &queue() const { return m_queue; }

Q_SIGNALS:
    /// The program with this unique name is the portal no more. Comes from the first introduction on, as the
    /// other one does.
    void vanished(const QString &owner);
    /// Another one is from now on; it knows nothing of the sessions of the one before.
    void appeared();

private Q_SLOTS:
    void ownerChanged(const QString &name, const QString &oldOwner, const QString &newOwner);

private:
    void askForIntroduction(std::chrono::milliseconds patience);
    void replied(const QDBusMessage &reply);
    void tell(Presence presence);

    QDBusConnection m_connection;
    MainQueue &m_queue;
    bool m_isWatching = false;
    QString m_introducedTo; ///< the unique name of the portal that knows; empty when none does
    std::vector<Callback> m_waiting;
    std::unique_ptr<BusCall> m_call;
    std::map<QString, std::unique_ptr<BusCall>> m_closing; ///< by the session's path
};
