#include "platform/linux/AccessibilityKeys.h"

#include "support/KeyRobot.h"
#include "support/MessageBus.h"
#include "support/TestProgram.h"
#include "support/Waiting.h"
#include "support/XServer.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <linux/input-event-codes.h>

#include <gtest/gtest.h>

namespace
{

using Outcome = KeyPresser::Outcome;

const char *const Launcher = "/usr/libexec/at-spi-bus-launcher";
constexpr int XkbOffset = 8;
constexpr int ShiftBit = 1 << 0;
constexpr int ControlBit = 1 << 2;
// Without Mod5: the server sets it for plain clients while another group than the first is active.
constexpr int ModifierBits = 0x7f;
constexpr int DvorakV = KEY_DOT;

/// The desktop's own accessibility service on a bus and a display of a test's own, and a program that has the
/// keyboard focus.
class AccessibilityKeysTest : public ::testing::Test
{
protected:
    AccessibilityKeysTest()
    {
        // The accessibility bus has its socket there.
        qputenv("XDG_RUNTIME_DIR", m_runtimeFolder.path().toUtf8());
        m_bus = std::make_unique<MessageBus>();
        m_connection = BusConnection::open(m_bus->address());
        makeKeys();
        m_program.show(TestProgram::Focus::Takes);
    }
    ~AccessibilityKeysTest() override { qunsetenv("XDG_RUNTIME_DIR"); }

    void SetUp() override
    {
        if (!QFileInfo(QString::fromLatin1(Launcher)).isExecutable() && !qEnvironmentVariableIsSet("CI"))
            GTEST_SKIP() << "at-spi2-core is not installed";
    }

    void installService() { m_bus->addService("org.a11y.Bus", Launcher); }
    void makeKeys()
    {
        m_keys = std::make_unique<AccessibilityKeys>(
            m_connection->get(), m_queue, [this] { return m_canPressKeys; });
    }

    template<class Call>
    Outcome outcome(Call call)
    {
        std::optional<Outcome> said;
        call([&said, this](Outcome outcome, const QString &reason) {
            said = outcome;
            m_reason = reason;
        });
        EXPECT_TRUE(waitUntil([&said] { return said.has_value(); }));
        return said.value_or(Outcome::Failed);
    }
    Outcome prepare()
    {
        return outcome([this](auto callback) { m_keys->prepare(callback); });
    }
    Outcome press(PasteChord chord)
    {
        return outcome([this, chord](auto callback) { m_keys->press(keyChord(chord), callback); });
    }

    /// Whether this key comes next, and no other, with these modifiers.
    ::testing::AssertionResult arrives(int evdevCode, int modifiers)
    {
        if (!waitUntil([this] { return m_program.keyReleaseCount() > m_releaseCount; }))
            return ::testing::AssertionFailure() << "no key";
        m_releaseCount = m_program.keyReleaseCount();
        const auto keys = m_program.keyPresses();
        m_program.forgetKeyPresses();
        if (keys.size() != 1)
            return ::testing::AssertionFailure() << keys.size() << " keys";
        if (keys.front().keyCode != evdevCode + XkbOffset || (keys.front().state & ModifierBits) != modifiers)
            return ::testing::AssertionFailure()
                << "key " << keys.front().keyCode << ", state " << keys.front().state;
        return ::testing::AssertionSuccess();
    }

    XServer m_server;
    QTemporaryDir m_runtimeFolder;
    std::unique_ptr<MessageBus> m_bus;
    std::unique_ptr<BusConnection> m_connection;
    EventLoopQueue m_queue;
    bool m_canPressKeys = true;
    std::unique_ptr<AccessibilityKeys> m_keys;
    TestProgram m_program{"editor", "Editor"};
    QString m_reason;

private:
    int m_releaseCount = 0;
};

TEST_F(AccessibilityKeysTest, TheChordArrivesInTheFocusedProgram)
{
    installService();
    ASSERT_EQ(prepare(), Outcome::Done);
    ASSERT_EQ(press(PasteChord::ControlV), Outcome::Done);
    EXPECT_TRUE(arrives(KEY_V, ControlBit));
    ASSERT_EQ(prepare(), Outcome::Done);
    ASSERT_EQ(press(PasteChord::ControlShiftV), Outcome::Done);
    EXPECT_TRUE(arrives(KEY_V, ControlBit | ShiftBit));
    ASSERT_EQ(press(PasteChord::ShiftInsert), Outcome::Done);
    EXPECT_TRUE(arrives(KEY_INSERT, ShiftBit));
}

TEST_F(AccessibilityKeysTest, NoModifierStaysBehind)
{
    installService();
    ASSERT_EQ(prepare(), Outcome::Done);
    ASSERT_EQ(press(PasteChord::ControlShiftV), Outcome::Done);
    ASSERT_TRUE(arrives(KEY_V, ControlBit | ShiftBit));
    KeyRobot().chord({KEY_A});
    EXPECT_TRUE(arrives(KEY_A, 0));
}

TEST_F(AccessibilityKeysTest, TheKeyIsFoundByItsSymbol)
{
    ASSERT_TRUE(
        KeyRobot().setLayout({QStringLiteral("us"), QStringLiteral("-variant"), QStringLiteral("dvorak")}));
    installService();
    ASSERT_EQ(prepare(), Outcome::Done);
    ASSERT_EQ(press(PasteChord::ControlV), Outcome::Done);
    EXPECT_TRUE(arrives(DvorakV, ControlBit));
}

TEST_F(AccessibilityKeysTest, WithoutTheServiceItSaysSo)
{
    EXPECT_EQ(prepare(), Outcome::Unavailable);
    EXPECT_EQ(m_reason, QStringLiteral("no accessibility service that presses keys"));
}

TEST_F(AccessibilityKeysTest, WithoutAServerThatTakesKeysTheServiceIsNotAsked)
{
    installService();
    m_canPressKeys = false;
    EXPECT_EQ(prepare(), Outcome::Unavailable);
    EXPECT_EQ(m_reason, QStringLiteral("no accessibility service that presses keys"));
}

TEST_F(AccessibilityKeysTest, WithoutABusItSaysSo)
{
    m_bus->end();
    EXPECT_EQ(prepare(), Outcome::Unavailable);
}

TEST_F(AccessibilityKeysTest, ItMayEndWhileItConnects)
{
    installService();
    bool isDone = false;
    m_keys->prepare([&isDone](Outcome, const QString &) { isDone = true; });
    m_keys.reset();
    makeKeys();
    EXPECT_EQ(prepare(), Outcome::Done);
    EXPECT_FALSE(isDone);
}

} // namespace
