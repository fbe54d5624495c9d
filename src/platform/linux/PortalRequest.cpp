#include "platform/linux/PortalRequest.h"

#include <QRandomGenerator>

#include <utility>

namespace
{

const QString &requestInterface()
{
    static const QString Name = QStringLiteral("org.freedesktop.portal.Request");
    return Name;
}

/// Where an object will be, so that its signals are awaited before there is one. The kind is "request" or
/// "session".
QString pathOf(const char *kind, const QDBusConnection &connection, const QString &token)
{
    QString sender = connection.baseService().mid(1);
    sender.replace(QLatin1Char('.'), QLatin1Char('_'));
    return QStringLiteral("/org/freedesktop/portal/desktop/%1/%2/%3")
        .arg(QString::fromLatin1(kind), sender, token);
}

} // namespace

PortalRequest::PortalRequest(QDBusConnection connection, QDBusMessage call, QVariantMap options,
    MainQueue &queue, Deadlines deadlines, Callback onDone)
    : m_connection(std::move(connection))
    , m_portal(call.service())
    , m_queue(queue)
    , m_responsePatience(deadlines.response)
    , m_onDone(std::move(onDone))
{
    const QString token = newToken();
    m_path = pathOf("request", m_connection, token);
    m_connection.connect(m_portal, m_path, requestInterface(), QStringLiteral("Response"), this,
        SLOT(responded(uint, QVariantMap)));
    options.insert(QStringLiteral("handle_token"), token);
    call << options;
    m_call = std::make_unique<BusCall>(
        m_connection, call, m_queue, deadlines.reply, [this](const QDBusMessage &reply) { replied(reply); });
}

PortalRequest::~PortalRequest()
{
    if (!m_isOpen)
        return;
    QDBusMessage close =
        QDBusMessage::createMethodCall(m_portal, m_path, requestInterface(), QStringLiteral("Close"));
    close.setAutoStartService(false);
    m_connection.send(close);
}

QString PortalRequest::newToken()
{
    return QStringLiteral("larkspool_%1").arg(QRandomGenerator::global()->generate64(), 0, 36);
}

QString PortalRequest::sessionPath(const QDBusConnection &connection, const QString &token)
{
    return pathOf("session", connection, token);
}

void PortalRequest::replied(const QDBusMessage &reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage) {
        const bool isSilent = reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.NoReply");
        finish(isSilent ? Outcome::Silent : Outcome::Ended);
        return;
    }
    m_queue.asyncAfter(m_responsePatience, m_lifetime.guard([this] { finish(Outcome::Silent); }));
}

void PortalRequest::responded(uint response, const QVariantMap &results)
{
    constexpr uint Success = 0;
    constexpr uint CancelledByUser = 1;
    if (response == Success)
        finish(Outcome::Granted, results);
    else
        finish(response == CancelledByUser ? Outcome::Denied : Outcome::Ended);
}

void PortalRequest::finish(Outcome outcome, const QVariantMap &results)
{
    m_isOpen = outcome == Outcome::Silent;
    // The callback may end this object.
    if (const Callback onDone = std::exchange(m_onDone, nullptr))
        onDone(outcome, results);
}
