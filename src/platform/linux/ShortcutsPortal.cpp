#include "platform/linux/ShortcutsPortal.h"

#include "platform/linux/PortalNames.h"

#include <QDBusArgument>
#include <QDBusMetaType>

#include <algorithm>
#include <optional>
#include <utility>

namespace
{

using std::chrono::seconds;

/// For the answer to a call; a portal that has to start first, at login, takes its time, and nobody waits.
constexpr seconds ReplyPatience{60};
/// For the outcome of a request that asks the user nothing.
constexpr seconds ResponsePatience{10};
/// For the user's answer.
constexpr seconds ConsentPatience{60};
/// A session that the desktop ends sooner after the binding is an answer; one that it ends later is an
/// accident, and replaced after a pause, so that this comes once a minute at most.
constexpr seconds LastingTime{60};
constexpr seconds RebindingPause{1};

constexpr QLatin1String Interface("org.freedesktop.portal.GlobalShortcuts");

/// On the wire, a(sa{sv}): the id of each shortcut and its properties.
using PortalShortcuts = QList<std::pair<QString, QVariantMap>>;

PortalShortcuts wireShortcuts(const ShortcutsPortal::Shortcut &shortcut)
{
    return {{shortcut.id,
        {{QStringLiteral("description"), shortcut.description},
            {QStringLiteral("preferred_trigger"), shortcut.preferredTrigger}}}};
}

/// The properties of the shortcut in the results of a request; nothing when it is not listed.
std::optional<QVariantMap> listedProperties(const QVariantMap &results, const QString &id)
{
    const auto list = qdbus_cast<PortalShortcuts>(results.value(QStringLiteral("shortcuts")));
    const auto found = std::ranges::find(list, id, &PortalShortcuts::value_type::first);
    return found == list.end() ? std::nullopt : std::optional(found->second);
}

} // namespace

ShortcutsPortal::ShortcutsPortal(DesktopPortal &desktop, Shortcut shortcut, Events events)
    : m_desktop(desktop)
    , m_connection(desktop.connection())
    , m_shortcut(std::move(shortcut))
    , m_events(std::move(events))
{
    qDBusRegisterMetaType<PortalShortcuts::value_type>();
    qDBusRegisterMetaType<PortalShortcuts>();
    connect(&m_desktop, &DesktopPortal::vanished, this, &ShortcutsPortal::portalVanished);
    connect(&m_desktop, &DesktopPortal::appeared, this, &ShortcutsPortal::portalAppeared);
    bind();
}

ShortcutsPortal::~ShortcutsPortal()
{
    leaveSession(Parting::Close);
}

void ShortcutsPortal::bind()
{
    m_stage = Stage::Opening;
    m_portal.clear();
    m_isDown = false;
    m_tellsReleases = false;
    m_hasLasted = false;
    ++m_binding;
    m_desktop.introduce(ReplyPatience, m_lifetime.guard([this](DesktopPortal::Presence presence) {
        if (presence == DesktopPortal::Presence::There)
            askForProperties();
        else
            refuse(Refusal::NoPortal);
    }));
}

/// The answer tells the portal's unique name, too: requests go to the one that has answered.
void ShortcutsPortal::askForProperties()
{
    QDBusMessage call = QDBusMessage::createMethodCall(portal::Name, portal::Path,
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"));
    call << QString(Interface);
    m_call = std::make_unique<BusCall>(
        m_connection, call, m_desktop.queue(), ReplyPatience, [this](const QDBusMessage &reply) {
            const auto properties = qdbus_cast<QVariantMap>(reply.arguments().value(0));
            m_portal = reply.service();
            if (reply.type() == QDBusMessage::ReplyMessage &&
                properties.value(QStringLiteral("version")).toUInt() > 0)
                createSession();
            else
                refuse(Refusal::NoPortal);
        });
}

void ShortcutsPortal::createSession()
{
    // Portals take the shortcuts with the call for them; the first desktops looked for them here.
    const QVariantMap options{{QStringLiteral("session_handle_token"), m_shortcut.sessionToken},
        {QStringLiteral("shortcuts"), QVariant::fromValue(wireShortcuts(m_shortcut))}};
    // One that is given up before the answer is to be closed as well, or the next could not have its name.
    m_session = PortalRequest::sessionPath(m_connection, m_shortcut.sessionToken);
    request(QStringLiteral("CreateSession"), {}, options,
        [this](const QVariantMap &results) { sessionCreated(results); });
}

void ShortcutsPortal::sessionCreated(const QVariantMap &results)
{
    // A string by the portal's description, a path by its meaning.
    const QVariant handle = results.value(QStringLiteral("session_handle"));
    const QString path = handle.value<QDBusObjectPath>().path();
    const QString session = path.isEmpty() ? handle.toString() : path;
    if (!session.startsWith(QLatin1Char('/'))) {
        refuse(Refusal::Refused);
        return;
    }
    m_session = session;
    m_connection.connect(
        m_portal, m_session, portal::SessionInterface, QStringLiteral("Closed"), this, SLOT(sessionClosed()));
    m_connection.connect(m_portal, portal::Path, Interface, QStringLiteral("Activated"), this,
        SLOT(activated(QDBusObjectPath, QString, qulonglong, QVariantMap)));
    m_connection.connect(m_portal, portal::Path, Interface, QStringLiteral("Deactivated"), this,
        SLOT(deactivated(QDBusObjectPath, QString, qulonglong, QVariantMap)));
    const auto properties = listedProperties(results, m_shortcut.id);
    // Binding would show the user a page of the desktop's settings at each start.
    if (properties && !properties->value(QStringLiteral("trigger_description")).toString().isEmpty())
        keep();
    else
        bindShortcut();
}

void ShortcutsPortal::bindShortcut()
{
    m_stage = Stage::Asking;
    const QString parentWindow;
    request(QStringLiteral("BindShortcuts"),
        {QVariant::fromValue(QDBusObjectPath(m_session)), QVariant::fromValue(wireShortcuts(m_shortcut)),
            parentWindow},
        {}, [this](const QVariantMap &results) { answered(results); });
}

void ShortcutsPortal::answered(const QVariantMap &results)
{
    // One that has no keys yet is listed as well: the user may give it some.
    if (results.contains(QStringLiteral("shortcuts")) && !listedProperties(results, m_shortcut.id))
        refuse(Refusal::Refused);
    else
        keep();
}

void ShortcutsPortal::keep()
{
    m_request.reset();
    m_stage = Stage::Bound;
    m_hasBeenBound = true;
    m_desktop.queue().asyncAfter(LastingTime,
        m_lifetime.guard([this, binding = m_binding] { m_hasLasted = m_hasLasted || m_binding == binding; }));
}

void ShortcutsPortal::request(const QString &method, const QVariantList &arguments,
    const QVariantMap &options, std::function<void(const QVariantMap &results)> onGranted)
{
    QDBusMessage call = QDBusMessage::createMethodCall(m_portal, portal::Path, Interface, method);
    call.setArguments(arguments);
    const PortalRequest::Deadlines deadlines{
        ReplyPatience, m_stage == Stage::Asking ? ConsentPatience : ResponsePatience};
    m_request = std::make_unique<PortalRequest>(m_connection, call, options, m_desktop.queue(), deadlines,
        [this, onGranted = std::move(onGranted)](PortalRequest::Outcome outcome, const QVariantMap &results) {
            if (outcome == PortalRequest::Outcome::Granted)
                onGranted(results);
            else
                requestFailed(outcome);
        });
}

void ShortcutsPortal::requestFailed(PortalRequest::Outcome outcome)
{
    const bool isOpening = m_stage == Stage::Opening;
    // A question that nobody answers is no. Behind a portal that has been killed a desktop may hold the
    // session still, and its name with it.
    if (isOpening && outcome == PortalRequest::Outcome::Silent)
        refuse(Refusal::NoPortal);
    else if (isOpening && outcome == PortalRequest::Outcome::Ended && m_hasBeenBound)
        refuse(Refusal::LeftOver);
    else
        refuse(Refusal::Refused);
}

void ShortcutsPortal::activated(
    const QDBusObjectPath &session, const QString &id, qulonglong, const QVariantMap &options)
{
    if (!isOurs(session, id))
        return;
    // Where releases are not told, each of these is a press.
    const bool isRepeat = m_isDown && m_tellsReleases;
    m_isDown = true;
    if (isRepeat)
        return;
    const auto onPress = m_events.onPress;
    onPress(options.value(QStringLiteral("activation_token")).toString());
}

void ShortcutsPortal::deactivated(
    const QDBusObjectPath &session, const QString &id, qulonglong, const QVariantMap &)
{
    if (!isOurs(session, id))
        return;
    m_isDown = false;
    m_tellsReleases = true;
}

bool ShortcutsPortal::isOurs(const QDBusObjectPath &session, const QString &id) const
{
    return !m_session.isEmpty() && session.path() == m_session && id == m_shortcut.id;
}

void ShortcutsPortal::sessionClosed()
{
    const bool isAccident = m_stage == Stage::Bound && m_hasLasted;
    leaveSession(Parting::Forget);
    if (!isAccident) {
        refuse(Refusal::Refused);
        return;
    }
    m_stage = Stage::Away;
    m_desktop.queue().asyncAfter(RebindingPause, m_lifetime.guard([this] {
        if (m_stage == Stage::Away)
            bind();
    }));
}

void ShortcutsPortal::portalVanished(const QString &owner)
{
    // One that goes before it has answered may be the one that was asked.
    const bool isOurs = owner == m_portal || (m_stage == Stage::Opening && m_portal.isEmpty());
    if (!isOurs || m_stage == Stage::Refused)
        return;
    leaveSession(Parting::Forget);
    m_stage = Stage::Away;
}

void ShortcutsPortal::portalAppeared()
{
    if (m_stage == Stage::Away)
        bind();
}

void ShortcutsPortal::leaveSession(Parting parting)
{
    m_call.reset();
    m_request.reset();
    if (m_session.isEmpty())
        return;
    const QString session = std::exchange(m_session, QString());
    m_connection.disconnect(
        m_portal, session, portal::SessionInterface, QStringLiteral("Closed"), this, SLOT(sessionClosed()));
    m_connection.disconnect(m_portal, portal::Path, Interface, QStringLiteral("Activated"), this,
        SLOT(activated(QDBusObjectPath, QString, qulonglong, QVariantMap)));
    m_connection.disconnect(m_portal, portal::Path, Interface, QStringLiteral("Deactivated"), this,
        SLOT(deactivated(QDBusObjectPath, QString, qulonglong, QVariantMap)));
    if (parting == Parting::Close)
        m_desktop.closeSession(m_portal, session);
}

void ShortcutsPortal::refuse(Refusal refusal)
{
    leaveSession(Parting::Close);
    m_stage = Stage::Refused;
    // Last: the callback may end this object.
    const auto onRefusal = m_events.onRefusal;
    onRefusal(refusal);
}
