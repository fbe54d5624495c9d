#include "platform/linux/SilentWorkspace.h"

namespace
{

class NamelessApplication : public RunningApplication
{
public:
    explicit NamelessApplication(std::shared_ptr<Workspace> known)
        : m_known(std::move(known))
    {
    }

    std::optional<QString> localizedName() const override { return std::nullopt; }
    std::optional<QString> bundleIdentifier() const override { return std::nullopt; }
    qint64 processIdentifier() const override { return -1; }
    void activate() override
    {
        // Keys that are pressed after this are not for whom was activated before.
        if (m_known)
            m_known->takeActivatedApplication();
    }
    bool isActive() const override { return !m_known || !m_known->frontmostApplication(); }

private:
    const std::shared_ptr<Workspace> m_known;
};

} // namespace

SilentWorkspace::SilentWorkspace(std::unique_ptr<Workspace> known)
    : m_known(std::move(known))
{
}

std::shared_ptr<RunningApplication> SilentWorkspace::frontmostApplication() const
{
    if (auto application = m_known ? m_known->frontmostApplication() : nullptr)
        return application;
    return std::make_shared<NamelessApplication>(m_known);
}

std::shared_ptr<RunningApplication> SilentWorkspace::takeActivatedApplication() const
{
    return m_known ? m_known->takeActivatedApplication() : nullptr;
}
