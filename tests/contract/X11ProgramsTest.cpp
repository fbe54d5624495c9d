// The back ends of this folder against programs that people use.

#include "platform/x11/X11Backends.h"
#include "support/KeyRobot.h"
#include "support/SelectionOwner.h"
#include "support/Waiting.h"
#include "support/WindowManager.h"
#include "support/XServer.h"

#include <linux/input-event-codes.h>

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{

using Offer = SelectionOwner::Offer;

using std::chrono::seconds;

/// A desktop with a window manager, and programs with a home of their own.
class X11ProgramsTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_windowManager.isRunning()); }

    void TearDown() override
    {
        for (const auto &process : m_processes) {
            process->terminate();
            if (!process->waitForFinished(5000)) {
                process->kill();
                process->waitForFinished(5000);
            }
        }
    }

    static bool isInstalled(const char *program)
    {
        return !QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty();
    }

    qint64 start(const char *program, const QStringList &arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *const variable :
            {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
            environment.insert(QString::fromLatin1(variable), m_home.path());
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("disabled:"));
        environment.insert(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("memory"));
        environment.insert(QStringLiteral("NO_AT_BRIDGE"), QStringLiteral("1"));
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(environment);
        process->setStandardErrorFile(QProcess::nullDevice());
        process->setStandardOutputFile(QProcess::nullDevice());
        process->start(QString::fromLatin1(program), arguments);
        process->waitForStarted();
        m_processes.push_back(std::move(process));
        return m_processes.back()->processId();
    }

    /// Starts an xterm that waits for one line and writes it to `lineFile`.
    qint64 startXterm()
    {
        return start("xterm",
            {QStringLiteral("-u8"), QStringLiteral("-e"), QStringLiteral("sh"), QStringLiteral("-c"),
                QStringLiteral(
                    "read -r line; printf %s \"$line\" >'%1.part'; mv '%1.part' '%1'; exec sleep 60")
                    .arg(file("line"))});
    }

    /// What an empty document in mousepad holds after a paste in each of the groups.
    QByteArray pastedIntoMousepad(std::initializer_list<int> groups)
    {
        SelectionOwner clipboard(Offer{{"UTF8_STRING", "pasted;"}});
        clipboard.own();
        QFile(file("document.txt")).open(QIODevice::WriteOnly);
        start("mousepad", {file("document.txt")});
        EXPECT_TRUE(comesToTheFront("org.xfce.mousepad"));
        int count = 0;
        for (const int group : groups) {
            m_robot.lockGroup(group);
            paste();
            ++count;
            EXPECT_TRUE(waitUntil([&] { return clipboard.requests().count("UTF8_STRING") == count; }))
                << "group " << group;
        }
        return saved();
    }

    QByteArray saved()
    {
        m_robot.setLayout({QStringLiteral("us"), QStringLiteral("-variant"), QStringLiteral("")});
        m_robot.lockGroup(0);
        waitUntil([&] {
            m_robot.chord({KEY_LEFTCTRL, KEY_S});
            return !contentOf(file("document.txt")).isEmpty();
        });
        return contentOf(file("document.txt")).trimmed();
    }

    QString file(const char *name) const { return m_home.filePath(QString::fromLatin1(name)); }

    static QByteArray contentOf(const QString &path)
    {
        QFile read(path);
        return read.open(QIODevice::ReadOnly) ? read.readAll() : QByteArray();
    }

    bool comesToTheFront(const char *identifier)
    {
        return waitUntil(
            [&] {
                const auto application = m_workspace->frontmostApplication();
                return application && application->bundleIdentifier() == QString::fromLatin1(identifier);
            },
            seconds(30));
    }

    void paste()
    {
        for (const KeyMotion motion : {KeyMotion::Down, KeyMotion::Up}) {
            auto event = m_poster->createKeyboardEvent(nullptr, 9, motion);
            event->flags = EventFlagCommand;
            m_poster->post(EventTapLocation::AnnotatedSession, *event);
        }
    }

    std::shared_ptr<RunningApplication> frontmost() { return m_workspace->frontmostApplication(); }
    KeyRobot &robot() { return m_robot; }

private:
    XServer m_server;
    QTemporaryDir m_home;
    WindowManager m_windowManager;
    KeyRobot m_robot;
    EventLoopQueue m_queue;
    std::unique_ptr<Workspace> m_workspace = platform::makeX11Workspace();
    std::unique_ptr<EventPoster> m_poster = platform::makeX11EventPoster(m_queue, *m_workspace);
    std::vector<std::unique_ptr<QProcess>> m_processes;
};

TEST_F(X11ProgramsTest, XtermIsKnownByItsDesktopFile)
{
    if (!isInstalled("xterm"))
        GTEST_SKIP() << "xterm is not installed";
    const qint64 process = startXterm();
    ASSERT_TRUE(comesToTheFront("debian-xterm"));
    EXPECT_EQ(frontmost()->localizedName(), QStringLiteral("XTerm"));
    EXPECT_EQ(frontmost()->processIdentifier(), process);
}

TEST_F(X11ProgramsTest, MousepadIsKnownByItsDesktopFile)
{
    if (!isInstalled("mousepad"))
        GTEST_SKIP() << "mousepad is not installed";
    const qint64 process = start("mousepad", {});
    ASSERT_TRUE(comesToTheFront("org.xfce.mousepad"));
    EXPECT_EQ(frontmost()->localizedName(), QStringLiteral("Mousepad"));
    EXPECT_EQ(frontmost()->processIdentifier(), process);
}

TEST_F(X11ProgramsTest, APasteLandsInXterm)
{
    if (!isInstalled("xterm"))
        GTEST_SKIP() << "xterm is not installed";
    SelectionOwner clipboard(Offer{{"UTF8_STRING", "p\xc3\xa4sted text\n"}});
    clipboard.own();
    SelectionOwner selected(Offer{{"UTF8_STRING", "selected\n"}, {"STRING", "selected\n"}}, "PRIMARY");
    selected.own();
    startXterm();
    ASSERT_TRUE(comesToTheFront("debian-xterm"));
    paste();
    EXPECT_TRUE(waitUntil([&] { return QFile::exists(file("line")); }));
    EXPECT_EQ(contentOf(file("line")), "p\xc3\xa4sted text");
}

TEST_F(X11ProgramsTest, APasteLandsInMousepadInEveryGroupOfTheLayout)
{
    if (!isInstalled("mousepad"))
        GTEST_SKIP() << "mousepad is not installed";
    ASSERT_TRUE(robot().setLayout({QStringLiteral("us,de,ru")}));
    EXPECT_EQ(pastedIntoMousepad({0, 1, 2, 0}), "pasted;pasted;pasted;pasted;");
}

TEST_F(X11ProgramsTest, APasteLandsInMousepadWithDvorakBesideCyrillic)
{
    if (!isInstalled("mousepad"))
        GTEST_SKIP() << "mousepad is not installed";
    ASSERT_TRUE(
        robot().setLayout({QStringLiteral("us,ru"), QStringLiteral("-variant"), QStringLiteral("dvorak,")}));
    EXPECT_EQ(pastedIntoMousepad({0, 1}), "pasted;pasted;");
}

TEST_F(X11ProgramsTest, APasteLandsInMousepadWithCyrillicOnly)
{
    if (!isInstalled("mousepad"))
        GTEST_SKIP() << "mousepad is not installed";
    ASSERT_TRUE(robot().setLayout({QStringLiteral("ru")}));
    EXPECT_EQ(pastedIntoMousepad({0}), "pasted;");
}

TEST_F(X11ProgramsTest, APasteLandsInXtermWithAForeignLayoutOnly)
{
    if (!isInstalled("xterm"))
        GTEST_SKIP() << "xterm is not installed";
    ASSERT_TRUE(robot().setLayout({QStringLiteral("ru")}));
    SelectionOwner clipboard(Offer{{"UTF8_STRING", "pasted\n"}});
    clipboard.own();
    startXterm();
    ASSERT_TRUE(comesToTheFront("debian-xterm"));
    paste();
    EXPECT_TRUE(waitUntil([&] { return contentOf(file("line")) == "pasted"; }));
}

TEST_F(X11ProgramsTest, AnApplicationIsActivatedFromBehindAnother)
{
    if (!isInstalled("xterm") || !isInstalled("mousepad"))
        GTEST_SKIP() << "xterm or mousepad is not installed";
    startXterm();
    ASSERT_TRUE(comesToTheFront("debian-xterm"));
    const auto terminal = frontmost();
    start("mousepad", {});
    ASSERT_TRUE(comesToTheFront("org.xfce.mousepad"));
    EXPECT_FALSE(terminal->isActive());
    terminal->activate();
    EXPECT_TRUE(waitUntil([&] { return terminal->isActive(); }));
    EXPECT_TRUE(comesToTheFront("debian-xterm"));
}

} // namespace
