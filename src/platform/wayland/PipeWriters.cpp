#include "platform/wayland/PipeWriters.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

struct PipeWriters::Writer {
    Writer(FileDescriptor pipe, const QByteArray &content)
        : descriptor(std::move(pipe))
        , bytes(content)
        , writable(descriptor.number(), QSocketNotifier::Write)
    {
    }
    ~Writer() { writable.setEnabled(false); }
    Writer(const Writer &) = delete;
    Writer &operator=(const Writer &) = delete;

    const FileDescriptor descriptor;
    const QByteArray bytes;
    qsizetype written = 0;
    Time progress = std::chrono::steady_clock::now();
    QSocketNotifier writable;
};

namespace
{

/// In one turn of the event loop.
constexpr qsizetype LargestSlice = 1024 * 1024;

/// Anybody may ask, and descriptors are few.
constexpr size_t MaximumWriters = 64;

} // namespace

PipeWriters::PipeWriters(std::chrono::milliseconds stalledReceiver)
    : m_stalledReceiver(stalledReceiver)
{
}

PipeWriters::~PipeWriters() = default;

void PipeWriters::start(FileDescriptor descriptor, const QByteArray &bytes)
{
    const int number = descriptor.number();
    ::fcntl(number, F_SETFL, ::fcntl(number, F_GETFL) | O_NONBLOCK);
    if (m_writers.size() >= MaximumWriters)
        m_writers.erase(
            std::ranges::min_element(m_writers, {}, [](const auto &writer) { return writer->progress; }));
    m_writers.push_back(std::make_unique<Writer>(std::move(descriptor), bytes));
    Writer &writer = *m_writers.back();
    QObject::connect(
        &writer.writable, &QSocketNotifier::activated, &writer.writable, [this, &writer] { write(writer); });
}

void PipeWriters::write(Writer &writer)
{
    const qsizetype slice = std::min(LargestSlice, writer.bytes.size() - writer.written);
    const ssize_t count = ::write(
        writer.descriptor.number(), writer.bytes.constData() + writer.written, static_cast<size_t>(slice));
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    writer.written += std::max<qsizetype>(count, 0);
    writer.progress = std::chrono::steady_clock::now();
    if (count < 0 || writer.written == writer.bytes.size())
        remove(writer);
}

void PipeWriters::check(Time now)
{
    m_writers.remove_if([&](const auto &writer) { return now - writer->progress >= m_stalledReceiver; });
}

void PipeWriters::remove(const Writer &writer)
{
    m_writers.remove_if([&writer](const auto &candidate) { return candidate.get() == &writer; });
}
