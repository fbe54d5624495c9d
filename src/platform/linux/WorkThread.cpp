#include "platform/linux/WorkThread.h"

WorkThread::~WorkThread()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_hasNews.notify_one();
    if (m_thread.joinable())
        m_thread.join();
}

void WorkThread::post(Piece piece)
{
    const std::lock_guard lock(m_mutex);
    m_pieces.push_back(std::move(piece));
    if (!m_thread.joinable())
        m_thread = std::thread([this] { run(); });
    m_hasNews.notify_one();
}

void WorkThread::run()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        m_hasNews.wait(lock, [this] { return m_isEnding || !m_pieces.empty(); });
        if (m_isEnding)
            return;
        Piece piece = std::move(m_pieces.front());
        m_pieces.pop_front();
        lock.unlock();
        piece();
        // What it holds goes before the wait for the next one, and without the lock.
        piece = nullptr;
        lock.lock();
    }
}
