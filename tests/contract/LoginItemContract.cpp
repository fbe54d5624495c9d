#include "contract/LoginItemContract.h"

#include "support/Waiting.h"

#include <ostream>

namespace
{

using Outcome = std::optional<std::string>;
const Outcome Succeeds = std::string();

std::string reasonOf(const Result<Success> &outcome)
{
    return outcome ? std::string() : outcome.error().description.toStdString();
}

} // namespace

void PrintTo(const LoginItemBackend &backend, std::ostream *stream)
{
    *stream << backend.name;
}

void LoginItemContract::SetUp()
{
    m_world = GetParam().makeWorld();
    if (!m_world->isUsable() && !qEnvironmentVariableIsSet("CI"))
        GTEST_SKIP() << "dbus-daemon is not installed";
    ASSERT_TRUE(m_world->isUsable());
}

bool LoginItemContract::waitFor(const std::function<bool()> &condition)
{
    return waitUntil([&] {
        m_world->catchUp();
        return condition();
    });
}

std::optional<std::string> LoginItemContract::registerItem()
{
    Outcome said;
    item().registerItem([&said](const Result<Success> &outcome) { said = reasonOf(outcome); });
    waitFor([&said] { return said.has_value(); });
    return said;
}

std::optional<std::string> LoginItemContract::unregisterItem()
{
    Outcome said;
    item().unregisterItem([&said](const Result<Success> &outcome) { said = reasonOf(outcome); });
    waitFor([&said] { return said.has_value(); });
    return said;
}

TEST_P(LoginItemContract, WhatIsRegisteredIsStartedAtLoginUntilItIsUnregistered)
{
    EXPECT_FALSE(world().isRegistered());
    EXPECT_EQ(registerItem(), Succeeds);
    EXPECT_TRUE(world().isRegistered());
    EXPECT_EQ(unregisterItem(), Succeeds);
    EXPECT_FALSE(world().isRegistered());
}

TEST_P(LoginItemContract, WhatIsSoAlreadySucceeds)
{
    EXPECT_EQ(unregisterItem(), Succeeds);
    EXPECT_FALSE(world().isRegistered());
    EXPECT_EQ(registerItem(), Succeeds);
    EXPECT_EQ(registerItem(), Succeeds);
    EXPECT_TRUE(world().isRegistered());
}

TEST_P(LoginItemContract, OfSeveralRequestsTheLastDecidesAndEachIsAnsweredOnceInOrder)
{
    std::vector<int> answered;
    const auto note = [&answered](int number) {
        return [&answered, number](const Result<Success> &outcome) {
            EXPECT_TRUE(outcome);
            answered.push_back(number);
        };
    };
    item().registerItem(note(1));
    item().unregisterItem(note(2));
    item().registerItem(note(3));
    EXPECT_TRUE(waitFor([&answered] { return answered.size() >= 3; }));
    EXPECT_EQ(answered, (std::vector<int>{1, 2, 3}));
    EXPECT_TRUE(world().isRegistered());
}

TEST_P(LoginItemContract, AFailureSaysWhyInOneLineAndLeavesThingsAsTheyWere)
{
    world().refuse();
    const Outcome outcome = registerItem();
    ASSERT_TRUE(outcome);
    EXPECT_FALSE(outcome->empty());
    EXPECT_EQ(outcome->find('\n'), std::string::npos);
    EXPECT_FALSE(world().isRegistered());
}

TEST_P(LoginItemContract, TheNextRequestAfterAFailureIsAnother)
{
    world().refuse();
    const Outcome outcome = registerItem();
    ASSERT_TRUE(outcome);
    EXPECT_NE(outcome, Succeeds);
    world().allow();
    EXPECT_EQ(registerItem(), Succeeds);
    EXPECT_TRUE(world().isRegistered());
}

TEST_P(LoginItemContract, TheCallbackMayMakeTheNextRequest)
{
    bool isDone = false;
    item().registerItem([&](const Result<Success> &) {
        item().unregisterItem([&](const Result<Success> &outcome) {
            EXPECT_TRUE(outcome);
            isDone = true;
        });
    });
    EXPECT_TRUE(waitFor([&isDone] { return isDone; }));
    EXPECT_FALSE(world().isRegistered());
}

TEST_P(LoginItemContract, TheCallbackMayEndTheItem)
{
    int count = 0;
    item().registerItem([&](const Result<Success> &) {
        ++count;
        world().endItem();
    });
    EXPECT_TRUE(waitFor([&count] { return count > 0; }));
    world().catchUp();
    EXPECT_EQ(count, 1);
    EXPECT_TRUE(world().isRegistered());
}

TEST_P(LoginItemContract, NothingIsSaidAfterItsEnd)
{
    int count = 0;
    item().registerItem([&count](const Result<Success> &) { ++count; });
    const int before = count;
    world().endItem();
    world().catchUp();
    EXPECT_EQ(count, before);
}
