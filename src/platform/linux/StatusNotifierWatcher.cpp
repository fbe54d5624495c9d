#include "platform/linux/StatusNotifierWatcher.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

namespace
{

constexpr int DeadlineMilliseconds = 5000;

const QString &service()
{
    static const QString name = QStringLiteral("org.kde.StatusNotifierWatcher");
    return name;
}

const QString &path()
{
    static const QString name = QStringLiteral("/StatusNotifierWatcher");
    return name;
}

const QString &properties()
{
    static const QString name = QStringLiteral("org.freedesktop.DBus.Properties");
    return name;
}

} // namespace

StatusNotifierWatcher::StatusNotifierWatcher(const QDBusConnection &connection)
    : m_connection(connection)
{
}

void StatusNotifierWatcher::follow()
{
    if (!m_connection.isConnected()) {
        QMetaObject::invokeMethod(this, &StatusNotifierWatcher::onDisconnected, Qt::QueuedConnection);
        return;
    }
    connect(&m_names, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &, const QString &, const QString &owner) { setOwner(owner); });
    m_names.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_names.setConnection(m_connection);
    m_names.addWatchedService(service());
    // From whoever sends them: for a sender's name QtDBus would wait for the bus. The slot knows the sender.
    for (const char *const signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        m_connection.connect(
            {}, path(), service(), QString::fromLatin1(signal), this, SLOT(onNews(QDBusMessage)));
    }
    m_connection.connect(
        {}, path(), properties(), QStringLiteral("PropertiesChanged"), this, SLOT(onNews(QDBusMessage)));
    m_connection.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"),
        QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
        SLOT(onDisconnected()));
    askForOwner();
}

void StatusNotifierWatcher::onNews(const QDBusMessage &signal)
{
    if (m_owner && !m_owner->isEmpty() && signal.service() == *m_owner)
        askForHost();
}

void StatusNotifierWatcher::onDisconnected()
{
    setOwner({});
}

void StatusNotifierWatcher::askForOwner()
{
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    QDBusMessage question = QDBusMessage::createMethodCall(
        bus, QStringLiteral("/org/freedesktop/DBus"), bus, QStringLiteral("GetNameOwner"));
    question << service();
    call(question, [this](const QDBusMessage &answer) {
        // The news of a change has overtaken the answer.
        if (m_owner)
            return;
        setOwner(
            answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0).toString() : QString());
    });
}

void StatusNotifierWatcher::setOwner(const QString &owner)
{
    m_owner = owner;
    m_hasHost = false;
    m_registration = Registration::None;
    ++m_question;
    if (owner.isEmpty())
        setShown(false);
    else
        askForHost();
}

void StatusNotifierWatcher::askForHost()
{
    QDBusMessage question =
        QDBusMessage::createMethodCall(*m_owner, path(), properties(), QStringLiteral("Get"));
    question << service() << QStringLiteral("IsStatusNotifierHostRegistered");
    call(question, [this, number = ++m_question](const QDBusMessage &answer) {
        if (number == m_question)
            onHostAnswer(answer);
    });
}

void StatusNotifierWatcher::onHostAnswer(const QDBusMessage &answer)
{
    m_hasHost = answer.type() == QDBusMessage::ReplyMessage &&
        answer.arguments().value(0).value<QDBusVariant>().variant().toBool();
    if (m_hasHost && m_registration == Registration::None)
        registerItem();
    else if (m_registration != Registration::Sent)
        setShown(m_hasHost);
    // A watcher that is busy, as at the start of a session, has no news to send when it is done.
    if (QDBusError(answer).type() == QDBusError::NoReply)
        askForHost();
}

void StatusNotifierWatcher::registerItem()
{
    m_registration = Registration::Sent;
    QDBusMessage request = QDBusMessage::createMethodCall(
        *m_owner, path(), service(), QStringLiteral("RegisterStatusNotifierItem"));
    request << m_connection.baseService();
    call(request, [this, owner = m_owner](const QDBusMessage &answer) {
        if (owner != m_owner)
            return;
        const bool isDone = answer.type() == QDBusMessage::ReplyMessage;
        m_registration = isDone ? Registration::Done : Registration::None;
        setShown(isDone && m_hasHost);
        if (QDBusError(answer).type() == QDBusError::NoReply)
            askForHost();
    });
}

void StatusNotifierWatcher::setShown(bool isShown)
{
    if (m_isShown == isShown)
        return;
    m_isShown = isShown;
    if (onShown)
        onShown(isShown);
}

void StatusNotifierWatcher::call(
    const QDBusMessage &message, std::function<void(const QDBusMessage &answer)> onAnswer)
{
    auto *const pending =
        new QDBusPendingCallWatcher(m_connection.asyncCall(message, DeadlineMilliseconds), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [pending, onAnswer = std::move(onAnswer)] {
        pending->deleteLater();
        onAnswer(pending->reply());
    });
}
