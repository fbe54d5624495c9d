#pragma once

#include "platform/Workspace.h"

#include <vector>

/// A desktop in memory: tests say which application is in front.
class FakeWorkspace : public Workspace
{
public:
    class Application;

    FakeWorkspace();
    ~FakeWorkspace() override;

    /// Brings an application to the front, as a user would.
    std::shared_ptr<Application> bringToFront(
        std::optional<QString> name, std::optional<QString> identifier, qint64 processIdentifier = 4711);
    void bringToFront(const std::shared_ptr<Application> &application) { m_frontmost = application; }
    /// No application is in front.
    void leaveNobodyInFront() { m_frontmost.reset(); }

    std::shared_ptr<RunningApplication> frontmostApplication() const override;

private:
    std::shared_ptr<Application> m_frontmost;
};

class FakeWorkspace::Application : public RunningApplication, public std::enable_shared_from_this<Application>
{
public:
    Application(FakeWorkspace &workspace, std::optional<QString> name, std::optional<QString> identifier,
        qint64 processIdentifier);

    /// How often `activate` was called.
    int activationCount() const { return m_activationCount; }

    std::optional<QString> localizedName() const override { return m_name; }
    std::optional<QString> bundleIdentifier() const override { return m_identifier; }
    qint64 processIdentifier() const override { return m_processIdentifier; }
    void activate() override;
    bool isActive() const override;

private:
    FakeWorkspace &m_workspace;
    std::optional<QString> m_name;
    std::optional<QString> m_identifier;
    qint64 m_processIdentifier;
    int m_activationCount = 0;
};
