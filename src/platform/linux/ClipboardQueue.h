#pragma once

#include "platform/linux/ClipboardContent.h"
#include "platform/linux/WorkThread.h"

#include <atomic>
#include <deque>
#include <functional>
#include <mutex>

/// The line of contents between a clipboard's back end and the main thread, and the reading half of
/// `Pasteboard`.
///
/// Life of a content:
///  1. `reserve` gives it its number when the clipboard's owner changes: contents are shown in the order of
///  numbers.
///  2. `fill` hands it over when it has been fetched, or `abandon` when nothing came of it.
///  3. Its images are converted, on a thread of the line's own. It is finished then, and waits.
///  4. `advance` makes it current when every earlier one has been current, or abandoned.
///
/// Content 0 is what the clipboard held at the start: it is current from the start, and is filled when it is
/// known.
///
/// While more than the limits wait, the oldest finished one is dropped, with a line on the console; never the
/// newest.
class ClipboardQueue
{
public:
    struct Limits {
        size_t contents = 512;
        qint64 bytes = 512LL * 1024 * 1024;
    };

    ClipboardQueue()
        : ClipboardQueue(Limits{})
    {
    }
    explicit ClipboardQueue(Limits limits)
        : m_limits(limits)
    {
    }

    // The back end's side; any thread.

    qint64 reserve();
    void fill(qint64 number, ClipboardReading reading);
    void abandon(qint64 number);
    /// Whether a later content is there and can not be shown because this one is not.
    bool holdsBack(qint64 number) const;
    /// Changes a content that was filled, waiting or current; its images are converted again. Nothing happens
    /// when it is neither any more.
    void amend(qint64 number, const std::function<void(ClipboardReading &)> &change);

    // The port's side: main thread.

    qint64 changeCount() const { return m_changeCount; }
    bool advance();
    std::vector<PasteboardItem> pasteboardItems() const;
    std::optional<QByteArray> data(PasteboardType type) const;
    std::optional<QByteArray> pngRepresentation(PasteboardType type) const;

private:
    enum class State { Reserved, Converting, Finished };
    struct Content {
        qint64 number = 0;
        State state = State::Reserved;
        ClipboardReading reading;
        int revision = 0; ///< of the reading
    };

    Content *find(qint64 number);
    void store(Content &content, ClipboardReading reading);
    void convert(qint64 number, int revision);
    void dropBeyondLimits();
    bool isBeyondLimits() const;
    void updateFlag();

    const Limits m_limits;
    /// Main thread only.
    qint64 m_changeCount = 0;
    /// Whether the first in line is finished: all that a poll with nothing new looks at.
    std::atomic<bool> m_hasNext = false;

    mutable std::mutex m_mutex;
    Content m_current;
    std::deque<Content> m_line;
    qint64 m_lastNumber = 0;

    /// Last, so that it ends first.
    WorkThread m_converter;
};
