#pragma once

#include "platform/wayland/WaylandObject.h"

#include <QByteArrayList>
#include <QSocketNotifier>

#include <memory>
#include <optional>
#include <vector>

/// Something that the compositor offers to every client (wl_registry).
struct WaylandGlobal {
    uint32_t name = 0; ///< the compositor's number for it
    QByteArray interface;
    uint32_t version = 0; ///< the highest that the compositor knows
};

struct WaylandDisconnect {
    void operator()(wl_display *display) const { wl_display_disconnect(display); }
};

/// A connection to the compositor of $WAYLAND_DISPLAY, with its events delivered by the event loop of the
/// thread that made it.
///
/// Life cycle: `open`, which may fail and waits for the compositor's list of globals; objects are made by
/// `bind` and from one another, and go before the connection; events arrive from the event loop; requests are
/// sent when it is about to sleep, or at `flush`. `onClosed` is called once when the compositor goes away,
/// after which nothing arrives and requests are dropped. Everything on the thread that made it.
class WaylandConnection
{
public:
    /// Null when there is no compositor, or it refuses.
    static std::unique_ptr<WaylandConnection> open();
    /// The interfaces of the globals of $WAYLAND_DISPLAY's compositor; nothing when there is none. Needs no
    /// event loop.
    static std::optional<QByteArrayList> offeredInterfaces();
    ~WaylandConnection();
    WaylandConnection(const WaylandConnection &) = delete;
    WaylandConnection &operator=(const WaylandConnection &) = delete;

    /// A global that is new since `open`, and one that is no more.
    std::function<void(const WaylandGlobal &)> onGlobal;
    std::function<void(uint32_t name)> onGlobalRemoved;
    std::function<void()> onClosed;

    const std::vector<WaylandGlobal> &globals() const { return m_globals; }
    /// The first of the interface.
    std::optional<WaylandGlobal> global(const char *interface) const;

    /// The object behind a global, in its own version but at most this one. Its interface's tables must
    /// outlive the connection.
    wl_proxy *bind(const WaylandGlobal &global, const wl_interface &interface, uint32_t version);

    /// Calls it when the compositor has handled everything that was requested so far, and its answers have
    /// been delivered; not when the compositor goes away before.
    void sync(std::function<void()> onDone);
    /// Waits for that.
    void roundTrip();

    /// Sends what is buffered.
    void flush();

    bool isOpen() const { return m_isOpen; }

private:
    explicit WaylandConnection(wl_display *display);

    void handleRegistry(uint32_t event, const wl_argument *arguments);
    void readEvents();
    void closeOnError();

    const std::unique_ptr<wl_display, WaylandDisconnect> m_display;
    bool m_isOpen = true;
    bool m_isComplete = false; ///< the initial list of globals has been read
    std::vector<WaylandGlobal> m_globals;
    QSocketNotifier m_readable;
    QSocketNotifier m_writable;
    std::unique_ptr<WaylandObject> m_registry;
    std::vector<std::unique_ptr<WaylandObject>> m_syncs;
};
