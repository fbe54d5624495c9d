#include "platform/wayland/DataControlOffer.h"

#include <fcntl.h>

DataControlOffer::DataControlOffer(wl_proxy *proxy)
    : m_object(
          proxy, DataControlProtocol::DestroyOffer, [this](uint32_t event, const wl_argument *arguments) {
              if (event == DataControlProtocol::OfferOffer)
                  m_types.append(arguments[0].s);
          })
{
}

FileDescriptor DataControlOffer::receive(const QByteArray &type)
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return {};
    FileDescriptor readEnd(ends[0]);
    const FileDescriptor writeEnd(ends[1]);
    // Only this end: the owner's is to behave as it expects.
    ::fcntl(readEnd.number(), F_SETFL, O_NONBLOCK);
    m_object.request(DataControlProtocol::Receive, type, WaylandDescriptor{writeEnd.number()});
    return readEnd;
}
