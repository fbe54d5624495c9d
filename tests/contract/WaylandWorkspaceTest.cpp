#include "platform/wayland/WaylandBackends.h"
#include "support/Compositor.h"
#include "support/Waiting.h"
#include "support/WaylandProgram.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace
{

using Kind = Compositor::Kind;
using Access = Compositor::Access;

/// A compositor that tells of its windows.
class WaylandWorkspaceTest : public ::testing::TestWithParam<Kind>
{
protected:
    void SetUp() override { ASSERT_NE(m_workspace, nullptr); }

    std::shared_ptr<RunningApplication> frontmost() { return m_workspace->frontmostApplication(); }

    bool becomesFrontmost(const char *identifier)
    {
        return waitUntil([&] {
            const auto application = frontmost();
            return application && application->bundleIdentifier() == QString::fromLatin1(identifier);
        });
    }

    Compositor &compositor() { return m_compositor; }
    Workspace &workspace() { return *m_workspace; }
    void endWorkspace() { m_workspace.reset(); }

private:
    Compositor m_compositor{GetParam()};
    std::unique_ptr<Workspace> m_workspace = platform::makeWaylandWorkspace();
};

std::string compositorName(const ::testing::TestParamInfo<Kind> &info)
{
    return info.param == Kind::Sway ? "Sway" : "KWin";
}

TEST_P(WaylandWorkspaceTest, KnowsTheWindowsThatWereThereBefore)
{
    WaylandProgram alpha("Alpha");
    ASSERT_TRUE(alpha.open());
    const auto workspace = platform::makeWaylandWorkspace();
    ASSERT_NE(workspace, nullptr);
    ASSERT_NE(workspace->frontmostApplication(), nullptr);
    EXPECT_EQ(workspace->frontmostApplication()->bundleIdentifier(), QStringLiteral("Alpha"));
}

TEST_P(WaylandWorkspaceTest, ActivatingGivesTheKeyboardToTheVeryWindow)
{
    WaylandProgram alpha("Alpha");
    ASSERT_TRUE(alpha.open());
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto application = frontmost();
    WaylandProgram beta("Beta");
    ASSERT_TRUE(beta.open());
    ASSERT_TRUE(becomesFrontmost("Beta"));
    application->activate();
    EXPECT_TRUE(waitUntil([&] { return alpha.hasFocus() && !beta.hasFocus(); }));
    EXPECT_TRUE(waitUntil([&] { return application->isActive(); }));
}

TEST_P(WaylandWorkspaceTest, ActivatesAnotherWindowOfTheProgramWhenTheOneIsGone)
{
    WaylandProgram alpha("Alpha");
    ASSERT_TRUE(alpha.open());
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto first = frontmost();
    ASSERT_TRUE(alpha.open());
    // The program stays in front; the window that is remembered from here on is the new one.
    ASSERT_TRUE(waitUntil([&] { return compositor().windowCount() == 2; }));
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto application = frontmost();
    WaylandProgram beta("Beta");
    ASSERT_TRUE(beta.open());
    ASSERT_TRUE(becomesFrontmost("Beta"));
    alpha.close();
    ASSERT_TRUE(waitUntil([&] { return compositor().windowCount() == 2; }));
    // The compositor has told its older clients before.
    QCoreApplication::processEvents();
    application->activate();
    EXPECT_TRUE(becomesFrontmost("Alpha"));
    EXPECT_TRUE(waitUntil([&] { return alpha.hasFocus(); }));
    EXPECT_TRUE(application->isActive());
    EXPECT_TRUE(first->isActive());
}

TEST_P(WaylandWorkspaceTest, ActivatingAProgramThatEndedDoesNothing)
{
    auto alpha = std::make_unique<WaylandProgram>("Alpha");
    ASSERT_TRUE(alpha->open());
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto application = frontmost();
    alpha.reset();
    WaylandProgram beta("Beta");
    ASSERT_TRUE(beta.open());
    ASSERT_TRUE(becomesFrontmost("Beta"));
    application->activate();
    EXPECT_FALSE(application->isActive());
    // A window that comes now gets the focus as ever.
    WaylandProgram gamma("Gamma");
    EXPECT_TRUE(gamma.open());
    EXPECT_TRUE(becomesFrontmost("Gamma"));
}

TEST_P(WaylandWorkspaceTest, TellsOnceWhoWasActivated)
{
    EXPECT_EQ(workspace().takeActivatedApplication(), nullptr);
    WaylandProgram alpha("Alpha");
    ASSERT_TRUE(alpha.open());
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    EXPECT_EQ(workspace().takeActivatedApplication(), nullptr);
    frontmost()->activate();
    const auto activated = workspace().takeActivatedApplication();
    ASSERT_NE(activated, nullptr);
    EXPECT_EQ(activated->bundleIdentifier(), QStringLiteral("Alpha"));
    EXPECT_TRUE(activated->isActive());
    EXPECT_EQ(workspace().takeActivatedApplication(), nullptr);
}

TEST_P(WaylandWorkspaceTest, SurvivesWindowsThatComeAndGo)
{
    WaylandProgram alpha("Alpha");
    for (int i = 0; i < 10; ++i) {
        ASSERT_TRUE(alpha.open());
        const auto application = frontmost();
        alpha.close();
        if (application)
            application->activate();
        frontmost();
    }
    WaylandProgram beta("Beta");
    EXPECT_TRUE(beta.open());
    EXPECT_TRUE(becomesFrontmost("Beta"));
}

TEST_P(WaylandWorkspaceTest, NobodyIsInFrontWhenTheCompositorIsGone)
{
    auto alpha = std::make_unique<WaylandProgram>("Alpha");
    ASSERT_TRUE(alpha->open());
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto application = frontmost();
    compositor().end();
    EXPECT_TRUE(waitUntil([&] { return frontmost() == nullptr; }));
    EXPECT_FALSE(application->isActive());
    application->activate();
    EXPECT_EQ(application->localizedName(), QStringLiteral("Alpha"));
}

TEST_P(WaylandWorkspaceTest, AnApplicationMayOutliveTheWorkspace)
{
    WaylandProgram alpha("Alpha");
    ASSERT_TRUE(alpha.open());
    ASSERT_TRUE(becomesFrontmost("Alpha"));
    const auto application = frontmost();
    endWorkspace();
    EXPECT_TRUE(application->isActive());
    EXPECT_EQ(application->localizedName(), QStringLiteral("Alpha"));
    application->activate();
}

INSTANTIATE_TEST_SUITE_P(
    Compositors, WaylandWorkspaceTest, ::testing::Values(Kind::Sway, Kind::KWin), compositorName);

TEST(WaylandWorkspace, ProcessesOfOneNameAreProgramsOfTheirOwnWhereTheCompositorTellsThem)
{
    const Compositor kwin(Kind::KWin);
    const auto workspace = platform::makeWaylandWorkspace();
    ASSERT_NE(workspace, nullptr);
    WaylandProgram first("Alpha");
    ASSERT_TRUE(first.open());
    ASSERT_TRUE(waitUntil([&] { return workspace->frontmostApplication() != nullptr; }));
    const auto application = workspace->frontmostApplication();
    WaylandProgram second("Alpha");
    ASSERT_TRUE(second.open());
    EXPECT_TRUE(waitUntil([&] {
        const auto frontmost = workspace->frontmostApplication();
        return frontmost && frontmost->processIdentifier() == second.processIdentifier();
    }));
    EXPECT_FALSE(application->isActive());
}

TEST(WaylandWorkspace, ThereIsNoneWhereTheCompositorTellsNobodyOfItsWindows)
{
    for (const auto &[kind, access] :
        {std::pair(Kind::KWin, Access::Restricted), std::pair(Kind::Mutter, Access::Open)}) {
        const Compositor compositor(kind, access);
        ASSERT_TRUE(compositor.isRunning());
        EXPECT_TRUE(platform::hasWaylandCompositor());
        EXPECT_EQ(platform::makeWaylandWorkspace(), nullptr);
    }
}

} // namespace
