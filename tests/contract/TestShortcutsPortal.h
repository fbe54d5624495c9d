#pragma once

#include "platform/linux/BusConnection.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QSet>
#include <QStringList>
#include <QVariantMap>

#include <memory>
#include <vector>

/// The part of a desktop portal that knows system-wide shortcuts (org.freedesktop.portal.GlobalShortcuts),
/// written for tests: it notes what it is told, decides as the test says in place of a user, and has a
/// keyboard that the test plays on. Driven by the test's event loop.
class TestShortcutsPortal : public QDBusVirtualObject
{
    Q_OBJECT

public:
    /// It is the portal from now on.
    explicit TestShortcutsPortal(const QByteArray &busAddress);
    ~TestShortcutsPortal() override;

    enum class Decision { Grants, GrantsWithoutKeys, GrantsNothing, GrantsWithoutAList, Denies, Ends, Waits };

    // How it is. Zero for the version: it does not have the interface.
    uint version = 1;
    Decision decision = Decision::Grants;
    bool hasRegistry = true;
    bool namesSession = true;
    /// It gives a shortcut its keys with the session already, when it is proposed there.
    bool bindsWithSession = false;
    /// It tells when a key comes up.
    bool tellsReleases = true;
    /// A method that it takes and does not reply to, or whose request it does not respond to.
    QString silentMethod;
    QString unfinishedMethod;

    // What it has been told.
    struct Session {
        QString path;
        QString id = {}; ///< of its shortcut; empty until one is asked for
        QString description = {};
        QString trigger = {};
        bool isBound = false;
    };
    /// The names of the methods that have been called, "Close" among them.
    const QStringList &methods() const { return m_methods; }
    int count(const char *method) const;
    /// Of the last such call.
    QVariantList arguments(const char *method) const;
    /// Those that are open, in the order of their coming.
    const std::vector<Session> &sessions() const { return m_sessions; }
    const QStringList &closedPaths() const { return m_closedPaths; }
    QString requestPath() const { return m_requestPath; }
    /// How many times it has said yes or no to a shortcut.
    int answerCount() const { return m_answerCount; }

    /// Decides on the shortcut that has been asked for last, for one that waits.
    void respond();
    /// Whether another program gets the keys; it holds them until `giveBackElsewhere`.
    bool takeElsewhere(const QString &trigger);
    void giveBackElsewhere(const QString &trigger) { m_elsewhere.remove(trigger); }
    /// The user presses and releases these keys.
    void press(const QString &trigger, const QVariantMap &options = {});
    /// Signals of the portal, whatever is bound.
    void tellActivated(const QString &session, const QString &id, const QVariantMap &options = {});
    void tellDeactivated(const QString &session, const QString &id);
    void tellShortcutsChanged(const Session &session);
    /// The desktop behind the portal has a session with this path that nobody can close.
    void leaveOver(const QString &sessionPath) { m_leftOver.insert(sessionPath); }
    /// Takes the session away.
    void closeSession();
    /// Ends as a program does: its name goes with its connection.
    void vanish();

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    void handleClose(const QDBusMessage &message);
    void handleRequest(const QDBusMessage &message);
    void noteShortcut(const QString &sessionPath, const QVariant &shortcuts);
    void createSession(const QDBusMessage &message, const QVariantMap &options);
    void sendResponse(uint response, const QVariantMap &results);
    QVariant boundList(Session &session);

    std::unique_ptr<BusConnection> m_bus;
    QStringList m_methods;
    std::vector<QVariantList> m_arguments; ///< of each call
    std::vector<Session> m_sessions;
    QSet<QString> m_elsewhere;
    QSet<QString> m_leftOver;
    QStringList m_closedPaths;
    QString m_requestPath;
    QString m_askingSession; ///< that has asked for a shortcut last
    int m_answerCount = 0;
};
