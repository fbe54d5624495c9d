#include "contract/TestSoundServer.h"

#include "support/Waiting.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <csignal>
#include <cstring>

namespace
{

constexpr int Rate = 48000;
/// Shorter silences belong to the sound.
constexpr size_t LongestRest = Rate / 100;

TestSoundServer::Sound samples(const QByteArray &bytes)
{
    TestSoundServer::Sound samples(static_cast<size_t>(bytes.size()) / sizeof(qint16));
    if (!samples.empty())
        std::memcpy(samples.data(), bytes.constData(), samples.size() * sizeof(qint16));
    return samples;
}

QByteArray contents(const QByteArray &path)
{
    QFile file(QFile::decodeName(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TestSoundServer::TestSoundServer()
{
    const QByteArray folder = QFile::encodeName(m_folder.path());
    // There is no such file: should a library look for sound cards, it finds none, and complains.
    const std::vector<std::pair<const char *, QByteArray>> environment{
        {"PULSE_SERVER", "unix:" + filePath("socket")}, {"PULSE_RUNTIME_PATH", folder},
        {"ALSA_CONFIG_PATH", filePath("no-cards.conf")}, {"HOME", folder}, {"XDG_RUNTIME_DIR", folder},
        {"XDG_CONFIG_HOME", filePath("config")}, {"XDG_CACHE_HOME", filePath("cache")},
        {"DBUS_SESSION_BUS_ADDRESS", "disabled:"}};
    for (const auto &[name, value] : environment) {
        m_environment.emplace_back(name, qgetenv(name));
        qputenv(name, value);
    }
}

TestSoundServer::~TestSoundServer()
{
    end();
    for (const auto &[name, value] : m_environment)
        value.isNull() ? qunsetenv(name) : qputenv(name, value);
}

bool TestSoundServer::isInstalled()
{
    return !QStandardPaths::findExecutable(QStringLiteral("pulseaudio")).isEmpty() &&
        !QStandardPaths::findExecutable(QStringLiteral("parec")).isEmpty();
}

QByteArray TestSoundServer::filePath(const char *name) const
{
    return QFile::encodeName(m_folder.filePath(QString::fromLatin1(name)));
}

bool TestSoundServer::start()
{
    // Its speaker does not take back what it has heard when a new sound comes, as real ones do: the recorder
    // could not.
    m_server = std::make_unique<ChildProgram>(
        QByteArrayList{"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=yes",
            "--realtime=no", "--high-priority=no", "--disable-shm=yes", "-L",
            "module-null-sink sink_name=ear norewinds=1 format=s16le rate=48000 channels=1 channel_map=mono",
            "-L", "module-native-protocol-unix auth-anonymous=1 socket=" + filePath("socket")},
        ChildProgram::Output::Discarded);
    const QString socket = m_folder.filePath(QStringLiteral("socket"));
    if (!waitUntil([socket] { return QFile::exists(socket); }) ||
        !waitUntil([this] { return startRecorder(); }))
        return false;
    m_process = contents(filePath("pid")).trimmed().toInt();
    return m_process > 0;
}

/// Fails where the server does not take connections yet.
bool TestSoundServer::startRecorder()
{
    m_recorder = std::make_unique<ChildProgram>(
        QByteArrayList{"parec", "--device=ear.monitor", "--rate=48000", "--channels=1", "--format=s16le",
            "--latency-msec=20", filePath("recording")},
        ChildProgram::Output::Discarded);
    const QString file = m_folder.filePath(QStringLiteral("recording"));
    return waitUntil([file] { return QFileInfo(file).size() > 0; }, std::chrono::milliseconds(500));
}

void TestSoundServer::end()
{
    thaw();
    m_process = 0;
    m_recorder.reset();
    m_server.reset();
    QFile::remove(m_folder.filePath(QStringLiteral("socket")));
    QFile::remove(m_folder.filePath(QStringLiteral("recording")));
}

void TestSoundServer::freeze()
{
    if (m_process > 0)
        ::kill(m_process, SIGSTOP);
}

void TestSoundServer::thaw()
{
    if (m_process > 0)
        ::kill(m_process, SIGCONT);
}

std::chrono::milliseconds TestSoundServer::silence() const
{
    const Sound recording = samples(contents(filePath("recording")));
    const auto last =
        std::find_if(recording.rbegin(), recording.rend(), [](qint16 sample) { return sample != 0; });
    return std::chrono::milliseconds((last - recording.rbegin()) * 1000 / Rate);
}

std::vector<TestSoundServer::Sound> TestSoundServer::sounds() const
{
    std::vector<Sound> sounds;
    Sound sound;
    size_t rest = 0;
    for (const qint16 sample : samples(contents(filePath("recording")))) {
        if (sample == 0 && sound.empty())
            continue;
        sound.push_back(sample);
        rest = sample == 0 ? rest + 1 : 0;
        if (rest > LongestRest) {
            sound.resize(sound.size() - rest);
            sounds.push_back(std::exchange(sound, {}));
            rest = 0;
        }
    }
    return sounds;
}

QByteArray TestSoundServer::keptSounds() const
{
    return ChildProgram({"pactl", "list", "samples"}).readAll();
}
