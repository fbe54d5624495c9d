#include "platform/linux/BackgroundPortal.h"

#include "contract/TestBackgroundPortal.h"
#include "fakes/ManualMainQueue.h"
#include "support/MessageBus.h"
#include "support/Waiting.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusPendingCall>

#include <gtest/gtest.h>

namespace
{

using Decision = TestBackgroundPortal::Decision;
using std::chrono::seconds;
using Sayings = std::vector<std::string>;

const QString PortalName = QStringLiteral("org.freedesktop.portal.Desktop");

/// The client on a bus of its own with a portal that is written by hand: a real one needs a desktop.
/// Deadlines are the test's to let pass.
class BackgroundPortalTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (!m_bus.isRunning() && !qEnvironmentVariableIsSet("CI"))
            GTEST_SKIP() << "dbus-daemon is not installed";
        ASSERT_TRUE(m_bus.isRunning());
        m_portal = std::make_unique<TestBackgroundPortal>(m_bus.address());
        m_connection = BusConnection::open(m_bus.address());
        ASSERT_TRUE(m_connection);
        makeClient(m_connection->get());
    }

    void makeClient(const QDBusConnection &connection)
    {
        m_client = std::make_unique<BackgroundPortal>(connection, m_queue, QStringLiteral("larkspool"));
    }

    LoginItem::Done note()
    {
        return [this](const Result<Success> &outcome) {
            m_said.push_back(outcome ? "done" : outcome.error().description.toStdString());
        };
    }
    void startToRegister() { m_client->registerItem(note()); }
    void startToUnregister() { m_client->unregisterItem(note()); }

    /// Whether this is said, in the end, and nothing else before it.
    bool says(const Sayings &sayings)
    {
        return waitUntil([&] {
            m_queue.drain();
            return m_said.size() >= sayings.size();
        }) &&
            m_said == sayings;
    }
    bool isAsking(size_t count = 1)
    {
        return waitUntil([this, count] { return m_portal->requests().size() >= count; });
    }
    /// Waits until the portal and the client have seen all that the other has sent so far.
    bool hasCaughtUp()
    {
        const QDBusPendingCall last = m_connection->get().asyncCall(
            QDBusMessage::createMethodCall(PortalName, QStringLiteral("/org/freedesktop/portal/desktop"),
                QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get")));
        return waitUntil([&last] { return last.isFinished(); });
    }
    bool hasVanished()
    {
        return waitUntil(
            [this] { return !m_connection->get().interface()->isServiceRegistered(PortalName); });
    }
    /// Lets the time pass in which the client waits for the reply to a call, and for the user.
    void letReplyPass() { m_queue.advanceBy(seconds(10)); }
    void letConsentPass() { m_queue.advanceBy(seconds(60)); }

    MessageBus m_bus;
    ManualMainQueue m_queue;
    std::unique_ptr<TestBackgroundPortal> m_portal;
    std::unique_ptr<BusConnection> m_connection;
    std::unique_ptr<BackgroundPortal> m_client;
    Sayings m_said;
};

TEST_F(BackgroundPortalTest, AsksForAutostartWithItsCommandAndAReason)
{
    startToRegister();
    EXPECT_TRUE(says({"done"}));
    ASSERT_EQ(m_portal->requests().size(), 1U);
    const auto &[parentWindow, options] = m_portal->requests().front();
    EXPECT_EQ(parentWindow, QString());
    EXPECT_EQ(options.value(QStringLiteral("autostart")), QVariant(true));
    EXPECT_EQ(qdbus_cast<QStringList>(options.value(QStringLiteral("commandline"))),
        QStringList{QStringLiteral("larkspool")});
    EXPECT_EQ(options.value(QStringLiteral("dbus-activatable")), QVariant(false));
    EXPECT_FALSE(options.value(QStringLiteral("reason")).toString().isEmpty());
}

TEST_F(BackgroundPortalTest, AsksForNoAutostartWhenItUnregisters)
{
    startToUnregister();
    EXPECT_TRUE(says({"done"}));
    ASSERT_EQ(m_portal->requests().size(), 1U);
    EXPECT_EQ(m_portal->requests().front().options.value(QStringLiteral("autostart")), QVariant(false));
}

TEST_F(BackgroundPortalTest, TellsWhyItFailed)
{
    struct Row {
        Decision decision;
        const char *ofRegistering;
        const char *ofUnregistering;
    };
    const Row table[]{
        {Decision::Allows, "done", "done"},
        {Decision::AllowsWithoutAutostart, "the desktop does not allow this program to start at login",
            "done"},
        {Decision::KeepsAutostart, "done", "the desktop goes on starting this program at login"},
        {Decision::Denies, "the desktop's question was answered with no",
            "the desktop's question was answered with no"},
        {Decision::Ends, "the desktop's portal refuses", "the desktop's portal refuses"},
    };
    for (const Row &row : table) {
        m_said.clear();
        m_portal->decision = row.decision;
        startToRegister();
        startToUnregister();
        EXPECT_TRUE(says({row.ofRegistering, row.ofUnregistering})) << row.ofRegistering;
    }
}

TEST_F(BackgroundPortalTest, APortalWithoutTheInterfaceIsNone)
{
    m_portal->version = 0;
    startToRegister();
    EXPECT_TRUE(says({"the desktop has no portal for starting programs at login"}));
    EXPECT_TRUE(m_portal->requests().empty());
}

TEST_F(BackgroundPortalTest, WithoutAPortalThereIsNone)
{
    m_portal.reset();
    ASSERT_TRUE(hasVanished());
    startToRegister();
    EXPECT_TRUE(says({"the desktop has no portal for starting programs at login"}));
}

TEST_F(BackgroundPortalTest, WithoutABusThereIsNoPortal)
{
    makeClient(QDBusConnection(QString()));
    startToRegister();
    EXPECT_TRUE(m_said.empty());
    EXPECT_TRUE(says({"the desktop has no portal for starting programs at login"}));
}

TEST_F(BackgroundPortalTest, APortalThatDoesNotReplyIsNotWaitedForLongerThanItsDeadline)
{
    for (const auto *const method : {"Get", "RequestBackground"}) {
        m_said.clear();
        m_portal->silentMethod = QString::fromLatin1(method);
        const int before = m_portal->questionCount();
        startToRegister();
        const int expected = before + (m_portal->silentMethod == QLatin1String("Get") ? 1 : 2);
        EXPECT_TRUE(waitUntil([&] { return m_portal->questionCount() == expected; }));
        EXPECT_TRUE(m_said.empty());
        letReplyPass();
        EXPECT_EQ(m_said, Sayings{"the desktop's portal does not answer"}) << method;
    }
}

TEST_F(BackgroundPortalTest, AUserWhoDoesNotAnswerIsNotWaitedForLongerThanADeadlineAndNotAskedAnyMore)
{
    m_portal->decision = Decision::Waits;
    startToRegister();
    // The deadline runs from the reply on.
    EXPECT_TRUE(waitUntil([this] {
        if (!m_portal->requests().empty())
            letConsentPass();
        return !m_said.empty();
    }));
    EXPECT_EQ(m_said, Sayings{"the desktop's portal does not answer"});
    EXPECT_TRUE(waitUntil([this] { return !m_portal->closedPaths().isEmpty(); }));
    EXPECT_EQ(m_portal->closedPaths(), QStringList{m_portal->requestPath()});
}

TEST_F(BackgroundPortalTest, AUserWhoAnswersInTimeIsHeard)
{
    m_portal->decision = Decision::Waits;
    startToRegister();
    ASSERT_TRUE(isAsking());
    EXPECT_TRUE(m_said.empty());
    m_portal->decision = Decision::Allows;
    m_portal->respond();
    EXPECT_TRUE(says({"done"}));
}

TEST_F(BackgroundPortalTest, APortalThatGoesAwayMeanwhileIsNotWaitedFor)
{
    m_portal->decision = Decision::Waits;
    startToRegister();
    ASSERT_TRUE(isAsking());
    ASSERT_TRUE(hasCaughtUp());
    m_portal->vanish();
    EXPECT_TRUE(waitUntil([this] { return !m_said.empty(); }));
    EXPECT_EQ(m_said, Sayings{"the desktop's portal went away"});
    // One that comes later is asked the next time.
    m_portal = std::make_unique<TestBackgroundPortal>(m_bus.address());
    startToRegister();
    EXPECT_TRUE(says({"the desktop's portal went away", "done"}));
}

TEST_F(BackgroundPortalTest, TheNextRequestIsMadeWhenTheOneBeforeItIsAnswered)
{
    m_portal->decision = Decision::Waits;
    startToRegister();
    ASSERT_TRUE(isAsking());
    startToUnregister();
    ASSERT_TRUE(hasCaughtUp());
    ASSERT_TRUE(hasCaughtUp());
    EXPECT_EQ(m_portal->requests().size(), 1U);
    EXPECT_TRUE(m_portal->closedPaths().isEmpty());
    m_portal->decision = Decision::Allows;
    m_portal->respond();
    EXPECT_TRUE(says({"done", "done"}));
    EXPECT_EQ(m_portal->requests().size(), 2U);
    EXPECT_FALSE(m_portal->startsAtLogin());
}

TEST_F(BackgroundPortalTest, ItsEndTakesTheQuestionBack)
{
    m_portal->decision = Decision::Waits;
    startToRegister();
    ASSERT_TRUE(isAsking());
    m_client.reset();
    EXPECT_TRUE(waitUntil([this] { return !m_portal->closedPaths().isEmpty(); }));
    EXPECT_EQ(m_portal->closedPaths(), QStringList{m_portal->requestPath()});
    EXPECT_TRUE(m_said.empty());
}

} // namespace
