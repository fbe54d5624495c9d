#pragma once

#include "platform/SystemSound.h"

#include <memory>
#include <thread>

/// Sounds of our own, played by the desktop's event sound facility on a thread that starts with the first of
/// them: a sound server may hang. A click that comes while the one before is still on its way to the sound
/// server is left out.
class DesktopSound : public SystemSound
{
public:
    DesktopSound();
    /// A thread that waits for a sound server which hangs is left to itself.
    ~DesktopSound() override;
    DesktopSound(const DesktopSound &) = delete;
    DesktopSound &operator=(const DesktopSound &) = delete;

    void playNavigationClick() override;

private:
    class Player;
    std::shared_ptr<Player> m_player;
    std::thread m_thread;
};

namespace platform
{

/// Loads nothing before the first sound. Never null; silent where there is no sound.
std::unique_ptr<SystemSound> makeDesktopSound();

} // namespace platform
