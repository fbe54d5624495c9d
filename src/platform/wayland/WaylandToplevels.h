#pragma once

#include "platform/linux/DesktopEntries.h"
#include "platform/wayland/WaylandConnection.h"

#include <map>

/// The windows of a compositor, as it announces them: which protocol tells of them is the derived
/// class's. Everything on the thread that made it.
class WaylandToplevels
{
public:
    /// A window's number in this list; never given twice.
    using Number = quint64;

    struct Toplevel {
        WindowIdentity identity;
        bool isActive = false;
        quint64 lastActive = 0; ///< rises from one activation to the next
    };

    /// A window that may be gone.
    struct KnownWindow {
        Number number = 0;
        WindowIdentity identity;
    };

    /// By wlr-foreign-toplevel-management, else by KWin's window management; null when the compositor has
    /// neither. Waits for the compositor's list of windows.
    static std::shared_ptr<WaylandToplevels> open();
    virtual ~WaylandToplevels();

    /// Called when a window is gone.
    std::function<void()> onRemoved;

    /// The window with the keyboard focus.
    std::optional<Number> active() const;
    /// Null when it is gone.
    const Toplevel *find(Number number) const;
    /// The window itself while it is there, else the one of the same program that was active last.
    std::optional<Number> latestLike(const KnownWindow &window) const;
    /// Asks for the window to be in front, with the keyboard focus.
    virtual void bringToFront(Number number) = 0;

    /// Keeps in mind whose program was activated last, until it is taken.
    void noteActivated(const KnownWindow &window) { m_activated = window; }
    std::optional<KnownWindow> takeActivated() { return std::exchange(m_activated, std::nullopt); }

    std::optional<DesktopEntry> entryOf(const WindowIdentity &identity)
    {
        return m_entries.entryOf(identity);
    }

    /// Whether the window with the keyboard focus is this one, or belongs to the same program.
    bool isActive(const KnownWindow &window) const;

protected:
    explicit WaylandToplevels(std::unique_ptr<WaylandConnection> connection);

    WaylandConnection &connection() { return *m_connection; }
    Number add();
    Toplevel &at(Number number) { return m_toplevels[number]; }
    void setApplicationId(Number number, const char *applicationId);
    void setActive(Number number, bool isActive);
    void remove(Number number);

private:
    /// By process where it is known of both, else by class. False when nothing is known.
    static bool isSameProgram(const WindowIdentity &one, const WindowIdentity &other);

    const std::unique_ptr<WaylandConnection> m_connection;
    std::map<Number, Toplevel> m_toplevels;
    Number m_lastNumber = 0;
    quint64 m_lastActivation = 0;
    std::optional<KnownWindow> m_activated;
    DesktopEntries m_entries;
};
