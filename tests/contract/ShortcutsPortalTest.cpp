#include "platform/linux/ShortcutsPortal.h"

#include "contract/TestShortcutsPortal.h"
#include "fakes/ManualMainQueue.h"
#include "support/MessageBus.h"
#include "support/Waiting.h"

#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusPendingCall>

#include <gtest/gtest.h>

namespace
{

using Decision = TestShortcutsPortal::Decision;
using Refusal = ShortcutsPortal::Refusal;
using Refusals = std::vector<Refusal>;
using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::seconds;

const QString PortalName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString SessionToken = QStringLiteral("larkspool");
const QString Id = QStringLiteral("show");
const QString Trigger = QStringLiteral("LOGO+SHIFT+v");
constexpr seconds ReplyPatience{60};

QVariantMap token(const char *text)
{
    return {{QStringLiteral("activation_token"), QString::fromLatin1(text)}};
}

/// The client on a bus of its own with a portal that is written by hand: a real one needs a desktop with a
/// user in front of it. Deadlines are the test's to let pass.
class ShortcutsPortalTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_bus.isRunning());
        startPortal();
        m_connection = BusConnection::open(m_bus.address());
        ASSERT_TRUE(m_connection);
        m_desktop = std::make_unique<DesktopPortal>(m_connection->get(), m_queue);
    }

    void startPortal() { m_portal = std::make_unique<TestShortcutsPortal>(m_bus.address()); }
    void startToBind(const QString &sessionToken = SessionToken)
    {
        m_client = std::make_unique<ShortcutsPortal>(*m_desktop,
            ShortcutsPortal::Shortcut{sessionToken, Id, QStringLiteral("Show it"), Trigger},
            ShortcutsPortal::Events{.onPress = [this](const QString &text) { m_presses.append(text); },
                .onRefusal = [this](Refusal refusal) { m_refusals.push_back(refusal); }});
    }
    /// Whether the portal has answered so many times, and the client has heard it.
    bool hasAnswered(int count = 1)
    {
        return waitUntil([&] {
            m_queue.drain();
            return m_portal->answerCount() == count;
        }) &&
            hasCaughtUp();
    }
    void bind()
    {
        startToBind();
        ASSERT_TRUE(hasAnswered());
        ASSERT_EQ(m_portal->sessions().size(), 1U);
        ASSERT_TRUE(m_portal->sessions().front().isBound);
    }
    bool isRefused(Refusal refusal)
    {
        return waitUntil([&] {
            m_queue.drain();
            return !m_refusals.empty();
        }) &&
            m_refusals == Refusals{refusal};
    }
    bool hasCalled(const char *method, int count = 1)
    {
        return waitUntil([&] {
            m_queue.drain();
            return m_portal->count(method) == count;
        });
    }
    /// Waits until the portal and the client have seen all that the other has sent so far.
    bool hasCaughtUp()
    {
        const QDBusPendingCall last = m_connection->get().asyncCall(
            QDBusMessage::createMethodCall(PortalName, QStringLiteral("/org/freedesktop/portal/desktop"),
                QStringLiteral("org.freedesktop.portal.GlobalShortcuts"), QStringLiteral("None")));
        return waitUntil([&last] { return last.isFinished(); });
    }
    bool hasVanished()
    {
        return waitUntil(
                   [this] { return !m_connection->get().interface()->isServiceRegistered(PortalName); }) &&
            hasHeardTheBus();
    }
    /// Whatever the bus has told before has been heard when it has told something new.
    bool hasHeardTheBus()
    {
        bool isHeard = false;
        DesktopPortal listener(m_connection->get(), m_queue);
        listener.introduce(seconds(1), [&](DesktopPortal::Presence) { isHeard = true; });
        return waitUntil([&] { return isHeard; });
    }
    bool hasPresses(const QStringList &tokens)
    {
        return waitUntil([&] { return m_presses.size() >= tokens.size(); }) && m_presses == tokens;
    }
    bool areClosed(const QStringList &paths)
    {
        return waitUntil([&] { return m_portal->closedPaths().size() >= paths.size(); }) &&
            m_portal->closedPaths() == paths;
    }
    QString session() const { return m_portal->sessions().back().path; }

    MessageBus m_bus;
    ManualMainQueue m_queue;
    std::unique_ptr<TestShortcutsPortal> m_portal;
    std::unique_ptr<BusConnection> m_connection;
    std::unique_ptr<DesktopPortal> m_desktop;
    std::unique_ptr<ShortcutsPortal> m_client;
    QStringList m_presses; ///< the token of each
    Refusals m_refusals;
};

TEST_F(ShortcutsPortalTest, SaysWhichProgramItIsThenOpensASessionThenBinds)
{
    bind();
    const QStringList order{QStringLiteral("Register"), QStringLiteral("GetAll"),
        QStringLiteral("CreateSession"), QStringLiteral("BindShortcuts")};
    EXPECT_TRUE(m_portal->methods() == order) << m_portal->methods().join(QLatin1Char(' ')).toStdString();
    EXPECT_EQ(m_portal->arguments("Register").value(0), QVariant(QStringLiteral("org.larkspool.Larkspool")));
    EXPECT_TRUE(m_refusals.empty());
}

TEST_F(ShortcutsPortalTest, ProposesTheKeysAndDescribesTheShortcut)
{
    bind();
    const auto &bound = m_portal->sessions().front();
    EXPECT_EQ(bound.id, Id);
    EXPECT_EQ(bound.description, QStringLiteral("Show it"));
    EXPECT_EQ(bound.trigger, Trigger);
    EXPECT_EQ(m_portal->arguments("BindShortcuts").value(2), QVariant(QString()));
}

TEST_F(ShortcutsPortalTest, TheSessionIsNamedAsItIsToBe)
{
    bind();
    EXPECT_TRUE(session().endsWith(QStringLiteral("/larkspool"))) << session().toStdString();
}

TEST_F(ShortcutsPortalTest, ADesktopThatGivesTheKeysWithTheSessionIsNotAskedAgain)
{
    m_portal->bindsWithSession = true;
    startToBind();
    ASSERT_TRUE(hasCalled("CreateSession"));
    ASSERT_TRUE(hasCaughtUp());
    ASSERT_TRUE(hasCaughtUp());
    EXPECT_EQ(m_portal->count("BindShortcuts"), 0);
    m_portal->press(Trigger, token("one"));
    EXPECT_TRUE(hasPresses({QStringLiteral("one")}));
    m_queue.advanceBy(hours(1));
    EXPECT_TRUE(m_refusals.empty());
}

TEST_F(ShortcutsPortalTest, ADesktopThatHasNoKeysToGiveWithTheSessionIsAskedForThem)
{
    m_portal->bindsWithSession = true;
    m_portal->decision = Decision::GrantsWithoutKeys;
    startToBind();
    ASSERT_TRUE(hasAnswered());
    EXPECT_EQ(m_portal->count("BindShortcuts"), 1);
    EXPECT_TRUE(m_refusals.empty());
}

TEST_F(ShortcutsPortalTest, TheNextSessionIsOpenedWhenTheOneBeforeItIsClosed)
{
    bind();
    m_portal->silentMethod = QStringLiteral("Close");
    m_client.reset();
    startToBind();
    ASSERT_TRUE(hasCalled("Close"));
    ASSERT_TRUE(hasCaughtUp());
    ASSERT_TRUE(hasCaughtUp());
    m_queue.advanceBy(milliseconds(1999));
    ASSERT_TRUE(hasCaughtUp());
    EXPECT_EQ(m_portal->count("GetAll"), 1);
    // Not for ever: a portal that says nothing may have closed it.
    m_queue.advanceBy(milliseconds(1));
    EXPECT_TRUE(hasCalled("CreateSession", 2));
}

TEST_F(ShortcutsPortalTest, APressIsHeardWithItsToken)
{
    bind();
    m_portal->press(Trigger, token("one"));
    m_portal->press(Trigger);
    EXPECT_TRUE(hasPresses({QStringLiteral("one"), QString()}));
}

TEST_F(ShortcutsPortalTest, ARepeatedPressCountsOnceWhereReleasesAreTold)
{
    bind();
    m_portal->press(Trigger, token("first"));
    m_portal->tellActivated(session(), Id, token("held"));
    m_portal->tellActivated(session(), Id, token("repeated"));
    m_portal->tellDeactivated(session(), Id);
    m_portal->press(Trigger, token("last"));
    EXPECT_TRUE(hasPresses({QStringLiteral("first"), QStringLiteral("held"), QStringLiteral("last")}));
}

TEST_F(ShortcutsPortalTest, EachPressCountsWhereReleasesAreNotTold)
{
    m_portal->tellsReleases = false;
    bind();
    m_portal->press(Trigger, token("one"));
    m_portal->press(Trigger, token("two"));
    EXPECT_TRUE(hasPresses({QStringLiteral("one"), QStringLiteral("two")}));
}

TEST_F(ShortcutsPortalTest, PressesOfOtherSessionsAndShortcutsAreNotHeard)
{
    bind();
    m_portal->tellActivated(session() + QStringLiteral("x"), Id, token("foreign session"));
    m_portal->tellActivated(session(), QStringLiteral("other"), token("foreign shortcut"));
    m_portal->press(Trigger, token("ours"));
    EXPECT_TRUE(hasPresses({QStringLiteral("ours")}));
}

TEST_F(ShortcutsPortalTest, NobodyButThePortalPressesKeys)
{
    bind();
    const auto stranger = BusConnection::open(m_bus.address());
    QDBusMessage forged = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.GlobalShortcuts"), QStringLiteral("Activated"));
    forged << QVariant::fromValue(QDBusObjectPath(session())) << Id << qulonglong(1) << token("forged");
    ASSERT_TRUE(stranger->get().send(forged));
    // Whatever came of it would be there before the next press.
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    const QDBusMessage reply = stranger->get().call(
        QDBusMessage::createMethodCall(bus, QStringLiteral("/"), bus, QStringLiteral("GetId")));
    ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage);
    m_portal->press(Trigger, token("ours"));
    EXPECT_TRUE(hasPresses({QStringLiteral("ours")}));
}

TEST_F(ShortcutsPortalTest, OtherKeysThatTheUserChoosesChangeNothing)
{
    bind();
    m_portal->tellShortcutsChanged(m_portal->sessions().front());
    m_portal->press(Trigger, token("later"));
    EXPECT_TRUE(hasPresses({QStringLiteral("later")}));
    EXPECT_TRUE(m_refusals.empty());
}

TEST_F(ShortcutsPortalTest, TellsWhyItIsRefused)
{
    struct Row {
        Decision decision;
        Refusals refusals;
    };
    const Row table[]{
        {Decision::Grants, {}},
        {Decision::GrantsWithoutKeys, {}},
        {Decision::GrantsWithoutAList, {}},
        {Decision::GrantsNothing, {Refusal::Refused}},
        {Decision::Denies, {Refusal::Refused}},
        {Decision::Ends, {Refusal::Refused}},
    };
    int answers = 0;
    for (const Row &row : table) {
        m_client.reset();
        m_refusals.clear();
        m_portal->decision = row.decision;
        startToBind();
        ASSERT_TRUE(hasAnswered(++answers));
        EXPECT_EQ(m_refusals, row.refusals) << answers;
    }
}

TEST_F(ShortcutsPortalTest, ARefusedShortcutClosesItsSession)
{
    m_portal->decision = Decision::Denies;
    startToBind();
    ASSERT_TRUE(isRefused(Refusal::Refused));
    EXPECT_TRUE(waitUntil([this] { return m_portal->sessions().empty(); }));
}

TEST_F(ShortcutsPortalTest, NeedsAPortal)
{
    m_portal->vanish();
    ASSERT_TRUE(hasVanished());
    startToBind();
    EXPECT_TRUE(m_refusals.empty());
    EXPECT_TRUE(isRefused(Refusal::NoPortal));
}

TEST_F(ShortcutsPortalTest, NeedsABus)
{
    m_desktop = std::make_unique<DesktopPortal>(QDBusConnection(QString()), m_queue);
    startToBind();
    EXPECT_TRUE(m_refusals.empty());
    EXPECT_TRUE(isRefused(Refusal::NoPortal));
}

TEST_F(ShortcutsPortalTest, NeedsAPortalThatHasTheInterface)
{
    m_portal->version = 0;
    startToBind();
    EXPECT_TRUE(isRefused(Refusal::NoPortal));
    EXPECT_EQ(m_portal->count("CreateSession"), 0);
}

TEST_F(ShortcutsPortalTest, NeedsASession)
{
    m_portal->namesSession = false;
    startToBind();
    EXPECT_TRUE(isRefused(Refusal::Refused));
    EXPECT_EQ(m_portal->count("BindShortcuts"), 0);
}

TEST_F(ShortcutsPortalTest, DoesWithoutARegistryOfPrograms)
{
    m_portal->hasRegistry = false;
    bind();
    m_portal->press(Trigger, token("one"));
    EXPECT_TRUE(hasPresses({QStringLiteral("one")}));
}

TEST_F(ShortcutsPortalTest, APortalThatDoesNotReplyIsNotWaitedForLongerThanItsDeadline)
{
    for (const char *const method : {"Register", "GetAll", "CreateSession"}) {
        m_refusals.clear();
        m_portal->silentMethod = QString::fromLatin1(method);
        const int before = m_portal->count(method);
        startToBind();
        ASSERT_TRUE(hasCalled(method, before + 1)) << method;
        m_queue.advanceBy(ReplyPatience - milliseconds(1));
        EXPECT_TRUE(m_refusals.empty()) << method;
        m_queue.advanceBy(milliseconds(1));
        EXPECT_EQ(m_refusals, Refusals{Refusal::NoPortal}) << method;
    }
}

TEST_F(ShortcutsPortalTest, ASessionThatIsNeverMadeIsNotWaitedForLongerThanItsDeadline)
{
    m_portal->unfinishedMethod = QStringLiteral("CreateSession");
    startToBind();
    ASSERT_TRUE(hasCalled("CreateSession"));
    ASSERT_TRUE(hasCaughtUp());
    m_queue.advanceBy(seconds(9));
    EXPECT_TRUE(m_refusals.empty());
    m_queue.advanceBy(seconds(1));
    EXPECT_EQ(m_refusals, Refusals{Refusal::NoPortal});
    EXPECT_TRUE(waitUntil([this] { return m_portal->sessions().empty(); }));
    EXPECT_EQ(m_portal->closedPaths().value(0), m_portal->requestPath());
}

TEST_F(ShortcutsPortalTest, AQuestionThatNobodyAnswersForAMinuteIsTakenBackAndCountsAsNo)
{
    m_portal->decision = Decision::Waits;
    startToBind();
    ASSERT_TRUE(hasCalled("BindShortcuts"));
    ASSERT_TRUE(hasCaughtUp());
    const QString asking = session();
    m_queue.advanceBy(seconds(59));
    EXPECT_TRUE(m_refusals.empty());
    m_queue.advanceBy(seconds(1));
    EXPECT_EQ(m_refusals, Refusals{Refusal::Refused});
    EXPECT_TRUE(areClosed({m_portal->requestPath(), asking}));
}

TEST_F(ShortcutsPortalTest, AUserWhoAnswersInTimeIsHeard)
{
    m_portal->decision = Decision::Waits;
    startToBind();
    ASSERT_TRUE(hasCalled("BindShortcuts"));
    ASSERT_TRUE(hasCaughtUp());
    m_queue.advanceBy(seconds(59));
    m_portal->decision = Decision::Grants;
    m_portal->respond();
    m_portal->press(Trigger, token("one"));
    EXPECT_TRUE(hasPresses({QStringLiteral("one")}));
    m_queue.advanceBy(hours(1));
    EXPECT_TRUE(m_refusals.empty());
}

TEST_F(ShortcutsPortalTest, IsBoundAnewByThePortalThatComesAfterOneThatVanished)
{
    bind();
    m_portal->vanish();
    ASSERT_TRUE(hasVanished());
    m_queue.advanceBy(hours(1));
    EXPECT_TRUE(m_refusals.empty());
    startPortal();
    ASSERT_TRUE(hasAnswered());
    const QStringList order{QStringLiteral("Register"), QStringLiteral("GetAll"),
        QStringLiteral("CreateSession"), QStringLiteral("BindShortcuts")};
    EXPECT_TRUE(m_portal->methods() == order) << m_portal->methods().join(QLatin1Char(' ')).toStdString();
    m_portal->press(Trigger, token("again"));
    EXPECT_TRUE(hasPresses({QStringLiteral("again")}));
}

TEST_F(ShortcutsPortalTest, IsBoundByTheNextPortalWhenOneVanishesDuringTheQuestion)
{
    m_portal->decision = Decision::Waits;
    startToBind();
    ASSERT_TRUE(hasCalled("BindShortcuts"));
    ASSERT_TRUE(hasCaughtUp());
    m_portal->vanish();
    ASSERT_TRUE(hasVanished());
    startPortal();
    ASSERT_TRUE(hasAnswered());
    EXPECT_TRUE(m_refusals.empty());
    EXPECT_TRUE(m_portal->sessions().front().isBound);
}

TEST_F(ShortcutsPortalTest, ANextPortalThatRefusesEndsIt)
{
    bind();
    m_portal->vanish();
    ASSERT_TRUE(hasVanished());
    startPortal();
    m_portal->decision = Decision::Denies;
    EXPECT_TRUE(isRefused(Refusal::Refused));
    // Nothing comes after it.
    m_portal->vanish();
    ASSERT_TRUE(hasVanished());
    startPortal();
    ASSERT_TRUE(hasCaughtUp());
    m_queue.advanceBy(hours(1));
    EXPECT_EQ(m_portal->count("CreateSession"), 0);
    EXPECT_EQ(m_refusals, Refusals{Refusal::Refused});
}

TEST_F(ShortcutsPortalTest, ASessionThatIsClosedAtOnceIsRefused)
{
    bind();
    m_queue.advanceBy(seconds(59));
    m_portal->closeSession();
    EXPECT_TRUE(isRefused(Refusal::Refused));
    m_queue.advanceBy(hours(1));
    ASSERT_TRUE(hasCaughtUp());
    EXPECT_EQ(m_portal->count("CreateSession"), 1);
}

TEST_F(ShortcutsPortalTest, ASessionThatIsClosedLaterIsReplacedAfterAPause)
{
    bind();
    m_queue.advanceBy(seconds(60));
    m_portal->closeSession();
    ASSERT_TRUE(hasCaughtUp());
    m_queue.advanceBy(milliseconds(999));
    ASSERT_TRUE(hasCaughtUp());
    EXPECT_EQ(m_portal->count("CreateSession"), 1);
    m_queue.advanceBy(milliseconds(1));
    ASSERT_TRUE(hasAnswered(2));
    EXPECT_EQ(m_portal->count("BindShortcuts"), 2);
    EXPECT_EQ(m_portal->count("Register"), 1);
    m_portal->press(Trigger, token("again"));
    EXPECT_TRUE(hasPresses({QStringLiteral("again")}));
    EXPECT_TRUE(m_refusals.empty());
    // The next one has to last as well.
    m_portal->closeSession();
    EXPECT_TRUE(isRefused(Refusal::Refused));
}

TEST_F(ShortcutsPortalTest, ItsEndClosesTheSession)
{
    bind();
    const QString path = session();
    m_client.reset();
    EXPECT_TRUE(areClosed({path}));
    EXPECT_TRUE(m_refusals.empty());
}

TEST_F(ShortcutsPortalTest, ItsEndTakesTheQuestionBack)
{
    m_portal->decision = Decision::Waits;
    startToBind();
    ASSERT_TRUE(hasCalled("BindShortcuts"));
    ASSERT_TRUE(hasCaughtUp());
    const QString asking = session();
    m_client.reset();
    EXPECT_TRUE(areClosed({m_portal->requestPath(), asking}));
    m_queue.advanceBy(hours(1));
    EXPECT_TRUE(m_refusals.empty());
}

TEST_F(ShortcutsPortalTest, ItMayEndBeforeThePortalHasSaidAnything)
{
    startToBind();
    m_client.reset();
    ASSERT_TRUE(hasCaughtUp());
    m_queue.advanceBy(hours(1));
    ASSERT_TRUE(hasCaughtUp());
    EXPECT_EQ(m_portal->count("CreateSession"), 0);
    EXPECT_TRUE(m_refusals.empty());
}

TEST_F(ShortcutsPortalTest, OneThatEndsBeforeItsSessionIsThereLeavesNoneBehind)
{
    m_portal->unfinishedMethod = QStringLiteral("CreateSession");
    startToBind();
    ASSERT_TRUE(hasCalled("CreateSession"));
    m_client.reset();
    m_portal->unfinishedMethod.clear();
    startToBind();
    ASSERT_TRUE(hasAnswered());
    EXPECT_TRUE(m_refusals.empty());
    ASSERT_EQ(m_portal->sessions().size(), 1U);
    EXPECT_TRUE(m_portal->sessions().front().isBound);
}

TEST_F(ShortcutsPortalTest, TwoOfThemIntroduceTheProgramOnce)
{
    startToBind();
    const auto first = std::move(m_client);
    startToBind(QStringLiteral("larkspool_2"));
    ASSERT_TRUE(hasAnswered(2));
    EXPECT_EQ(m_portal->count("Register"), 1);
    EXPECT_EQ(m_portal->sessions().size(), 2U);
}

} // namespace
