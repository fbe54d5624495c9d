#pragma once

#include <QSocketNotifier>

#include <functional>
#include <mutex>
#include <vector>

/// Runs functions that other threads hand over, in the event loop of the thread that made it, in order.
/// Made and destroyed on that thread; nobody posts any more when it is destroyed, and what has not run is
/// dropped.
class ThreadInbox
{
public:
    using Function = std::function<void()>;

    ThreadInbox();
    ~ThreadInbox();
    ThreadInbox(const ThreadInbox &) = delete;
    ThreadInbox &operator=(const ThreadInbox &) = delete;

    /// Any thread; does not wait.
    void post(Function function);

private:
    void run();

    const int m_wakeDescriptor;
    QSocketNotifier m_notifier;
    std::mutex m_mutex;
    std::vector<Function> m_functions;
};
