#include "platform/wayland/WaylandObject.h"

WaylandObject::WaylandObject(wl_proxy *proxy, std::optional<uint32_t> destructor, Handler handler)
    : m_proxy(proxy)
    , m_destructor(destructor)
    , m_handler(std::make_shared<const Handler>(std::move(handler)))
{
    wl_proxy_add_dispatcher(m_proxy, &WaylandObject::dispatch, nullptr, this);
}

WaylandObject::~WaylandObject()
{
    if (m_destructor)
        wl_proxy_marshal_array_flags(
            m_proxy, *m_destructor, nullptr, version(), WL_MARSHAL_FLAG_DESTROY, nullptr);
    else
        wl_proxy_destroy(m_proxy);
}

int WaylandObject::dispatch(
    const void *, void *target, uint32_t event, const wl_message *, wl_argument *arguments)
{
    const auto *const object =
        static_cast<const WaylandObject *>(wl_proxy_get_user_data(static_cast<wl_proxy *>(target)));
    const auto handler = object->m_handler;
    if (*handler)
        (*handler)(event, arguments);
    return 0;
}

wl_argument WaylandObject::argument(uint32_t value)
{
    wl_argument result{};
    result.u = value;
    return result;
}

wl_argument WaylandObject::argument(int32_t value)
{
    wl_argument result{};
    result.i = value;
    return result;
}

wl_argument WaylandObject::argument(const char *string)
{
    wl_argument result{};
    result.s = string;
    return result;
}

wl_argument WaylandObject::argument(const WaylandObject *object)
{
    wl_argument result{};
    // A proxy begins with its wl_object, which is how the library itself takes it.
    result.o = object == nullptr ? nullptr : reinterpret_cast<wl_object *>(object->m_proxy);
    return result;
}

wl_argument WaylandObject::argument(WaylandDescriptor descriptor)
{
    wl_argument result{};
    result.h = descriptor.descriptor;
    return result;
}

wl_argument WaylandObject::argument(WaylandNewObject)
{
    return wl_argument{};
}

wl_proxy *WaylandObject::proxyIn(const wl_argument &argument)
{
    return reinterpret_cast<wl_proxy *>(argument.o);
}
