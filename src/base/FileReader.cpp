#include "base/FileReader.h"

#include <QFile>

#include <mutex>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>

std::optional<QByteArray> readRegularFile(const QByteArray &path, qint64 limit)
{
    const int descriptor = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0)
        return std::nullopt;
    QFile file;
    struct stat status = {};
    if (!file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle) ||
        fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > limit)
        return std::nullopt;
    const QByteArray bytes = file.readAll();
    // A null array would be taken for none; an empty file has bytes, if only zero of them.
    const bool isWhole = file.error() == QFileDevice::NoError;
    return isWhole ? std::optional(bytes.isNull() ? QByteArray("") : bytes) : std::nullopt;
}

/// The way back to the main thread, which closes when the reader goes.
struct ThreadedFileReader::Gate {
    std::mutex mutex;
    MainQueue *queue;

    void post(MainQueue::Block block)
    {
        const std::lock_guard lock(mutex);
        if (queue)
            queue->async(std::move(block));
    }
};

ThreadedFileReader::ThreadedFileReader(MainQueue &queue)
    : m_gate(std::make_shared<Gate>())
{
    m_gate->queue = &queue;
}

ThreadedFileReader::~ThreadedFileReader()
{
    const std::lock_guard lock(m_gate->mutex);
    m_gate->queue = nullptr;
}

void ThreadedFileReader::read(const QByteArray &path, qint64 limit, Done onDone)
{
    // The first answer counts, the file's or the deadline's. On the main thread both.
    const auto waiting = std::make_shared<Done>(std::move(onDone));
    const auto answer = [waiting](std::optional<QByteArray> bytes) {
        if (const Done done = std::exchange(*waiting, nullptr))
            done(std::move(bytes));
    };
    m_gate->queue->asyncAfter(Deadline, [answer, gate = std::weak_ptr(m_gate)] {
        if (!gate.expired())
            answer(std::nullopt);
    });
    std::thread([path, limit, answer, gate = m_gate] {
        gate->post([answer, gate = std::weak_ptr(gate), bytes = readRegularFile(path, limit)] {
            if (!gate.expired())
                answer(bytes);
        });
    }).detach();
}
