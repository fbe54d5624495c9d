#pragma once

#include "platform/wayland/WaylandConnection.h"

#include <memory>
#include <optional>

struct xkb_keymap;

/// The keyboard map of a seat: which key gives which symbol, in each of the layouts that the user has.
class WaylandKeymap
{
public:
    /// The seat's global. The connection must outlive it. The map comes with the next events.
    WaylandKeymap(WaylandConnection &connection, const WaylandGlobal &seat);
    ~WaylandKeymap();

    /// 0 while there is no map.
    uint32_t layoutCount() const;
    /// The evdev code of the key that gives the symbol (X keysym) without modifiers in the layout, else in
    /// the first that has it.
    std::optional<quint16> keyOf(quint32 symbol, uint32_t layout) const;

private:
    void handleSeat(uint32_t event, const wl_argument *arguments);
    void handleKeyboard(uint32_t event, const wl_argument *arguments);
    std::optional<quint16> keyInLayout(quint32 symbol, uint32_t layout) const;

    struct Release {
        void operator()(xkb_keymap *keymap) const;
    };

    std::unique_ptr<xkb_keymap, Release> m_keymap;
    WaylandObject m_seat;
    std::unique_ptr<WaylandObject> m_keyboard;
};
