#pragma once

#include "platform/wayland/DataControlProtocol.h"
#include "platform/wayland/FileDescriptor.h"
#include "platform/wayland/WaylandObject.h"

#include <QByteArrayList>

/// What this program puts on the clipboard.
class DataControlSource
{
public:
    struct Callbacks {
        /// Somebody wants the bytes of a type written into a pipe.
        std::function<void(const QByteArray &type, FileDescriptor pipe)> onSend;
        /// It is on the clipboard no more. May destroy the source.
        std::function<void()> onCancelled;
    };

    DataControlSource(
        WaylandObject &manager, const wl_interface &interface, QByteArrayList types, Callbacks callbacks);

    const QByteArrayList &types() const { return m_types; }
    const WaylandObject &object() const { return m_object; }

private:
    void handle(uint32_t event, const wl_argument *arguments);

    const QByteArrayList m_types;
    const Callbacks m_callbacks;
    WaylandObject m_object;
};
