#include "platform/linux/ApplicationAdaptor.h"

ApplicationAdaptor::ApplicationAdaptor(QObject *parent, QDBusConnection connection,
    std::function<void(const QVariantMap &platformData)> activate)
    : QDBusAbstractAdaptor(parent)
    , m_connection(std::move(connection))
    , m_activate(std::move(activate))
{
}

void ApplicationAdaptor::Activate(const QVariantMap &platformData)
{
    m_activate(platformData);
}

void ApplicationAdaptor::Open(const QStringList &, const QVariantMap &platformData)
{
    m_activate(platformData);
}

void ApplicationAdaptor::ActivateAction(
    const QString &, const QVariantList &, const QVariantMap &, const QDBusMessage &call)
{
    call.setDelayedReply(true);
    m_connection.send(
        call.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("Larkspool has no such action")));
}
