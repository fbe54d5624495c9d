#include "platform/linux/DesktopSound.h"

#include "platform/linux/SoundContext.h"
#include "platform/linux/SoundFile.h"

#include <condition_variable>
#include <mutex>

namespace
{

constexpr std::chrono::milliseconds EndPatience{500};

} // namespace

/// What both threads know of.
class DesktopSound::Player
{
public:
    /// False when the click before is still on its way.
    bool requestClick()
    {
        const std::lock_guard lock(m_mutex);
        if (m_stage != Stage::Idle)
            return false;
        m_stage = Stage::Requested;
        m_hasNews.notify_all();
        return true;
    }

    /// Whether the other thread has come to its end within the time.
    bool end(std::chrono::milliseconds patience)
    {
        std::unique_lock lock(m_mutex);
        m_isEnding = true;
        m_hasNews.notify_all();
        return m_hasNews.wait_for(lock, patience, [this] { return m_stage == Stage::Ended; });
    }

    /// The other thread's work.
    void run()
    {
        playRequested();
        const std::lock_guard lock(m_mutex);
        m_stage = Stage::Ended;
        m_hasNews.notify_all();
    }

private:
    enum class Stage { Idle, Requested, Playing, Ended };

    void playRequested()
    {
        const SoundFile click(QStringLiteral(":/larkspool/sounds/navigation-click.wav"));
        SoundContext context;
        std::unique_lock lock(m_mutex);
        while (true) {
            m_hasNews.wait(lock, [this] { return m_isEnding || m_stage == Stage::Requested; });
            if (m_isEnding)
                return;
            m_stage = Stage::Playing;
            lock.unlock();
            context.play("larkspool-navigation-click", click.path());
            lock.lock();
            m_stage = Stage::Idle;
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_hasNews;
    Stage m_stage = Stage::Idle;
    bool m_isEnding = false;
};

DesktopSound::DesktopSound()
    : m_player(std::make_shared<Player>())
{
}

DesktopSound::~DesktopSound()
{
    if (!m_thread.joinable())
        return;
    if (m_player->end(EndPatience))
        m_thread.join();
    else
        m_thread.detach();
}

void DesktopSound::playNavigationClick()
{
    if (m_player->requestClick() && !m_thread.joinable())
        m_thread = std::thread([player = m_player] { player->run(); });
}

std::unique_ptr<SystemSound> platform::makeDesktopSound()
{
    return std::make_unique<DesktopSound>();
}
