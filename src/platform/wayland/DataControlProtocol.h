#pragma once

#include <wayland-util.h>

#include <array>

class WaylandConnection;

/// The clipboard for programs without a window: ext-data-control-v1, and wlr-data-control-unstable-v1, from
/// which it came. The two differ in their names only, and in the version that brought the primary selection.
class DataControlProtocol
{
public:
    enum ManagerRequest : uint32_t { CreateSource = 0, GetDevice = 1, DestroyManager = 2 };

    enum DeviceRequest : uint32_t { SetSelection = 0, DestroyDevice = 1, SetPrimarySelection = 2 };
    enum DeviceEvent : uint32_t { DataOffer = 0, Selection = 1, Finished = 2, PrimarySelection = 3 };

    enum SourceRequest : uint32_t { SourceOffer = 0, DestroySource = 1 };
    enum SourceEvent : uint32_t { Send = 0, Cancelled = 1 };

    enum OfferRequest : uint32_t { Receive = 0, DestroyOffer = 1 };
    enum OfferEvent : uint32_t { OfferOffer = 0 };

    /// The highest version that is described here.
    uint32_t version() const { return static_cast<uint32_t>(m_manager.version); }
    /// The version that brought the primary selection.
    uint32_t primaryVersion() const { return m_primaryVersion; }

    const wl_interface &manager() const { return m_manager; }
    const wl_interface &device() const { return m_device; }
    const wl_interface &source() const { return m_source; }
    const wl_interface &offer() const { return m_offer; }

    /// The better one of those that the compositor has; null when it has neither.
    static const DataControlProtocol *offeredBy(const WaylandConnection &connection);

    static const DataControlProtocol &ext();
    static const DataControlProtocol &wlr();

private:
    struct Names {
        const char *manager;
        const char *device;
        const char *source;
        const char *offer;
    };
    struct Primary {
        uint32_t sinceVersion;
        const char *setSignature;
        const char *eventSignature;
    };

    DataControlProtocol(const Names &names, int version, const Primary &primary);

    const uint32_t m_primaryVersion;
    // The types of objects in the messages, message after message.
    std::array<const wl_interface *, 2> m_noTypes{};
    std::array<const wl_interface *, 1> m_sourceType;
    std::array<const wl_interface *, 1> m_offerType;
    std::array<const wl_interface *, 2> m_deviceAndSeat;
    const std::array<wl_message, 3> m_managerRequests;
    const std::array<wl_message, 3> m_deviceRequests;
    const std::array<wl_message, 4> m_deviceEvents;
    const std::array<wl_message, 2> m_sourceRequests;
    const std::array<wl_message, 2> m_sourceEvents;
    const std::array<wl_message, 2> m_offerRequests;
    const std::array<wl_message, 1> m_offerEvents;
    const wl_interface m_manager;
    const wl_interface m_device;
    const wl_interface m_source;
    const wl_interface m_offer;
};
