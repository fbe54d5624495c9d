#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>

#include <functional>
#include <optional>

/// The desktop's list of status items, org.kde.StatusNotifierWatcher, in which one item is registered
/// whenever there is a list and somebody to show it (a host).
///
/// Life cycle: made; `onShown` set; `follow`; `onShown` is called from the event loop, once it is known
/// whether the item is shown and then at each change. Every question has a deadline. Main thread only.
class StatusNotifierWatcher : public QObject
{
    Q_OBJECT

public:
    /// On the connection that has the item at /StatusNotifierItem; nothing is shown while it is not
    /// connected.
    explicit StatusNotifierWatcher(const QDBusConnection &connection);

    std::function<void(bool isShown)> onShown;

    void follow();

private Q_SLOTS:
    void onNews(const QDBusMessage &signal);
    void onDisconnected();

private:
    enum class Registration { None, Sent, Done };

    void askForOwner();
    void setOwner(const QString &owner);
    void askForHost();
    void onHostAnswer(const QDBusMessage &answer);
    void registerItem();
    void setShown(bool isShown);
    void call(const QDBusMessage &message, std::function<void(const QDBusMessage &answer)> onAnswer);

    QDBusConnection m_connection;
    QDBusServiceWatcher m_names;
    std::optional<QString> m_owner; ///< its unique name, empty without a watcher; nothing until it is known
    bool m_hasHost = false;
    Registration m_registration = Registration::None;
    int m_question = 0; ///< the last one about the host; answers to earlier ones are out of date
    std::optional<bool> m_isShown;
};
