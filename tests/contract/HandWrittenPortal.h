#pragma once

#include "platform/linux/BusConnection.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QMap>
#include <QStringList>
#include <QVariantMap>

#include <memory>
#include <vector>

/// The part of a desktop portal that presses keys (org.freedesktop.portal.RemoteDesktop), written for tests:
/// it notes what it is told, and decides as the test says in place of a user.
class HandWrittenPortal : public QDBusVirtualObject
{
public:
    explicit HandWrittenPortal(const QByteArray &busAddress);
    ~HandWrittenPortal() override;

    enum class Decision { Grants, GrantsWithoutKeyboard, Denies, Ends, Waits };

    // How it is. Zero for the version: it does not have the interface.
    uint version = 2;
    uint deviceTypes = 7;
    Decision decision = Decision::Grants;
    /// It lets programs tell which ones they are.
    bool hasRegistry = true;
    /// It says what session it has made.
    bool namesSession = true;
    /// It sends the response of a request before the call's own reply.
    bool respondsFirst = false;
    /// A method that it takes and does not reply to, or whose request it does not respond to.
    QString silentMethod;
    QString unfinishedMethod;
    /// It refuses a key from this one on, counted from zero; none when negative.
    int firstRefusedKey = -1;

    // What it has been told.
    struct Call {
        QString method;
        QVariantMap options;
    };
    struct Key {
        int symbol;
        uint state;
        bool operator==(const Key &other) const = default;
    };
    const std::vector<Call> &calls() const { return m_calls; }
    const std::vector<Key> &keys() const { return m_keys; }
    const QStringList &closedPaths() const { return m_closedPaths; }
    int count(const char *method) const;
    /// The options of the last such call.
    QVariantMap options(const char *method) const;
    QString requestPath() const { return m_requestPath; }
    QString sessionPath() const { return m_sessionPath; }

    /// Replies to the call of `silentMethod` that has come first.
    void replyAtLast();
    /// Takes the permission away.
    void closeSession();
    /// Ends as a program does: its name goes with its connection.
    void vanish();

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    QVariantList reply(const QDBusMessage &message);
    void handleRequest(const QDBusMessage &message, const QVariantMap &options);
    void handleKey(const QDBusMessage &message);
    void respond(const QString &method);

    std::unique_ptr<BusConnection> m_bus;
    std::vector<Call> m_calls;
    std::vector<Key> m_keys;
    QStringList m_closedPaths;
    QString m_requestPath;
    QString m_sessionPath;
    QList<QDBusMessage> m_withheld;
};
