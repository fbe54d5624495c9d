#include "platform/wayland/WaylandToplevels.h"

#include "platform/wayland/ForeignToplevelProtocol.h"
#include "platform/wayland/PlasmaWindowProtocol.h"

#include <wayland-client-protocol.h>

#include <algorithm>
#include <cstring>

namespace
{

using Number = WaylandToplevels::Number;

bool hasState(const wl_array &states, uint32_t wanted)
{
    for (size_t at = 0; at + sizeof(uint32_t) <= states.size; at += sizeof(uint32_t)) {
        uint32_t state = 0;
        std::memcpy(&state, static_cast<const char *>(states.data) + at, sizeof state);
        if (state == wanted)
            return true;
    }
    return false;
}

/// wlr-foreign-toplevel-management.
class ForeignToplevels : public WaylandToplevels
{
public:
    ForeignToplevels(
        std::unique_ptr<WaylandConnection> opened, const WaylandGlobal &global, const WaylandGlobal &seat)
        : WaylandToplevels(std::move(opened))
        , m_seat(connection().bind(seat, wl_seat_interface, 1), WaylandObject::NoDestructor)
        , m_manager(connection().bind(global, foreigntoplevel::Manager, 3), WaylandObject::NoDestructor,
              [this](uint32_t event, const wl_argument *arguments) {
                  if (event == foreigntoplevel::ToplevelAdded)
                      add(WaylandObject::proxyIn(arguments[0]));
              })
    {
    }

    void bringToFront(Number number) override
    {
        const auto handle = m_handles.find(number);
        if (handle == m_handles.end())
            return;
        handle->second->request(foreigntoplevel::Activate, &m_seat);
        connection().flush();
    }

private:
    void add(wl_proxy *proxy)
    {
        const Number number = WaylandToplevels::add();
        m_handles[number] = std::make_unique<WaylandObject>(proxy, foreigntoplevel::DestroyHandle,
            [this, number](
                uint32_t event, const wl_argument *arguments) { handle(number, event, arguments); });
    }

    void handle(Number number, uint32_t event, const wl_argument *arguments)
    {
        if (event == foreigntoplevel::AppId) {
            setApplicationId(number, arguments[0].s);
        } else if (event == foreigntoplevel::State) {
            setActive(number, hasState(*arguments[0].a, foreigntoplevel::ActivatedState));
        } else if (event == foreigntoplevel::Closed) {
            remove(number);
            m_handles.erase(number);
        }
    }

    WaylandObject m_seat;
    std::map<Number, std::unique_ptr<WaylandObject>> m_handles;
    WaylandObject m_manager;
};

/// KWin's window management.
class PlasmaWindows : public WaylandToplevels
{
public:
    PlasmaWindows(std::unique_ptr<WaylandConnection> opened, const WaylandGlobal &global)
        : WaylandToplevels(std::move(opened))
        , m_management(connection().bind(global, plasmawindow::Management, 16), WaylandObject::NoDestructor,
              [this](uint32_t event, const wl_argument *arguments) { handle(event, arguments); })
    {
    }

    void bringToFront(Number number) override
    {
        const auto window = m_windows.find(number);
        if (window == m_windows.end())
            return;
        window->second->request(plasmawindow::SetState, plasmawindow::ActiveState, plasmawindow::ActiveState);
        connection().flush();
    }

private:
    void handle(uint32_t event, const wl_argument *arguments)
    {
        const bool hasUuids = m_management.version() >= plasmawindow::VersionWithUuids;
        if (event == plasmawindow::WindowWithUuid && hasUuids)
            add(m_management.create(
                plasmawindow::GetWindowByUuid, plasmawindow::Window, WaylandNewObject(), arguments[1].s));
        else if (event == plasmawindow::WindowAdded && !hasUuids)
            add(m_management.create(
                plasmawindow::GetWindow, plasmawindow::Window, WaylandNewObject(), arguments[0].u));
    }

    void add(wl_proxy *proxy)
    {
        const Number number = WaylandToplevels::add();
        const bool canDestroy = m_management.version() >= plasmawindow::VersionWithDestroy;
        m_windows[number] = std::make_unique<WaylandObject>(proxy,
            canDestroy ? std::optional<uint32_t>(plasmawindow::DestroyWindow) : std::nullopt,
            [this, number](
                uint32_t event, const wl_argument *arguments) { handleWindow(number, event, arguments); });
    }

    void handleWindow(Number number, uint32_t event, const wl_argument *arguments)
    {
        if (event == plasmawindow::AppIdChanged) {
            setApplicationId(number, arguments[0].s);
        } else if (event == plasmawindow::PidChanged) {
            at(number).identity.processIdentifier = arguments[0].u;
        } else if (event == plasmawindow::StateChanged) {
            setActive(number, (arguments[0].u & plasmawindow::ActiveState) != 0);
        } else if (event == plasmawindow::Unmapped) {
            remove(number);
            m_windows.erase(number);
        }
    }

    std::map<Number, std::unique_ptr<WaylandObject>> m_windows;
    WaylandObject m_management;
};

} // namespace

std::shared_ptr<WaylandToplevels> WaylandToplevels::open()
{
    auto connection = WaylandConnection::open();
    if (!connection)
        return nullptr;
    std::shared_ptr<WaylandToplevels> toplevels;
    const auto seat = connection->global("wl_seat");
    if (const auto global = connection->global(foreigntoplevel::Manager.name); global && seat)
        toplevels = std::make_shared<ForeignToplevels>(std::move(connection), *global, *seat);
    else if (const auto management = connection->global(plasmawindow::Management.name))
        toplevels = std::make_shared<PlasmaWindows>(std::move(connection), *management);
    if (!toplevels)
        return nullptr;
    // The list first, then what there is to know of each.
    toplevels->connection().roundTrip();
    toplevels->connection().roundTrip();
    return toplevels;
}

WaylandToplevels::WaylandToplevels(std::unique_ptr<WaylandConnection> connection)
    : m_connection(std::move(connection))
{
    m_connection->onClosed = [this] { m_toplevels.clear(); };
}

WaylandToplevels::~WaylandToplevels() = default;

WaylandToplevels::Number WaylandToplevels::add()
{
    m_toplevels[++m_lastNumber] = {};
    return m_lastNumber;
}

void WaylandToplevels::remove(Number number)
{
    m_toplevels.erase(number);
    if (onRemoved)
        onRemoved();
}

void WaylandToplevels::setApplicationId(Number number, const char *applicationId)
{
    WindowIdentity &identity = m_toplevels[number].identity;
    identity.applicationId = QString::fromUtf8(applicationId);
    // Programs without one of their own get their X11 class here.
    identity.className = identity.applicationId;
}

void WaylandToplevels::setActive(Number number, bool isActive)
{
    Toplevel &toplevel = m_toplevels[number];
    if (isActive && !toplevel.isActive)
        toplevel.lastActive = ++m_lastActivation;
    toplevel.isActive = isActive;
}

std::optional<WaylandToplevels::Number> WaylandToplevels::active() const
{
    // For a moment two may be: the news comes window by window.
    std::optional<Number> latest;
    for (const auto &[number, toplevel] : m_toplevels) {
        if (toplevel.isActive && (!latest || toplevel.lastActive > m_toplevels.at(*latest).lastActive))
            latest = number;
    }
    return latest;
}

const WaylandToplevels::Toplevel *WaylandToplevels::find(Number number) const
{
    const auto found = m_toplevels.find(number);
    return found == m_toplevels.end() ? nullptr : &found->second;
}

std::optional<WaylandToplevels::Number> WaylandToplevels::latestLike(const KnownWindow &window) const
{
    if (find(window.number) != nullptr)
        return window.number;
    std::optional<Number> latest;
    for (const auto &[candidate, toplevel] : m_toplevels) {
        const bool isLater = !latest || toplevel.lastActive > m_toplevels.at(*latest).lastActive;
        if (isLater && isSameProgram(toplevel.identity, window.identity))
            latest = candidate;
    }
    return latest;
}

bool WaylandToplevels::isActive(const KnownWindow &window) const
{
    const auto focused = active();
    return focused &&
        (*focused == window.number || isSameProgram(m_toplevels.at(*focused).identity, window.identity));
}

bool WaylandToplevels::isSameProgram(const WindowIdentity &one, const WindowIdentity &other)
{
    if (one.processIdentifier > 0 && other.processIdentifier > 0)
        return one.processIdentifier == other.processIdentifier;
    return !one.className.isEmpty() && one.className == other.className;
}
