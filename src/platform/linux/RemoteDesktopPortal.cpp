#include "platform/linux/RemoteDesktopPortal.h"

#include "platform/linux/PortalNames.h"

#include <QDBusArgument>
#include <QDBusObjectPath>

#include <utility>

namespace
{

using std::chrono::seconds;

/// For the answer to a call.
constexpr seconds ReplyPatience{2};
/// For the outcome of a request that asks the user nothing.
constexpr seconds ResponsePatience{10};
/// For the user's answer.
constexpr seconds ConsentPatience{60};

constexpr uint Keyboard = 1;
constexpr uint Pressed = 1;
constexpr uint Released = 0;
/// From this version on there are restore tokens.
constexpr uint VersionThatRemembers = 2;
constexpr uint UntilRevoked = 2;

constexpr QLatin1String Interface("org.freedesktop.portal.RemoteDesktop");

constexpr QLatin1String NoPortal("no remote-desktop portal");
constexpr QLatin1String NoKeyboard("a remote-desktop portal that takes no keys");
constexpr QLatin1String SilentPortal("a remote-desktop portal that does not answer");
constexpr QLatin1String RefusingPortal("a remote-desktop portal that refuses");
constexpr QLatin1String Denied("the desktop's question was answered with no");
constexpr QLatin1String DeniedKeyboard("the desktop's question was answered without the keyboard");
constexpr QLatin1String NotAnswered("the desktop's question was not answered");
constexpr QLatin1String SessionEnded("the desktop ended the permission to press keys");
constexpr QLatin1String PortalGone("the desktop's remote-desktop portal went away");
constexpr QLatin1String KeysNotTaken("the desktop did not take the keys");

} // namespace

RemoteDesktopPortal::RemoteDesktopPortal(QDBusConnection connection, MainQueue &queue, RestoreToken token)
    : m_connection(std::move(connection))
    , m_queue(queue)
    , m_token(std::move(token))
    , m_desktop(m_connection, m_queue)
{
    connect(&m_desktop, &DesktopPortal::vanished, this, &RemoteDesktopPortal::portalVanished);
}

RemoteDesktopPortal::~RemoteDesktopPortal()
{
    endSession();
}

void RemoteDesktopPortal::prepare(Callback onDone)
{
    m_onDone = std::move(onDone);
    if (m_stage == Stage::Open) {
        finish(Outcome::Done);
        return;
    }
    m_stage = Stage::Opening;
    m_desktop.introduce(ReplyPatience, [this](DesktopPortal::Presence presence) {
        if (presence == DesktopPortal::Presence::There)
            askForProperties();
        else
            finish(
                Outcome::Unavailable, presence == DesktopPortal::Presence::Silent ? SilentPortal : NoPortal);
    });
}

void RemoteDesktopPortal::askForProperties()
{
    QDBusMessage call = QDBusMessage::createMethodCall(portal::Name, portal::Path,
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"));
    call << QString(Interface);
    m_call = std::make_unique<BusCall>(
        m_connection, call, m_queue, ReplyPatience, [this](const QDBusMessage &reply) {
            const bool isSilent = reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.NoReply");
            const auto properties = qdbus_cast<QVariantMap>(reply.arguments().value(0));
            m_portal = reply.service();
            m_version = properties.value(QStringLiteral("version")).toUInt();
            if (reply.type() != QDBusMessage::ReplyMessage || m_version == 0)
                finish(Outcome::Unavailable, isSilent ? SilentPortal : NoPortal);
            else if ((properties.value(QStringLiteral("AvailableDeviceTypes")).toUInt() & Keyboard) == 0)
                finish(Outcome::Unavailable, NoKeyboard);
            else
                createSession();
        });
}

void RemoteDesktopPortal::createSession()
{
    const QVariantMap options{{QStringLiteral("session_handle_token"), PortalRequest::newToken()}};
    request(QStringLiteral("CreateSession"), {}, options, [this](const QVariantMap &results) {
        // A string by the portal's description, a path by its meaning.
        const QVariant handle = results.value(QStringLiteral("session_handle"));
        const QString path = handle.value<QDBusObjectPath>().path();
        sessionCreated(path.isEmpty() ? handle.toString() : path);
    });
}

void RemoteDesktopPortal::sessionCreated(const QString &path)
{
    if (!path.startsWith(QLatin1Char('/'))) {
        finish(Outcome::Unavailable, RefusingPortal);
        return;
    }
    m_session = path;
    m_connection.connect(
        m_portal, m_session, portal::SessionInterface, QStringLiteral("Closed"), this, SLOT(sessionClosed()));
    selectDevices();
}

void RemoteDesktopPortal::selectDevices()
{
    QVariantMap options{{QStringLiteral("types"), Keyboard}};
    if (m_version >= VersionThatRemembers) {
        options.insert(QStringLiteral("persist_mode"), UntilRevoked);
        if (const QString token = m_token.read(); !token.isEmpty())
            options.insert(QStringLiteral("restore_token"), token);
    }
    request(QStringLiteral("SelectDevices"), {QVariant::fromValue(QDBusObjectPath(m_session))}, options,
        [this](const QVariantMap &) { start(); });
}

void RemoteDesktopPortal::start()
{
    m_stage = Stage::Asking;
    const QString parentWindow;
    request(QStringLiteral("Start"), {QVariant::fromValue(QDBusObjectPath(m_session)), parentWindow}, {},
        [this](const QVariantMap &results) { started(results); });
}

void RemoteDesktopPortal::started(const QVariantMap &results)
{
    // The token before this one is used up.
    m_token.write(results.value(QStringLiteral("restore_token")).toString());
    if ((results.value(QStringLiteral("devices")).toUInt() & Keyboard) == 0) {
        finish(Outcome::Failed, DeniedKeyboard);
        return;
    }
    m_stage = Stage::Open;
    finish(Outcome::Done);
}

void RemoteDesktopPortal::request(const QString &method, const QVariantList &arguments,
    const QVariantMap &options, std::function<void(const QVariantMap &results)> onGranted)
{
    QDBusMessage call = methodCall(method);
    call.setArguments(arguments);
    const PortalRequest::Deadlines deadlines{
        ReplyPatience, m_stage == Stage::Asking ? ConsentPatience : ResponsePatience};
    m_request = std::make_unique<PortalRequest>(m_connection, call, options, m_queue, deadlines,
        [this, onGranted = std::move(onGranted)](PortalRequest::Outcome outcome, const QVariantMap &results) {
            if (outcome == PortalRequest::Outcome::Granted)
                onGranted(results);
            else
                requestFailed(outcome);
        });
}

void RemoteDesktopPortal::requestFailed(PortalRequest::Outcome outcome)
{
    switch (outcome) {
    case PortalRequest::Outcome::Granted:
        break;
    case PortalRequest::Outcome::Denied:
        m_token.write({});
        finish(Outcome::Failed, Denied);
        break;
    case PortalRequest::Outcome::Ended:
        finish(Outcome::Unavailable, RefusingPortal);
        break;
    case PortalRequest::Outcome::Silent:
        if (m_stage == Stage::Asking)
            finish(Outcome::Failed, NotAnswered);
        else
            finish(Outcome::Unavailable, SilentPortal);
        break;
    }
}

void RemoteDesktopPortal::press(const KeyChord &chord, Callback onDone)
{
    m_onDone = std::move(onDone);
    if (m_stage != Stage::Open) {
        finish(Outcome::Failed, SessionEnded);
        return;
    }
    m_moves.clear();
    for (const KeyModifier modifier : chord.modifiers)
        m_moves.push_back({keySymbol(modifier), Pressed});
    m_moves.push_back({chord.symbol, Pressed});
    for (size_t i = m_moves.size(); i > 0; --i)
        m_moves.push_back({m_moves[i - 1].symbol, Released});
    m_nextMove = 0;
    pressNext();
}

void RemoteDesktopPortal::pressNext()
{
    if (m_nextMove == m_moves.size()) {
        finish(Outcome::Done);
        return;
    }
    // One after the other: portals handle calls in threads, and would mix up those that are sent at once.
    const KeyMove move = m_moves[m_nextMove++];
    m_call = std::make_unique<BusCall>(
        m_connection, keyCall(move), m_queue, ReplyPatience, [this](const QDBusMessage &reply) {
            if (reply.type() == QDBusMessage::ReplyMessage)
                pressNext();
            else
                breakOff();
        });
}

void RemoteDesktopPortal::breakOff()
{
    // Nothing that has been pressed stays down.
    for (size_t i = m_nextMove; i-- > 0;) {
        if (m_moves[i].state == Pressed)
            m_connection.send(keyCall({m_moves[i].symbol, Released}));
    }
    finish(Outcome::Failed, KeysNotTaken);
}

void RemoteDesktopPortal::sessionClosed()
{
    // There is nothing left to close.
    m_session.clear();
    m_stage = Stage::Closed;
    if (m_onDone)
        finish(Outcome::Failed, SessionEnded);
}

void RemoteDesktopPortal::portalVanished(const QString &owner)
{
    if (owner != m_portal)
        return;
    m_session.clear();
    const bool isUntouched = m_stage == Stage::Opening;
    m_stage = Stage::Closed;
    if (m_onDone)
        finish(isUntouched ? Outcome::Unavailable : Outcome::Failed, isUntouched ? NoPortal : PortalGone);
}

void RemoteDesktopPortal::endSession()
{
    m_call.reset();
    m_request.reset();
    if (!m_session.isEmpty()) {
        m_connection.disconnect(m_portal, m_session, portal::SessionInterface, QStringLiteral("Closed"), this,
            SLOT(sessionClosed()));
        m_connection.send(QDBusMessage::createMethodCall(m_portal, std::exchange(m_session, QString()),
            portal::SessionInterface, QStringLiteral("Close")));
    }
    m_stage = Stage::Closed;
}

void RemoteDesktopPortal::finish(Outcome outcome, QLatin1String reason)
{
    if (outcome != Outcome::Done)
        endSession();
    m_call.reset();
    m_request.reset();
    if (const Callback onDone = std::exchange(m_onDone, nullptr))
        onDone(outcome, reason);
}

/// A call to the portal that has answered, not to one that may have come in its place since.
QDBusMessage RemoteDesktopPortal::methodCall(const QString &method) const
{
    return QDBusMessage::createMethodCall(m_portal, portal::Path, Interface, method);
}

QDBusMessage RemoteDesktopPortal::keyCall(const KeyMove &move) const
{
    QDBusMessage call = methodCall(QStringLiteral("NotifyKeyboardKeysym"));
    call << QVariant::fromValue(QDBusObjectPath(m_session)) << QVariantMap() << static_cast<int>(move.symbol)
         << move.state;
    return call;
}
