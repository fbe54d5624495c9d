#include "platform/wayland/DataControlProtocol.h"

#include "platform/wayland/WaylandConnection.h"

#include <wayland-client-protocol.h>

const DataControlProtocol &DataControlProtocol::ext()
{
    static const DataControlProtocol Protocol({"ext_data_control_manager_v1", "ext_data_control_device_v1",
                                                  "ext_data_control_source_v1", "ext_data_control_offer_v1"},
        1, {1, "?o", "?o"});
    return Protocol;
}

const DataControlProtocol &DataControlProtocol::wlr()
{
    static const DataControlProtocol Protocol(
        {"zwlr_data_control_manager_v1", "zwlr_data_control_device_v1", "zwlr_data_control_source_v1",
            "zwlr_data_control_offer_v1"},
        2, {2, "2?o", "2?o"});
    return Protocol;
}

const DataControlProtocol *DataControlProtocol::offeredBy(const WaylandConnection &connection)
{
    for (const DataControlProtocol *const protocol : {&ext(), &wlr()}) {
        if (connection.global(protocol->manager().name))
            return protocol;
    }
    return nullptr;
}

DataControlProtocol::DataControlProtocol(const Names &names, int version, const Primary &primary)
    : m_primaryVersion(primary.sinceVersion)
    , m_sourceType{&m_source}
    , m_offerType{&m_offer}
    , m_deviceAndSeat{&m_device, &wl_seat_interface}
    , m_managerRequests{{
          {"create_data_source", "n", m_sourceType.data()},
          {"get_data_device", "no", m_deviceAndSeat.data()},
          {"destroy", "", nullptr},
      }}
    , m_deviceRequests{{
          {"set_selection", "?o", m_sourceType.data()},
          {"destroy", "", nullptr},
          {"set_primary_selection", primary.setSignature, m_sourceType.data()},
      }}
    , m_deviceEvents{{
          {"data_offer", "n", m_offerType.data()},
          {"selection", "?o", m_offerType.data()},
          {"finished", "", nullptr},
          {"primary_selection", primary.eventSignature, m_offerType.data()},
      }}
    , m_sourceRequests{{
          {"offer", "s", m_noTypes.data()},
          {"destroy", "", nullptr},
      }}
    , m_sourceEvents{{
          {"send", "sh", m_noTypes.data()},
          {"cancelled", "", nullptr},
      }}
    , m_offerRequests{{
          {"receive", "sh", m_noTypes.data()},
          {"destroy", "", nullptr},
      }}
    , m_offerEvents{{
          {"offer", "s", m_noTypes.data()},
      }}
    , m_manager{names.manager, version, 3, m_managerRequests.data(), 0, nullptr}
    , m_device{names.device, version, 3, m_deviceRequests.data(), 4, m_deviceEvents.data()}
    , m_source{names.source, version, 2, m_sourceRequests.data(), 2, m_sourceEvents.data()}
    , m_offer{names.offer, version, 2, m_offerRequests.data(), 1, m_offerEvents.data()}
{
}
