#include "base/UserDefaults.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{

class UserDefaultsFile : public ::testing::Test
{
protected:
    void write(const QByteArray &text) const
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    QString path() const { return m_folder.filePath(QStringLiteral("larkspool.conf")); }
    std::optional<QByteArray> hotKey() const
    {
        return UserDefaults(path()).data(QStringLiteral("hotkeyCombo"));
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(UserDefaultsFile, AMissingFileHoldsNothing)
{
    EXPECT_FALSE(hotKey());
}

TEST_F(UserDefaultsFile, ReadsTheBytesOfAKey)
{
    write("[General]\nhotkeyCombo=\"{\\\"keyCode\\\":9,\\\"modifiers\\\":768}\"\n");
    EXPECT_EQ(hotKey(), "{\"keyCode\":9,\"modifiers\":768}");
}

TEST_F(UserDefaultsFile, ReadsAValueThatSomebodyWroteWithoutQuotes)
{
    write("[General]\nhotkeyCombo = {\"keyCode\":9, \"modifiers\":768}\n");
    EXPECT_EQ(hotKey(), "{\"keyCode\":9, \"modifiers\":768}");
}

TEST_F(UserDefaultsFile, ABrokenFileHoldsNothingAndStaysAsItIs)
{
    const QByteArray garbage("\x00\xff[[[=\n=", 9);
    write(garbage);
    EXPECT_FALSE(hotKey());
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), garbage);
}

} // namespace
