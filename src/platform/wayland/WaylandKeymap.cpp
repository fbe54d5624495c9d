#include "platform/wayland/WaylandKeymap.h"

#include "platform/linux/KeyCodes.h"
#include "platform/wayland/FileDescriptor.h"

#include <wayland-client-protocol.h>
#include <xkbcommon/xkbcommon.h>

#include <sys/mman.h>

namespace
{

// Requests and events by number (wayland.xml).
enum SeatRequest : uint32_t { GetKeyboard = 1 };
enum SeatEvent : uint32_t { Capabilities = 0 };
enum KeyboardEvent : uint32_t { Keymap = 0 };

struct ReleaseContext {
    void operator()(xkb_context *context) const { xkb_context_unref(context); }
};

/// Null when the text is no keymap.
xkb_keymap *readKeymap(const FileDescriptor &file, size_t size)
{
    void *const text = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.number(), 0);
    if (text == MAP_FAILED)
        return nullptr;
    const std::unique_ptr<xkb_context, ReleaseContext> context(xkb_context_new(
        static_cast<xkb_context_flags>(XKB_CONTEXT_NO_ENVIRONMENT_NAMES | XKB_CONTEXT_NO_DEFAULT_INCLUDES)));
    // It ends with a zero, which is not part of the text.
    xkb_keymap *const keymap = !context
        ? nullptr
        : xkb_keymap_new_from_buffer(context.get(), static_cast<const char *>(text), size - 1,
              XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS);
    ::munmap(text, size);
    return keymap;
}

} // namespace

void WaylandKeymap::Release::operator()(xkb_keymap *keymap) const
{
    xkb_keymap_unref(keymap);
}

WaylandKeymap::WaylandKeymap(WaylandConnection &connection, const WaylandGlobal &seat)
    : m_seat(connection.bind(seat, wl_seat_interface, 1), WaylandObject::NoDestructor,
          [this](uint32_t event, const wl_argument *arguments) { handleSeat(event, arguments); })
{
}

WaylandKeymap::~WaylandKeymap() = default;

void WaylandKeymap::handleSeat(uint32_t event, const wl_argument *arguments)
{
    if (event != Capabilities)
        return;
    const bool hasKeyboard = (arguments[0].u & WL_SEAT_CAPABILITY_KEYBOARD) != 0;
    if (hasKeyboard == (m_keyboard != nullptr))
        return;
    m_keyboard.reset();
    if (hasKeyboard)
        m_keyboard = std::make_unique<WaylandObject>(
            m_seat.create(GetKeyboard, wl_keyboard_interface, WaylandNewObject()),
            WaylandObject::NoDestructor,
            [this](uint32_t number, const wl_argument *list) { handleKeyboard(number, list); });
}

void WaylandKeymap::handleKeyboard(uint32_t event, const wl_argument *arguments)
{
    if (event != Keymap)
        return;
    const FileDescriptor file(arguments[1].h);
    const size_t size = arguments[2].u;
    if (arguments[0].u == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1 && size > 1)
        m_keymap.reset(readKeymap(file, size));
}

uint32_t WaylandKeymap::layoutCount() const
{
    return m_keymap ? xkb_keymap_num_layouts(m_keymap.get()) : 0;
}

std::optional<quint16> WaylandKeymap::keyOf(quint32 symbol, uint32_t layout) const
{
    if (const auto key = keyInLayout(symbol, layout))
        return key;
    for (uint32_t other = 0; other < layoutCount(); ++other) {
        if (const auto key = keyInLayout(symbol, other))
            return key;
    }
    return std::nullopt;
}

std::optional<quint16> WaylandKeymap::keyInLayout(quint32 symbol, uint32_t layout) const
{
    if (layout >= layoutCount())
        return std::nullopt;
    const xkb_keycode_t last = xkb_keymap_max_keycode(m_keymap.get());
    for (xkb_keycode_t key = xkb_keymap_min_keycode(m_keymap.get()); key <= last; ++key) {
        const xkb_keysym_t *symbols = nullptr;
        const int count = xkb_keymap_key_get_syms_by_level(m_keymap.get(), key, layout, 0, &symbols);
        if (count == 1 && symbols[0] == symbol)
            return static_cast<quint16>(key - keycodes::XkbOffset);
    }
    return std::nullopt;
}
