#pragma once

#include "platform/linux/AppearanceSettings.h"
#include "platform/linux/BusCall.h"

#include <QObject>

/// The look that the desktop portal tells (XDG Desktop Portal, "org.freedesktop.portal.Settings"), as long as
/// there is a portal.
///
/// Life cycle: made; `onChanged` set; `follow`, which asks for the settings and starts the portal where the
/// bus can; from then on `onChanged` is called from the event loop, after each news that may have changed
/// something. A portal that comes later is asked then; one that goes takes its settings with it. Main thread
/// only.
class AppearancePortal : public QObject
{
    Q_OBJECT

public:
    /// On a connection to the session bus; nothing is known while it is not connected. The queue must outlive
    /// it.
    AppearancePortal(QDBusConnection connection, MainQueue &queue);

    std::function<void()> onChanged;

    void follow();

    const AppearanceSettings &settings() const { return m_settings; }

private Q_SLOTS:
    void ownerChanged(const QString &name, const QString &oldOwner, const QString &newOwner);
    void settingChanged(const QDBusMessage &signal);

private:
    void askForAll();
    void ask(AppearanceSettings::Setting setting, const QString &method);
    void answered(AppearanceSettings::Setting setting, const QString &method, const QDBusMessage &answer);
    void changed();

    QDBusConnection m_connection;
    MainQueue &m_queue;
    QString m_portal; ///< its unique name, once it is known
    AppearanceSettings m_settings;
    std::array<std::unique_ptr<BusCall>, AppearanceSettings::SettingCount> m_calls;
};
