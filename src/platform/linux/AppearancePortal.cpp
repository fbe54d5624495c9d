#include "platform/linux/AppearancePortal.h"

#include "platform/linux/PortalNames.h"

#include <QDBusError>
#include <QDBusVariant>

#include <utility>

namespace
{

/// A portal that is about to start may take its time; nobody waits for it.
constexpr std::chrono::seconds Patience{25};

constexpr QLatin1String Interface("org.freedesktop.portal.Settings");

/// Of all versions, and out of favour since the second, since it wraps its answer in one variant more.
constexpr QLatin1String Read("Read");
constexpr QLatin1String ReadOne("ReadOne");

/// The value inside all the variants that it comes in.
QVariant unwrapped(QVariant value)
{
    while (value.userType() == qMetaTypeId<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

AppearancePortal::AppearancePortal(QDBusConnection connection, MainQueue &queue)
    : m_connection(std::move(connection))
    , m_queue(queue)
{
}

void AppearancePortal::follow()
{
    // From whoever sends them: for the portal's name QtDBus would wait for the bus. The slots know the
    // sender.
    m_connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"), {QString(portal::Name)},
        QString(), this, SLOT(ownerChanged(QString, QString, QString)));
    m_connection.connect(QString(), portal::Path, Interface, QStringLiteral("SettingChanged"), this,
        SLOT(settingChanged(QDBusMessage)));
    askForAll();
}

void AppearancePortal::askForAll()
{
    for (int i = 0; i < AppearanceSettings::SettingCount; ++i)
        ask(static_cast<AppearanceSettings::Setting>(i), Read);
}

void AppearancePortal::ask(AppearanceSettings::Setting setting, const QString &method)
{
    const auto name = AppearanceSettings::nameOf(setting);
    QDBusMessage question = QDBusMessage::createMethodCall(portal::Name, portal::Path, Interface, method);
    question << name.nameSpace << name.key;
    // Instead of the one before, whose answer is out of date.
    m_calls.at(static_cast<size_t>(setting)) = std::make_unique<BusCall>(m_connection, question, m_queue,
        Patience, [this, setting, method](const QDBusMessage &answer) { answered(setting, method, answer); });
}

void AppearancePortal::answered(
    AppearanceSettings::Setting setting, const QString &method, const QDBusMessage &answer)
{
    if (method == Read && QDBusError(answer).type() == QDBusError::UnknownMethod) {
        ask(setting, ReadOne);
        return;
    }
    const bool isValue = answer.type() == QDBusMessage::ReplyMessage;
    if (isValue)
        m_portal = answer.service();
    // Any other answer: there is no such setting, or no portal.
    m_settings.set(setting, isValue ? unwrapped(answer.arguments().value(0)) : QVariant());
    changed();
}

void AppearancePortal::ownerChanged(const QString &, const QString &, const QString &newOwner)
{
    m_portal = newOwner;
    if (!newOwner.isEmpty()) {
        askForAll();
        return;
    }
    for (auto &call : m_calls)
        call.reset();
    m_settings.clear();
    changed();
}

void AppearancePortal::settingChanged(const QDBusMessage &signal)
{
    const QVariantList arguments = signal.arguments();
    const auto setting =
        AppearanceSettings::settingOf({arguments.value(0).toString(), arguments.value(1).toString()});
    // Before the portal's first answer its name may be unknown; that answer then has the value in it.
    if (!setting || m_portal.isEmpty() || signal.service() != m_portal)
        return;
    m_settings.set(*setting, unwrapped(arguments.value(2)));
    changed();
}

void AppearancePortal::changed()
{
    if (onChanged)
        onChanged();
}
