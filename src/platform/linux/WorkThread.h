#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

/// A thread for work that takes its time, one piece after the other. It starts with the first piece.
/// Destroyed: it ends after the piece at hand; the others are dropped.
class WorkThread
{
public:
    using Piece = std::function<void()>;

    WorkThread() = default;
    ~WorkThread();
    WorkThread(const WorkThread &) = delete;
    WorkThread &operator=(const WorkThread &) = delete;

    /// Any thread.
    void post(Piece piece);

private:
    void run();

    std::mutex m_mutex;
    std::condition_variable m_hasNews;
    std::deque<Piece> m_pieces;
    bool m_isEnding = false;
    std::thread m_thread;
};
