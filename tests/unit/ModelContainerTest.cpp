#include "store/ModelContainer.h"

#include "store/Schema.h"
#include "support/TemporaryStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace
{

/// Runs SQL on a file as another program would.
void runSql(const QString &filePath, const char *sql)
{
    sqlite3 *database = nullptr;
    ASSERT_EQ(sqlite3_open(QFile::encodeName(filePath).constData(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
    sqlite3_close(database);
}

QByteArray bytesOf(const QString &filePath)
{
    QFile file(filePath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class UnusableFile : public ::testing::Test
{
protected:
    QString filePath() const { return m_folder.filePath(QStringLiteral("larkspool.sqlite")); }

    void write(const QByteArray &bytes) const
    {
        QFile file(filePath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    /// The error of opening, after checking that it left the file as it was.
    QString errorOfOpening() const
    {
        const QByteArray before = bytesOf(filePath());
        const auto container = ModelContainer::open(filePath());
        EXPECT_EQ(bytesOf(filePath()), before);
        return container ? QString() : container.error().description;
    }

    QTemporaryDir m_folder;
};

TEST(ModelContainer, MakesFolderAndFileForTheOwnerAlone)
{
    TemporaryStore store;
    const QFileInfo file(store.filePath());
    constexpr auto ForOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
        QFile::WriteOther | QFile::ExeOther;
    EXPECT_FALSE(file.permissions() & ForOthers);
    EXPECT_FALSE(QFileInfo(file.path()).permissions() & ForOthers);
    for (const QFileInfo &other : QDir(file.path()).entryInfoList(QDir::Files))
        EXPECT_FALSE(other.permissions() & ForOthers) << other.fileName().toStdString();
}

TEST(ModelContainer, ClosesTheFolderOfAnOlderInstallationToOthers)
{
    const QTemporaryDir home;
    const QString folder = home.filePath(QStringLiteral("larkspool"));
    ASSERT_TRUE(QDir().mkdir(folder));
    ASSERT_TRUE(QFile::setPermissions(folder, QFile::Permissions(0x7755)));
    ASSERT_TRUE(ModelContainer::open(folder + QStringLiteral("/larkspool.sqlite")));
    EXPECT_FALSE(QFileInfo(folder).permissions() & (QFile::ReadGroup | QFile::ReadOther));
}

TEST(ModelContainer, ASecondOneIsRefusedUntilTheFirstIsGone)
{
    TemporaryStore store;
    const auto second = ModelContainer::open(store.filePath());
    ASSERT_FALSE(second);
    EXPECT_TRUE(second.error().description.contains(QStringLiteral("another Larkspool has it open")));
    store.reopen();
    EXPECT_EQ(store.context().fetchCount<ClipboardItem>(), 0);
}

TEST(ModelContainer, MarksTheFileWithItsSchemaVersion)
{
    TemporaryStore store;
    auto database = Database::open(store.filePath());
    ASSERT_TRUE(database);
    EXPECT_EQ(database.value()->integer("PRAGMA user_version").value(), schema::Version);
    EXPECT_EQ(database.value()->integer("PRAGMA application_id").value(), schema::ApplicationId);
}

TEST_F(UnusableFile, ACorruptFileIsRefusedAndLeftAlone)
{
    write(QByteArray("this is no database, whatever its name says. ").repeated(200));
    EXPECT_TRUE(errorOfOpening().contains(QStringLiteral("not a database")));
}

TEST_F(UnusableFile, AFileWithADamagedPageIsRefusedAndLeftAlone)
{
    ASSERT_TRUE(ModelContainer::open(filePath()));
    QByteArray bytes = bytesOf(filePath());
    ASSERT_GT(bytes.size(), 4096 * 3);
    bytes.replace(4096, 4096 * 2, QByteArray(4096 * 2, '\x5a'));
    write(bytes);
    EXPECT_FALSE(errorOfOpening().isEmpty());
}

TEST_F(UnusableFile, AFileFromANewerVersionIsRefusedAndLeftAlone)
{
    ASSERT_TRUE(ModelContainer::open(filePath()));
    runSql(filePath(), "PRAGMA user_version = 2");
    EXPECT_TRUE(errorOfOpening().contains(QStringLiteral("newer version")));
}

TEST_F(UnusableFile, AnotherProgramsDatabaseIsRefusedAndLeftAlone)
{
    runSql(filePath(), "CREATE TABLE notes (text)");
    EXPECT_TRUE(errorOfOpening().contains(QStringLiteral("another program")));
}

TEST_F(UnusableFile, ADirectoryInItsPlaceIsRefused)
{
    ASSERT_TRUE(QDir().mkdir(filePath()));
    EXPECT_FALSE(ModelContainer::open(filePath()));
    EXPECT_TRUE(QFileInfo(filePath()).isDir());
}

TEST_F(UnusableFile, AFileInPlaceOfTheFolderIsRefused)
{
    write("x");
    EXPECT_FALSE(ModelContainer::open(filePath() + QStringLiteral("/larkspool.sqlite")));
    EXPECT_EQ(bytesOf(filePath()), "x");
}

TEST_F(UnusableFile, AnEmptyFileIsANewStore)
{
    write("");
    EXPECT_TRUE(ModelContainer::open(filePath()));
}

} // namespace
