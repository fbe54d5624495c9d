#include "fakes/FakeWorkspace.h"
#include "platform/wayland/WaylandBackends.h"
#include "platform/x11/X11Backends.h"
#include "support/Compositor.h"
#include "support/TestProgram.h"
#include "support/Waiting.h"
#include "support/WaylandProgram.h"
#include "support/WindowManager.h"
#include "support/XServer.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>

namespace
{

// Above the kernel's largest number, so that no process has it.
constexpr qint64 FirstProcess = 5'000'000;

/// A desktop and the programs on it, whatever they are made of. A program is known by its name, which is its
/// identifier as well.
class WorkspaceWorld
{
public:
    virtual ~WorkspaceWorld() = default;

    virtual const Workspace &workspace() = 0;
    /// A program opens its first window, which comes to the front. The process that the desktop knows of it:
    /// another one for each program, or -1 where the desktop tells of none.
    virtual qint64 start(const char *name) = 0;
    /// The program's windows close; nobody else's comes to the front by that.
    virtual void end(const char *name) = 0;
};

struct WorkspaceBackend {
    const char *name;
    std::function<std::unique_ptr<WorkspaceWorld>()> makeWorld;
};

class FakeWorld : public WorkspaceWorld
{
public:
    const Workspace &workspace() override { return m_workspace; }

    qint64 start(const char *name) override
    {
        m_workspace.bringToFront(QString::fromLatin1(name), QString::fromLatin1(name), ++m_lastProcess);
        return m_lastProcess;
    }

    void end(const char *) override { m_workspace.leaveNobodyInFront(); }

private:
    FakeWorkspace m_workspace;
    qint64 m_lastProcess = FirstProcess;
};

class X11World : public WorkspaceWorld
{
public:
    explicit X11World(bool hasWindowManager)
        : m_windowManager(hasWindowManager ? std::make_unique<WindowManager>() : nullptr)
        , m_workspace(platform::makeX11Workspace())
    {
    }

    const Workspace &workspace() override { return *m_workspace; }

    qint64 start(const char *name) override
    {
        auto &program = m_programs[name];
        program = std::make_unique<TestProgram>("instance", name, ++m_lastProcess);
        program->show(m_windowManager ? TestProgram::Focus::Awaits : TestProgram::Focus::Takes);
        return m_lastProcess;
    }

    void end(const char *name) override { m_programs.erase(name); }

private:
    XServer m_server;
    std::unique_ptr<WindowManager> m_windowManager;
    std::unique_ptr<Workspace> m_workspace;
    std::map<std::string, std::unique_ptr<TestProgram>> m_programs;
    qint64 m_lastProcess = FirstProcess;
};

/// A compositor of its own, and a process for each program.
template<Compositor::Kind kind>
class WaylandWorld : public WorkspaceWorld
{
public:
    const Workspace &workspace() override { return *m_workspace; }

    qint64 start(const char *name) override
    {
        auto &program = m_programs[name];
        program = std::make_unique<WaylandProgram>(name);
        EXPECT_TRUE(program->open());
        constexpr bool TellsProcesses = kind == Compositor::Kind::KWin;
        return TellsProcesses ? program->processIdentifier() : -1;
    }

    void end(const char *name) override { m_programs.erase(name); }

private:
    Compositor m_compositor{kind};
    std::unique_ptr<Workspace> m_workspace = platform::makeWaylandWorkspace();
    std::map<std::string, std::unique_ptr<WaylandProgram>> m_programs;
};

const WorkspaceBackend Backends[] = {
    {"Fake", [] { return std::make_unique<FakeWorld>(); }},
    {"X11WithWindowManager", [] { return std::make_unique<X11World>(true); }},
    {"X11WithoutWindowManager", [] { return std::make_unique<X11World>(false); }},
    {"Sway", [] { return std::make_unique<WaylandWorld<Compositor::Kind::Sway>>(); }},
    {"KWin", [] { return std::make_unique<WaylandWorld<Compositor::Kind::KWin>>(); }},
};

class WorkspaceContract : public ::testing::TestWithParam<WorkspaceBackend>
{
protected:
    WorkspaceContract()
        : m_world(GetParam().makeWorld())
    {
    }

    WorkspaceWorld &world() { return *m_world; }
    std::shared_ptr<RunningApplication> frontmost() { return m_world->workspace().frontmostApplication(); }

    bool becomesFrontmost(const char *identifier)
    {
        return waitUntil([&] {
            const auto application = frontmost();
            return application && application->bundleIdentifier() == QString::fromLatin1(identifier);
        });
    }

private:
    std::unique_ptr<WorkspaceWorld> m_world;
};

TEST_P(WorkspaceContract, ThereIsNoFrontmostApplicationOnAnEmptyDesktop)
{
    EXPECT_EQ(frontmost(), nullptr);
}

TEST_P(WorkspaceContract, TheFrontmostApplicationTellsItsNameIdentifierAndProcess)
{
    const qint64 process = world().start("Alpha");
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    EXPECT_EQ(frontmost()->localizedName(), QStringLiteral("Alpha"));
    EXPECT_EQ(frontmost()->processIdentifier(), process);
    EXPECT_TRUE(frontmost()->isActive());
}

TEST_P(WorkspaceContract, AnApplicationStaysWhatItIsBehindAnother)
{
    const qint64 process = world().start("Alpha");
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto alpha = frontmost();
    world().start("Beta");
    ASSERT_TRUE(becomesFrontmost("Beta"));
    EXPECT_FALSE(alpha->isActive());
    EXPECT_TRUE(frontmost()->isActive());
    EXPECT_EQ(alpha->bundleIdentifier(), QStringLiteral("Alpha"));
    EXPECT_EQ(alpha->processIdentifier(), process);
}

TEST_P(WorkspaceContract, ActivatingAnApplicationBringsItToTheFront)
{
    world().start("Alpha");
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto alpha = frontmost();
    world().start("Beta");
    ASSERT_TRUE(becomesFrontmost("Beta"));
    alpha->activate();
    EXPECT_TRUE(waitUntil([&] { return alpha->isActive(); }));
    EXPECT_TRUE(becomesFrontmost("Alpha"));
}

TEST_P(WorkspaceContract, AnApplicationThatEndedIsNotFrontmostAnyMore)
{
    const qint64 process = world().start("Alpha");
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto alpha = frontmost();
    world().end("Alpha");
    EXPECT_TRUE(waitUntil([&] { return !alpha->isActive(); }));
    EXPECT_EQ(frontmost(), nullptr);
    EXPECT_EQ(alpha->processIdentifier(), process);
}

INSTANTIATE_TEST_SUITE_P(Backends, WorkspaceContract, ::testing::ValuesIn(Backends),
    [](const auto &backend) { return std::string(backend.param.name); });

} // namespace
