#include "platform/linux/BackgroundPortal.h"

#include "platform/linux/PortalNames.h"

#include <QCoreApplication>
#include <QDBusVariant>

#include <utility>

namespace
{

using std::chrono::seconds;

/// For the answer to a call; a portal that has to start first takes its time.
constexpr seconds ReplyPatience{10};
/// For the user's answer.
constexpr seconds ConsentPatience{60};

constexpr QLatin1String Interface("org.freedesktop.portal.Background");

constexpr QLatin1String NoPortal("the desktop has no portal for starting programs at login");
constexpr QLatin1String SilentPortal("the desktop's portal does not answer");
constexpr QLatin1String RefusingPortal("the desktop's portal refuses");
constexpr QLatin1String PortalGone("the desktop's portal went away");
constexpr QLatin1String Denied("the desktop's question was answered with no");
constexpr QLatin1String NotAllowed("the desktop does not allow this program to start at login");
constexpr QLatin1String StillStarted("the desktop goes on starting this program at login");

} // namespace

BackgroundPortal::BackgroundPortal(QDBusConnection connection, MainQueue &queue, QString command)
    : m_connection(std::move(connection))
    , m_queue(queue)
    , m_command(std::move(command))
{
}

void BackgroundPortal::registerItem(Done onDone)
{
    join(Wish::Started, std::move(onDone));
}

void BackgroundPortal::unregisterItem(Done onDone)
{
    join(Wish::NotStarted, std::move(onDone));
}

void BackgroundPortal::join(Wish wish, Done onDone)
{
    m_line.push_back({wish, std::move(onDone)});
    if (m_line.size() == 1)
        askForVersion();
}

/// The answer tells the portal's unique name, too: requests go to the one that has answered.
void BackgroundPortal::askForVersion()
{
    // Without the portal's name: Qt would wait for the bus to say who owns that.
    if (!std::exchange(m_isWatching, true)) {
        m_connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"),
            {QString(portal::Name)}, QString(), this, SLOT(ownerChanged(QString, QString, QString)));
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        portal::Name, portal::Path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << QString(Interface) << QStringLiteral("version");
    m_call = std::make_unique<BusCall>(
        m_connection, call, m_queue, ReplyPatience, [this](const QDBusMessage &reply) {
            const auto version = reply.arguments().value(0).value<QDBusVariant>().variant().toUInt();
            m_portal = reply.service();
            if (reply.type() == QDBusMessage::ReplyMessage && version > 0)
                request();
            else if (reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.NoReply"))
                fail(SilentPortal);
            else
                fail(NoPortal);
        });
}

void BackgroundPortal::request()
{
    const QString parentWindow;
    QDBusMessage call = QDBusMessage::createMethodCall(
        m_portal, portal::Path, Interface, QStringLiteral("RequestBackground"));
    call << parentWindow;
    const QVariantMap options{//: Why it is to be started at login; the desktop says it when it asks the user.
        {QStringLiteral("reason"),
            QCoreApplication::translate(
                "BackgroundPortal", "Larkspool remembers what you copy from your login on.")},
        {QStringLiteral("autostart"), m_line.front().wish == Wish::Started},
        {QStringLiteral("commandline"), QStringList{m_command}}, {QStringLiteral("dbus-activatable"), false}};
    m_request = std::make_unique<PortalRequest>(m_connection, call, options, m_queue,
        PortalRequest::Deadlines{ReplyPatience, ConsentPatience},
        [this](PortalRequest::Outcome outcome, const QVariantMap &results) { responded(outcome, results); });
}

void BackgroundPortal::responded(PortalRequest::Outcome outcome, const QVariantMap &results)
{
    const bool isWanted = m_line.front().wish == Wish::Started;
    switch (outcome) {
    case PortalRequest::Outcome::Granted:
        // What has come of it: a portal may let the program run, and yet not start it.
        if (results.value(QStringLiteral("autostart")).toBool() == isWanted)
            finish(Success());
        else
            fail(isWanted ? NotAllowed : StillStarted);
        break;
    case PortalRequest::Outcome::Denied:
        fail(Denied);
        break;
    case PortalRequest::Outcome::Ended:
        fail(RefusingPortal);
        break;
    case PortalRequest::Outcome::Silent:
        fail(SilentPortal);
        break;
    }
}

void BackgroundPortal::ownerChanged(const QString &, const QString &oldOwner, const QString &)
{
    if (!oldOwner.isEmpty() && oldOwner == m_portal && !m_line.empty())
        fail(PortalGone);
}

void BackgroundPortal::fail(QLatin1String reason)
{
    finish(Error{reason});
}

void BackgroundPortal::finish(const Result<Success> &outcome)
{
    m_call.reset();
    m_request.reset();
    m_portal.clear();
    const Done onDone = std::move(m_line.front().onDone);
    m_line.pop_front();
    if (!m_line.empty())
        askForVersion();
    // Last: the callback may end this object.
    onDone(outcome);
}
