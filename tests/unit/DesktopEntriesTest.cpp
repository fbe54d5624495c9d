#include "platform/linux/DesktopEntries.h"

#include "platform/linux/DesktopFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>

namespace
{

/// Two folders of desktop files, of which the first has precedence.
class DesktopEntriesTest : public ::testing::Test
{
protected:
    QString folder(const char *name) const
    {
        return m_home.path() + QLatin1Char('/') + QString::fromLatin1(name);
    }

    /// Writes a desktop file.
    void install(const char *place, const char *path, const QByteArray &keys)
    {
        const QString file = folder(place) + QLatin1Char('/') + QString::fromLatin1(path);
        const QString parent = QFileInfo(file).path();
        ASSERT_TRUE(QDir().mkpath(parent));
        QFile written(file);
        ASSERT_TRUE(written.open(QIODevice::WriteOnly));
        written.write("[Desktop Entry]\nType=Application\n" + keys);
        written.close();
        changeTime(parent);
    }

    void remove(const char *place, const char *path)
    {
        ASSERT_TRUE(QFile::remove(folder(place) + QLatin1Char('/') + QString::fromLatin1(path)));
        changeTime(folder(place));
    }

    DesktopEntries entries(const char *locale = "C")
    {
        return DesktopEntries({folder("home"), folder("system")}, locale);
    }

    static QString idOf(DesktopEntries &entries, const WindowIdentity &window)
    {
        const auto found = entries.entryOf(window);
        return found ? found->id : QStringLiteral("(none)");
    }

    static WindowIdentity ofClass(const char *instance, const char *className)
    {
        WindowIdentity window;
        window.instance = QString::fromLatin1(instance);
        window.className = QString::fromLatin1(className);
        return window;
    }

private:
    /// Gives a folder a modification time that it did not have: changes of a test may fall into one tick of
    /// the file system's clock.
    void changeTime(const QString &path)
    {
        m_time += std::chrono::seconds(1);
        std::filesystem::last_write_time(path.toStdString(), m_time);
    }

    QTemporaryDir m_home;
    std::filesystem::file_time_type m_time = std::filesystem::file_time_type::clock::now();
};

TEST_F(DesktopEntriesTest, AnswerFoldersThatAreNotThereWithNothing)
{
    DesktopEntries none = entries();
    EXPECT_FALSE(none.entryOf(ofClass("foo", "Foo")));
    EXPECT_FALSE(none.entry(QStringLiteral("foo")));
}

TEST_F(DesktopEntriesTest, JoinSubfoldersIntoTheId)
{
    install("system", "kde/konsole.desktop", "Name=Konsole\n");
    DesktopEntries found = entries();
    ASSERT_TRUE(found.entry(QStringLiteral("kde-konsole")));
    EXPECT_EQ(found.entry(QStringLiteral("kde-konsole"))->name, QStringLiteral("Konsole"));
}

TEST_F(DesktopEntriesTest, LetEarlierFoldersShadowLaterOnes)
{
    install("home", "foo.desktop", "Name=Mine\n");
    install("system", "foo.desktop", "Name=Theirs\n");
    EXPECT_EQ(entries().entry(QStringLiteral("foo"))->name, QStringLiteral("Mine"));
}

TEST_F(DesktopEntriesTest, LetAHiddenFileHideTheOneThatItShadows)
{
    install("home", "foo.desktop", "Name=Foo\nHidden=true\n");
    install("system", "foo.desktop", "Name=Foo\n");
    EXPECT_FALSE(entries().entry(QStringLiteral("foo")));
}

TEST_F(DesktopEntriesTest, FindTheIdThatTheWindowNames)
{
    install("system", "org.example.Foo.desktop", "Name=Foo\n");
    install("system", "bar.desktop", "Name=Bar\nStartupWMClass=Thing\n");
    WindowIdentity gtk = ofClass("thing", "Thing");
    gtk.applicationId = QStringLiteral("org.example.Foo");
    WindowIdentity kde = ofClass("thing", "Thing");
    kde.desktopFile = QStringLiteral("/usr/share/applications/org.example.Foo.desktop");
    DesktopEntries found = entries();
    EXPECT_EQ(idOf(found, gtk), QStringLiteral("org.example.Foo"));
    EXPECT_EQ(idOf(found, kde), QStringLiteral("org.example.Foo"));
}

TEST_F(DesktopEntriesTest, PreferStartupWmClassToTheId)
{
    install("system", "thing.desktop", "Name=Other\n");
    install("system", "vendor-thing.desktop", "Name=Thing\nStartupWMClass=Thing\n");
    DesktopEntries found = entries();
    EXPECT_EQ(idOf(found, ofClass("thing", "Thing")), QStringLiteral("vendor-thing"));
}

TEST_F(DesktopEntriesTest, PreferTheEntryThatMenusShowAmongThoseOfOneClass)
{
    install("system", "a-settings.desktop", "Name=Settings\nStartupWMClass=Thing\nNoDisplay=true\n");
    install("system", "b-main.desktop", "Name=Thing\nStartupWMClass=Thing\n");
    DesktopEntries found = entries();
    EXPECT_EQ(idOf(found, ofClass("thing", "Thing")), QStringLiteral("b-main"));
}

TEST_F(DesktopEntriesTest, FindAnIdByClassInAnyLetterCaseAndByItsLastPart)
{
    install("system", "firefox.desktop", "Name=Firefox\n");
    install("system", "org.xfce.mousepad.desktop", "Name=Mousepad\n");
    DesktopEntries found = entries();
    EXPECT_EQ(idOf(found, ofClass("Navigator", "Firefox")), QStringLiteral("firefox"));
    EXPECT_EQ(idOf(found, ofClass("mousepad", "Mousepad")), QStringLiteral("org.xfce.mousepad"));
}

TEST_F(DesktopEntriesTest, FindAWindowOfUnknownClassByItsExecutable)
{
    const QByteArray program = QFileInfo(QCoreApplication::applicationFilePath()).fileName().toUtf8();
    install("system", "aa.desktop", "Name=Preferences\nExec=" + program + " --preferences\n");
    install("system", "bb.desktop", "Name=Interpreter\nNoDisplay=true\nExec=" + program + "\n");
    install("system", "cc.desktop", "Name=Program\nExec=env A=1 \"/opt/some where/" + program + "\" %U\n");
    WindowIdentity window = ofClass("unknown", "Unknown");
    window.processIdentifier = QCoreApplication::applicationPid();
    DesktopEntries found = entries();
    EXPECT_EQ(idOf(found, window), QStringLiteral("cc"));
}

TEST_F(DesktopEntriesTest, DoNotTakeAProcessOfThisFlatpakForThatOfAnotherSandboxesWindow)
{
    const QByteArray program = QFileInfo(QCoreApplication::applicationFilePath()).fileName().toUtf8();
    install("system", "own.desktop", "Name=Own\nStartupWMClass=Own\nExec=" + program + "\n");
    WindowIdentity window = ofClass("strange", "Strange");
    window.processIdentifier = QCoreApplication::applicationPid();
    DesktopEntries found({folder("system")}, "C", DesktopEntries::Surroundings::Flatpak);
    EXPECT_EQ(idOf(found, window), QStringLiteral("(none)"));
    EXPECT_EQ(idOf(found, ofClass("own", "Own")), QStringLiteral("own"));
}

TEST_F(DesktopEntriesTest, KnowAFlatpakByItsDescription)
{
    install("home", "info", "");
    EXPECT_EQ(DesktopEntries::surroundings(folder("home/info")), DesktopEntries::Surroundings::Flatpak);
    EXPECT_EQ(DesktopEntries::surroundings(folder("home/none")), DesktopEntries::Surroundings::Desktop);
}

TEST_F(DesktopEntriesTest, FindNothingForAWindowThatSaysNothing)
{
    install("system", "foo.desktop", "Name=Foo\n");
    DesktopEntries found = entries();
    EXPECT_EQ(idOf(found, WindowIdentity{}), QStringLiteral("(none)"));
}

TEST_F(DesktopEntriesTest, SeeWhatWasInstalledSince)
{
    install("system", "foo.desktop", "Name=Foo\n");
    DesktopEntries found = entries();
    EXPECT_FALSE(found.entry(QStringLiteral("bar")));
    install("home", "bar.desktop", "Name=Bar\n");
    EXPECT_TRUE(found.entry(QStringLiteral("bar")));
    remove("home", "bar.desktop");
    EXPECT_FALSE(found.entry(QStringLiteral("bar")));
}

TEST_F(DesktopEntriesTest, TakeNoHarmFromFilesThatAreNone)
{
    install("system", "empty.desktop", "");
    install("system", "binary.desktop", QByteArray("Name=\xff\xfe\0\x01", 9) + "\n=\n[\n\\");
    install("system", "folder.desktop/readme", "");
    install("system", "foo.desktop", "Name=Foo\n");
    EXPECT_TRUE(entries().entry(QStringLiteral("foo")));
    EXPECT_FALSE(entries().entry(QStringLiteral("empty")));
}

TEST_F(DesktopEntriesTest, NameTheApplicationInTheUsersLanguage)
{
    install("system", "foo.desktop",
        "Name=Files\nName[de]=Dateien\nName[de_AT]=Akten\nName[sr@latin]=Datoteke\n");
    const auto name = [&](const char *locale) { return entries(locale).entry(QStringLiteral("foo"))->name; };
    EXPECT_EQ(name("C"), QStringLiteral("Files"));
    EXPECT_EQ(name("fr_FR.UTF-8"), QStringLiteral("Files"));
    EXPECT_EQ(name("de_DE.UTF-8"), QStringLiteral("Dateien"));
    EXPECT_EQ(name("de_AT.UTF-8@euro"), QStringLiteral("Akten"));
    EXPECT_EQ(name("sr_RS.UTF-8@latin"), QStringLiteral("Datoteke"));
}

TEST(DesktopFile, MatchesLanguagesInTheSpecifiedOrder)
{
    EXPECT_EQ(desktopfile::nameKeys("de_AT.UTF-8@euro"),
        QByteArrayList({"Name[de_AT@euro]", "Name[de_AT]", "Name[de@euro]", "Name[de]", "Name"}));
    EXPECT_EQ(desktopfile::nameKeys("de"), QByteArrayList({"Name[de]", "Name"}));
    EXPECT_EQ(desktopfile::nameKeys("C.UTF-8"), QByteArrayList({"Name"}));
    EXPECT_EQ(desktopfile::nameKeys(""), QByteArrayList({"Name"}));
}

TEST(DesktopFile, ReadsItsOwnGroupOnly)
{
    const auto entry =
        desktopfile::parse("# a comment\n[Desktop Entry]\r\nType = Application\nName = Foo \\s Bar\n"
                           "Icon=foo\nExec=/usr/bin/foo --new %U\n\n"
                           "[Desktop Action New]\nName=New Window\nExec=bar\n",
            {"Name"});
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, QStringLiteral("Foo   Bar"));
    EXPECT_EQ(entry->icon, QStringLiteral("foo"));
    EXPECT_EQ(entry->executable, QStringLiteral("foo"));
    EXPECT_EQ(entry->argumentCount, 1);
}

TEST(DesktopFile, IsNoApplicationWhenItSaysSo)
{
    EXPECT_FALSE(desktopfile::parse("[Desktop Entry]\nType=Link\nName=Foo\n", {"Name"}));
    EXPECT_FALSE(desktopfile::parse("[Desktop Entry]\nType=Application\n", {"Name"}));
    EXPECT_FALSE(desktopfile::parse("Type=Application\nName=Foo\n", {"Name"}));
}

TEST(DesktopFile, UnquotesTheWordsOfExec)
{
    EXPECT_EQ(desktopfile::execWords(QStringLiteral("\"/opt/a b/run\" \"say \\\"hi\\\"\"  x \"\"")),
        QStringList(
            {QStringLiteral("/opt/a b/run"), QStringLiteral("say \"hi\""), QStringLiteral("x"), QString()}));
    EXPECT_EQ(desktopfile::execWords(QString()), QStringList());
}

/// Sets variables of the environment and puts them back.
class Environment
{
public:
    Environment(std::initializer_list<std::pair<const char *, const char *>> values)
    {
        for (const auto &[name, value] : values) {
            m_before.emplace_back(name, qgetenv(name));
            qputenv(name, value);
        }
    }
    ~Environment()
    {
        for (const auto &[name, value] : m_before) {
            if (value.isNull())
                qunsetenv(name);
            else
                qputenv(name, value);
        }
    }
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;

private:
    std::vector<std::pair<const char *, QByteArray>> m_before;
};

TEST(DesktopFolders, FollowTheBaseDirectories)
{
    const Environment environment{{"XDG_DATA_HOME", "/h/data/"}, {"XDG_DATA_DIRS", "/a:relative::/b/:/a"}};
    EXPECT_EQ(DesktopEntries::defaultFolders(),
        QStringList({QStringLiteral("/h/data/applications"), QStringLiteral("/a/applications"),
            QStringLiteral("/b/applications")}));
}

TEST(DesktopFolders, HaveTheSpecifiedDefaults)
{
    const Environment environment{{"XDG_DATA_HOME", ""}, {"XDG_DATA_DIRS", ""}, {"HOME", "/h"}};
    EXPECT_EQ(DesktopEntries::defaultFolders(),
        QStringList({QStringLiteral("/h/.local/share/applications"),
            QStringLiteral("/usr/local/share/applications"), QStringLiteral("/usr/share/applications")}));
}

TEST(DesktopFolders, OfTheDesktopComeAfterThoseOfAFlatpak)
{
    const Environment environment{{"XDG_DATA_HOME", "/h/.var/app/x/data"}, {"XDG_DATA_DIRS", "/app/share"},
        {"HOME", "/h"}, {"HOST_XDG_DATA_HOME", ""}};
    EXPECT_EQ(DesktopEntries::defaultFolders(DesktopEntries::Surroundings::Flatpak),
        QStringList({QStringLiteral("/h/.var/app/x/data/applications"),
            QStringLiteral("/app/share/applications"), QStringLiteral("/h/.local/share/applications"),
            QStringLiteral("/h/.local/share/flatpak/exports/share/applications"),
            QStringLiteral("/var/lib/flatpak/exports/share/applications"),
            QStringLiteral("/run/host/usr/local/share/applications"),
            QStringLiteral("/run/host/usr/share/applications")}));
}

TEST(DesktopFolders, OfTheUserAreWhereTheDesktopHasThem)
{
    const Environment environment{{"XDG_DATA_HOME", "/h/.var/app/x/data"}, {"XDG_DATA_DIRS", "/app/share"},
        {"HOME", "/h"}, {"HOST_XDG_DATA_HOME", "/elsewhere"}};
    const QStringList folders = DesktopEntries::defaultFolders(DesktopEntries::Surroundings::Flatpak);
    EXPECT_EQ(folders.value(2), QStringLiteral("/elsewhere/applications"));
    EXPECT_FALSE(folders.contains(QStringLiteral("/h/.local/share/applications")));
}

struct LocaleCase {
    const char *language;
    const char *all;
    const char *messages;
    const char *lang;
    const char *locale;
};

class MessagesLocale : public ::testing::TestWithParam<LocaleCase>
{
};

TEST_P(MessagesLocale, IsTheFirstOfTheUsersLanguages)
{
    const LocaleCase &row = GetParam();
    const Environment environment{
        {"LANGUAGE", row.language}, {"LC_ALL", row.all}, {"LC_MESSAGES", row.messages}, {"LANG", row.lang}};
    EXPECT_EQ(DesktopEntries::messagesLocale().toStdString(), row.locale);
}

INSTANTIATE_TEST_SUITE_P(Table, MessagesLocale,
    ::testing::Values(LocaleCase{"", "", "", "", "C"},
        LocaleCase{"", "", "", "de_AT.UTF-8@euro", "de_AT.UTF-8@euro"},
        LocaleCase{"", "", "de_AT", "en_US.UTF-8", "de_AT"},
        LocaleCase{"", "fr_FR.UTF-8", "de_AT", "en_US.UTF-8", "fr_FR.UTF-8"},
        // Whatever the locale, that of the machine's own language as well.
        LocaleCase{"fr", "", "", "de_DE.UTF-8", "fr"}, LocaleCase{"fr", "C", "", "de_DE.UTF-8", "fr"},
        LocaleCase{"fr", "", "", "C.UTF-8", "fr"}, LocaleCase{"fr", "", "", "", "fr"},
        LocaleCase{"de_AT:en", "", "", "fr_FR.UTF-8", "de_AT"},
        LocaleCase{"sr_RS.UTF-8@latin", "", "", "C", "sr_RS.UTF-8@latin"},
        LocaleCase{"fr-CA", "", "", "de_DE.UTF-8", "fr_CA"}, LocaleCase{"ast", "", "", "es_ES", "ast"},
        // An empty entry is the locale's language.
        LocaleCase{":fr", "", "", "de_DE.UTF-8", "de_DE.UTF-8"},
        LocaleCase{"C::fr", "", "", "de_DE.UTF-8", "de_DE.UTF-8"},
        // What names no language is passed over, and does not make the locale's one count again.
        LocaleCase{"C:fr", "", "", "de_DE.UTF-8", "fr"}, LocaleCase{"C.UTF-8:fr", "", "", "de_DE", "fr"},
        LocaleCase{"POSIX:fr", "", "", "de_DE", "fr"}, LocaleCase{"nonsense:fr", "", "", "de_DE", "fr"},
        LocaleCase{"d!:42:fr", "", "", "de_DE", "fr"}, LocaleCase{"C", "", "", "de_DE.UTF-8", "C"}));

} // namespace
