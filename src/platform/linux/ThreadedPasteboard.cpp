#include "platform/linux/ThreadedPasteboard.h"

#include "platform/linux/ClipboardOwnContent.h"
#include "platform/linux/ThreadInbox.h"

#include <QEventLoop>

#include <future>
#include <thread>

/// The clipboard's thread, and what it shares with the main thread.
class ThreadedPasteboard::Thread
{
public:
    explicit Thread(Open open)
        : m_open(std::move(open))
    {
    }

    ~Thread()
    {
        if (m_inbox != nullptr)
            m_inbox->post([this] { m_loop->quit(); });
        if (m_thread.joinable())
            m_thread.join();
    }

    /// Whether there is a clipboard.
    bool start()
    {
        std::promise<bool> isOpen;
        auto opened = isOpen.get_future();
        m_thread = std::thread([this, &isOpen] { run(isOpen); });
        return opened.get();
    }

    void takeOverWithOwn()
    {
        m_inbox->post([this] { m_follower->takeOverWithOwn(); });
    }

    void ownContentChanged()
    {
        m_inbox->post([this] { m_follower->ownContentChanged(); });
    }

    ClipboardQueue queue;
    ClipboardOwnContent own{queue};

private:
    void run(std::promise<bool> &isOpen)
    {
        // First, since it makes the thread one that notifiers and timers work on.
        QEventLoop loop;
        ThreadInbox inbox;
        const auto follower = m_open(inbox, queue, own);
        if (!follower) {
            isOpen.set_value(false);
            return;
        }
        m_loop = &loop;
        m_inbox = &inbox;
        m_follower = follower.get();
        isOpen.set_value(true);
        loop.exec();
    }

    const Open m_open;
    QEventLoop *m_loop = nullptr;
    ThreadInbox *m_inbox = nullptr;
    ClipboardFollower *m_follower = nullptr;
    std::thread m_thread;
};

std::unique_ptr<ThreadedPasteboard> ThreadedPasteboard::start(Open open)
{
    auto thread = std::make_unique<Thread>(std::move(open));
    if (!thread->start())
        return nullptr;
    return std::unique_ptr<ThreadedPasteboard>(new ThreadedPasteboard(std::move(thread)));
}

ThreadedPasteboard::ThreadedPasteboard(std::unique_ptr<Thread> thread)
    : m_thread(std::move(thread))
{
}
ThreadedPasteboard::~ThreadedPasteboard() = default;

qint64 ThreadedPasteboard::changeCount() const
{
    return m_thread->queue.changeCount();
}

bool ThreadedPasteboard::advance()
{
    return m_thread->queue.advance();
}

std::vector<PasteboardItem> ThreadedPasteboard::pasteboardItems() const
{
    return m_thread->queue.pasteboardItems();
}

std::optional<QByteArray> ThreadedPasteboard::data(PasteboardType type) const
{
    return m_thread->queue.data(type);
}

std::optional<QByteArray> ThreadedPasteboard::pngRepresentation(PasteboardType type) const
{
    return m_thread->queue.pngRepresentation(type);
}

void ThreadedPasteboard::clearContents()
{
    m_thread->own.start();
    m_thread->takeOverWithOwn();
}

void ThreadedPasteboard::setString(const QByteArray &string)
{
    m_thread->own.setString(string);
    m_thread->ownContentChanged();
}

void ThreadedPasteboard::writeObjects(const std::vector<PasteboardObject> &objects)
{
    m_thread->own.writeObjects(objects);
    m_thread->ownContentChanged();
}
