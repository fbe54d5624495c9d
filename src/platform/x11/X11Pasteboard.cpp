#include "platform/x11/X11Pasteboard.h"

#include "platform/linux/ClipboardOwnContent.h"
#include "platform/x11/X11Clipboard.h"

#include <QEventLoop>

#include <future>
#include <thread>

/// The clipboard's thread, and what it shares with the main thread.
class X11Pasteboard::Thread
{
public:
    explicit Thread(const ClipboardLimits &limits)
        : m_limits(limits)
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
        m_inbox->post([this] { m_clipboard->takeOverWithOwn(); });
    }

    ClipboardQueue queue;
    ClipboardOwnContent own{queue};

private:
    void run(std::promise<bool> &isOpen)
    {
        // First, since it makes the thread one that notifiers and timers work on.
        QEventLoop loop;
        ThreadInbox inbox;
        const auto clipboard = X11Clipboard::open(inbox, queue, own, m_limits);
        if (!clipboard) {
            isOpen.set_value(false);
            return;
        }
        m_loop = &loop;
        m_inbox = &inbox;
        m_clipboard = clipboard.get();
        isOpen.set_value(true);
        loop.exec();
    }

    const ClipboardLimits m_limits;
    QEventLoop *m_loop = nullptr;
    ThreadInbox *m_inbox = nullptr;
    X11Clipboard *m_clipboard = nullptr;
    std::thread m_thread;
};

std::unique_ptr<X11Pasteboard> X11Pasteboard::open(const ClipboardLimits &limits)
{
    auto thread = std::make_unique<Thread>(limits);
    if (!thread->start())
        return nullptr;
    return std::unique_ptr<X11Pasteboard>(new X11Pasteboard(std::move(thread)));
}

X11Pasteboard::X11Pasteboard(std::unique_ptr<Thread> thread)
    : m_thread(std::move(thread))
{
}
X11Pasteboard::~X11Pasteboard() = default;

qint64 X11Pasteboard::changeCount() const
{
    return m_thread->queue.changeCount();
}

bool X11Pasteboard::advance()
{
    return m_thread->queue.advance();
}

std::vector<PasteboardItem> X11Pasteboard::pasteboardItems() const
{
    return m_thread->queue.pasteboardItems();
}

std::optional<QByteArray> X11Pasteboard::data(PasteboardType type) const
{
    return m_thread->queue.data(type);
}

std::optional<QByteArray> X11Pasteboard::pngRepresentation(PasteboardType type) const
{
    return m_thread->queue.pngRepresentation(type);
}

void X11Pasteboard::clearContents()
{
    m_thread->own.start();
    m_thread->takeOverWithOwn();
}

void X11Pasteboard::setString(const QByteArray &string)
{
    m_thread->own.setString(string);
}

void X11Pasteboard::writeObjects(const std::vector<PasteboardObject> &objects)
{
    m_thread->own.writeObjects(objects);
}
