#include "platform/linux/ActivationToken.h"

#include <gtest/gtest.h>

namespace
{

constexpr const char *Variable = "XDG_ACTIVATION_TOKEN";

class ActivationToken : public ::testing::Test
{
protected:
    ~ActivationToken() override { qunsetenv(Variable); }
};

TEST_F(ActivationToken, IsThereForTheToolkitToTake)
{
    offerActivationToken(QStringLiteral("token-1"));
    EXPECT_EQ(qgetenv(Variable), "token-1");
    offerActivationToken(QStringLiteral("token-2"));
    EXPECT_EQ(qgetenv(Variable), "token-2");
}

TEST_F(ActivationToken, AnEmptyOneWithdrawsTheOneBefore)
{
    offerActivationToken(QStringLiteral("token-1"));
    offerActivationToken(QString());
    EXPECT_FALSE(qEnvironmentVariableIsSet(Variable));
}

} // namespace
