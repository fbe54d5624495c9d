#include "services/PasteService.h"

#include "fakes/FakeEventPoster.h"
#include "fakes/FakeScriptingService.h"
#include "fakes/FakeUnifiedLog.h"
#include "fakes/FixedClock.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{

class Paste : public ::testing::Test
{
protected:
    QString logPath() const { return m_folder.filePath(QStringLiteral("larkspool_debug.log")); }
    QString logText() const
    {
        QFile file(logPath());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    /// The messages of the log, without their times.
    QStringList messages() const
    {
        QStringList list;
        for (const QString &line : logText().split(QLatin1Char('\n'), Qt::SkipEmptyParts))
            list.append(line.section(QStringLiteral("] "), 1));
        return list;
    }

    QTemporaryDir m_folder;
    FakeEventPoster m_poster;
    FakeScriptingService m_scripting;
    FakeUnifiedLog m_unifiedLog;
    FixedClock m_clock;
    PasteService m_service{m_poster, m_scripting, m_unifiedLog, m_clock, logPath()};
};

TEST_F(Paste, WithPermissionPostsOneCommandVAndSaysSo)
{
    m_service.simulatePaste();
    ASSERT_EQ(m_poster.posted().size(), 2U);
    const auto &[down, up] = std::pair(m_poster.posted()[0], m_poster.posted()[1]);
    EXPECT_EQ(down.event.motion, KeyMotion::Down);
    EXPECT_EQ(up.event.motion, KeyMotion::Up);
    for (const auto &posted : m_poster.posted()) {
        EXPECT_EQ(posted.location, EventTapLocation::AnnotatedSession);
        EXPECT_EQ(posted.event.keyCode, 9);
        EXPECT_EQ(posted.event.flags, 0x100000U);
    }
    EXPECT_EQ(m_poster.sourceStates(), std::vector<int>{0});
    EXPECT_EQ(messages(),
        (QStringList{QStringLiteral("simulatePaste called"), QStringLiteral("AXIsProcessTrusted: true"),
            QStringLiteral("CGEventSource created: true"),
            QStringLiteral("Paste simulated via CGEvent SUCCESS")}));
}

TEST_F(Paste, AMissingSourceIsNoError)
{
    m_poster.hasSources = false;
    m_service.simulatePaste();
    EXPECT_EQ(m_poster.posted().size(), 2U);
    EXPECT_EQ(messages().at(2), QStringLiteral("CGEventSource created: false"));
    EXPECT_EQ(messages().last(), QStringLiteral("Paste simulated via CGEvent SUCCESS"));
}

TEST_F(Paste, WithoutPermissionRunsTheScript)
{
    m_poster.isTrusted = false;
    m_service.simulatePaste();
    EXPECT_TRUE(m_poster.posted().empty());
    EXPECT_EQ(m_scripting.source,
        QStringLiteral(
            "tell application \"System Events\"\n    keystroke \"v\" using command down\nend tell"));
    EXPECT_EQ(messages(),
        (QStringList{QStringLiteral("simulatePaste called"), QStringLiteral("AXIsProcessTrusted: false"),
            QStringLiteral("Not trusted — trying AppleScript fallback"),
            QStringLiteral("Trying AppleScript paste"),
            QStringLiteral("Paste simulated via AppleScript SUCCESS")}));
}

TEST_F(Paste, AFailingScriptIsLoggedWithItsReason)
{
    m_poster.isTrusted = false;
    m_scripting.failure = Error{QStringLiteral("no such service")};
    m_service.simulatePaste();
    EXPECT_EQ(messages().last(), QStringLiteral("AppleScript error: no such service"));
}

TEST_F(Paste, AScriptThatCannotBeMadeEndsWithoutAMessage)
{
    m_poster.isTrusted = false;
    m_scripting.understands = false;
    m_service.simulatePaste();
    EXPECT_EQ(messages().last(), QStringLiteral("Trying AppleScript paste"));
}

TEST_F(Paste, EventsThatCannotBeMadeLeaveItToTheScript)
{
    m_poster.makesEvents = false;
    m_service.simulatePaste();
    EXPECT_TRUE(m_poster.posted().empty());
    EXPECT_TRUE(messages().contains(QStringLiteral("Failed to create CGEvents — trying AppleScript")));
    EXPECT_EQ(messages().last(), QStringLiteral("Paste simulated via AppleScript SUCCESS"));
}

TEST_F(Paste, TheFirstLogCallMakesTheFileAndLaterOnesAppend)
{
    m_service.log(QStringLiteral("one"));
    EXPECT_EQ(logText(), QStringLiteral("[2026-03-01 09:05:07 +0000] one\n"));
    m_clock.advanceBy(60'000);
    m_service.log(QStringLiteral("two"));
    EXPECT_EQ(
        logText(), QStringLiteral("[2026-03-01 09:05:07 +0000] one\n[2026-03-01 09:06:07 +0000] two\n"));
    EXPECT_EQ(m_unifiedLog.lines.first(), QStringLiteral("PasteService|[2026-03-01 09:05:07 +0000] one\n"));
}

TEST_F(Paste, LineBreaksInAMessageStayAsTheyAre)
{
    m_service.log(QStringLiteral("a\nb"));
    EXPECT_EQ(logText(), QStringLiteral("[2026-03-01 09:05:07 +0000] a\nb\n"));
}

TEST_F(Paste, ALogThatCannotBeWrittenIsDoneWithout)
{
    PasteService service(
        m_poster, m_scripting, m_unifiedLog, m_clock, QStringLiteral("/proc/no/such/folder/log"));
    service.simulatePaste();
    EXPECT_EQ(m_poster.posted().size(), 2U);
}

} // namespace
