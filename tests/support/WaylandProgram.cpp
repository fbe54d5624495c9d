#include "support/WaylandProgram.h"

#include "support/Waiting.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

WaylandProgram::WaylandProgram(const QByteArray &applicationId)
{
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return;
    m_socket = ends[0];
    ::fcntl(ends[1], F_SETFD, 0);
    m_program = std::make_unique<ChildProgram>(
        QByteArrayList{TEST_WINDOW_PROGRAM, applicationId, QByteArray::number(ends[1])},
        ChildProgram::Output::Discarded);
    ::close(ends[1]);
    m_readable = std::make_unique<QSocketNotifier>(m_socket, QSocketNotifier::Read);
    QObject::connect(m_readable.get(), &QSocketNotifier::activated, m_readable.get(), [this] { read(); });
    waitUntil([this] { return m_processIdentifier > 0; });
}

WaylandProgram::~WaylandProgram()
{
    m_readable.reset();
    m_program.reset();
    ::close(m_socket);
}

bool WaylandProgram::open()
{
    m_hasFocus = false;
    send("open");
    return waitUntil([this] { return m_hasFocus; });
}

void WaylandProgram::close()
{
    send("close");
}

void WaylandProgram::copy(const QByteArray &text)
{
    send("copy " + text);
}

void WaylandProgram::forgetKeys()
{
    m_keyPresses.clear();
    m_keyReleaseCount = 0;
}

void WaylandProgram::send(const QByteArray &command) const
{
    const QByteArray line = command + '\n';
    [[maybe_unused]] const ssize_t count =
        ::send(m_socket, line.constData(), static_cast<size_t>(line.size()), MSG_NOSIGNAL);
}

void WaylandProgram::read()
{
    QByteArray bytes(4096, Qt::Uninitialized);
    const ssize_t count = ::read(m_socket, bytes.data(), static_cast<size_t>(bytes.size()));
    if (count <= 0) {
        // It has ended, and its windows with it.
        m_readable->setEnabled(false);
        m_hasFocus = false;
        return;
    }
    m_pending += bytes.left(count);
    for (qsizetype end = 0; (end = m_pending.indexOf('\n')) >= 0;) {
        take(m_pending.left(end).split(' '));
        m_pending.remove(0, end + 1);
    }
}

void WaylandProgram::take(const QByteArrayList &words)
{
    const QByteArray &event = words.first();
    if (event == "process")
        m_processIdentifier = words.value(1).toLongLong();
    else if (event == "focus" || event == "blur")
        m_hasFocus = event == "focus";
    else if (event == "press")
        m_keyPresses.push_back(
            {words.value(1).toInt(), Qt::KeyboardModifiers::fromInt(words.value(2).toInt())});
    else if (event == "release")
        ++m_keyReleaseCount;
}
