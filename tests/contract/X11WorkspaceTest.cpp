#include "platform/x11/X11Backends.h"
#include "support/TestProgram.h"
#include "support/Waiting.h"
#include "support/WindowManager.h"
#include "support/XServer.h"

#include <gtest/gtest.h>

namespace
{

constexpr qint64 Process = 5'000'000;

class X11WorkspaceTest : public ::testing::Test
{
protected:
    std::shared_ptr<RunningApplication> frontmost() { return m_workspace->frontmostApplication(); }

    bool becomesFrontmost(const char *identifier)
    {
        return waitUntil([&] {
            const auto application = frontmost();
            return application && application->bundleIdentifier() == QString::fromLatin1(identifier);
        });
    }

private:
    XServer m_server;
    std::unique_ptr<Workspace> m_workspace = platform::makeX11Workspace();
};

TEST_F(X11WorkspaceTest, FollowsAWindowManagerThatStartsLater)
{
    TestProgram alpha("alpha", "Alpha", Process);
    alpha.show(TestProgram::Focus::Takes);
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    WindowManager windowManager;
    ASSERT_TRUE(windowManager.isRunning());
    TestProgram beta("beta", "Beta", Process + 1);
    beta.show(TestProgram::Focus::Awaits);
    EXPECT_TRUE(becomesFrontmost("Beta"));
}

TEST_F(X11WorkspaceTest, AsksTheServerAfterTheWindowManagerCrashed)
{
    TestProgram alpha("alpha", "Alpha", Process);
    {
        WindowManager windowManager;
        ASSERT_TRUE(windowManager.isRunning());
        alpha.show(TestProgram::Focus::Awaits);
        ASSERT_TRUE(becomesFrontmost("Alpha"));
        windowManager.kill();
    }
    TestProgram beta("beta", "Beta", Process + 1);
    beta.show(TestProgram::Focus::Takes);
    EXPECT_TRUE(becomesFrontmost("Beta"));
}

TEST_F(X11WorkspaceTest, ActivatesAnotherWindowOfTheProgramWhenTheOneIsGone)
{
    WindowManager windowManager;
    ASSERT_TRUE(windowManager.isRunning());
    TestProgram alpha("alpha", "Alpha", Process);
    alpha.show(TestProgram::Focus::Awaits);
    const xcb_window_t remembered = alpha.show(TestProgram::Focus::Awaits);
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto application = frontmost();
    TestProgram beta("beta", "Beta", Process + 1);
    beta.show(TestProgram::Focus::Awaits);
    ASSERT_TRUE(becomesFrontmost("Beta"));
    alpha.close(remembered);
    application->activate();
    EXPECT_TRUE(becomesFrontmost("Alpha"));
}

TEST_F(X11WorkspaceTest, ActivatingAProgramWithoutWindowsDoesNothing)
{
    WindowManager windowManager;
    ASSERT_TRUE(windowManager.isRunning());
    auto alpha = std::make_unique<TestProgram>("alpha", "Alpha", Process);
    alpha->show(TestProgram::Focus::Awaits);
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto application = frontmost();
    alpha.reset();
    TestProgram beta("beta", "Beta", Process + 1);
    beta.show(TestProgram::Focus::Awaits);
    ASSERT_TRUE(becomesFrontmost("Beta"));
    application->activate();
    EXPECT_FALSE(application->isActive());
    EXPECT_TRUE(beta.hasFocus());
}

TEST_F(X11WorkspaceTest, TakesTwoSandboxesProgramsWithOneProcessNumberForTwo)
{
    WindowManager windowManager;
    ASSERT_TRUE(windowManager.isRunning());
    auto alpha = std::make_unique<TestProgram>("alpha", "Alpha", Process);
    TestProgram beta("beta", "Beta", Process);
    alpha->show(TestProgram::Focus::Awaits);
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto application = frontmost();
    alpha.reset();
    beta.show(TestProgram::Focus::Awaits);
    ASSERT_TRUE(becomesFrontmost("Beta"));
    EXPECT_FALSE(application->isActive());
}

TEST_F(X11WorkspaceTest, KnowsAProgramWhoseWindowsHaveSeveralClasses)
{
    WindowManager windowManager;
    ASSERT_TRUE(windowManager.isRunning());
    TestProgram alpha("alpha", "Alpha", Process);
    const xcb_window_t remembered = alpha.show(TestProgram::Focus::Awaits);
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto application = frontmost();
    alpha.setClass("alpha-table", "AlphaTable");
    alpha.show(TestProgram::Focus::Awaits);
    ASSERT_TRUE(becomesFrontmost("AlphaTable"));
    EXPECT_TRUE(application->isActive());
    alpha.close(remembered);
    TestProgram beta("beta", "Beta", Process + 1);
    beta.show(TestProgram::Focus::Awaits);
    ASSERT_TRUE(becomesFrontmost("Beta"));
    application->activate();
    EXPECT_TRUE(becomesFrontmost("AlphaTable"));
}

TEST_F(X11WorkspaceTest, KnowsAProgramWithoutProcessByItsClass)
{
    TestProgram alpha("alpha", "Alpha");
    alpha.show(TestProgram::Focus::Takes);
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto first = frontmost();
    EXPECT_EQ(first->processIdentifier(), -1);
    alpha.show(TestProgram::Focus::Takes);
    EXPECT_TRUE(first->isActive());
}

TEST_F(X11WorkspaceTest, SurvivesWindowsThatComeAndGo)
{
    WindowManager windowManager;
    ASSERT_TRUE(windowManager.isRunning());
    TestProgram alpha("alpha", "Alpha", Process);
    for (int i = 0; i < 20; ++i) {
        const xcb_window_t window = alpha.show(TestProgram::Focus::Awaits);
        const auto application = frontmost();
        alpha.close(window);
        if (application)
            application->activate();
        frontmost();
    }
    TestProgram beta("beta", "Beta", Process + 1);
    beta.show(TestProgram::Focus::Awaits);
    EXPECT_TRUE(becomesFrontmost("Beta"));
}

TEST_F(X11WorkspaceTest, AnApplicationMayOutliveTheWorkspace)
{
    TestProgram alpha("alpha", "Alpha", Process);
    alpha.show(TestProgram::Focus::Takes);
    auto workspace = platform::makeX11Workspace();
    const auto application = workspace->frontmostApplication();
    ASSERT_NE(application, nullptr);
    workspace.reset();
    EXPECT_TRUE(application->isActive());
    EXPECT_EQ(application->localizedName(), QStringLiteral("Alpha"));
}

} // namespace
