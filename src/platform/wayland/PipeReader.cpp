#include "platform/wayland/PipeReader.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace
{

/// In one turn of the event loop.
constexpr qsizetype LargestSlice = 1024 * 1024;

} // namespace

PipeReader::PipeReader(FileDescriptor descriptor, qint64 limit, Callbacks callbacks)
    : m_descriptor(std::move(descriptor))
    , m_limit(limit)
    , m_callbacks(std::move(callbacks))
    , m_readable(m_descriptor.number(), QSocketNotifier::Read)
{
    QObject::connect(&m_readable, &QSocketNotifier::activated, &m_readable, [this] { read(); });
}

PipeReader::~PipeReader()
{
    m_readable.setEnabled(false);
}

void PipeReader::read()
{
    const qsizetype start = m_bytes.size();
    // One more than may come tells that there is too much.
    const qsizetype room = std::min<qint64>(LargestSlice, m_limit + 1 - start);
    m_bytes.resize(start + room);
    const ssize_t count = ::read(m_descriptor.number(), m_bytes.data() + start, static_cast<size_t>(room));
    const int error = count < 0 ? errno : 0;
    m_bytes.resize(start + std::max<qsizetype>(count, 0));
    if (count > 0)
        m_callbacks.onProgress(count);
    if (m_bytes.size() > m_limit)
        finish(Outcome::TooLarge);
    else if (count == 0)
        finish(Outcome::Delivered);
    else if (count < 0 && error != EAGAIN && error != EINTR)
        finish(Outcome::Failed);
}

void PipeReader::finish(Outcome outcome)
{
    m_readable.setEnabled(false);
    m_bytes.squeeze();
    // They outlive this object, which the call may end.
    const auto onDone = m_callbacks.onDone;
    const QByteArray bytes = m_bytes;
    onDone(outcome, bytes);
}
