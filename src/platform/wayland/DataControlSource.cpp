#include "platform/wayland/DataControlSource.h"

DataControlSource::DataControlSource(
    WaylandObject &manager, const wl_interface &interface, QByteArrayList types, Callbacks callbacks)
    : m_types(std::move(types))
    , m_callbacks(std::move(callbacks))
    , m_object(manager.create(DataControlProtocol::CreateSource, interface, WaylandNewObject()),
          DataControlProtocol::DestroySource,
          [this](uint32_t event, const wl_argument *arguments) { handle(event, arguments); })
{
    for (const QByteArray &type : m_types)
        m_object.request(DataControlProtocol::SourceOffer, type);
}

void DataControlSource::handle(uint32_t event, const wl_argument *arguments)
{
    if (event == DataControlProtocol::Send) {
        m_callbacks.onSend(arguments[0].s, FileDescriptor(arguments[1].h));
    } else if (event == DataControlProtocol::Cancelled) {
        // It outlives this object.
        const auto onCancelled = m_callbacks.onCancelled;
        onCancelled();
    }
}
