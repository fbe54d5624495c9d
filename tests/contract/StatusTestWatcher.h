#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QVariantMap>

/// A hand-written org.kde.StatusNotifierWatcher, with the host that shows its items, on a bus connection of
/// its own. While it lives it owns the name. Driven by the test's event loop.
class StatusTestWatcher : public QDBusVirtualObject
{
    Q_OBJECT

public:
    enum class Host { Present, Absent };
    explicit StatusTestWatcher(const QString &busAddress, Host host = Host::Present);
    ~StatusTestWatcher() override;

    /// Says nothing, to anybody, from now on.
    bool isSilent = false;
    /// Answers registrations with an error.
    bool refusesItems = false;

    /// The host comes or goes, and everybody is told.
    void setHost(Host host);
    /// The bus names of the items that are registered and alive.
    const QStringList &items() const { return m_items; }
    /// How often an item was registered.
    int registrationCount() const { return m_registrationCount; }
    /// How often it was asked something.
    int questionCount() const { return m_questionCount; }

    /// An item's properties, as a host reads them.
    QVariantMap properties(const QString &item);
    /// A host's call of an item's method; whether it was answered without an error.
    bool call(const QString &item, const char *method, const QVariantList &arguments);

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    QDBusMessage wait(const QDBusMessage &message);
    void registerItem(const QString &item);

    QDBusConnection m_connection;
    QDBusServiceWatcher m_lives;
    Host m_host;
    QStringList m_items;
    int m_registrationCount = 0;
    int m_questionCount = 0;
};
