#include "platform/linux/PortalHotKeyCenter.h"
#include "platform/linux/DesktopHotKeys.h"

#include "contract/TestShortcutsPortal.h"
#include "fakes/ManualMainQueue.h"
#include "services/HotkeyService.h"
#include "support/CapturedConsole.h"
#include "support/MessageBus.h"
#include "support/Waiting.h"

#include <QDBusConnectionInterface>

#include <gtest/gtest.h>

namespace
{

using Decision = TestShortcutsPortal::Decision;

constexpr quint32 V = 9;
constexpr quint32 CommandShift = CommandKey | ShiftKey;
const QString CommandShiftV = QStringLiteral("LOGO+SHIFT+v");
constexpr const char *TokenVariable = "XDG_ACTIVATION_TOKEN";

/// A value of this process's environment, put back at the end.
class Variable
{
public:
    Variable(const char *name, const QByteArray &value)
        : m_name(name)
        , m_wasSet(qEnvironmentVariableIsSet(name))
        , m_before(qgetenv(name))
    {
        qputenv(name, value);
    }
    ~Variable()
    {
        if (m_wasSet)
            qputenv(m_name, m_before);
        else
            qunsetenv(m_name);
    }
    Variable(const Variable &) = delete;
    Variable &operator=(const Variable &) = delete;

private:
    const char *m_name;
    bool m_wasSet;
    QByteArray m_before;
};

/// The hot keys of a desktop with a portal that is written by hand. Deadlines are the test's to let pass.
class PortalHotKeyCenterTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_bus.isRunning());
        m_portal = std::make_unique<TestShortcutsPortal>(m_bus.address());
        m_center = std::make_unique<PortalHotKeyCenter>(m_bus.address(), m_queue);
        ASSERT_TRUE(m_center->isConnected());
        m_center->installEventHandler([this] { ++m_pressCount; });
        m_center->installFailureHandler([this](int status) { m_failures.push_back(status); });
    }

    HotKeyRegistration claim(quint32 keyCode = V, quint32 modifiers = CommandShift)
    {
        return m_center->registerEventHotKey(keyCode, modifiers, {0, 1});
    }
    bool isAnswered(int count = 1)
    {
        return waitUntil([&] {
            m_queue.drain();
            return m_portal->answerCount() == count;
        });
    }
    /// Whether the portal has said yes, as many times as this in all, and the center has heard it.
    bool isHeld(int count = 1, const QString &trigger = CommandShiftV)
    {
        if (!isAnswered(count))
            return false;
        const int before = m_pressCount;
        m_portal->press(trigger);
        return waitUntil([&] { return m_pressCount == before + 1; });
    }
    bool hasFailed(int status)
    {
        return waitUntil([&] {
            m_queue.drain();
            return !m_failures.empty();
        }) &&
            m_failures == std::vector<int>{status};
    }

    MessageBus m_bus;
    ManualMainQueue m_queue;
    std::unique_ptr<TestShortcutsPortal> m_portal;
    std::unique_ptr<PortalHotKeyCenter> m_center;
    int m_pressCount = 0;
    std::vector<int> m_failures;
};

TEST_F(PortalHotKeyCenterTest, TellsTheUserWhatTheHotKeyDoes)
{
    const auto hotKey = claim();
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(m_portal->sessions().front().description, QStringLiteral("Show the clipboard history"));
    EXPECT_EQ(m_portal->sessions().front().trigger, CommandShiftV);
}

TEST_F(PortalHotKeyCenterTest, TheTokenOfThePressIsOfferedWhenTheHandlerRuns)
{
    const Variable before(TokenVariable, "of yesterday");
    std::vector<std::string> offered;
    m_center->installEventHandler([&] { offered.push_back(qgetenv(TokenVariable).toStdString()); });
    const auto hotKey = claim();
    ASSERT_TRUE(isAnswered());
    m_portal->press(CommandShiftV, {{QStringLiteral("activation_token"), QStringLiteral("token-1")}});
    m_portal->press(CommandShiftV);
    ASSERT_TRUE(waitUntil([&] { return offered.size() == 2; }));
    EXPECT_EQ(offered, (std::vector<std::string>{"token-1", ""}));
    EXPECT_FALSE(qEnvironmentVariableIsSet(TokenVariable));
}

TEST_F(PortalHotKeyCenterTest, ADesktopWithoutThePortalHasNoHotKeys)
{
    m_portal->version = 0;
    const auto hotKey = claim();
    EXPECT_EQ(hotKey.status, HotKeyRegistered);
    EXPECT_TRUE(hasFailed(HotKeyUnavailable));
}

TEST_F(PortalHotKeyCenterTest, AUserWhoRefusesIsNotAskedAgain)
{
    m_portal->decision = Decision::Denies;
    auto hotKey = claim();
    EXPECT_EQ(hotKey.status, HotKeyRegistered);
    EXPECT_TRUE(hasFailed(HotKeyExists));
    hotKey.ref.reset();
    m_queue.advanceBy(std::chrono::hours(1));
    EXPECT_EQ(m_portal->count("BindShortcuts"), 1);
    EXPECT_EQ(m_failures.size(), 1U);
}

TEST_F(PortalHotKeyCenterTest, ARefusedCombinationMayBeRegisteredFromTheHandler)
{
    m_portal->decision = Decision::Denies;
    HotKeyRegistration again;
    m_center->installFailureHandler([&](int) {
        m_portal->decision = Decision::Grants;
        again = claim();
    });
    auto hotKey = claim();
    ASSERT_TRUE(isAnswered(2));
    EXPECT_EQ(again.status, HotKeyRegistered);
    // The refused one holds nothing that its end could take away.
    hotKey.ref.reset();
    EXPECT_TRUE(isHeld(2));
}

TEST_F(PortalHotKeyCenterTest, ARegistrationThatIsReleasedBeforeTheAnswerDoesNotFail)
{
    m_portal->decision = Decision::Waits;
    auto hotKey = claim();
    ASSERT_TRUE(waitUntil([&] { return m_portal->count("BindShortcuts") == 1; }));
    hotKey.ref.reset();
    m_portal->decision = Decision::Denies;
    m_portal->respond();
    // The next one is answered after it.
    m_portal->decision = Decision::Grants;
    const auto next = claim();
    ASSERT_TRUE(isHeld(2));
    m_queue.advanceBy(std::chrono::hours(1));
    EXPECT_TRUE(m_failures.empty());
}

TEST_F(PortalHotKeyCenterTest, ANewCombinationHasANewSessionAndTheOldOneIsClosedBefore)
{
    auto hotKey = claim();
    ASSERT_TRUE(isHeld());
    const QString first = m_portal->sessions().front().path;
    const QString id = m_portal->sessions().front().id;
    hotKey.ref.reset();
    hotKey = claim(V, CommandKey);
    ASSERT_TRUE(isHeld(2, QStringLiteral("LOGO+v")));
    EXPECT_TRUE(m_portal->closedPaths() == QStringList{first});
    ASSERT_EQ(m_portal->sessions().size(), 1U);
    // A desktop that does not know the program keeps its shortcuts by the session's name.
    EXPECT_EQ(m_portal->sessions().front().path, first);
    EXPECT_EQ(m_portal->sessions().front().trigger, QStringLiteral("LOGO+v"));
    // Under another id: the desktop remembers which keys belong to the old one.
    EXPECT_NE(m_portal->sessions().front().id, id);
    const QStringList order{QStringLiteral("Register"), QStringLiteral("GetAll"),
        QStringLiteral("CreateSession"), QStringLiteral("BindShortcuts"), QStringLiteral("Close"),
        QStringLiteral("GetAll"), QStringLiteral("CreateSession"), QStringLiteral("BindShortcuts")};
    EXPECT_TRUE(m_portal->methods() == order) << m_portal->methods().join(QLatin1Char(' ')).toStdString();
}

TEST_F(PortalHotKeyCenterTest, TheSameCombinationKeepsItsId)
{
    auto hotKey = claim();
    ASSERT_TRUE(isAnswered());
    const QString id = m_portal->sessions().front().id;
    hotKey.ref.reset();
    hotKey = claim();
    ASSERT_TRUE(isAnswered(2));
    EXPECT_EQ(m_portal->sessions().front().id, id);
}

TEST_F(PortalHotKeyCenterTest, ASessionThatIsLeftOverFromAKilledPortalIsReplacedOnAnotherConnection)
{
    const auto hotKey = claim();
    ASSERT_TRUE(isHeld());
    for (int restarts = 0; restarts < 2; ++restarts) {
        const QString leftOver = m_portal->sessions().front().path;
        m_portal->vanish();
        m_portal = std::make_unique<TestShortcutsPortal>(m_bus.address());
        m_portal->leaveOver(leftOver);
        ASSERT_TRUE(isHeld());
        ASSERT_EQ(m_portal->sessions().size(), 1U);
        EXPECT_NE(m_portal->sessions().front().path, leftOver);
        EXPECT_TRUE(m_portal->sessions().front().path.endsWith(QStringLiteral("/larkspool")));
        EXPECT_EQ(m_portal->count("Register"), 2);
    }
    EXPECT_TRUE(m_failures.empty());
}

TEST_F(PortalHotKeyCenterTest, AHandlerMayEndTheCenter)
{
    m_center->installEventHandler([this] { m_center.reset(); });
    const auto hotKey = claim();
    ASSERT_TRUE(isAnswered());
    m_portal->press(CommandShiftV);
    EXPECT_TRUE(waitUntil([this] { return !m_center; }));
}

TEST_F(PortalHotKeyCenterTest, WithoutABusThereAreNoHotKeys)
{
    m_bus.end();
    HotKeyRegistration hotKey;
    EXPECT_TRUE(waitUntil([&] {
        hotKey = {};
        hotKey = claim();
        return hotKey.status != HotKeyRegistered;
    }));
    EXPECT_EQ(hotKey.status, HotKeyUnavailable);
    EXPECT_EQ(hotKey.ref, nullptr);
}

TEST_F(PortalHotKeyCenterTest, AServiceWhoseHotKeyIsRefusedLaterPrintsTheStatusOnce)
{
    m_portal->decision = Decision::Denies;
    HotkeyService service(*m_center);
    CapturedConsole console;
    service.registerHotkey({V, CommandShift}, [] {});
    EXPECT_TRUE(service.isRegistered());
    EXPECT_TRUE(waitUntil([&] {
        m_queue.drain();
        return !service.isRegistered();
    }));
    m_queue.advanceBy(std::chrono::hours(1));
    EXPECT_EQ(console.output(), "Failed to register hotkey: -9878\n");
}

TEST(PortalHotKeyCenterFactory, NeedsASessionBus)
{
    ManualMainQueue queue;
    const Variable address("DBUS_SESSION_BUS_ADDRESS", "");
    const Variable folder("XDG_RUNTIME_DIR", "");
    EXPECT_EQ(platform::makePortalHotKeyCenter(queue), nullptr);
    MessageBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address());
    EXPECT_NE(platform::makePortalHotKeyCenter(queue), nullptr);
}

} // namespace
