#pragma once

#include "platform/wayland/FileDescriptor.h"

#include <QByteArray>

#include <chrono>
#include <list>
#include <memory>

class QSocketNotifier;

/// Writes contents into pipes that other programs read, each at its reader's pace. Every pipe is closed at
/// the end of its content, or when its reader takes nothing for too long.
class PipeWriters
{
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit PipeWriters(std::chrono::milliseconds stalledReceiver);
    ~PipeWriters();

    void start(FileDescriptor descriptor, const QByteArray &bytes);
    /// Drops the readers that have stalled.
    void check(Time now);
    bool isEmpty() const { return m_writers.empty(); }

private:
    struct Writer;

    void write(Writer &writer);
    void remove(const Writer &writer);

    const std::chrono::milliseconds m_stalledReceiver;
    std::list<std::unique_ptr<Writer>> m_writers;
};
