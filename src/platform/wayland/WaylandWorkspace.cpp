#include "platform/wayland/WaylandWorkspace.h"

#include "platform/linux/WindowApplication.h"

namespace
{

class WaylandApplication : public WindowApplication
{
public:
    WaylandApplication(
        std::shared_ptr<WaylandToplevels> toplevels, const WaylandToplevels::KnownWindow &window)
        : WindowApplication(window.identity)
        , m_toplevels(std::move(toplevels))
        , m_window(window)
    {
    }

    void activate() override
    {
        m_toplevels->noteActivated(m_window);
        if (const auto number = m_toplevels->latestLike(m_window))
            m_toplevels->bringToFront(*number);
    }

    bool isActive() const override { return m_toplevels->isActive(m_window); }

private:
    std::optional<DesktopEntry> findEntry() const override { return m_toplevels->entryOf(identity()); }

    const std::shared_ptr<WaylandToplevels> m_toplevels;
    const WaylandToplevels::KnownWindow m_window;
};

} // namespace

WaylandWorkspace::WaylandWorkspace(std::shared_ptr<WaylandToplevels> toplevels)
    : m_toplevels(std::move(toplevels))
{
}

std::shared_ptr<RunningApplication> WaylandWorkspace::frontmostApplication() const
{
    const auto number = m_toplevels->active();
    if (!number)
        return nullptr;
    const WaylandToplevels::KnownWindow window{*number, m_toplevels->find(*number)->identity};
    return std::make_shared<WaylandApplication>(m_toplevels, window);
}

std::shared_ptr<RunningApplication> WaylandWorkspace::takeActivatedApplication() const
{
    const auto activated = m_toplevels->takeActivated();
    return activated ? std::make_shared<WaylandApplication>(m_toplevels, *activated) : nullptr;
}
