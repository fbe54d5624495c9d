#include "platform/wayland/KeyProtocols.h"

#include <wayland-client-protocol.h>

namespace
{

const wl_interface *noTypes[] = {nullptr, nullptr, nullptr, nullptr};
const wl_interface *keyboardTypes[] = {&wl_seat_interface, &virtualkeyboard::Keyboard};

const wl_message managerRequests[] = {{"create_virtual_keyboard", "on", keyboardTypes}};
const wl_message keyboardRequests[] = {
    {"keymap", "uhu", noTypes},
    {"key", "uuu", noTypes},
    {"modifiers", "uuuu", noTypes},
    {"destroy", "", nullptr},
};

const wl_message fakeInputRequests[] = {
    {"authenticate", "ss", noTypes},
    {"pointer_motion", "ff", noTypes},
    {"button", "uu", noTypes},
    {"axis", "uf", noTypes},
    {"touch_down", "2uff", noTypes},
    {"touch_motion", "2uff", noTypes},
    {"touch_up", "2u", noTypes},
    {"touch_cancel", "2", nullptr},
    {"touch_frame", "2", nullptr},
    {"pointer_motion_absolute", "3ff", noTypes},
    {"keyboard_key", "4uu", noTypes},
};

} // namespace

const wl_interface virtualkeyboard::Manager = {
    "zwp_virtual_keyboard_manager_v1", 1, 1, managerRequests, 0, nullptr};
const wl_interface virtualkeyboard::Keyboard = {
    "zwp_virtual_keyboard_v1", 1, 4, keyboardRequests, 0, nullptr};
const wl_interface fakeinput::FakeInput = {"org_kde_kwin_fake_input", 4, 11, fakeInputRequests, 0, nullptr};
