#include "platform/wayland/DataControlDevice.h"

#include <wayland-client-protocol.h>

#include <algorithm>

DataControlDevice::DataControlDevice(WaylandConnection &connection, WaylandObject &manager,
    const DataControlProtocol &protocol, const WaylandGlobal &seat, Callbacks callbacks)
    : m_protocol(protocol)
    , m_callbacks(std::move(callbacks))
    , m_seatName(seat.name)
    // The version without the request that releases it: all that is wanted is its name for the device.
    , m_seat(connection.bind(seat, wl_seat_interface, 1), WaylandObject::NoDestructor)
    , m_device(manager.create(DataControlProtocol::GetDevice, protocol.device(), WaylandNewObject(), &m_seat),
          DataControlProtocol::DestroyDevice,
          [this](uint32_t event, const wl_argument *arguments) { handle(event, arguments); })
{
}

void DataControlDevice::handle(uint32_t event, const wl_argument *arguments)
{
    switch (event) {
    case DataControlProtocol::DataOffer:
        m_offers.push_back(std::make_shared<DataControlOffer>(WaylandObject::proxyIn(arguments[0])));
        break;
    case DataControlProtocol::Selection: {
        wl_proxy *const proxy = WaylandObject::proxyIn(arguments[0]);
        const auto offer = takeOffer(proxy);
        // One that has not been announced is no sign of an empty clipboard.
        if (offer || proxy == nullptr)
            m_callbacks.onSelection(offer);
        break;
    }
    case DataControlProtocol::PrimarySelection:
        // Nobody here reads it.
        takeOffer(WaylandObject::proxyIn(arguments[0]));
        break;
    case DataControlProtocol::Finished: {
        // It outlives this object.
        const auto onFinished = m_callbacks.onFinished;
        onFinished();
        break;
    }
    default:
        break;
    }
}

std::shared_ptr<DataControlOffer> DataControlDevice::takeOffer(wl_proxy *proxy)
{
    const auto found = std::ranges::find(m_offers, proxy, &DataControlOffer::proxy);
    if (found == m_offers.end())
        return nullptr;
    const auto offer = *found;
    m_offers.erase(found);
    return offer;
}

void DataControlDevice::setSelection(const DataControlSource &source)
{
    m_device.request(DataControlProtocol::SetSelection, &source.object());
}

void DataControlDevice::clearSelection()
{
    m_device.request(DataControlProtocol::SetSelection, static_cast<const WaylandObject *>(nullptr));
}

void DataControlDevice::setPrimarySelection(const DataControlSource &source)
{
    if (m_device.version() >= m_protocol.primaryVersion())
        m_device.request(DataControlProtocol::SetPrimarySelection, &source.object());
}
