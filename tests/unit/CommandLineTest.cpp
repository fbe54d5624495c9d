#include "app/CommandLine.h"

#include <gtest/gtest.h>

namespace
{

TEST(CommandLine, SaysItsVersionForEitherName)
{
    const QString version = QStringLiteral("larkspool " LARKSPOOL_VERSION);
    EXPECT_EQ(commandline::answer({QStringLiteral("--version")}), version);
    EXPECT_EQ(commandline::answer({QStringLiteral("-v")}), version);
}

TEST(CommandLine, TheHelpNamesEveryOption)
{
    for (const QString &asked : {QStringLiteral("--help"), QStringLiteral("-h")}) {
        const QString help = commandline::answer({asked}).value_or(QString());
        EXPECT_TRUE(help.startsWith(QStringLiteral("Usage: larkspool")));
        for (const QString &option : {QStringLiteral("-h, --help"), QStringLiteral("-v, --version")})
            EXPECT_TRUE(help.contains(option));
    }
}

TEST(CommandLine, AnswersWhereverTheQuestionStands)
{
    EXPECT_TRUE(commandline::answer({QStringLiteral("-style"), QStringLiteral("--version")}));
}

TEST(CommandLine, AnswersNothingThatIsNotAsked)
{
    EXPECT_EQ(commandline::answer({}), std::nullopt);
    EXPECT_EQ(commandline::answer({QStringLiteral("--verbose")}), std::nullopt);
}

TEST(CommandLine, ComplainsInOneLineOfTheFirstArgumentThatIsLeft)
{
    EXPECT_EQ(commandline::complaint({}), std::nullopt);
    const QString complaint =
        commandline::complaint({QStringLiteral("--hide\nnow"), QStringLiteral("x")}).value_or(QString());
    EXPECT_TRUE(complaint.contains(QStringLiteral("\"--hide now\"")));
    EXPECT_FALSE(complaint.contains(QLatin1Char('\n')));
}

} // namespace
