#pragma once

#include "platform/wayland/DataControlOffer.h"
#include "platform/wayland/DataControlSource.h"
#include "platform/wayland/WaylandConnection.h"

#include <list>

/// The clipboard of one seat.
class DataControlDevice
{
public:
    struct Callbacks {
        /// The clipboard has another content, or none: null. Called soon after the device has been made with
        /// what is there then. An offer stays good until the next call.
        std::function<void(std::shared_ptr<DataControlOffer> offer)> onSelection;
        /// The seat is no more. May destroy the device.
        std::function<void()> onFinished;
    };

    /// The seat's global. What it is given must outlive it.
    DataControlDevice(WaylandConnection &connection, WaylandObject &manager,
        const DataControlProtocol &protocol, const WaylandGlobal &seat, Callbacks callbacks);

    /// The compositor's number of the seat.
    uint32_t seatName() const { return m_seatName; }

    void setSelection(const DataControlSource &source);
    void clearSelection();
    /// Does nothing where the protocol's version has no primary selection.
    void setPrimarySelection(const DataControlSource &source);

private:
    void handle(uint32_t event, const wl_argument *arguments);
    std::shared_ptr<DataControlOffer> takeOffer(wl_proxy *proxy);

    const DataControlProtocol &m_protocol;
    const Callbacks m_callbacks;
    const uint32_t m_seatName;
    WaylandObject m_seat;
    /// Those that have been announced and not been put anywhere yet.
    std::list<std::shared_ptr<DataControlOffer>> m_offers;
    WaylandObject m_device;
};
