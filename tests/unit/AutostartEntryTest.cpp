#include "platform/linux/AutostartEntry.h"

#include "support/ChildProgram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <optional>

namespace
{

const QString FileName = QStringLiteral("org.larkspool.Larkspool.desktop");
/// A program that every system has.
const QString Program = QStringLiteral("/bin/sh");
const QByteArray StartsProgram = "\nExec=/bin/sh\n";

/// A variable of the environment, as it was before when it is gone.
class Variable
{
public:
    Variable(const char *name, const QByteArray &value)
        : m_name(name)
        , m_before(qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt)
    {
        qputenv(name, value);
    }
    ~Variable()
    {
        if (m_before)
            qputenv(m_name, *m_before);
        else
            qunsetenv(m_name);
    }
    Variable(const Variable &) = delete;
    Variable &operator=(const Variable &) = delete;

private:
    const char *m_name;
    std::optional<QByteArray> m_before;
};

/// A home with nothing in it, and a system's folder of entries.
class AutostartEntryTest : public ::testing::Test
{
protected:
    QString path(const char *name) const { return m_home.filePath(QString::fromLatin1(name)); }
    QString userFile() const { return path("config/autostart/") + FileName; }
    QString systemFile() const { return path("xdg/autostart/") + FileName; }

    static void write(const QString &file, const QByteArray &text)
    {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
        QFile written(file);
        ASSERT_TRUE(written.open(QIODevice::WriteOnly));
        written.write(text);
    }
    /// Empty when there is no such file.
    static QByteArray read(const QString &file)
    {
        QFile written(file);
        return written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
    }

    /// Why it failed; empty when it did not.
    std::string registerItem()
    {
        return reasonOf([](AutostartEntry &entry, auto onDone) { entry.registerItem(onDone); });
    }
    std::string unregisterItem()
    {
        return reasonOf([](AutostartEntry &entry, auto onDone) { entry.unregisterItem(onDone); });
    }
    std::string about(const char *format, const QString &what) const
    {
        return QString::fromLatin1(format).arg(what).toStdString();
    }

    /// Permissions do not bind root: what the function gives when it is somebody else that calls it.
    template<class Function>
    static auto asNobody(Function function)
    {
        constexpr uid_t Nobody = 65534;
        const uid_t self = geteuid();
        EXPECT_EQ(seteuid(self == 0 ? Nobody : self), 0);
        const auto result = function();
        EXPECT_EQ(seteuid(self), 0);
        return result;
    }

    QString program = Program;

private:
    template<class Request>
    std::string reasonOf(Request request)
    {
        AutostartEntry entry(
            {path("config/autostart"), {path("none/autostart"), path("xdg/autostart")}}, program);
        std::optional<std::string> reason;
        request(entry, [&reason](const Result<Success> &outcome) {
            EXPECT_FALSE(reason) << "said twice";
            reason = outcome ? std::string() : outcome.error().description.toStdString();
        });
        EXPECT_TRUE(reason) << "not said before it returned";
        return reason.value_or("nothing said");
    }

    QTemporaryDir m_home;
};

TEST_F(AutostartEntryTest, RegisteringWritesAnEntryThatStartsTheProgram)
{
    EXPECT_EQ(registerItem(), "");
    EXPECT_TRUE(read(userFile()).contains(StartsProgram));
    // Nothing else comes to be, such as a file of a write that was not finished.
    EXPECT_EQ(QDir(path("config/autostart")).entryList(QDir::Files | QDir::Hidden), QStringList{FileName});
}

TEST_F(AutostartEntryTest, NewFoldersAreTheUsersOwn)
{
    EXPECT_EQ(registerItem(), "");
    for (const char *const folder : {"config", "config/autostart"}) {
        struct stat status {
        };
        ASSERT_EQ(stat(QFile::encodeName(path(folder)).constData(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, 0700U) << folder;
    }
}

TEST_F(AutostartEntryTest, AFolderThatIsThereKeepsItsPermissions)
{
    ASSERT_TRUE(QDir().mkpath(path("config/autostart")));
    ASSERT_EQ(chmod(QFile::encodeName(path("config/autostart")).constData(), 0755), 0);
    EXPECT_EQ(registerItem(), "");
    struct stat status {
    };
    ASSERT_EQ(stat(QFile::encodeName(path("config/autostart")).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0755U);
}

TEST_F(AutostartEntryTest, WhatIsWrittenIsAValidDesktopFile)
{
    const QString validator = QStandardPaths::findExecutable(QStringLiteral("desktop-file-validate"));
    if (validator.isEmpty() && !qEnvironmentVariableIsSet("CI"))
        GTEST_SKIP() << "desktop-file-validate is not installed";
    ASSERT_FALSE(validator.isEmpty());
    const auto complaints = [&] {
        ChildProgram process({"desktop-file-validate", QFile::encodeName(userFile())});
        const QByteArray output = process.readAll();
        EXPECT_EQ(process.waitForExit(), 0);
        return output.toStdString();
    };
    EXPECT_EQ(registerItem(), "");
    EXPECT_EQ(complaints(), "");
    write(systemFile(), "[Desktop Entry]\n");
    EXPECT_EQ(unregisterItem(), "");
    EXPECT_EQ(complaints(), "");
    ASSERT_TRUE(QFile::remove(userFile()));
    EXPECT_EQ(unregisterItem(), "");
    EXPECT_EQ(complaints(), "");
    // A path with all that has to be escaped.
    program = path("a \"b\" `c` $d 100% \\e");
    write(program, "#!/bin/sh\n");
    ASSERT_TRUE(QFile::setPermissions(program, QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    EXPECT_EQ(registerItem(), "");
    EXPECT_EQ(complaints(), "");
}

TEST_F(AutostartEntryTest, AnEntryThatIsHiddenOrOfAnOldPathIsMended)
{
    write(userFile(),
        "[Desktop Entry]\nType=Application\nName=Mine\nExec=/old/larkspool\nHidden=true\nX-Mine=1\n");
    EXPECT_EQ(registerItem(), "");
    const QByteArray text = read(userFile());
    EXPECT_TRUE(text.contains(StartsProgram));
    EXPECT_TRUE(text.contains("\nX-Mine=1\n"));
    EXPECT_FALSE(text.contains("Hidden"));
}

TEST_F(AutostartEntryTest, RegisteringTwiceIsRegisteringOnce)
{
    EXPECT_EQ(registerItem(), "");
    const QByteArray text = read(userFile());
    EXPECT_EQ(registerItem(), "");
    EXPECT_EQ(read(userFile()), text);
}

TEST_F(AutostartEntryTest, UnregisteringRemovesTheFile)
{
    EXPECT_EQ(registerItem(), "");
    EXPECT_EQ(unregisterItem(), "");
    EXPECT_FALSE(QFileInfo::exists(userFile()));
}

TEST_F(AutostartEntryTest, UnregisteringCreatesNothingWhereNothingIs)
{
    EXPECT_EQ(unregisterItem(), "");
    EXPECT_FALSE(QFileInfo::exists(path("config")));
}

TEST_F(AutostartEntryTest, UnregisteringHidesTheEntryOfTheSystem)
{
    const QByteArray system = "[Desktop Entry]\nType=Application\nName=Larkspool\nExec=larkspool\n";
    write(systemFile(), system);
    for (const auto isRegisteredBefore : {false, true}) {
        if (isRegisteredBefore) {
            EXPECT_EQ(registerItem(), "");
        }
        EXPECT_EQ(unregisterItem(), "");
        EXPECT_TRUE(read(userFile()).contains("\nHidden=true\n"));
        EXPECT_EQ(read(systemFile()), system);
    }
    EXPECT_EQ(registerItem(), "");
    EXPECT_TRUE(read(userFile()).contains(StartsProgram));
    EXPECT_FALSE(read(userFile()).contains("Hidden"));
}

TEST_F(AutostartEntryTest, OtherProgramsEntriesStayAsTheyAre)
{
    const QByteArray other = "[Desktop Entry]\nType=Application\nName=Other\nExec=/bin/sh\n";
    for (const char *const name : {"config/autostart/other.desktop", "config/autostart/larkspool.desktop",
             "xdg/autostart/other.desktop"})
        write(path(name), other);
    EXPECT_EQ(registerItem(), "");
    EXPECT_EQ(unregisterItem(), "");
    EXPECT_EQ(read(path("config/autostart/other.desktop")), other);
    EXPECT_EQ(read(path("config/autostart/larkspool.desktop")), other);
    EXPECT_EQ(read(path("xdg/autostart/other.desktop")), other);
}

TEST_F(AutostartEntryTest, AFolderThatIsALinkIsNotFollowed)
{
    ASSERT_TRUE(QDir().mkpath(path("config")));
    ASSERT_TRUE(QDir().mkpath(path("elsewhere")));
    ASSERT_TRUE(QFile::link(path("elsewhere"), path("config/autostart")));
    const auto reason = about("%1 is a link", path("config/autostart"));
    EXPECT_EQ(registerItem(), reason);
    EXPECT_TRUE(QDir(path("elsewhere")).isEmpty());
    // There is nothing to take away.
    EXPECT_EQ(unregisterItem(), "");
    write(path("elsewhere/") + FileName, "somebody's");
    EXPECT_EQ(unregisterItem(), reason);
    EXPECT_EQ(read(path("elsewhere/") + FileName), "somebody's");
}

TEST_F(AutostartEntryTest, AFileThatIsALinkIsNotFollowed)
{
    const QByteArray menuEntry = "[Desktop Entry]\nType=Application\nName=Larkspool\nExec=larkspool\n";
    write(path("applications/larkspool.desktop"), menuEntry);
    ASSERT_TRUE(QDir().mkpath(path("config/autostart")));
    for (const char *const target : {"applications/larkspool.desktop", "nowhere"}) {
        ASSERT_TRUE(QFile::link(path(target), userFile()));
        EXPECT_EQ(registerItem(), about("%1 is a link", userFile()));
        EXPECT_EQ(unregisterItem(), about("%1 is a link", userFile()));
        EXPECT_EQ(read(path("applications/larkspool.desktop")), menuEntry);
        EXPECT_FALSE(QFileInfo::exists(path("nowhere")));
        ASSERT_TRUE(QFile::remove(userFile()));
    }
}

TEST_F(AutostartEntryTest, AFolderInPlaceOfTheFileIsLeftAlone)
{
    ASSERT_TRUE(QDir().mkpath(userFile()));
    EXPECT_EQ(registerItem(), about("%1 is not a file", userFile()));
    EXPECT_EQ(unregisterItem(), about("%1 is not a file", userFile()));
    EXPECT_TRUE(QFileInfo(userFile()).isDir());
}

TEST_F(AutostartEntryTest, APipeInPlaceOfTheFileHoldsNobodyUp)
{
    ASSERT_TRUE(QDir().mkpath(path("config/autostart")));
    ASSERT_EQ(mkfifo(QFile::encodeName(userFile()).constData(), 0600), 0);
    EXPECT_EQ(registerItem(), about("%1 is not a file", userFile()));
    EXPECT_EQ(unregisterItem(), about("%1 is not a file", userFile()));
}

TEST_F(AutostartEntryTest, AFileInPlaceOfTheFolderIsLeftAlone)
{
    write(path("config/autostart"), "somebody's");
    EXPECT_EQ(registerItem(), about("%1 is not a folder", path("config/autostart")));
    EXPECT_EQ(unregisterItem(), "");
    EXPECT_EQ(read(path("config/autostart")), "somebody's");
}

TEST_F(AutostartEntryTest, AFolderThatCannotBeMadeIsToldOf)
{
    write(path("config"), "somebody's");
    EXPECT_EQ(registerItem(), about("the folder %1 cannot be made", path("config/autostart")));
    EXPECT_EQ(unregisterItem(), "");
}

TEST_F(AutostartEntryTest, AFolderThatMayNotBeWrittenIsToldOf)
{
    EXPECT_EQ(registerItem(), "");
    const QByteArray text = read(userFile());
    for (const char *const folder : {"", "config", "config/autostart"})
        ASSERT_EQ(chmod(QFile::encodeName(path(folder)).constData(), 0555), 0);
    program = QStringLiteral("/bin/cat");
    EXPECT_EQ(asNobody([this] { return registerItem(); }), about("%1 cannot be written", userFile()));
    EXPECT_EQ(asNobody([this] { return unregisterItem(); }), about("%1 cannot be removed", userFile()));
    EXPECT_EQ(read(userFile()), text);
    for (const char *const folder : {"", "config", "config/autostart"})
        ASSERT_EQ(chmod(QFile::encodeName(path(folder)).constData(), 0700), 0);
}

TEST_F(AutostartEntryTest, AFileThatMayNotBeReadIsNotReplaced)
{
    EXPECT_EQ(registerItem(), "");
    const QByteArray text = read(userFile());
    for (const char *const folder : {"", "config", "config/autostart"})
        ASSERT_EQ(chmod(QFile::encodeName(path(folder)).constData(), 0777), 0);
    ASSERT_EQ(chmod(QFile::encodeName(userFile()).constData(), 0), 0);
    EXPECT_EQ(asNobody([this] { return registerItem(); }), about("%1 cannot be read", userFile()));
    ASSERT_EQ(chmod(QFile::encodeName(userFile()).constData(), 0600), 0);
    EXPECT_EQ(read(userFile()), text);
}

TEST_F(AutostartEntryTest, WhatIsTooLargeForADesktopFileIsLeftAlone)
{
    const QByteArray large(2 * 1024 * 1024, '#');
    write(userFile(), large);
    EXPECT_EQ(registerItem(), about("%1 cannot be read", userFile()));
    EXPECT_EQ(read(userFile()), large);
}

TEST_F(AutostartEntryTest, AProgramThatIsGoneIsNotRegistered)
{
    program = path("larkspool");
    EXPECT_EQ(registerItem(), about("the program is no longer at %1", program));
    EXPECT_FALSE(QFileInfo::exists(path("config")));
}

TEST_F(AutostartEntryTest, WithoutAHomeThereIsNothingToRegisterIn)
{
    AutostartEntry entry({QString(), {}}, Program);
    std::string reason;
    const auto note = [&reason](const Result<Success> &outcome) {
        reason = outcome ? "done" : outcome.error().description.toStdString();
    };
    entry.registerItem(note);
    EXPECT_EQ(reason, "there is no home folder");
    entry.unregisterItem(note);
    EXPECT_EQ(reason, "done");
}

TEST(AutostartPlacesTest, TheFoldersAreThoseOfTheBaseDirectories)
{
    struct Row {
        const char *configHome;
        const char *configDirs;
        const char *user;
        QStringList system;
    };
    const QString xdg = QStringLiteral("/etc/xdg/autostart");
    const Row table[]{{"", "", "/home/me/.config/autostart", {xdg}}, {"/conf", "", "/conf/autostart", {xdg}},
        {"/conf/", "/a:/b/:relative:", "/conf/autostart",
            {QStringLiteral("/a/autostart"), QStringLiteral("/b/autostart")}},
        // Relative paths are invalid, and as good as none.
        {"conf", "", "/home/me/.config/autostart", {xdg}}};
    const Variable home("HOME", "/home/me");
    for (const Row &row : table) {
        const Variable configHome("XDG_CONFIG_HOME", row.configHome);
        const Variable configDirs("XDG_CONFIG_DIRS", row.configDirs);
        const auto places = AutostartEntry::defaultPlaces();
        EXPECT_EQ(places.userFolder, QString::fromLatin1(row.user));
        EXPECT_EQ(places.systemFolders, row.system);
    }
    const Variable noHome("HOME", "");
    const Variable noConfigHome("XDG_CONFIG_HOME", "");
    EXPECT_EQ(AutostartEntry::defaultPlaces().userFolder, QString());
}

} // namespace
