#include "platform/linux/DesktopPortal.h"

#include "platform/linux/PortalNames.h"

#include <QPointer>
#include <QVariantMap>

#include <utility>

namespace
{

/// For the end of a session; who waits goes on without it then.
constexpr std::chrono::seconds ClosingPatience{2};

} // namespace

DesktopPortal::DesktopPortal(QDBusConnection connection, MainQueue &queue)
    : m_connection(std::move(connection))
    , m_queue(queue)
{
}

void DesktopPortal::introduce(std::chrono::milliseconds patience, Callback onDone)
{
    // Without the portal's name: Qt would wait for the bus to say who owns that.
    if (!std::exchange(m_isWatching, true)) {
        m_connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"),
            {QString(portal::Name)}, QString(), this, SLOT(ownerChanged(QString, QString, QString)));
    }
    m_waiting.push_back(std::move(onDone));
    if (!m_introducedTo.isEmpty())
        tell(Presence::There);
    else if (!m_call)
        askForIntroduction(patience);
}

void DesktopPortal::askForIntroduction(std::chrono::milliseconds patience)
{
    QDBusMessage call = QDBusMessage::createMethodCall(portal::Name, portal::Path,
        QStringLiteral("org.freedesktop.host.portal.Registry"), QStringLiteral("Register"));
    call << QStringLiteral("org.larkspool.Larkspool") << QVariantMap();
    m_call = std::make_unique<BusCall>(
        m_connection, call, m_queue, patience, [this](const QDBusMessage &reply) { replied(reply); });
}

void DesktopPortal::replied(const QDBusMessage &reply)
{
    // An error that comes from the portal is an answer as well: it is older, or knows already. Those of the
    // bus have its own name, which is not a unique one, and those of the deadline have none.
    const bool isThere = reply.service().startsWith(QLatin1Char(':'));
    const bool isSilent = reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.NoReply");
    if (isThere)
        m_introducedTo = reply.service();
    m_call.reset();
    tell(isThere ? Presence::There : isSilent ? Presence::Silent : Presence::Absent);
}

void DesktopPortal::tell(Presence presence)
{
    if (presence == Presence::There && !m_closing.empty())
        return;
    // Each of them may end this object.
    const QPointer<DesktopPortal> self(this);
    for (const Callback &onDone : std::exchange(m_waiting, {})) {
        if (self)
            onDone(presence);
    }
}

void DesktopPortal::closeSession(const QString &owner, const QString &session)
{
    QDBusMessage close =
        QDBusMessage::createMethodCall(owner, session, portal::SessionInterface, QStringLiteral("Close"));
    close.setAutoStartService(false);
    m_closing[session] = std::make_unique<BusCall>(
        m_connection, close, m_queue, ClosingPatience, [this, session](const QDBusMessage &) {
            m_closing.erase(session);
            if (!m_introducedTo.isEmpty())
                tell(Presence::There);
        });
}

void DesktopPortal::ownerChanged(const QString &, const QString &oldOwner, const QString &newOwner)
{
    // The news of a portal's start may come after its answer.
    if (m_introducedTo != newOwner)
        m_introducedTo.clear();
    const QPointer<DesktopPortal> self(this);
    if (!oldOwner.isEmpty())
        Q_EMIT vanished(oldOwner);
    if (self && !newOwner.isEmpty())
        Q_EMIT appeared();
}
