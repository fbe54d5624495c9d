#include "contract/TestShortcutsPortal.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMetaType>
#include <QDBusObjectPath>

#include <algorithm>

namespace
{

const QString Path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString Interface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");

using Shortcut = std::pair<QString, QVariantMap>;
using ShortcutList = QList<Shortcut>;

QString senderPart(const QDBusMessage &message)
{
    return message.service().mid(1).replace(QLatin1Char('.'), QLatin1Char('_'));
}

QVariant pathValue(const QString &path)
{
    return QVariant::fromValue(QDBusObjectPath(path));
}

} // namespace

TestShortcutsPortal::TestShortcutsPortal(const QByteArray &busAddress)
    : m_bus(BusConnection::open(busAddress))
{
    qDBusRegisterMetaType<Shortcut>();
    qDBusRegisterMetaType<ShortcutList>();
    m_bus->get().registerVirtualObject(Path, this, QDBusConnection::SubPath);
    m_bus->get().registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
}

TestShortcutsPortal::~TestShortcutsPortal()
{
    if (m_bus)
        vanish();
}

void TestShortcutsPortal::vanish()
{
    // Calls that have come in already refer to the connection.
    m_bus->get().unregisterObject(Path, QDBusConnection::UnregisterTree);
    QCoreApplication::removePostedEvents(this);
    m_bus.reset();
}

int TestShortcutsPortal::count(const char *method) const
{
    return static_cast<int>(m_methods.count(QString::fromLatin1(method)));
}

QVariantList TestShortcutsPortal::arguments(const char *method) const
{
    const qsizetype last = m_methods.lastIndexOf(QString::fromLatin1(method));
    return last < 0 ? QVariantList() : m_arguments.at(static_cast<size_t>(last));
}

QString TestShortcutsPortal::introspect(const QString &) const
{
    return {};
}

bool TestShortcutsPortal::handleMessage(const QDBusMessage &message, const QDBusConnection &)
{
    const QString method = message.member();
    const QStringList known{QStringLiteral("Close"), QStringLiteral("Register"), QStringLiteral("GetAll"),
        QStringLiteral("CreateSession"), QStringLiteral("BindShortcuts")};
    if (!known.contains(method))
        return false;
    m_methods.append(method);
    m_arguments.push_back(message.arguments());
    if (method == silentMethod)
        return true;
    const auto answer = [&](bool isKnown, const QVariantList &values) {
        m_bus->get().send(isKnown
                ? message.createReply(values)
                : message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("No such interface")));
    };
    if (method == QLatin1String("Close"))
        handleClose(message);
    else if (method == QLatin1String("Register"))
        answer(hasRegistry, {});
    else if (method == QLatin1String("GetAll"))
        answer(version > 0 && message.arguments() == QVariantList{Interface},
            {QVariantMap{{QStringLiteral("version"), version}}});
    else
        handleRequest(message);
    return true;
}

void TestShortcutsPortal::handleClose(const QDBusMessage &message)
{
    m_closedPaths.append(message.path());
    std::erase_if(m_sessions, [&](const Session &session) { return session.path == message.path(); });
    m_bus->get().send(message.createReply());
}

void TestShortcutsPortal::handleRequest(const QDBusMessage &message)
{
    const bool isBind = message.member() == QLatin1String("BindShortcuts");
    const auto options = qdbus_cast<QVariantMap>(message.arguments().constLast());
    m_requestPath = Path +
        QStringLiteral("/request/%1/%2")
            .arg(senderPart(message), options.value(QStringLiteral("handle_token")).toString());
    if (!isBind) {
        createSession(message, options);
        return;
    }
    noteShortcut(message.arguments().value(0).value<QDBusObjectPath>().path(), message.arguments().value(1));
    m_bus->get().send(message.createReply(pathValue(m_requestPath)));
    if (message.member() != unfinishedMethod && decision != Decision::Waits)
        respond();
}

void TestShortcutsPortal::createSession(const QDBusMessage &message, const QVariantMap &options)
{
    const QString path = Path +
        QStringLiteral("/session/%1/%2")
            .arg(senderPart(message), options.value(QStringLiteral("session_handle_token")).toString());
    if (std::ranges::find(m_sessions, path, &Session::path) != m_sessions.end()) {
        m_bus->get().send(
            message.createErrorReply(QDBusError::AccessDenied, QStringLiteral("There is such a session")));
        return;
    }
    m_bus->get().send(message.createReply(pathValue(m_requestPath)));
    if (m_leftOver.contains(path)) {
        sendResponse(2, {});
        return;
    }
    m_sessions.push_back({path});
    if (message.member() == unfinishedMethod)
        return;
    QVariantMap results;
    if (namesSession)
        results.insert(QStringLiteral("session_handle"), path);
    if (bindsWithSession) {
        noteShortcut(path, options.value(QStringLiteral("shortcuts")));
        results.insert(QStringLiteral("shortcuts"), boundList(m_sessions.back()));
    }
    sendResponse(0, results);
}

void TestShortcutsPortal::noteShortcut(const QString &sessionPath, const QVariant &shortcuts)
{
    const auto list = qdbus_cast<ShortcutList>(shortcuts);
    m_askingSession = sessionPath;
    const auto found = std::ranges::find(m_sessions, sessionPath, &Session::path);
    if (found == m_sessions.end() || list.size() != 1)
        return;
    found->id = list.constFirst().first;
    found->description = list.constFirst().second.value(QStringLiteral("description")).toString();
    found->trigger = list.constFirst().second.value(QStringLiteral("preferred_trigger")).toString();
}

void TestShortcutsPortal::respond()
{
    ++m_answerCount;
    const auto session = std::ranges::find(m_sessions, m_askingSession, &Session::path);
    if (decision == Decision::Denies || decision == Decision::Ends || session == m_sessions.end()) {
        sendResponse(decision == Decision::Denies ? 1 : 2, {});
        return;
    }
    const QVariant list = boundList(*session);
    sendResponse(0,
        decision == Decision::GrantsWithoutAList ? QVariantMap()
                                                 : QVariantMap{{QStringLiteral("shortcuts"), list}});
}

QVariant TestShortcutsPortal::boundList(Session &session)
{
    session.isBound = decision != Decision::GrantsNothing && !m_elsewhere.contains(session.trigger);
    if (!session.isBound)
        return QVariant::fromValue(ShortcutList());
    if (decision == Decision::GrantsWithoutKeys)
        session.trigger.clear();
    const QVariantMap properties{{QStringLiteral("description"), session.description},
        {QStringLiteral("trigger_description"), session.trigger}};
    return QVariant::fromValue(ShortcutList{{session.id, properties}});
}

void TestShortcutsPortal::sendResponse(uint response, const QVariantMap &results)
{
    QDBusMessage signal = QDBusMessage::createSignal(
        m_requestPath, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
    signal << response << results;
    m_bus->get().send(signal);
}

bool TestShortcutsPortal::takeElsewhere(const QString &trigger)
{
    const bool isHeld = std::ranges::any_of(
        m_sessions, [&](const Session &session) { return session.isBound && session.trigger == trigger; });
    if (!isHeld)
        m_elsewhere.insert(trigger);
    return !isHeld;
}

void TestShortcutsPortal::press(const QString &trigger, const QVariantMap &options)
{
    for (const Session &session : m_sessions) {
        if (!session.isBound || session.trigger != trigger)
            continue;
        tellActivated(session.path, session.id, options);
        if (tellsReleases)
            tellDeactivated(session.path, session.id);
    }
}

void TestShortcutsPortal::tellActivated(const QString &session, const QString &id, const QVariantMap &options)
{
    QDBusMessage signal = QDBusMessage::createSignal(Path, Interface, QStringLiteral("Activated"));
    signal << pathValue(session) << id << qulonglong(1) << options;
    m_bus->get().send(signal);
}

void TestShortcutsPortal::tellDeactivated(const QString &session, const QString &id)
{
    QDBusMessage signal = QDBusMessage::createSignal(Path, Interface, QStringLiteral("Deactivated"));
    signal << pathValue(session) << id << qulonglong(2) << QVariantMap();
    m_bus->get().send(signal);
}

void TestShortcutsPortal::tellShortcutsChanged(const Session &session)
{
    QDBusMessage signal = QDBusMessage::createSignal(Path, Interface, QStringLiteral("ShortcutsChanged"));
    const QVariantMap properties{{QStringLiteral("trigger_description"), session.trigger}};
    signal << pathValue(session.path) << QVariant::fromValue(ShortcutList{{session.id, properties}});
    m_bus->get().send(signal);
}

void TestShortcutsPortal::closeSession()
{
    QDBusMessage signal = QDBusMessage::createSignal(
        m_sessions.back().path, QStringLiteral("org.freedesktop.portal.Session"), QStringLiteral("Closed"));
    signal << QVariantMap();
    m_bus->get().send(signal);
    m_sessions.pop_back();
}
