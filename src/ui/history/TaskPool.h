#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/// A few threads that do what takes long. The latest task is begun first: it is for what is looked at now.
/// Any thread.
class TaskPool
{
public:
    using Task = std::function<void()>;

    /// Threads are started as tasks come, at most so many.
    explicit TaskPool(int mostThreads);
    /// Drops the tasks that are not begun, and waits for those that are.
    ~TaskPool();
    TaskPool(const TaskPool &) = delete;
    TaskPool &operator=(const TaskPool &) = delete;

    void start(Task task);

private:
    void work();

    const int m_mostThreads;
    std::mutex m_mutex;
    std::condition_variable m_isTold;
    std::deque<Task> m_tasks;
    std::vector<std::thread> m_threads;
    int m_idleThreads = 0;
    bool m_isEnding = false;
};
