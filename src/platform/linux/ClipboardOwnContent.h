#pragma once

#include "platform/linux/ClipboardQueue.h"

#include <mutex>

/// The content that this program writes itself: what is offered to other programs, and its place in the line
/// of contents, where it reads like anybody's. It outlives being current: it is there until the next `start`.
class ClipboardOwnContent
{
public:
    /// The queue outlives it.
    explicit ClipboardOwnContent(ClipboardQueue &queue)
        : m_queue(queue)
    {
    }

    // Main thread.

    /// A new, empty content; its number.
    qint64 start();
    /// Both do nothing before the first `start`.
    void setString(const QByteArray &string);
    void writeObjects(const std::vector<PasteboardObject> &objects);

    // Any thread.

    /// Number 0 before the first `start`.
    struct Snapshot {
        qint64 number = 0;
        ClipboardContent content;
    };
    Snapshot snapshot() const;

private:
    void write(const PasteboardImage &image);
    void write(const PasteboardUrl &url);
    void offer(const QByteArray &target, const QByteArray &bytes);
    void amendReading(const std::function<void(ClipboardReading &)> &change);

    ClipboardQueue &m_queue;
    mutable std::mutex m_mutex;
    Snapshot m_own;
};
