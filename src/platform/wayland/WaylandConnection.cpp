#include "platform/wayland/WaylandConnection.h"

#include <QAbstractEventDispatcher>

#include <wayland-client-protocol.h>

#include <algorithm>
#include <cerrno>

namespace
{

// Requests and events by number (wayland.xml).
enum DisplayRequest : uint32_t { DisplaySync = 0, DisplayGetRegistry = 1 };
enum RegistryRequest : uint32_t { RegistryBind = 0 };
enum RegistryEvent : uint32_t { RegistryGlobal = 0, RegistryGlobalRemove = 1 };

wl_proxy *asProxy(wl_display *display)
{
    return reinterpret_cast<wl_proxy *>(display);
}

wl_proxy *makeOfDisplay(wl_display *display, DisplayRequest request, const wl_interface &interface)
{
    wl_argument newObject{};
    return wl_proxy_marshal_array_flags(asProxy(display), request, &interface, 1, 0, &newObject);
}

/// Null when there is no compositor.
wl_display *connectToDisplay()
{
    // With no name the library would try a default one, where a compositor of somebody else's may listen.
    const QByteArray name = qgetenv("WAYLAND_DISPLAY");
    // A connection that is handed over is the toolkit's; the library would take it whatever the name.
    const bool isHandedOver = qEnvironmentVariableIsSet("WAYLAND_SOCKET");
    return name.isEmpty() || isHandedOver ? nullptr : wl_display_connect(name.constData());
}

} // namespace

std::unique_ptr<WaylandConnection> WaylandConnection::open()
{
    wl_display *const display = connectToDisplay();
    if (display == nullptr)
        return nullptr;
    std::unique_ptr<WaylandConnection> connection(new WaylandConnection(display));
    connection->roundTrip();
    connection->m_isComplete = true;
    return connection->isOpen() ? std::move(connection) : nullptr;
}

std::optional<QByteArrayList> WaylandConnection::offeredInterfaces()
{
    const std::unique_ptr<wl_display, WaylandDisconnect> display(connectToDisplay());
    if (!display)
        return std::nullopt;
    QByteArrayList interfaces;
    const WaylandObject registry(makeOfDisplay(display.get(), DisplayGetRegistry, wl_registry_interface),
        WaylandObject::NoDestructor, [&](uint32_t event, const wl_argument *arguments) {
            if (event == RegistryGlobal)
                interfaces.append(arguments[1].s);
        });
    const bool hasAnswered = wl_display_roundtrip(display.get()) >= 0;
    return hasAnswered ? std::optional(interfaces) : std::nullopt;
}

WaylandConnection::WaylandConnection(wl_display *display)
    : m_display(display)
    , m_readable(wl_display_get_fd(display), QSocketNotifier::Read)
    , m_writable(wl_display_get_fd(display), QSocketNotifier::Write)
    , m_registry(std::make_unique<WaylandObject>(
          makeOfDisplay(display, DisplayGetRegistry, wl_registry_interface), WaylandObject::NoDestructor,
          [this](uint32_t event, const wl_argument *arguments) { handleRegistry(event, arguments); }))
{
    m_writable.setEnabled(false);
    QObject::connect(&m_readable, &QSocketNotifier::activated, &m_readable, [this] { readEvents(); });
    QObject::connect(&m_writable, &QSocketNotifier::activated, &m_readable, [this] { flush(); });
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
        &m_readable, [this] { flush(); });
}

WaylandConnection::~WaylandConnection()
{
    flush();
    m_readable.setEnabled(false);
    m_writable.setEnabled(false);
    m_syncs.clear();
    m_registry.reset();
}

std::optional<WaylandGlobal> WaylandConnection::global(const char *interface) const
{
    const auto found = std::ranges::find(m_globals, QByteArray(interface), &WaylandGlobal::interface);
    return found == m_globals.end() ? std::nullopt : std::optional(*found);
}

wl_proxy *WaylandConnection::bind(
    const WaylandGlobal &global, const wl_interface &interface, uint32_t version)
{
    const uint32_t common = std::min(version, global.version);
    std::array arguments{WaylandObject::argument(global.name), WaylandObject::argument(interface.name),
        WaylandObject::argument(common), WaylandObject::argument(WaylandNewObject())};
    return wl_proxy_marshal_array_flags(
        m_registry->proxy(), RegistryBind, &interface, common, 0, arguments.data());
}

void WaylandConnection::handleRegistry(uint32_t event, const wl_argument *arguments)
{
    if (event == RegistryGlobal) {
        m_globals.push_back({arguments[0].u, arguments[1].s, arguments[2].u});
        if (m_isComplete && onGlobal)
            onGlobal(WaylandGlobal(m_globals.back()));
    } else if (event == RegistryGlobalRemove) {
        const uint32_t name = arguments[0].u;
        std::erase_if(m_globals, [name](const WaylandGlobal &global) { return global.name == name; });
        if (onGlobalRemoved)
            onGlobalRemoved(name);
    }
}

void WaylandConnection::sync(std::function<void()> onDone)
{
    if (!m_isOpen)
        return;
    wl_proxy *const proxy = makeOfDisplay(m_display.get(), DisplaySync, wl_callback_interface);
    m_syncs.push_back(std::make_unique<WaylandObject>(proxy, WaylandObject::NoDestructor,
        [this, proxy, onDone = std::move(onDone)](uint32_t, const wl_argument *) {
            const auto isThis = [proxy](const auto &sync) { return sync->proxy() == proxy; };
            std::erase_if(m_syncs, isThis);
            onDone();
        }));
}

void WaylandConnection::roundTrip()
{
    if (m_isOpen && wl_display_roundtrip(m_display.get()) < 0)
        closeOnError();
}

void WaylandConnection::flush()
{
    if (!m_isOpen)
        return;
    const bool isBlocked = wl_display_flush(m_display.get()) < 0 && errno == EAGAIN;
    // An error shows when the socket is read next: what the compositor has said before it went is read then.
    if (m_writable.isEnabled() != isBlocked)
        m_writable.setEnabled(isBlocked);
}

void WaylandConnection::readEvents()
{
    wl_display *const display = m_display.get();
    while (m_isOpen && wl_display_prepare_read(display) != 0) {
        if (wl_display_dispatch_pending(display) < 0)
            closeOnError();
    }
    if (!m_isOpen)
        return;
    flush();
    // Reads what is there: the socket has something, and nobody else reads it.
    const bool isRead = wl_display_read_events(display) == 0;
    const bool isDispatched = wl_display_dispatch_pending(display) >= 0;
    if (!isRead || !isDispatched)
        closeOnError();
    // What the events have brought about.
    flush();
}

void WaylandConnection::closeOnError()
{
    if (!m_isOpen || wl_display_get_error(m_display.get()) == 0)
        return;
    m_isOpen = false;
    m_readable.setEnabled(false);
    m_writable.setEnabled(false);
    if (onClosed)
        onClosed();
}
