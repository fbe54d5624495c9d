#include "platform/linux/SessionBus.h"
#include "platform/linux/BusConnection.h"
#include "support/MessageBus.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{

constexpr std::chrono::seconds Patience{10};
constexpr std::chrono::milliseconds Impatience{50};

/// The variables that lead to the bus, as they were before when it is gone.
class Environment
{
public:
    Environment(const QByteArray &address, const QByteArray &runtimeFolder)
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        qputenv("XDG_RUNTIME_DIR", runtimeFolder);
    }
    ~Environment()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_address);
        qputenv("XDG_RUNTIME_DIR", m_runtimeFolder);
    }
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;

private:
    QByteArray m_address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    QByteArray m_runtimeFolder = qgetenv("XDG_RUNTIME_DIR");
};

TEST(SessionBusTest, ItsAddressIsTheOneThatIsSet)
{
    const Environment environment("unix:path=/somewhere,guid=1", "/run/user/1000");
    EXPECT_EQ(sessionbus::address(), "unix:path=/somewhere,guid=1");
}

TEST(SessionBusTest, OtherwiseItIsTheSocketInTheRuntimeFolder)
{
    QTemporaryDir folder;
    const Environment environment("", folder.path().toUtf8());
    EXPECT_EQ(sessionbus::address(), "");
    QFile socket(folder.filePath(QStringLiteral("bus")));
    ASSERT_TRUE(socket.open(QIODevice::WriteOnly));
    EXPECT_EQ(sessionbus::address(), "unix:path=" + folder.path().toUtf8() + "/bus");
}

TEST(SessionBusTest, ThereIsNoneWithoutAnyVariable)
{
    const Environment environment("", "");
    EXPECT_EQ(sessionbus::address(), "");
    EXPECT_FALSE(sessionbus::answers("", Patience));
}

TEST(SessionBusTest, ABusAnswers)
{
    const MessageBus bus;
    EXPECT_TRUE(sessionbus::answers(bus.address(), Patience));
    EXPECT_TRUE(sessionbus::answers(bus.address() + ";unix:path=/no/such/socket", Patience));
    // Any character of a value may be written as a percent sign and two digits.
    QByteArray escaped = bus.address();
    EXPECT_TRUE(sessionbus::answers(escaped.replace("/bus", "%2fbus"), Patience));
}

TEST(SessionBusTest, ABusThatHangsDoesNot)
{
    MessageBus bus;
    bus.freeze();
    EXPECT_FALSE(sessionbus::answers(bus.address(), Impatience));
    bus.thaw();
    EXPECT_TRUE(sessionbus::answers(bus.address(), Patience));
}

TEST(SessionBusTest, ABusThatHasEndedDoesNot)
{
    MessageBus bus;
    const QByteArray address = bus.address();
    bus.end();
    EXPECT_FALSE(sessionbus::answers(address, Patience));
    EXPECT_FALSE(sessionbus::answers("unix:path=/no/such/socket", Patience));
    EXPECT_FALSE(sessionbus::answers("unix:abstract=/no/such/socket", Patience));
    EXPECT_FALSE(sessionbus::answers("unix:path=" + QByteArray(200, 'x'), Patience));
}

TEST(SessionBusTest, ABusElsewhereIsTakenToAnswer)
{
    EXPECT_TRUE(sessionbus::answers("tcp:host=localhost,port=9", Impatience));
}

TEST(SessionBusTest, DoingWithoutLeavesAnAddressThatFailsAtOnce)
{
    const MessageBus bus;
    const Environment environment(bus.address(), "");
    sessionbus::doWithout();
    EXPECT_NE(sessionbus::address(), bus.address());
    EXPECT_EQ(BusConnection::open(sessionbus::address()), nullptr);
}

} // namespace
