#include "fakes/FakeWorkspace.h"

FakeWorkspace::FakeWorkspace() = default;
FakeWorkspace::~FakeWorkspace() = default;

std::shared_ptr<FakeWorkspace::Application> FakeWorkspace::bringToFront(
    std::optional<QString> name, std::optional<QString> identifier, qint64 processIdentifier)
{
    m_frontmost =
        std::make_shared<Application>(*this, std::move(name), std::move(identifier), processIdentifier);
    return m_frontmost;
}

std::shared_ptr<RunningApplication> FakeWorkspace::frontmostApplication() const
{
    return m_frontmost;
}

FakeWorkspace::Application::Application(FakeWorkspace &workspace, std::optional<QString> name,
    std::optional<QString> identifier, qint64 processIdentifier)
    : m_workspace(workspace)
    , m_name(std::move(name))
    , m_identifier(std::move(identifier))
    , m_processIdentifier(processIdentifier)
{
}

void FakeWorkspace::Application::activate()
{
    ++m_activationCount;
    m_workspace.bringToFront(shared_from_this());
}

bool FakeWorkspace::Application::isActive() const
{
    return m_workspace.frontmostApplication().get() == this;
}
