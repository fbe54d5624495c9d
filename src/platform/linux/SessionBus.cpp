#include "platform/linux/SessionBus.h"

#include <QDeadlineTimer>
#include <QFile>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <optional>

namespace
{

/// The socket that an address names: a path, or, with a leading zero byte, an abstract name. Nothing for an
/// address of another kind.
std::optional<QByteArray> socketName(const QByteArray &address)
{
    const QByteArray first = address.split(';').constFirst();
    const QByteArray transport("unix:");
    if (!first.startsWith(transport))
        return std::nullopt;
    for (const QByteArray &pair : first.mid(transport.size()).split(',')) {
        const qsizetype separator = pair.indexOf('=');
        const QByteArray value = QByteArray::fromPercentEncoding(pair.mid(separator + 1));
        if (pair.left(separator) == "path")
            return value;
        if (pair.left(separator) == "abstract")
            return '\0' + value;
    }
    return std::nullopt;
}

/// A descriptor, closed when it goes.
class Socket
{
public:
    Socket()
        : m_descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
    {
    }
    ~Socket()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Socket(const Socket &) = delete;
    Socket &operator=(const Socket &) = delete;

    bool connectTo(const QByteArray &name) const
    {
        sockaddr_un peer{};
        peer.sun_family = AF_UNIX;
        // A path may fill all of it; an abstract name is as long as it says.
        if (name.isEmpty() || static_cast<size_t>(name.size()) > sizeof peer.sun_path)
            return false;
        std::memcpy(peer.sun_path, name.constData(), static_cast<size_t>(name.size()));
        const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
        return ::connect(m_descriptor, reinterpret_cast<const sockaddr *>(&peer), size) == 0;
    }

    bool send(const QByteArray &bytes) const
    {
        return ::send(m_descriptor, bytes.constData(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL) ==
            bytes.size();
    }

    /// Whether anything comes in before the deadline.
    bool hasNews(QDeadlineTimer deadline) const
    {
        pollfd polled{m_descriptor, POLLIN, 0};
        int count = 0;
        do {
            count = ::poll(&polled, 1, static_cast<int>(deadline.remainingTime()));
        } while (count < 0 && errno == EINTR);
        char byte = 0;
        return count > 0 && ::recv(m_descriptor, &byte, 1, 0) == 1;
    }

private:
    int m_descriptor;
};

} // namespace

namespace sessionbus
{

QByteArray address()
{
    const QByteArray set = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    if (!set.isEmpty() || folder.isEmpty())
        return set;
    const QByteArray path = folder + "/bus";
    return QFile::exists(QFile::decodeName(path)) ? "unix:path=" + path.toPercentEncoding("/") : QByteArray();
}

QDBusConnection connection()
{
    return address().isEmpty() ? QDBusConnection(QString()) : QDBusConnection::sessionBus();
}

bool answers(const QByteArray &address, std::chrono::milliseconds deadline)
{
    const auto name = socketName(address);
    if (!name)
        return !address.isEmpty();
    const Socket socket;
    // D-Bus Specification, "Authentication Protocol": a bus answers with the mechanisms that it takes.
    const QByteArray question("\0AUTH\r\n", 7);
    return socket.connectTo(*name) && socket.send(question) && socket.hasNews(QDeadlineTimer(deadline));
}

void doWithout()
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
}

} // namespace sessionbus
