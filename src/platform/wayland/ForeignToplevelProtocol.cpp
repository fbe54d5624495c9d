#include "platform/wayland/ForeignToplevelProtocol.h"

#include <wayland-client-protocol.h>

namespace foreigntoplevel
{
namespace
{

const wl_interface *noTypes[] = {nullptr};
const wl_interface *handleType[] = {&Handle};
const wl_interface *seatType[] = {&wl_seat_interface};
const wl_interface *outputType[] = {&wl_output_interface};
const wl_interface *rectangleTypes[] = {&wl_surface_interface, nullptr, nullptr, nullptr, nullptr};

const wl_message managerRequests[] = {{"stop", "", nullptr}};
const wl_message managerEvents[] = {{"toplevel", "n", handleType}, {"finished", "", nullptr}};

const wl_message handleRequests[] = {
    {"set_maximized", "", nullptr},
    {"unset_maximized", "", nullptr},
    {"set_minimized", "", nullptr},
    {"unset_minimized", "", nullptr},
    {"activate", "o", seatType},
    {"close", "", nullptr},
    {"set_rectangle", "oiiii", rectangleTypes},
    {"destroy", "", nullptr},
    {"set_fullscreen", "2?o", outputType},
    {"unset_fullscreen", "2", nullptr},
};
const wl_message handleEvents[] = {
    {"title", "s", noTypes},
    {"app_id", "s", noTypes},
    {"output_enter", "o", outputType},
    {"output_leave", "o", outputType},
    {"state", "a", noTypes},
    {"done", "", nullptr},
    {"closed", "", nullptr},
    {"parent", "3?o", handleType},
};

} // namespace

const wl_interface Manager = {"zwlr_foreign_toplevel_manager_v1", 3, 1, managerRequests, 2, managerEvents};
const wl_interface Handle = {"zwlr_foreign_toplevel_handle_v1", 3, 10, handleRequests, 8, handleEvents};

} // namespace foreigntoplevel
