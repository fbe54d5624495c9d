#include "platform/linux/DesktopLoginItem.h"

#include "fakes/ManualMainQueue.h"
#include "platform/null/NullLoginItem.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{

class DesktopLoginItemTest : public ::testing::Test
{
protected:
    void TearDown() override
    {
        qunsetenv("SNAP");
        qputenv("XDG_CONFIG_HOME", m_configHome);
        qputenv("HOME", m_home);
    }

    QTemporaryDir m_folder;

private:
    QByteArray m_configHome = qgetenv("XDG_CONFIG_HOME");
    QByteArray m_home = qgetenv("HOME");
};

TEST_F(DesktopLoginItemTest, ASandboxIsKnownByItsDescriptionOrByTheProgramsFolder)
{
    const QString program = QStringLiteral("/snap/larkspool/1/bin/larkspool");
    const QString description = m_folder.filePath(QStringLiteral("info"));
    qunsetenv("SNAP");
    EXPECT_FALSE(platform::isSandboxed(program, description));
    qputenv("SNAP", "/snap/larkspool/1");
    EXPECT_TRUE(platform::isSandboxed(program, description));
    // Inherited from a terminal that is a snap.
    qputenv("SNAP", "/snap/terminal/1");
    EXPECT_FALSE(platform::isSandboxed(program, description));
    qputenv("SNAP", "/snap/larkspool/12");
    EXPECT_FALSE(platform::isSandboxed(program, description));
    QFile file(description);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_TRUE(platform::isSandboxed(program, description));
}

TEST_F(DesktopLoginItemTest, OutsideASandboxItIsAnEntryThatStartsTheRunningProgram)
{
    qputenv("XDG_CONFIG_HOME", m_folder.path().toUtf8());
    ManualMainQueue queue;
    auto item = platform::makeDesktopLoginItem(queue);
    ASSERT_TRUE(item);
    bool isDone = false;
    item.value()->registerItem(
        [&isDone](const Result<Success> &outcome) { isDone = static_cast<bool>(outcome); });
    EXPECT_TRUE(isDone);
    QFile file(m_folder.filePath(QStringLiteral("autostart/org.larkspool.Larkspool.desktop")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(
        file.readAll().contains("TryExec=" + QCoreApplication::applicationFilePath().toUtf8() + '\n'));
}

TEST_F(DesktopLoginItemTest, WithoutAHomeThereIsNone)
{
    qputenv("XDG_CONFIG_HOME", "");
    qputenv("HOME", "");
    ManualMainQueue queue;
    const auto item = platform::makeDesktopLoginItem(queue);
    ASSERT_FALSE(item);
    EXPECT_EQ(item.error().description, QStringLiteral("there is no home folder"));
}

TEST(NullLoginItemTest, EveryRequestFailsWithTheReason)
{
    NullLoginItem item(QStringLiteral("no desktop"));
    QStringList reasons;
    const auto note = [&reasons](const Result<Success> &outcome) {
        reasons.append(outcome ? QStringLiteral("done") : outcome.error().description);
    };
    item.registerItem(note);
    item.unregisterItem(note);
    EXPECT_EQ(reasons, QStringList({QStringLiteral("no desktop"), QStringLiteral("no desktop")}));
}

} // namespace
