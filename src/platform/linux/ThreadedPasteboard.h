#pragma once

#include "platform/Pasteboard.h"

#include <functional>
#include <memory>

class ClipboardOwnContent;
class ClipboardQueue;
class ThreadInbox;

/// One desktop's clipboard, followed on a thread of its own: fills the line of contents, and serves this
/// program's own content to others.
class ClipboardFollower
{
public:
    virtual ~ClipboardFollower() = default;

    /// The own content has begun anew: takes the clipboard over with it.
    virtual void takeOverWithOwn() = 0;
    /// Something has been added to the own content.
    virtual void ownContentChanged() {}
};

/// The general pasteboard on top of a desktop's clipboard. All work with the desktop and with other programs
/// is done on a thread of its own, whose event loop drives it.
class ThreadedPasteboard : public Pasteboard
{
public:
    /// Makes the follower, on its thread; null when the desktop has no such clipboard. What it is given
    /// outlives it; the inbox is that of its thread.
    using Open = std::function<std::unique_ptr<ClipboardFollower>(
        ThreadInbox &inbox, ClipboardQueue &queue, ClipboardOwnContent &own)>;

    /// Null when there is no such clipboard. Waits for `open`, and for nothing else.
    static std::unique_ptr<ThreadedPasteboard> start(Open open);
    ~ThreadedPasteboard() override;

    qint64 changeCount() const override;
    bool advance() override;
    std::vector<PasteboardItem> pasteboardItems() const override;
    std::optional<QByteArray> data(PasteboardType type) const override;
    std::optional<QByteArray> pngRepresentation(PasteboardType type) const override;
    void clearContents() override;
    void setString(const QByteArray &string) override;
    void writeObjects(const std::vector<PasteboardObject> &objects) override;

private:
    class Thread;

    explicit ThreadedPasteboard(std::unique_ptr<Thread> thread);

    const std::unique_ptr<Thread> m_thread;
};
