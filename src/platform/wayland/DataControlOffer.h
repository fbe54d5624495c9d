#pragma once

#include "platform/wayland/DataControlProtocol.h"
#include "platform/wayland/FileDescriptor.h"
#include "platform/wayland/WaylandObject.h"

#include <QByteArrayList>

/// What somebody else has put on the clipboard: the MIME types, and a way to ask for their bytes. It can be
/// asked as long as it is on the clipboard.
class DataControlOffer
{
public:
    explicit DataControlOffer(wl_proxy *proxy);

    wl_proxy *proxy() const { return m_object.proxy(); }
    /// In the order in which they were offered.
    const QByteArrayList &types() const { return m_types; }

    /// Asks for the bytes of a type, which come through a pipe that does not block; not open when there are
    /// no descriptors left.
    FileDescriptor receive(const QByteArray &type);

private:
    WaylandObject m_object;
    QByteArrayList m_types;
};
