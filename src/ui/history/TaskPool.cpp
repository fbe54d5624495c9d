#include "ui/history/TaskPool.h"

#include <utility>

TaskPool::TaskPool(int mostThreads)
    : m_mostThreads(mostThreads)
{
}

TaskPool::~TaskPool()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_isTold.notify_all();
    for (std::thread &thread : m_threads)
        thread.join();
}

void TaskPool::start(Task task)
{
    const std::lock_guard lock(m_mutex);
    m_tasks.push_back(std::move(task));
    if (m_idleThreads < std::ssize(m_tasks) && std::ssize(m_threads) < m_mostThreads)
        m_threads.emplace_back([this] { work(); });
    m_isTold.notify_one();
}

void TaskPool::work()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        ++m_idleThreads;
        m_isTold.wait(lock, [this] { return m_isEnding || !m_tasks.empty(); });
        --m_idleThreads;
        if (m_isEnding)
            return;
        const Task task = std::move(m_tasks.back());
        m_tasks.pop_back();
        lock.unlock();
        task();
        lock.lock();
    }
}
