#pragma once

#include "base/MainQueue.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <optional>

/// The whole of a regular file of at most `limit` bytes; nothing for anything else: a folder, a pipe, a
/// device, a file that is missing, larger or may not be read. Waits for the file system. Any thread.
std::optional<QByteArray> readRegularFile(const QByteArray &path, qint64 limit);

/// Reads files for the main thread, which never waits for them. Main thread only.
class FileReader
{
public:
    using Done = std::function<void(std::optional<QByteArray>)>;

    virtual ~FileReader() = default;

    /// Calls `onDone` once, with what `readRegularFile` gives, or with nothing. May call it before it
    /// returns.
    virtual void read(const QByteArray &path, qint64 limit, Done onDone) = 0;
};

/// Reads each file on a thread of its own: a file system that hangs keeps that thread, and nobody else.
class ThreadedFileReader : public FileReader
{
public:
    /// A file that is not there after so long is given up.
    static constexpr std::chrono::milliseconds Deadline{5000};

    /// The queue must outlive it. Reads that are under way when it goes are forgotten.
    explicit ThreadedFileReader(MainQueue &queue);
    ~ThreadedFileReader() override;
    ThreadedFileReader(const ThreadedFileReader &) = delete;
    ThreadedFileReader &operator=(const ThreadedFileReader &) = delete;

    void read(const QByteArray &path, qint64 limit, Done onDone) override;

private:
    struct Gate;
    std::shared_ptr<Gate> m_gate;
};
