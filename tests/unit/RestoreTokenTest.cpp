#include "platform/linux/RestoreToken.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{

constexpr auto Owner = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
// The permissions of whoever asks; the same as the owner's in a test.
constexpr auto User = QFileDevice::ReadUser | QFileDevice::WriteUser;

class RestoreTokenTest : public ::testing::Test
{
protected:
    QString path() const { return m_folder.filePath(QStringLiteral("state/larkspool/token")); }

private:
    QTemporaryDir m_folder;
};

TEST_F(RestoreTokenTest, IsEmptyBeforeThereIsOne)
{
    EXPECT_EQ(RestoreToken(path()).read(), QString());
}

TEST_F(RestoreTokenTest, IsKeptWhereOnlyTheUserCanReadIt)
{
    RestoreToken(path()).write(QStringLiteral("first"));
    RestoreToken(path()).write(QStringLiteral("second"));
    EXPECT_EQ(RestoreToken(path()).read(), QStringLiteral("second"));
    EXPECT_EQ(QFile::permissions(path()), Owner | User);
    EXPECT_EQ(QFile::permissions(QFileInfo(path()).path()),
        Owner | User | QFileDevice::ExeOwner | QFileDevice::ExeUser);
    EXPECT_EQ(QFileInfo(path()).dir().entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(RestoreTokenTest, IsForgotten)
{
    RestoreToken(path()).write(QStringLiteral("token"));
    RestoreToken(path()).write(QString());
    EXPECT_EQ(RestoreToken(path()).read(), QString());
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(RestoreTokenTest, IsDoneWithoutWhereItCannotBeKept)
{
    const RestoreToken token(QStringLiteral("/proc/no/such/folder/token"));
    token.write(QStringLiteral("token"));
    EXPECT_EQ(token.read(), QString());
}

TEST_F(RestoreTokenTest, StandsInTheFolderForState)
{
    qputenv("XDG_STATE_HOME", "/home/somebody/state");
    EXPECT_EQ(RestoreToken::defaultFilePath(),
        QStringLiteral("/home/somebody/state/larkspool/remote-desktop-token"));
    // A relative path is to be ignored.
    for (const char *const path : {"", "state"}) {
        qputenv("XDG_STATE_HOME", path);
        EXPECT_EQ(RestoreToken::defaultFilePath(),
            QDir::homePath() + QStringLiteral("/.local/state/larkspool/remote-desktop-token"));
    }
    qunsetenv("XDG_STATE_HOME");
}

} // namespace
