#pragma once

#include "platform/wayland/FileDescriptor.h"

#include <QByteArray>
#include <QSocketNotifier>

#include <functional>

/// Reads what another program writes into a pipe, until it closes it, in slices, so that no turn of the event
/// loop is long. It has no deadline of its own; destroying it cancels, and the writer finds the pipe broken.
class PipeReader
{
public:
    enum class Outcome {
        Delivered,
        Failed,
        TooLarge, ///< more than the limit
    };
    struct Callbacks {
        std::function<void(qint64 bytes)> onProgress;
        /// Once. The reader may be destroyed from within.
        std::function<void(Outcome outcome, const QByteArray &bytes)> onDone;
    };

    /// The descriptor does not block.
    PipeReader(FileDescriptor descriptor, qint64 limit, Callbacks callbacks);
    ~PipeReader();
    PipeReader(const PipeReader &) = delete;
    PipeReader &operator=(const PipeReader &) = delete;

    /// The bytes so far.
    qint64 size() const { return m_bytes.size(); }

private:
    void read();
    void finish(Outcome outcome);

    const FileDescriptor m_descriptor;
    const qint64 m_limit;
    const Callbacks m_callbacks;
    QByteArray m_bytes;
    QSocketNotifier m_readable;
};
