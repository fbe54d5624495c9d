#include "contract/RemoteDesktopPortalFixture.h"

#include <gtest/gtest.h>

namespace
{

using Decision = HandWrittenPortal::Decision;
using Key = HandWrittenPortal::Key;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr int Control = 0xffe3;
constexpr int Shift = 0xffe1;

const std::vector<Key> ControlVKeys{{Control, 1}, {'v', 1}, {'v', 0}, {Control, 0}};

TEST_F(HandWrittenPortalTest, PressesAChordInOrderAndReleasesItInReverse)
{
    ASSERT_EQ(prepare(), Done);
    EXPECT_TRUE(m_portal->keys().empty());
    EXPECT_EQ(press(PasteChord::ControlShiftV), Done);
    const std::vector<Key> expected{{Control, 1}, {Shift, 1}, {'v', 1}, {'v', 0}, {Shift, 0}, {Control, 0}};
    EXPECT_EQ(m_portal->keys(), expected);
}

TEST_F(HandWrittenPortalTest, AsksForTheKeyboardAloneAndToBeRemembered)
{
    ASSERT_EQ(prepare(), Done);
    const QVariantMap options = m_portal->options("SelectDevices");
    EXPECT_EQ(options.value(QStringLiteral("types")), QVariant(1U));
    EXPECT_EQ(options.value(QStringLiteral("persist_mode")), QVariant(2U));
    EXPECT_FALSE(options.contains(QStringLiteral("restore_token")));
    EXPECT_EQ(token().read(), QStringLiteral("token-1"));
}

TEST_F(HandWrittenPortalTest, SaysWhichProgramItIsBeforeAnythingElseAndOnce)
{
    ASSERT_EQ(prepare(), Done);
    EXPECT_EQ(m_portal->calls().front().method, QStringLiteral("Register"));
    m_portal->closeSession();
    EXPECT_TRUE(waitUntil([this] { return prepare() == Done && m_portal->count("CreateSession") == 2; }));
    EXPECT_EQ(m_portal->count("Register"), 1);
}

TEST_F(HandWrittenPortalTest, DoesWithoutARegistryOfPrograms)
{
    m_portal->hasRegistry = false;
    EXPECT_EQ(prepare(), Done);
    EXPECT_EQ(press(), Done);
}

TEST_F(HandWrittenPortalTest, KeepsTheSession)
{
    for (int i = 0; i < 3; ++i) {
        ASSERT_EQ(prepare(), Done);
        ASSERT_EQ(press(), Done);
    }
    EXPECT_EQ(m_portal->count("CreateSession"), 1);
    EXPECT_EQ(m_portal->keys().size(), 3 * ControlVKeys.size());
}

TEST_F(HandWrittenPortalTest, OpensANewSessionWithTheTokenWhenThePortalHasClosedTheOld)
{
    ASSERT_EQ(prepare(), Done);
    m_portal->closeSession();
    EXPECT_TRUE(waitUntil([this] { return prepare() == Done && m_portal->count("CreateSession") == 2; }));
    EXPECT_EQ(m_portal->options("SelectDevices").value(QStringLiteral("restore_token")),
        QVariant(QStringLiteral("token-1")));
    // Each token is good for one session.
    EXPECT_EQ(token().read(), QStringLiteral("token-2"));
    EXPECT_EQ(press(), Done);
    EXPECT_EQ(m_portal->keys(), ControlVKeys);
}

TEST_F(HandWrittenPortalTest, UsesTheTokenOfAnEarlierRun)
{
    token().write(QStringLiteral("of yesterday"));
    ASSERT_EQ(prepare(), Done);
    EXPECT_EQ(m_portal->options("SelectDevices").value(QStringLiteral("restore_token")),
        QVariant(QStringLiteral("of yesterday")));
}

TEST_F(HandWrittenPortalTest, TakesNoForAnAnswerAndForgetsTheToken)
{
    token().write(QStringLiteral("of yesterday"));
    m_portal->decision = Decision::Denies;
    EXPECT_EQ(prepare(), failed("the desktop's question was answered with no"));
    EXPECT_EQ(token().read(), QString());
    EXPECT_TRUE(areClosed({m_portal->sessionPath()}));
    // The next time is another time.
    m_portal->decision = Decision::Grants;
    EXPECT_EQ(prepare(), Done);
}

TEST_F(HandWrittenPortalTest, TakesAKeyboardThatIsLeftOutForNo)
{
    m_portal->decision = Decision::GrantsWithoutKeyboard;
    EXPECT_EQ(prepare(), failed("the desktop's question was answered without the keyboard"));
}

TEST_F(HandWrittenPortalTest, TakesBackAQuestionThatNobodyAnswersForAMinute)
{
    m_portal->decision = Decision::Waits;
    startToPrepare();
    ASSERT_TRUE(isAsking());
    ASSERT_TRUE(hasCaughtUp());
    m_queue.advanceBy(seconds(59));
    EXPECT_TRUE(m_said.empty());
    m_queue.advanceBy(seconds(1));
    EXPECT_TRUE(hasSaid(failed("the desktop's question was not answered")));
    EXPECT_TRUE(areClosed({m_portal->requestPath(), m_portal->sessionPath()}));
}

TEST_F(HandWrittenPortalTest, LeavesAQuestionThatThePortalEndsToTheNextService)
{
    m_portal->decision = Decision::Ends;
    EXPECT_EQ(prepare(), unavailable("a remote-desktop portal that refuses"));
}

TEST_F(HandWrittenPortalTest, NeedsAPortal)
{
    m_portal->vanish();
    ASSERT_TRUE(hasVanished());
    EXPECT_EQ(prepare(), unavailable("no remote-desktop portal"));
}

TEST_F(HandWrittenPortalTest, NeedsABus)
{
    m_client = std::make_unique<RemoteDesktopPortal>(QDBusConnection(QString()), m_queue, token());
    EXPECT_EQ(prepare(), unavailable("no remote-desktop portal"));
}

TEST_F(HandWrittenPortalTest, NeedsAPortalThatHasTheInterface)
{
    m_portal->version = 0;
    EXPECT_EQ(prepare(), unavailable("no remote-desktop portal"));
}

TEST_F(HandWrittenPortalTest, NeedsAPortalWithAKeyboard)
{
    m_portal->deviceTypes = 6;
    EXPECT_EQ(prepare(), unavailable("a remote-desktop portal that takes no keys"));
}

TEST_F(HandWrittenPortalTest, NeedsASession)
{
    m_portal->namesSession = false;
    EXPECT_EQ(prepare(), unavailable("a remote-desktop portal that refuses"));
}

TEST_F(HandWrittenPortalTest, AsksAVersionThatIsTooOldToRememberNothingAboutIt)
{
    token().write(QStringLiteral("of another portal"));
    m_portal->version = 1;
    ASSERT_EQ(prepare(), Done);
    const QVariantMap options = m_portal->options("SelectDevices");
    EXPECT_EQ(options.value(QStringLiteral("types")), QVariant(1U));
    EXPECT_FALSE(options.contains(QStringLiteral("persist_mode")));
    EXPECT_FALSE(options.contains(QStringLiteral("restore_token")));
    EXPECT_EQ(press(), Done);
}

TEST_F(HandWrittenPortalTest, WaitsTwoSecondsForAReply)
{
    for (const char *const method : {"Register", "GetAll", "CreateSession", "SelectDevices"}) {
        m_portal->silentMethod = QString::fromLatin1(method);
        const int before = m_portal->count(method);
        m_said.clear();
        startToPrepare();
        ASSERT_TRUE(waitUntil([&] { return m_portal->count(method) > before; })) << method;
        m_queue.advanceBy(milliseconds(1999));
        EXPECT_TRUE(m_said.empty()) << method;
        m_queue.advanceBy(milliseconds(1));
        EXPECT_TRUE(hasSaid(unavailable("a remote-desktop portal that does not answer"))) << method;
    }
}

TEST_F(HandWrittenPortalTest, GivesUpOnARequestThatIsNeverFinished)
{
    m_portal->unfinishedMethod = QStringLiteral("SelectDevices");
    startToPrepare();
    ASSERT_TRUE(waitUntil([this] { return m_portal->count("SelectDevices") == 1; }));
    ASSERT_TRUE(hasCaughtUp());
    m_queue.advanceBy(seconds(9));
    EXPECT_TRUE(m_said.empty());
    m_queue.advanceBy(seconds(1));
    EXPECT_TRUE(hasSaid(unavailable("a remote-desktop portal that does not answer")));
    EXPECT_TRUE(areClosed({m_portal->requestPath(), m_portal->sessionPath()}));
}

TEST_F(HandWrittenPortalTest, UnderstandsAResponseThatOvertakesTheReply)
{
    m_portal->respondsFirst = true;
    EXPECT_EQ(prepare(), Done);
    EXPECT_EQ(press(), Done);
}

TEST_F(HandWrittenPortalTest, BelievesNobodyButThePortal)
{
    m_portal->decision = Decision::Waits;
    startToPrepare();
    ASSERT_TRUE(isAsking());
    const auto stranger = BusConnection::open(m_bus.address());
    QDBusMessage forged = QDBusMessage::createSignal(m_portal->requestPath(),
        QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
    forged << 0U << QVariantMap{{QStringLiteral("devices"), 1U}};
    ASSERT_TRUE(stranger->get().send(forged));
    // Whatever came of it would be there before the end of the session.
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    const QDBusMessage reply = stranger->get().call(
        QDBusMessage::createMethodCall(bus, QStringLiteral("/"), bus, QStringLiteral("GetId")));
    ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage);
    m_portal->closeSession();
    EXPECT_TRUE(hasSaid(failed("the desktop ended the permission to press keys")));
}

TEST_F(HandWrittenPortalTest, SaysSoWhenThePortalVanishesDuringTheQuestion)
{
    m_portal->decision = Decision::Waits;
    startToPrepare();
    ASSERT_TRUE(isAsking());
    m_portal->vanish();
    EXPECT_TRUE(hasSaid(failed("the desktop's remote-desktop portal went away")));
}

TEST_F(HandWrittenPortalTest, LeavesItToTheNextServiceWhenThePortalVanishesBeforeTheQuestion)
{
    m_portal->unfinishedMethod = QStringLiteral("SelectDevices");
    startToPrepare();
    ASSERT_TRUE(waitUntil([this] { return m_portal->count("SelectDevices") > 0; }));
    m_portal->vanish();
    EXPECT_TRUE(hasSaid(unavailable("no remote-desktop portal")));
}

TEST_F(HandWrittenPortalTest, OpensANewSessionWithThePortalThatComesAfterOneThatVanished)
{
    ASSERT_EQ(prepare(), Done);
    m_portal->vanish();
    ASSERT_TRUE(hasVanished());
    m_portal = std::make_unique<HandWrittenPortal>(m_bus.address());
    EXPECT_TRUE(waitUntil([this] { return prepare() == Done && m_portal->count("CreateSession") == 1; }));
    EXPECT_EQ(m_portal->count("Register"), 1);
    EXPECT_EQ(press(), Done);
    EXPECT_EQ(m_portal->keys(), ControlVKeys);
}

TEST_F(HandWrittenPortalTest, SaysSoWhenThePortalVanishesAmongTheKeys)
{
    ASSERT_EQ(prepare(), Done);
    m_portal->silentMethod = QStringLiteral("NotifyKeyboardKeysym");
    startToPress();
    ASSERT_TRUE(waitUntil([this] { return m_portal->keys().size() == 1; }));
    m_portal->vanish();
    ASSERT_TRUE(waitUntil([this] { return !m_said.empty(); }));
    // Either end of it may be seen first.
    EXPECT_TRUE(m_said.front() == failed("the desktop's remote-desktop portal went away") ||
        m_said.front() == failed("the desktop did not take the keys"))
        << m_said.front().second;
}

TEST_F(HandWrittenPortalTest, SendsAKeyWhenTheOneBeforeItHasBeenTaken)
{
    ASSERT_EQ(prepare(), Done);
    m_portal->silentMethod = QStringLiteral("NotifyKeyboardKeysym");
    startToPress();
    ASSERT_TRUE(waitUntil([this] { return m_portal->keys().size() == 1; }));
    // A call that was under way would arrive before this one.
    ASSERT_TRUE(hasCaughtUp());
    EXPECT_EQ(m_portal->keys().size(), 1U);
    m_portal->replyAtLast();
    EXPECT_TRUE(hasSaid(Done));
    EXPECT_EQ(m_portal->keys(), ControlVKeys);
}

TEST_F(HandWrittenPortalTest, ReleasesWhatItHasPressedWhenAKeyIsRefused)
{
    ASSERT_EQ(prepare(), Done);
    m_portal->firstRefusedKey = 1;
    EXPECT_EQ(press(), failed("the desktop did not take the keys"));
    EXPECT_TRUE(areClosed({m_portal->sessionPath()}));
    const std::vector<Key> expected{{Control, 1}, {'v', 1}, {'v', 0}, {Control, 0}};
    EXPECT_EQ(m_portal->keys(), expected);
    m_portal->firstRefusedKey = -1;
    EXPECT_EQ(prepare(), Done);
    EXPECT_EQ(m_portal->count("CreateSession"), 2);
}

TEST_F(HandWrittenPortalTest, PressesNothingOnceTheSessionIsClosed)
{
    ASSERT_EQ(prepare(), Done);
    m_portal->closeSession();
    EXPECT_TRUE(waitUntil([this] { return press() != Done; }));
    EXPECT_EQ(press(), failed("the desktop ended the permission to press keys"));
}

TEST_F(HandWrittenPortalTest, TakesTheQuestionBackWhenItEnds)
{
    m_portal->decision = Decision::Waits;
    startToPrepare();
    ASSERT_TRUE(isAsking());
    m_client.reset();
    EXPECT_TRUE(areClosed({m_portal->requestPath(), m_portal->sessionPath()}));
    EXPECT_TRUE(m_said.empty());
}

TEST_F(HandWrittenPortalTest, MayEndWhenItIsReady)
{
    m_client->prepare([this](KeyPresser::Outcome, const QString &) { m_client.reset(); });
    EXPECT_TRUE(waitUntil([this] { return !m_client; }));
    EXPECT_TRUE(areClosed({m_portal->sessionPath()}));
}

} // namespace
