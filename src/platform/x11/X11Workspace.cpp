#include "platform/x11/X11Workspace.h"

#include "platform/linux/WindowApplication.h"
#include "platform/x11/X11Backends.h"

namespace
{

class X11Application : public WindowApplication
{
public:
    X11Application(std::shared_ptr<X11Desktop> desktop, const X11Window &window)
        : WindowApplication(window.identity)
        , m_desktop(std::move(desktop))
        , m_window(window)
    {
    }

    void activate() override
    {
        m_desktop->noteActivated(m_window);
        // The server may have given the number of a closed window to another program's.
        const auto now = m_desktop->describe(m_window.id);
        if (now && X11Desktop::isSameProgram(*now, m_window))
            m_desktop->bringToFront(m_window.id);
        else if (const auto other = m_desktop->topmostLike(m_window))
            m_desktop->bringToFront(other->id);
    }

    bool isActive() const override
    {
        const auto active = m_desktop->activeWindow();
        return active && X11Desktop::isSameProgram(*active, m_window);
    }

private:
    std::optional<DesktopEntry> findEntry() const override { return m_desktop->entryOf(m_window); }

    std::shared_ptr<X11Desktop> m_desktop;
    X11Window m_window;
};

} // namespace

std::unique_ptr<X11Workspace> X11Workspace::open()
{
    auto desktop = X11Desktop::open();
    if (!desktop)
        return nullptr;
    return std::unique_ptr<X11Workspace>(new X11Workspace(std::move(desktop)));
}

std::shared_ptr<RunningApplication> X11Workspace::frontmostApplication() const
{
    const auto active = m_desktop->activeWindow();
    if (!active)
        return nullptr;
    return std::make_shared<X11Application>(m_desktop, *active);
}

std::shared_ptr<RunningApplication> X11Workspace::takeActivatedApplication() const
{
    const auto activated = m_desktop->takeActivated();
    if (!activated)
        return nullptr;
    return std::make_shared<X11Application>(m_desktop, *activated);
}

std::unique_ptr<Workspace> platform::makeX11Workspace()
{
    return X11Workspace::open();
}
