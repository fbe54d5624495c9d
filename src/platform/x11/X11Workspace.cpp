#include "platform/x11/X11Workspace.h"

#include "platform/x11/X11Backends.h"

namespace
{

class X11Application : public RunningApplication
{
public:
    X11Application(std::shared_ptr<X11Desktop> desktop, X11Window window)
        : m_desktop(std::move(desktop))
        , m_window(std::move(window))
    {
    }

    std::optional<QString> localizedName() const override
    {
        lookUp();
        return m_entry ? std::optional(m_entry->name) : className();
    }

    std::optional<QString> bundleIdentifier() const override
    {
        lookUp();
        return m_entry ? std::optional(m_entry->id) : className();
    }

    qint64 processIdentifier() const override { return m_window.identity.processIdentifier; }

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
    std::optional<QString> className() const
    {
        const QString &name = m_window.identity.className;
        return name.isEmpty() ? std::nullopt : std::optional(name);
    }

    void lookUp() const
    {
        if (!m_isLookedUp)
            m_entry = m_desktop->entryOf(m_window);
        m_isLookedUp = true;
    }

    std::shared_ptr<X11Desktop> m_desktop;
    X11Window m_window;
    mutable bool m_isLookedUp = false;
    mutable std::optional<DesktopEntry> m_entry;
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
    auto active = m_desktop->activeWindow();
    if (!active)
        return nullptr;
    return std::make_shared<X11Application>(m_desktop, std::move(*active));
}

std::shared_ptr<RunningApplication> X11Workspace::takeActivatedApplication() const
{
    auto activated = m_desktop->takeActivated();
    if (!activated)
        return nullptr;
    return std::make_shared<X11Application>(m_desktop, std::move(*activated));
}

std::unique_ptr<Workspace> platform::makeX11Workspace()
{
    return X11Workspace::open();
}
