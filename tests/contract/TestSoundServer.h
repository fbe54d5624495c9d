#pragma once

#include "support/ChildProgram.h"

#include <QTemporaryDir>

#include <chrono>
#include <memory>
#include <vector>

/// A sound server of a test's own, PulseAudio, whose only speaker is heard by the test alone. While one
/// lives, it is the one that this process's libraries know.
class TestSoundServer
{
public:
    /// Not started: there is no server where the libraries look for it.
    TestSoundServer();
    ~TestSoundServer();
    TestSoundServer(const TestSoundServer &) = delete;
    TestSoundServer &operator=(const TestSoundServer &) = delete;

    static bool isInstalled();

    /// Starts it, once more after `end`, and waits until it plays; whether it does.
    bool start();
    void end();
    /// Stops it in its tracks: its socket takes connections, and nobody answers.
    void freeze();
    void thaw();

    using Sound = std::vector<qint16>;
    /// What was played since the start: each sound without the silence around it, once that has lasted a
    /// while. Mono, 48 kHz.
    std::vector<Sound> sounds() const;
    /// How long nothing has been played by now.
    std::chrono::milliseconds silence() const;
    /// What the server tells about the sounds that it keeps.
    QByteArray keptSounds() const;

private:
    bool startRecorder();
    QByteArray filePath(const char *name) const;

    QTemporaryDir m_folder;
    std::vector<std::pair<const char *, QByteArray>> m_environment; ///< as it was before
    std::unique_ptr<ChildProgram> m_server;
    std::unique_ptr<ChildProgram> m_recorder;
    pid_t m_process = 0;
};
