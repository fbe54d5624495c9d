#pragma once

#include <QByteArray>
#include <QDBusConnection>

#include <chrono>

/// The desktop session's message bus, as it is found before anything talks to it.
namespace sessionbus
{

/// Its address (D-Bus Specification, "Server Addresses"): $DBUS_SESSION_BUS_ADDRESS, else that of the socket
/// "bus" in $XDG_RUNTIME_DIR; empty when there is neither.
QByteArray address();

/// The process's own connection to it; one that is not connected when there is no bus, so that none is
/// started for the purpose.
QDBusConnection connection();

/// Whether something at the address speaks D-Bus. It is asked for nothing but a sign of life and waited for
/// no longer than the deadline. Only the first address of a list is tried; one that is no Unix socket cannot
/// be asked, and counts as one that answers. Any thread.
bool answers(const QByteArray &address, std::chrono::milliseconds deadline);

/// From now on this process, with its toolkit, takes it that the session has no bus. The toolkit would wait
/// for ever for a bus that does not answer. Nothing may have talked to the bus before.
void doWithout();

} // namespace sessionbus
