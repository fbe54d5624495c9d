#pragma once

#include "contract/HandWrittenPortal.h"
#include "fakes/ManualMainQueue.h"
#include "platform/linux/RemoteDesktopPortal.h"
#include "support/MessageBus.h"
#include "support/Waiting.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCall>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// What was said when it was done.
using Said = std::pair<KeyPresser::Outcome, std::string>;

inline const Said Done{KeyPresser::Outcome::Done, ""};

inline Said unavailable(const char *reason)
{
    return {KeyPresser::Outcome::Unavailable, reason};
}

inline Said failed(const char *reason)
{
    return {KeyPresser::Outcome::Failed, reason};
}

/// The client on a bus of its own with a portal that is written by hand: a real one needs a desktop with a
/// user in front of it. Deadlines are the test's to let pass.
class HandWrittenPortalTest : public ::testing::Test
{
protected:
    HandWrittenPortalTest() { makeClient(); }

    void makeClient()
    {
        m_client = std::make_unique<RemoteDesktopPortal>(m_connection->get(), m_queue, token());
    }
    RestoreToken token() const { return RestoreToken(m_folder.filePath(QStringLiteral("token"))); }

    /// The outcome of the call, once there is one.
    template<class Call>
    Said outcome(Call call)
    {
        std::optional<Said> said;
        call([&said](KeyPresser::Outcome outcome, const QString &reason) {
            EXPECT_FALSE(said) << "said twice";
            said = Said(outcome, reason.toStdString());
        });
        EXPECT_TRUE(waitUntil([this, &said] {
            m_queue.drain();
            return said.has_value();
        }));
        return said.value_or(Said());
    }
    Said prepare()
    {
        return outcome([this](auto callback) { m_client->prepare(callback); });
    }
    Said press(PasteChord chord = PasteChord::ControlV)
    {
        return outcome([this, chord](auto callback) { m_client->press(keyChord(chord), callback); });
    }

    /// Without waiting; what was said so far is in `m_said`.
    void startToPrepare() { m_client->prepare(noteOutcome()); }
    void startToPress() { m_client->press(keyChord(PasteChord::ControlV), noteOutcome()); }
    KeyPresser::Callback noteOutcome()
    {
        return [this](KeyPresser::Outcome outcome, const QString &reason) {
            m_said.emplace_back(outcome, reason.toStdString());
        };
    }
    bool hasSaid(const Said &said)
    {
        return waitUntil([this] { return !m_said.empty(); }) && m_said == std::vector<Said>{said};
    }
    /// Waits until the portal and the client have seen all that the other has sent so far.
    bool hasCaughtUp()
    {
        QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"),
            QStringLiteral("/org/freedesktop/portal/desktop"),
            QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"));
        call << QStringLiteral("org.freedesktop.portal.RemoteDesktop");
        const QDBusPendingCall pending = m_connection->get().asyncCall(call);
        return waitUntil([&pending] { return pending.isFinished(); });
    }
    bool hasVanished()
    {
        return waitUntil([this] {
            return !m_connection->get().interface()->isServiceRegistered(
                QStringLiteral("org.freedesktop.portal.Desktop"));
        });
    }
    bool isAsking()
    {
        return waitUntil([this] { return m_portal->count("Start") > 0; });
    }
    /// Whether the portal has been asked to close them, and nothing else.
    bool areClosed(const QStringList &paths)
    {
        return waitUntil([&] { return m_portal->closedPaths().size() >= paths.size(); }) &&
            m_portal->closedPaths() == paths;
    }

    MessageBus m_bus;
    QTemporaryDir m_folder;
    ManualMainQueue m_queue;
    std::unique_ptr<HandWrittenPortal> m_portal = std::make_unique<HandWrittenPortal>(m_bus.address());
    std::unique_ptr<BusConnection> m_connection = BusConnection::open(m_bus.address());
    std::unique_ptr<RemoteDesktopPortal> m_client;
    std::vector<Said> m_said;
};
