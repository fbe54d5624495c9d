#include "base/UserDefaults.h"

#include "support/CapturedConsole.h"
#include "support/Waiting.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>

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
    QByteArray written() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
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
    EXPECT_EQ(written(), garbage);
}

const QString Key = QStringLiteral("key");

TEST_F(UserDefaultsFile, AnAbsentKeyIsItsDefault)
{
    const UserDefaults defaults(path());
    EXPECT_EQ(defaults.integer(Key, 500), 500);
    EXPECT_TRUE(defaults.boolean(Key, true));
    EXPECT_EQ(defaults.string(Key, QStringLiteral("tab")), QStringLiteral("tab"));
}

TEST_F(UserDefaultsFile, AValueOfTheWrongKindIsTheDefault)
{
    write("[General]\nkey=a, b\nnumber=many\nflag=perhaps\nlarge=99999999999999\n");
    const UserDefaults defaults(path());
    EXPECT_EQ(defaults.string(Key, QStringLiteral("tab")), QStringLiteral("tab"));
    EXPECT_EQ(defaults.integer(QStringLiteral("number"), 500), 500);
    EXPECT_EQ(defaults.integer(QStringLiteral("large"), 500), 500);
    EXPECT_FALSE(defaults.boolean(QStringLiteral("flag"), false));
    EXPECT_TRUE(defaults.boolean(QStringLiteral("flag"), true));
}

TEST_F(UserDefaultsFile, WhatIsSetIsThereAtOnceAndInTheFile)
{
    UserDefaults defaults(path());
    QSignalSpy changed(&defaults, &UserDefaults::changed);
    defaults.setInteger(QStringLiteral("maxHistoryCount"), 10000);
    defaults.setBoolean(QStringLiteral("launchAtLogin"), true);
    defaults.setString(QStringLiteral("borderColorHex"), QStringLiteral("#FFFFFF"));
    defaults.setData(QStringLiteral("hotkeyCombo"), "{\"keyCode\":40,\"modifiers\":768}");
    EXPECT_EQ(changed.count(), 4);
    EXPECT_EQ(written(),
        "[General]\nmaxHistoryCount=10000\nlaunchAtLogin=true\nborderColorHex=#FFFFFF\n"
        "hotkeyCombo=\"{\\\"keyCode\\\":40,\\\"modifiers\\\":768}\"\n");
    EXPECT_EQ(defaults.integer(QStringLiteral("maxHistoryCount"), 500), 10000);
    EXPECT_EQ(hotKey(), "{\"keyCode\":40,\"modifiers\":768}");
}

TEST_F(UserDefaultsFile, KeepsWhatItDoesNotKnowAndWhatOthersWroteMeanwhile)
{
    write("; by hand\n[General]\nhotkeyCombo={\"keyCode\":9, \"modifiers\":768}\n");
    UserDefaults defaults(path());
    write("; by hand\n[General]\nhotkeyCombo={\"keyCode\":9, \"modifiers\":768}\nnewer=1\n[Other]\na=b\n");
    defaults.setBoolean(Key, true);
    EXPECT_EQ(written(),
        "; by hand\n[General]\nhotkeyCombo={\"keyCode\":9, "
        "\"modifiers\":768}\nnewer=1\nkey=true\n[Other]\na=b\n");
}

TEST_F(UserDefaultsFile, ANewFileAndItsFolderAreTheUsersAlone)
{
    const QString folder = QFileInfo(path()).path() + QStringLiteral("/config/larkspool");
    UserDefaults defaults(folder + QStringLiteral("/larkspool.conf"));
    EXPECT_FALSE(QFile::exists(folder));
    defaults.setBoolean(Key, true);
    constexpr auto others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther;
    EXPECT_FALSE(QFile::permissions(folder + QStringLiteral("/larkspool.conf")) & others);
    EXPECT_FALSE(QFile::permissions(folder) & others);
}

TEST_F(UserDefaultsFile, ALinkToTheFileStaysOne)
{
    const QString target = path() + QStringLiteral(".target");
    UserDefaults(target).setInteger(QStringLiteral("number"), 1);
    ASSERT_TRUE(QFile::link(target, path()));
    UserDefaults(path()).setBoolean(Key, true);
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_TRUE(UserDefaults(target).boolean(Key, false));
}

TEST_F(UserDefaultsFile, WhatCannotBeWrittenHoldsUntilItCan)
{
    ASSERT_TRUE(QDir().mkpath(path() + QStringLiteral("/a folder in its place")));
    UserDefaults defaults(path());
    CapturedConsole console;
    defaults.setString(Key, QStringLiteral("slash"));
    EXPECT_TRUE(console.output().starts_with("[Larkspool] Preferences could not be saved: "));
    EXPECT_EQ(std::ranges::count(console.output(), '\n'), 1);
    EXPECT_EQ(defaults.string(Key, QStringLiteral("tab")), QStringLiteral("slash"));
    ASSERT_TRUE(QDir(path()).removeRecursively());
    defaults.setInteger(QStringLiteral("number"), 1);
    EXPECT_EQ(written(), "[General]\nkey=slash\nnumber=1\n");
}

TEST_F(UserDefaultsFile, SeesWhatAnotherProgramWritesIntoTheFile)
{
    write("[General]\nkey=1\n");
    UserDefaults defaults(path());
    defaults.watch();
    QSignalSpy changed(&defaults, &UserDefaults::changed);
    write("[General]\nkey=23\n");
    EXPECT_TRUE(waitUntil([&] { return defaults.integer(Key, 0) == 23; }));
    EXPECT_GE(changed.count(), 1);
}

TEST_F(UserDefaultsFile, SeesAFileThatComesAndOneThatTakesItsPlaceAndThatItGoes)
{
    UserDefaults defaults(path());
    defaults.watch();
    write("[General]\nkey=1\n");
    EXPECT_TRUE(waitUntil([&] { return defaults.integer(Key, 0) == 1; }));
    for (const int number : {2, 3}) {
        UserDefaults(path()).setInteger(Key, number);
        EXPECT_TRUE(waitUntil([&] { return defaults.integer(Key, 0) == number; })) << number;
    }
    ASSERT_TRUE(QFile::remove(path()));
    EXPECT_TRUE(waitUntil([&] { return defaults.integer(Key, 0) == 0; }));
}

} // namespace
