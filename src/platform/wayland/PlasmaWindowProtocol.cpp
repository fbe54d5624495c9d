#include "platform/wayland/PlasmaWindowProtocol.h"

#include <wayland-client-protocol.h>

namespace plasmawindow
{
namespace
{

const wl_interface *noTypes[] = {nullptr, nullptr, nullptr, nullptr};
const wl_interface *windowType[] = {&Window, nullptr};
const wl_interface *outputType[] = {&wl_output_interface};
const wl_interface *geometryTypes[] = {&wl_surface_interface, nullptr, nullptr, nullptr, nullptr};

const wl_message managementRequests[] = {
    {"show_desktop", "u", noTypes},
    {"get_window", "nu", windowType},
    {"get_window_by_uuid", "12ns", windowType},
};
const wl_message managementEvents[] = {
    {"show_desktop_changed", "u", noTypes},
    {"window", "u", noTypes},
    {"stacking_order_changed", "11a", noTypes},
    {"stacking_order_uuid_changed", "12s", noTypes},
    {"window_with_uuid", "13us", noTypes},
};

const wl_message windowRequests[] = {
    {"set_state", "uu", noTypes},
    {"set_virtual_desktop", "u", noTypes},
    {"set_minimized_geometry", "ouuuu", geometryTypes},
    {"unset_minimized_geometry", "o", geometryTypes},
    {"close", "", nullptr},
    {"request_move", "3", nullptr},
    {"request_resize", "3", nullptr},
    {"destroy", "4", nullptr},
    {"get_icon", "7h", noTypes},
    {"request_enter_virtual_desktop", "8s", noTypes},
    {"request_enter_new_virtual_desktop", "8", nullptr},
    {"request_leave_virtual_desktop", "8s", noTypes},
    {"request_enter_activity", "14s", noTypes},
    {"request_leave_activity", "14s", noTypes},
    {"send_to_output", "15o", outputType},
};
const wl_message windowEvents[] = {
    {"title_changed", "s", noTypes},
    {"app_id_changed", "s", noTypes},
    {"state_changed", "u", noTypes},
    {"virtual_desktop_changed", "i", noTypes},
    {"themed_icon_name_changed", "s", noTypes},
    {"unmapped", "", nullptr},
    {"initial_state", "4", nullptr},
    {"parent_window", "5?o", windowType},
    {"geometry", "6iiuu", noTypes},
    {"icon_changed", "7", nullptr},
    {"pid_changed", "u", noTypes},
    {"virtual_desktop_entered", "8s", noTypes},
    {"virtual_desktop_left", "8s", noTypes},
    {"application_menu", "10ss", noTypes},
    {"activity_entered", "14s", noTypes},
    {"activity_left", "14s", noTypes},
    {"resource_name_changed", "16s", noTypes},
};

} // namespace

const wl_interface Management = {
    "org_kde_plasma_window_management", 16, 3, managementRequests, 5, managementEvents};
const wl_interface Window = {"org_kde_plasma_window", 16, 15, windowRequests, 17, windowEvents};

} // namespace plasmawindow
