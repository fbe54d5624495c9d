#pragma once

#include "platform/linux/SoundLibrary.h"

#include <QByteArray>

#include <memory>

/// A connection to the desktop's sound server, PulseAudio or one that speaks as it does. It is made with the
/// first sound and kept. Every call may wait, for half a minute when the server hangs. One thread.
class SoundContext
{
public:
    SoundContext() = default;
    SoundContext(const SoundContext &) = delete;
    SoundContext &operator=(const SoundContext &) = delete;

    /// Starts the sound, and does not wait for its end. The event's name is the one by which a sound theme
    /// may replace the sound (XDG Sound Naming Specification), and by which the sound server keeps it for the
    /// next time. What fails is silent, and tried anew with the next sound.
    void play(const char *event, const QByteArray &file);

private:
    struct Destroyer {
        const SoundLibrary *library;
        void operator()(ca_context *context) const { library->destroyContext(context); }
    };
    using Context = std::unique_ptr<ca_context, Destroyer>;

    Context openContext() const;

    SoundLibrary m_library;
    Context m_context{nullptr, {&m_library}};
};
