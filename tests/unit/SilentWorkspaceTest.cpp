#include "platform/linux/SilentWorkspace.h"
#include "fakes/FakeWorkspace.h"

#include <gtest/gtest.h>

#include <utility>

namespace
{

/// Some programs' windows, and who was activated.
class KnownWorkspace : public FakeWorkspace
{
public:
    std::shared_ptr<RunningApplication> takeActivatedApplication() const override
    {
        return std::exchange(activated, nullptr);
    }

    mutable std::shared_ptr<RunningApplication> activated;
};

struct PartlyKnown {
    std::unique_ptr<KnownWorkspace> owned = std::make_unique<KnownWorkspace>();
    KnownWorkspace &known = *owned;
    SilentWorkspace workspace{std::move(owned)};
};

} // namespace

TEST(SilentWorkspace, WhereNobodyIsKnownSomebodyWithoutANameIsInFront)
{
    const SilentWorkspace workspace(nullptr);
    const auto application = workspace.frontmostApplication();
    ASSERT_NE(application, nullptr);
    EXPECT_EQ(application->localizedName(), std::nullopt);
    EXPECT_EQ(application->bundleIdentifier(), std::nullopt);
    EXPECT_EQ(application->processIdentifier(), -1);
    application->activate();
    EXPECT_TRUE(application->isActive());
    EXPECT_EQ(workspace.takeActivatedApplication(), nullptr);
}

TEST(SilentWorkspace, AKnownApplicationIsTheOneInFront)
{
    const PartlyKnown desktop;
    const auto editor =
        desktop.known.bringToFront(QStringLiteral("Editor"), QStringLiteral("org.example.Editor"));
    EXPECT_EQ(desktop.workspace.frontmostApplication(), editor);
}

TEST(SilentWorkspace, TheOneWithoutANameIsActiveWhileNoKnownOneIs)
{
    const PartlyKnown desktop;
    const auto nameless = desktop.workspace.frontmostApplication();
    ASSERT_NE(nameless, nullptr);
    EXPECT_TRUE(nameless->isActive());
    desktop.known.bringToFront(QStringLiteral("Editor"), QStringLiteral("org.example.Editor"));
    EXPECT_FALSE(nameless->isActive());
    desktop.known.leaveNobodyInFront();
    EXPECT_TRUE(nameless->isActive());
}

TEST(SilentWorkspace, ActivatingTheOneWithoutANameLeavesTheKnownOnesAlone)
{
    const PartlyKnown desktop;
    const auto nameless = desktop.workspace.frontmostApplication();
    const auto editor =
        desktop.known.bringToFront(QStringLiteral("Editor"), QStringLiteral("org.example.Editor"));
    nameless->activate();
    EXPECT_EQ(desktop.workspace.frontmostApplication(), editor);
    EXPECT_EQ(editor->activationCount(), 0);
    EXPECT_EQ(desktop.workspace.takeActivatedApplication(), nullptr);
}

TEST(SilentWorkspace, TellsOnceWhichKnownOneWasActivated)
{
    const PartlyKnown desktop;
    const auto editor =
        desktop.known.bringToFront(QStringLiteral("Editor"), QStringLiteral("org.example.Editor"));
    desktop.known.activated = editor;
    EXPECT_EQ(desktop.workspace.takeActivatedApplication(), editor);
    EXPECT_EQ(desktop.workspace.takeActivatedApplication(), nullptr);
}

TEST(SilentWorkspace, AnApplicationMayOutliveTheWorkspace)
{
    auto desktop = std::make_unique<PartlyKnown>();
    const auto nameless = desktop->workspace.frontmostApplication();
    desktop.reset();
    EXPECT_TRUE(nameless->isActive());
}
