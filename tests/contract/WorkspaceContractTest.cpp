#include "fakes/FakeWorkspace.h"
#include "platform/x11/X11Backends.h"
#include "support/TestProgram.h"
#include "support/Waiting.h"
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
    /// A program opens its first window, which comes to the front.
    virtual void start(const char *name, qint64 processIdentifier) = 0;
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

    void start(const char *name, qint64 processIdentifier) override
    {
        m_workspace.bringToFront(QString::fromLatin1(name), QString::fromLatin1(name), processIdentifier);
    }

    void end(const char *) override { m_workspace.leaveNobodyInFront(); }

private:
    FakeWorkspace m_workspace;
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

    void start(const char *name, qint64 processIdentifier) override
    {
        auto &program = m_programs[name];
        program = std::make_unique<TestProgram>("instance", name, processIdentifier);
        program->show(m_windowManager ? TestProgram::Focus::Awaits : TestProgram::Focus::Takes);
    }

    void end(const char *name) override { m_programs.erase(name); }

private:
    XServer m_server;
    std::unique_ptr<WindowManager> m_windowManager;
    std::unique_ptr<Workspace> m_workspace;
    std::map<std::string, std::unique_ptr<TestProgram>> m_programs;
};

const WorkspaceBackend Backends[] = {
    {"Fake", [] { return std::make_unique<FakeWorld>(); }},
    {"X11WithWindowManager", [] { return std::make_unique<X11World>(true); }},
    {"X11WithoutWindowManager", [] { return std::make_unique<X11World>(false); }},
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
    world().start("Alpha", FirstProcess);
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    EXPECT_EQ(frontmost()->localizedName(), QStringLiteral("Alpha"));
    EXPECT_EQ(frontmost()->processIdentifier(), FirstProcess);
    EXPECT_TRUE(frontmost()->isActive());
}

TEST_P(WorkspaceContract, AnApplicationStaysWhatItIsBehindAnother)
{
    world().start("Alpha", FirstProcess);
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto alpha = frontmost();
    world().start("Beta", FirstProcess + 1);
    ASSERT_TRUE(becomesFrontmost("Beta"));
    EXPECT_FALSE(alpha->isActive());
    EXPECT_TRUE(frontmost()->isActive());
    EXPECT_EQ(alpha->bundleIdentifier(), QStringLiteral("Alpha"));
    EXPECT_EQ(alpha->processIdentifier(), FirstProcess);
}

TEST_P(WorkspaceContract, ActivatingAnApplicationBringsItToTheFront)
{
    world().start("Alpha", FirstProcess);
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto alpha = frontmost();
    world().start("Beta", FirstProcess + 1);
    ASSERT_TRUE(becomesFrontmost("Beta"));
    alpha->activate();
    EXPECT_TRUE(waitUntil([&] { return alpha->isActive(); }));
    EXPECT_TRUE(becomesFrontmost("Alpha"));
}

TEST_P(WorkspaceContract, AnApplicationThatEndedIsNotFrontmostAnyMore)
{
    world().start("Alpha", FirstProcess);
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto alpha = frontmost();
    world().end("Alpha");
    EXPECT_TRUE(waitUntil([&] { return !alpha->isActive(); }));
    EXPECT_EQ(frontmost(), nullptr);
    EXPECT_EQ(alpha->processIdentifier(), FirstProcess);
}

INSTANTIATE_TEST_SUITE_P(Backends, WorkspaceContract, ::testing::ValuesIn(Backends),
    [](const auto &backend) { return std::string(backend.param.name); });

} // namespace
