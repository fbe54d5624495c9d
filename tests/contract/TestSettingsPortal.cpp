#include "contract/TestSettingsPortal.h"

#include "support/Waiting.h"

#include <QDBusError>
#include <QDBusPendingCall>
#include <QDBusVariant>

#include <gtest/gtest.h>

namespace
{

const QString PortalName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString Path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString Interface = QStringLiteral("org.freedesktop.portal.Settings");

// D-Bus Specification, "org.freedesktop.DBus.RequestName".
constexpr uint AllowReplacement = 1;
constexpr uint ReplaceExisting = 2;
constexpr uint PrimaryOwner = 1;

QVariant wrapped(const QVariant &value)
{
    return QVariant::fromValue(QDBusVariant(value));
}

} // namespace

TestSettingsPortal::TestSettingsPortal(const QByteArray &busAddress, Version version)
    : m_bus(BusConnection::open(busAddress))
    , m_version(version)
{
    EXPECT_TRUE(m_bus->get().registerVirtualObject(Path, this));
}

TestSettingsPortal::~TestSettingsPortal() = default;

void TestSettingsPortal::start()
{
    EXPECT_EQ(
        callBus(QStringLiteral("RequestName"), {PortalName, AllowReplacement | ReplaceExisting}).toUInt(),
        PrimaryOwner);
}

void TestSettingsPortal::flush()
{
    // The bus answers when it has passed on what came before.
    EXPECT_FALSE(callBus(QStringLiteral("GetId"), {}).toString().isEmpty());
}

QVariant TestSettingsPortal::callBus(const QString &method, const QVariantList &arguments)
{
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    QDBusMessage call =
        QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus, method);
    call.setArguments(arguments);
    const QDBusPendingCall pending = m_bus->get().asyncCall(call);
    EXPECT_TRUE(waitUntil([&] { return pending.isFinished(); }));
    return pending.reply().arguments().value(0);
}

void TestSettingsPortal::set(Setting setting, const QVariant &value)
{
    const auto name = AppearanceSettings::nameOf(setting);
    std::erase_if(m_entries, [&](const Entry &entry) { return entry.name == name; });
    m_entries.push_back({name, value});
}

void TestSettingsPortal::change(Setting setting, const QVariant &value)
{
    set(setting, value);
    const auto name = AppearanceSettings::nameOf(setting);
    tell(name.nameSpace, name.key, value);
}

void TestSettingsPortal::tell(const QString &nameSpace, const QString &key, const QVariant &value)
{
    QDBusMessage signal = QDBusMessage::createSignal(Path, Interface, QStringLiteral("SettingChanged"));
    signal << nameSpace << key << wrapped(value);
    m_bus->get().send(signal);
}

QString TestSettingsPortal::introspect(const QString &) const
{
    return {};
}

const TestSettingsPortal::Entry *TestSettingsPortal::entry(const AppearanceSettings::Name &name) const
{
    for (const Entry &entry : m_entries) {
        if (entry.name == name)
            return &entry;
    }
    return nullptr;
}

QDBusMessage TestSettingsPortal::answer(const QDBusMessage &question) const
{
    const bool isRead = m_version == Version::First && question.member() == QStringLiteral("Read");
    const bool isReadOne =
        m_version == Version::WithoutRead && question.member() == QStringLiteral("ReadOne");
    if (question.interface() != Interface || (!isRead && !isReadOne))
        return question.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no such method"));
    if (hasEmptyAnswers)
        return question.createReply();
    const Entry *const found =
        entry({question.arguments().value(0).toString(), question.arguments().value(1).toString()});
    if (!found) {
        return question.createErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"),
            QStringLiteral("Requested setting not found"));
    }
    return question.createReply(isRead ? wrapped(wrapped(found->value)) : wrapped(found->value));
}

bool TestSettingsPortal::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    ++m_questionCount;
    if (!isSilent)
        connection.send(answer(message));
    return true;
}
