#include "platform/linux/ThreadInbox.h"

#include <sys/eventfd.h>
#include <unistd.h>

ThreadInbox::ThreadInbox()
    : m_wakeDescriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , m_notifier(m_wakeDescriptor, QSocketNotifier::Read)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] { run(); });
}

ThreadInbox::~ThreadInbox()
{
    m_notifier.setEnabled(false);
    ::close(m_wakeDescriptor);
}

void ThreadInbox::post(Function function)
{
    const std::lock_guard lock(m_mutex);
    m_functions.push_back(std::move(function));
    // Fails only when the counter is about to overflow, and then the thread is awake anyway.
    [[maybe_unused]] const int status = ::eventfd_write(m_wakeDescriptor, 1);
}

void ThreadInbox::run()
{
    eventfd_t count = 0;
    [[maybe_unused]] const int status = ::eventfd_read(m_wakeDescriptor, &count);
    std::vector<Function> functions;
    {
        const std::lock_guard lock(m_mutex);
        functions.swap(m_functions);
    }
    for (const Function &function : functions)
        function();
}
