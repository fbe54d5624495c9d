#include "support/ClipboardOwner.h"

#include "platform/wayland/PipeReader.h"
#include "support/Waiting.h"

#include <wayland-client-protocol.h>

#include <poll.h>
#include <unistd.h>

#include <algorithm>

namespace
{

/// A reader is told of the other end's closing by POLLHUP, a writer by POLLERR.
bool hasEvent(const FileDescriptor &pipe, short event)
{
    pollfd polled{pipe.number(), event, 0};
    return ::poll(&polled, 1, 0) > 0 && (polled.revents & event) != 0;
}

} // namespace

/// The primary selection of a seat, through a device of its own.
class ClipboardOwner::PrimarySelection
{
public:
    PrimarySelection(WaylandObject &manager, const DataControlProtocol &protocol, wl_proxy *seat)
        : m_seat(seat, WaylandObject::NoDestructor)
        , m_device(
              manager.create(DataControlProtocol::GetDevice, protocol.device(), WaylandNewObject(), &m_seat),
              DataControlProtocol::DestroyDevice,
              [this](uint32_t event, const wl_argument *arguments) { handle(event, arguments); })
    {
    }

    DataControlOffer *offer() const { return m_selection.get(); }

private:
    void handle(uint32_t event, const wl_argument *arguments)
    {
        if (event == DataControlProtocol::Finished)
            return;
        wl_proxy *const proxy = WaylandObject::proxyIn(arguments[0]);
        if (event == DataControlProtocol::DataOffer) {
            m_announced.push_back(std::make_unique<DataControlOffer>(proxy));
            return;
        }
        std::unique_ptr<DataControlOffer> offer;
        const auto found = std::ranges::find(m_announced, proxy, &DataControlOffer::proxy);
        if (found != m_announced.end()) {
            offer = std::move(*found);
            m_announced.erase(found);
        }
        if (event == DataControlProtocol::PrimarySelection)
            m_selection = std::move(offer);
    }

    WaylandObject m_seat;
    std::vector<std::unique_ptr<DataControlOffer>> m_announced;
    std::unique_ptr<DataControlOffer> m_selection;
    WaylandObject m_device;
};

std::unique_ptr<ClipboardOwner> ClipboardOwner::open(size_t seat)
{
    auto connection = WaylandConnection::open();
    if (!connection || !connection->global(DataControlProtocol::wlr().manager().name))
        return nullptr;
    std::vector<WaylandGlobal> seats = connection->globals();
    std::erase_if(seats, [](const WaylandGlobal &global) { return global.interface != "wl_seat"; });
    if (seat >= seats.size())
        return nullptr;
    return std::unique_ptr<ClipboardOwner>(new ClipboardOwner(std::move(connection), seats[seat]));
}

ClipboardOwner::ClipboardOwner(std::unique_ptr<WaylandConnection> connection, const WaylandGlobal &seat)
    : m_connection(std::move(connection))
    , m_protocol(DataControlProtocol::wlr())
    , m_manager(m_connection->bind(*m_connection->global(m_protocol.manager().name), m_protocol.manager(),
                    m_protocol.version()),
          DataControlProtocol::DestroyManager)
    , m_device(*m_connection, m_manager, m_protocol, seat,
          {[this](std::shared_ptr<DataControlOffer> offer) { onSelection(std::move(offer)); }, [] {}})
    , m_primary(std::make_unique<PrimarySelection>(
          m_manager, m_protocol, m_connection->bind(seat, wl_seat_interface, 1)))
    , m_writers(std::chrono::hours(1))
{
    m_connection->roundTrip();
}

/// Others hear that its content is gone before the pipes that it keeps open are closed.
ClipboardOwner::~ClipboardOwner()
{
    m_source.reset();
    m_connection->roundTrip();
}

void ClipboardOwner::onSelection(std::shared_ptr<DataControlOffer> offer)
{
    m_history.push_back(offer ? offer->types() : QByteArrayList());
    m_selection = std::move(offer);
}

std::unique_ptr<DataControlSource> ClipboardOwner::makeSource(const Offer &offer)
{
    QByteArrayList types;
    for (const auto &[type, value] : offer)
        types.append(type);
    m_hasLost = false;
    return std::make_unique<DataControlSource>(m_manager, m_protocol.source(), types,
        DataControlSource::Callbacks{[this, offer](const QByteArray &type, FileDescriptor pipe) {
                                         m_requests.append(type);
                                         send(offer.at(type), std::move(pipe));
                                     },
            [this] { m_hasLost = true; }});
}

void ClipboardOwner::own(const Offer &offer)
{
    auto source = makeSource(offer);
    m_device.setSelection(*source);
    m_source = std::move(source);
    m_connection->roundTrip();
}

void ClipboardOwner::ownPrimary(const Offer &offer)
{
    auto source = makeSource(offer);
    m_device.setPrimarySelection(*source);
    m_source = std::move(source);
    m_connection->roundTrip();
}

void ClipboardOwner::clear()
{
    m_device.clearSelection();
    m_connection->roundTrip();
}

void ClipboardOwner::send(const PipedValue &value, FileDescriptor pipe)
{
    switch (value.delivery) {
    case PipedValue::Delivery::AtOnce:
        m_writers.start(std::move(pipe), value.bytes);
        break;
    case PipedValue::Delivery::ClosedAtOnce:
        break;
    case PipedValue::Delivery::Stalled: {
        const QByteArray half = value.bytes.left(value.bytes.size() / 2);
        [[maybe_unused]] const ssize_t count =
            ::write(pipe.number(), half.constData(), static_cast<size_t>(half.size()));
        m_openPipes.push_back(std::move(pipe));
        break;
    }
    case PipedValue::Delivery::Never:
        m_openPipes.push_back(std::move(pipe));
        break;
    }
}

bool ClipboardOwner::isGivenUp() const
{
    return !m_openPipes.empty() &&
        std::ranges::all_of(m_openPipes, [](const FileDescriptor &pipe) { return hasEvent(pipe, POLLERR); });
}

std::optional<QByteArrayList> ClipboardOwner::types() const
{
    return m_selection ? std::optional(m_selection->types()) : std::nullopt;
}

std::optional<QByteArray> ClipboardOwner::paste(const QByteArray &type)
{
    return m_selection ? readAll(m_selection->receive(type)) : std::nullopt;
}

std::optional<QByteArray> ClipboardOwner::pastePrimary(const QByteArray &type)
{
    m_connection->roundTrip();
    DataControlOffer *const offer = m_primary->offer();
    return offer != nullptr ? readAll(offer->receive(type)) : std::nullopt;
}

std::optional<QByteArray> ClipboardOwner::readAll(FileDescriptor pipe)
{
    m_connection->flush();
    std::optional<QByteArray> read;
    bool isDone = false;
    PipeReader reader(std::move(pipe), std::numeric_limits<qint64>::max() - 1,
        {[](qint64) {},
            [&](PipeReader::Outcome outcome, const QByteArray &bytes) {
                isDone = true;
                if (outcome == PipeReader::Outcome::Delivered)
                    read = bytes;
            }});
    return waitUntil([&] { return isDone; }) ? read : std::nullopt;
}

void ClipboardOwner::stall(const QByteArray &type)
{
    m_stalledPipe = m_selection ? m_selection->receive(type) : FileDescriptor();
    m_connection->flush();
}

bool ClipboardOwner::hasStalledBytes() const
{
    return hasEvent(m_stalledPipe, POLLIN);
}

QByteArray ClipboardOwner::takeStalled()
{
    return readAll(std::move(m_stalledPipe)).value_or(QByteArray());
}

bool ClipboardOwner::isStalledPipeClosed() const
{
    return hasEvent(m_stalledPipe, POLLHUP);
}
