#include "platform/linux/BusConnection.h"
#include "platform/linux/DBusSingleInstance.h"
#include "support/MessageBus.h"
#include "support/Waiting.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusVirtualObject>

#include <gtest/gtest.h>

#include <future>

namespace
{

using Claim = SingleInstance::Claim;

const QString Name = QStringLiteral("org.larkspool.Larkspool");
const QString Path = QStringLiteral("/org/larkspool/Larkspool");
const QString Interface = QStringLiteral("org.freedesktop.Application");

/// A variable of this process's environment for as long as it lives.
class Variable
{
public:
    Variable(const char *name, const QByteArray &value)
        : m_name(name)
    {
        qputenv(name, value);
    }
    ~Variable() { qunsetenv(m_name); }
    Variable(const Variable &) = delete;
    Variable &operator=(const Variable &) = delete;

private:
    const char *m_name;
};

/// Another program that has taken the name, and does not answer calls.
class SilentOwner : public QDBusVirtualObject
{
public:
    explicit SilentOwner(const QByteArray &address)
        : m_bus(BusConnection::open(address))
    {
        m_bus->get().registerVirtualObject(Path, this);
        m_bus->get().registerService(Name);
    }

    int callCount() const { return m_callCount; }
    void end()
    {
        m_bus->get().unregisterObject(Path);
        m_bus.reset();
    }

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &, const QDBusConnection &) override
    {
        ++m_callCount;
        return true;
    }

private:
    std::unique_ptr<BusConnection> m_bus;
    int m_callCount = 0;
};

/// Instances on a bus of their own. The later ones run in a thread, as the first has to answer them.
class SingleInstanceTest : public ::testing::Test
{
protected:
    SingleInstanceTest() { EXPECT_TRUE(m_bus.isRunning()); }

    MessageBus &bus() { return m_bus; }

    std::unique_ptr<SingleInstance> instance() const
    {
        return std::make_unique<DBusSingleInstance>(m_bus.address());
    }

    /// An instance that is ours and notes the tokens that it gets.
    std::unique_ptr<SingleInstance> firstInstance()
    {
        auto first = instance();
        EXPECT_EQ(first->claim(), Claim::Ours);
        first->onActivate = [this](const QString &token) { noteActivation(token); };
        return first;
    }
    void noteActivation(const QString &token)
    {
        m_tokens.append(token);
        // As the toolkit does; what is left would be the proof of the next instance, which runs in the same
        // process here.
        qunsetenv("XDG_ACTIVATION_TOKEN");
    }

    std::future<Claim> claimInThread() const
    {
        return std::async(std::launch::async, [this] { return instance()->claim(); });
    }

    static Claim outcome(std::future<Claim> &claim)
    {
        EXPECT_TRUE(
            waitUntil([&] { return claim.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
        return claim.get();
    }

    Claim nextClaim() const
    {
        auto claim = claimInThread();
        return outcome(claim);
    }

    /// Sends a call from a connection of its own; the reply, once it is there.
    QDBusMessage reply(
        const QString &method, const QVariantList &arguments, const QString &interface = Interface)
    {
        const auto pending = send(method, arguments, interface);
        EXPECT_TRUE(waitUntil([&] { return pending.isFinished(); }));
        return pending.reply();
    }

    QDBusPendingReply<> send(
        const QString &method, const QVariantList &arguments, const QString &interface = Interface)
    {
        if (!m_client)
            m_client = BusConnection::open(m_bus.address());
        QDBusMessage call = QDBusMessage::createMethodCall(Name, Path, interface, method);
        call.setArguments(arguments);
        return m_client->get().asyncCall(call);
    }

    bool hasTokens(const QStringList &tokens) const
    {
        return waitUntil([&] { return m_tokens.size() >= tokens.size(); }) && m_tokens == tokens;
    }
    QStringList &tokens() { return m_tokens; }

private:
    MessageBus m_bus;
    std::unique_ptr<BusConnection> m_client;
    QStringList m_tokens;
};

TEST_F(SingleInstanceTest, TheFirstIsOursAndTheNextHandsOver)
{
    const auto first = firstInstance();
    EXPECT_EQ(nextClaim(), Claim::HandedOver);
    EXPECT_TRUE(hasTokens({QString()}));
    EXPECT_EQ(nextClaim(), Claim::HandedOver);
    EXPECT_TRUE(hasTokens({QString(), QString()}));
}

TEST_F(SingleInstanceTest, TheActivationTokenComesAlong)
{
    const Variable token("XDG_ACTIVATION_TOKEN", "token-1");
    const Variable startupId("DESKTOP_STARTUP_ID", "startup_TIME1");
    const auto first = firstInstance();
    EXPECT_EQ(nextClaim(), Claim::HandedOver);
    EXPECT_TRUE(hasTokens({QStringLiteral("token-1")}));
}

TEST_F(SingleInstanceTest, TheStartupIdStandsInForTheToken)
{
    const Variable startupId("DESKTOP_STARTUP_ID", "startup_TIME1");
    const auto first = firstInstance();
    EXPECT_EQ(nextClaim(), Claim::HandedOver);
    EXPECT_TRUE(hasTokens({QStringLiteral("startup_TIME1")}));
}

TEST_F(SingleInstanceTest, TheTokenIsTheOneOfTheInstancesStart)
{
    const auto first = firstInstance();
    std::unique_ptr<SingleInstance> second;
    {
        const Variable token("XDG_ACTIVATION_TOKEN", "at the start");
        second = instance();
    }
    auto claim = std::async(std::launch::async, [&] { return second->claim(); });
    EXPECT_EQ(outcome(claim), Claim::HandedOver);
    EXPECT_TRUE(hasTokens({QStringLiteral("at the start")}));
}

TEST_F(SingleInstanceTest, TheTokenIsOfferedToTheToolkitBeforeTheActivation)
{
    const Variable ofAnEarlierOne("XDG_ACTIVATION_TOKEN", "out of date");
    const auto first = firstInstance();
    QStringList offered;
    first->onActivate = [&](const QString &) {
        offered.append(qEnvironmentVariable("XDG_ACTIVATION_TOKEN", QStringLiteral("none")));
    };
    const auto activateWith = [&](const QVariantMap &data) {
        const qsizetype before = offered.size();
        reply(QStringLiteral("Activate"), {data});
        return waitUntil([&] { return offered.size() == before + 1; });
    };
    ASSERT_TRUE(activateWith({{QStringLiteral("activation-token"), QStringLiteral("token-1")},
        {QStringLiteral("desktop-startup-id"), QStringLiteral("startup_TIME1")}}));
    ASSERT_TRUE(activateWith({{QStringLiteral("desktop-startup-id"), QStringLiteral("startup_TIME2")}}));
    ASSERT_TRUE(activateWith({}));
    EXPECT_EQ(offered,
        (QStringList{QStringLiteral("token-1"), QStringLiteral("startup_TIME2"), QStringLiteral("none")}));
}

TEST_F(SingleInstanceTest, CallsDuringTheStartWaitAndCountAsOne)
{
    const auto first = instance();
    ASSERT_EQ(first->claim(), Claim::Ours);
    for (const char *token : {"one", "two"}) {
        const QVariantMap data{{QStringLiteral("activation-token"), QString::fromLatin1(token)}};
        EXPECT_EQ(reply(QStringLiteral("Activate"), {data}).type(), QDBusMessage::ReplyMessage);
    }
    first->onActivate = [this](const QString &token) { noteActivation(token); };
    ASSERT_TRUE(hasTokens({QStringLiteral("two")}));
    // The next one is one of its own, and the only one.
    EXPECT_EQ(nextClaim(), Claim::HandedOver);
    EXPECT_TRUE(hasTokens({QStringLiteral("two"), QString()}));
}

TEST_F(SingleInstanceTest, DestroyingItLetsTheNextIn)
{
    auto first = firstInstance();
    first.reset();
    // The bus hears of the end a moment later.
    EXPECT_TRUE(waitUntil([this] { return instance()->claim() == Claim::Ours; }));
}

TEST_F(SingleInstanceTest, AnOwnerThatDoesNotAnswerIsAFailure)
{
    // Its thread is this one, which waits.
    const auto first = firstInstance();
    EXPECT_EQ(instance()->claim(), Claim::Failed);
}

TEST_F(SingleInstanceTest, AnOwnerThatRefusesIsAFailure)
{
    const auto other = BusConnection::open(bus().address());
    ASSERT_TRUE(other->get().registerService(Name));
    EXPECT_EQ(nextClaim(), Claim::Failed);
}

TEST_F(SingleInstanceTest, AnOwnerThatEndsInsteadOfAnsweringIsSucceeded)
{
    SilentOwner owner(bus().address());
    auto claim = claimInThread();
    ASSERT_TRUE(waitUntil([&] { return owner.callCount() == 1; }));
    owner.end();
    EXPECT_EQ(outcome(claim), Claim::Ours);
}

TEST_F(SingleInstanceTest, OpenIsTheSameAsActivate)
{
    const auto first = firstInstance();
    const QVariantMap data{{QStringLiteral("activation-token"), QStringLiteral("token")}};
    const QStringList files{QStringLiteral("file:///tmp/file")};
    EXPECT_EQ(reply(QStringLiteral("Open"), {files, data}).type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(hasTokens({QStringLiteral("token")}));
}

TEST_F(SingleInstanceTest, ThereAreNoActions)
{
    const auto first = firstInstance();
    const QDBusMessage answer = reply(QStringLiteral("ActivateAction"),
        {QStringLiteral("quit"), QVariantList{QStringLiteral("now")}, QVariantMap()});
    EXPECT_EQ(QDBusError(answer).type(), QDBusError::InvalidArgs);
    const QDBusMessage wrong = reply(QStringLiteral("Activate"), {QStringLiteral("no platform data")});
    EXPECT_EQ(QDBusError(wrong).type(), QDBusError::UnknownMethod);
    // Whatever these had set off would be there before the reply to this one.
    EXPECT_EQ(nextClaim(), Claim::HandedOver);
    EXPECT_TRUE(hasTokens({QString()}));
}

TEST_F(SingleInstanceTest, ItsInterfaceIsDescribedAsTheStandardHasIt)
{
    const auto first = firstInstance();
    const QDBusMessage answer =
        reply(QStringLiteral("Introspect"), {}, QStringLiteral("org.freedesktop.DBus.Introspectable"));
    const QString text = answer.arguments().value(0).toString();
    const qsizetype start = text.indexOf(QStringLiteral("\"org.freedesktop.Application\""));
    ASSERT_GE(start, 0);
    QStringList types;
    for (const QString &part : text.mid(start).split(QStringLiteral("type=\"")).mid(1))
        types.append(part.section(QLatin1Char('"'), 0, 0));
    EXPECT_EQ(types.mid(0, 6).join(QLatin1Char(' ')), QStringLiteral("a{sv} as a{sv} s av a{sv}"));
}

TEST_F(SingleInstanceTest, WithoutABusNothingIsKnown)
{
    bus().end();
    EXPECT_EQ(instance()->claim(), Claim::Unknown);
}

TEST_F(SingleInstanceTest, TheEndOfTheBusChangesNothing)
{
    const auto first = firstInstance();
    EXPECT_EQ(nextClaim(), Claim::HandedOver);
    EXPECT_TRUE(hasTokens({QString()}));
    bus().end();
    EXPECT_EQ(nextClaim(), Claim::Unknown);
    EXPECT_EQ(tokens().size(), 1);
}

} // namespace
