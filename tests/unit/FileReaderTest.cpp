#include "base/FileReader.h"

#include "support/Waiting.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace
{

class Files : public ::testing::Test
{
protected:
    QByteArray path(const char *name) const
    {
        return QFile::encodeName(m_folder.filePath(QLatin1String(name)));
    }
    QByteArray write(const char *name, const QByteArray &bytes) const
    {
        QFile file(QFile::decodeName(path(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path(name);
    }

    QTemporaryDir m_folder;
};

TEST_F(Files, ARegularFileIsReadWhole)
{
    const QByteArray bytes(3'000'000, 'x');
    EXPECT_EQ(readRegularFile(write("a", bytes), 3'000'000), bytes);
    EXPECT_EQ(readRegularFile(write("empty", ""), 10), "");
}

TEST_F(Files, AFileBeyondTheLimitIsNotRead)
{
    EXPECT_FALSE(readRegularFile(write("a", "four"), 3));
}

TEST_F(Files, NothingElseIsRead)
{
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(QStringLiteral("folder")));
    ASSERT_EQ(mkfifo(path("pipe").constData(), 0600), 0);
    for (const auto *const name : {"folder", "pipe", "missing"})
        EXPECT_FALSE(readRegularFile(path(name), 1000)) << name;
    EXPECT_FALSE(readRegularFile("/dev/zero", 1000));
}

TEST_F(Files, AFileWithoutPermissionIsNotRead)
{
    const QByteArray file = write("a", "secret");
    ASSERT_EQ(chmod(QFile::encodeName(m_folder.path()).constData(), 0755), 0);
    ASSERT_EQ(chmod(file.constData(), 0), 0);
    // Permissions do not bind root.
    constexpr uid_t Nobody = 65534;
    const uid_t self = geteuid();
    ASSERT_EQ(seteuid(self == 0 ? Nobody : self), 0);
    const auto bytes = readRegularFile(file, 1000);
    ASSERT_EQ(seteuid(self), 0);
    EXPECT_FALSE(bytes);
}

TEST_F(Files, AThreadedReaderAnswersOnTheMainThreadLater)
{
    EventLoopQueue queue;
    ThreadedFileReader reader(queue);
    std::optional<QByteArray> read;
    bool isDone = false;
    reader.read(write("a", "bytes"), 1000, [&](std::optional<QByteArray> bytes) {
        read = std::move(bytes);
        isDone = true;
    });
    EXPECT_FALSE(isDone);
    EXPECT_TRUE(waitUntil([&] { return isDone; }));
    EXPECT_EQ(read, "bytes");
}

TEST_F(Files, AThreadedReaderThatIsGoneAnswersNobody)
{
    EventLoopQueue queue;
    bool isDone = false;
    {
        ThreadedFileReader reader(queue);
        reader.read(write("a", "bytes"), 1000, [&](const std::optional<QByteArray> &) { isDone = true; });
    }
    bool isNextDone = false;
    ThreadedFileReader next(queue);
    next.read(path("a"), 1000, [&](const std::optional<QByteArray> &) { isNextDone = true; });
    EXPECT_TRUE(waitUntil([&] { return isNextDone; }));
    EXPECT_FALSE(isDone);
}

} // namespace
