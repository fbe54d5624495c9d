#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>
#include <QVariantMap>

#include <functional>

/// The D-Bus interface by which a desktop starts a program or brings it back (Desktop Entry Specification,
/// "D-Bus Activation"). The methods are named as they are there.
class ApplicationAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// `activate` is called in the event loop with the platform data of each call.
    ApplicationAdaptor(QObject *parent, QDBusConnection connection,
        std::function<void(const QVariantMap &platformData)> activate);

public Q_SLOTS:
    void Activate(const QVariantMap &platformData);
    /// There are no files to open: the same as Activate.
    void Open(const QStringList &uris, const QVariantMap &platformData);
    /// There are no actions: an error.
    void ActivateAction(const QString &actionName, const QVariantList &parameter,
        const QVariantMap &platformData, const QDBusMessage &call);

private:
    QDBusConnection m_connection;
    std::function<void(const QVariantMap &)> m_activate;
};
