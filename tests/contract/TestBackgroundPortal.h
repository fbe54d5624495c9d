#pragma once

#include "platform/linux/BusConnection.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QVariantMap>

#include <memory>
#include <vector>

/// The part of a desktop portal that starts programs at login (org.freedesktop.portal.Background), written
/// for tests: it notes what it is told, and decides as the test says in place of a user. Driven by the test's
/// event loop.
class TestBackgroundPortal : public QDBusVirtualObject
{
    Q_OBJECT

public:
    /// It is the portal from now on.
    explicit TestBackgroundPortal(const QByteArray &busAddress);
    ~TestBackgroundPortal() override;

    enum class Decision { Allows, AllowsWithoutAutostart, KeepsAutostart, Denies, Ends, Waits };

    // How it is. Zero for the version: it does not have the interface.
    uint version = 2;
    Decision decision = Decision::Allows;
    /// A method that it takes and does not reply to.
    QString silentMethod;

    // What it has been told.
    struct Request {
        QString parentWindow;
        QVariantMap options;
    };
    const std::vector<Request> &requests() const { return m_requests; }
    const QStringList &closedPaths() const { return m_closedPaths; }
    QString requestPath() const { return m_requestPath; }
    int questionCount() const { return m_questionCount; }
    /// What has come of the requests so far.
    bool startsAtLogin() const { return m_startsAtLogin; }

    /// Decides on the request that has come last, for one that waits.
    void respond();
    /// Ends as a program does: its name goes with its connection.
    void vanish();

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    QDBusMessage versionAnswer(const QDBusMessage &question) const;
    void takeRequest(const QDBusMessage &message);

    std::unique_ptr<BusConnection> m_bus;
    std::vector<Request> m_requests;
    QStringList m_closedPaths;
    QString m_requestPath;
    int m_questionCount = 0;
    bool m_startsAtLogin = false;
};
