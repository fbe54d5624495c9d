#pragma once

#include <QByteArray>

#include <wayland-client-core.h>

#include <array>
#include <functional>
#include <memory>
#include <optional>

/// A descriptor in a request; the request passes a copy on.
struct WaylandDescriptor {
    int descriptor;
};

/// The place of the new object among a request's arguments.
struct WaylandNewObject {
};

/// An object of the Wayland protocol that this program holds: requests go out, events come in. Objects,
/// events and requests are those of the interface that it was made with, by number. Not thread-safe.
///
/// The requests know nothing of the arguments that they want: the tables of the interface do, and an argument
/// that does not suit them is a programming error.
class WaylandObject
{
public:
    using Handler = std::function<void(uint32_t event, const wl_argument *arguments)>;
    /// For interfaces whose objects the compositor is not told to destroy.
    static constexpr std::nullopt_t NoDestructor = std::nullopt;

    /// Owns the proxy; `destructor` is the request that ends the object, without arguments. The handler may
    /// destroy the object.
    WaylandObject(wl_proxy *proxy, std::optional<uint32_t> destructor, Handler handler = {});
    ~WaylandObject();
    WaylandObject(const WaylandObject &) = delete;
    WaylandObject &operator=(const WaylandObject &) = delete;

    wl_proxy *proxy() const { return m_proxy; }
    uint32_t version() const { return wl_proxy_get_version(m_proxy); }

    template<class... Arguments>
    void request(uint32_t number, const Arguments &...arguments)
    {
        std::array<wl_argument, sizeof...(Arguments) + 1> list{argument(arguments)..., wl_argument{}};
        wl_proxy_marshal_array_flags(m_proxy, number, nullptr, version(), 0, list.data());
    }

    /// A request that makes an object, in this one's version; one of the arguments is WaylandNewObject.
    template<class... Arguments>
    wl_proxy *create(uint32_t number, const wl_interface &interface, const Arguments &...arguments)
    {
        std::array<wl_argument, sizeof...(Arguments)> list{argument(arguments)...};
        return wl_proxy_marshal_array_flags(m_proxy, number, &interface, version(), 0, list.data());
    }

    /// Makes the requests' arguments; null stands for no object.
    static wl_argument argument(uint32_t value);
    static wl_argument argument(int32_t value);
    static wl_argument argument(const char *string);
    static wl_argument argument(const QByteArray &string) { return argument(string.constData()); }
    static wl_argument argument(const WaylandObject *object);
    static wl_argument argument(WaylandDescriptor descriptor);
    static wl_argument argument(WaylandNewObject);

    /// The object in an event's argument; null when there is none.
    static wl_proxy *proxyIn(const wl_argument &argument);

private:
    static int dispatch(
        const void *, void *target, uint32_t event, const wl_message *, wl_argument *arguments);

    wl_proxy *const m_proxy;
    const std::optional<uint32_t> m_destructor;
    /// Shared with the call at hand, which it may not survive.
    const std::shared_ptr<const Handler> m_handler;
};
