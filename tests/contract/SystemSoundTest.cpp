#include "contract/TestSoundServer.h"
#include "platform/linux/DesktopSound.h"
#include "platform/linux/SoundContext.h"
#include "platform/linux/SoundFile.h"
#include "support/Waiting.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QtEndian>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace
{

using Sound = TestSoundServer::Sound;

constexpr qsizetype HeaderSize = 44;
constexpr int Rate = 48000;

QString clickResource()
{
    return QStringLiteral(":/larkspool/sounds/navigation-click.wav");
}

QByteArray clickFile()
{
    QFile file(clickResource());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

template<class Number>
Number numberAt(const QByteArray &file, qsizetype at)
{
    return qFromLittleEndian<Number>(file.constData() + at);
}

Sound clickSamples()
{
    const QByteArray file = clickFile();
    Sound samples;
    for (qsizetype at = HeaderSize; at + 1 < file.size(); at += 2)
        samples.push_back(numberAt<qint16>(file, at));
    return samples;
}

/// Without the silence around it, as the sound server's listener hears it.
Sound audibleClick()
{
    Sound samples = clickSamples();
    const auto isHeard = [](qint16 sample) { return sample != 0; };
    samples.erase(samples.begin(), std::find_if(samples.begin(), samples.end(), isHeard));
    samples.erase(std::find_if(samples.rbegin(), samples.rend(), isHeard).base(), samples.end());
    return samples;
}

double decibels(int sample)
{
    return 20 * std::log10(std::abs(sample) / 32767.0);
}

TEST(NavigationClickTest, IsAWaveFileOfOneChannel)
{
    // Multimedia Programming Interface and Data Specifications 1.0, "Waveform Audio File Format".
    const QByteArray file = clickFile();
    ASSERT_GT(file.size(), HeaderSize);
    EXPECT_EQ(file.mid(0, 4) + file.mid(8, 8), "RIFFWAVEfmt ");
    EXPECT_EQ(numberAt<quint16>(file, 20), 1) << "samples as they are";
    EXPECT_EQ(numberAt<quint16>(file, 22), 1) << "channels";
    EXPECT_EQ(numberAt<quint32>(file, 24), static_cast<quint32>(Rate));
    EXPECT_EQ(numberAt<quint16>(file, 34), 16) << "bits";
    EXPECT_EQ(file.mid(36, 4), "data");
    EXPECT_EQ(numberAt<quint32>(file, 40), file.size() - HeaderSize);
}

TEST(NavigationClickTest, IsShortAndSoft)
{
    const Sound samples = audibleClick();
    EXPECT_NEAR(static_cast<double>(samples.size()) / Rate, 0.030, 0.002);
    int peak = 0;
    int steepest = samples.empty() ? 0 : std::abs(samples.back());
    int before = 0;
    for (const qint16 sample : samples) {
        peak = std::max(peak, std::abs(sample));
        steepest = std::max(steepest, std::abs(sample - before));
        before = sample;
    }
    EXPECT_NEAR(decibels(peak), -18, 0.1);
    // No edge, at its ends neither: that would be heard as a crack.
    EXPECT_LT(steepest, peak / 2);
}

TEST(NavigationClickTest, NothingIsMissingWhereTheLastTurnOfASoundServerIs)
{
    constexpr size_t LongestTurn = 2048;
    const Sound samples = clickSamples();
    ASSERT_GT(samples.size(), LongestTurn);
    EXPECT_TRUE(
        std::all_of(samples.end() - LongestTurn, samples.end(), [](qint16 sample) { return sample == 0; }));
}

TEST(SoundFileTest, HasAPathWhileItLives)
{
    QByteArray path;
    {
        const SoundFile file(clickResource());
        path = file.path();
        QFile opened(QFile::decodeName(path));
        ASSERT_TRUE(opened.open(QIODevice::ReadOnly));
        EXPECT_EQ(opened.readAll(), clickFile());
    }
    EXPECT_FALSE(QFile::exists(QFile::decodeName(path)));
}

/// Whether this process has loaded the library.
bool hasLoaded(const char *library)
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(library);
}

qsizetype threadCount()
{
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

/// A sound server that has not started, and the program's sound.
class SystemSoundTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (!TestSoundServer::isInstalled() && !qEnvironmentVariableIsSet("CI"))
            GTEST_SKIP() << "pulseaudio and pulseaudio-utils are not installed";
        ASSERT_FALSE(audibleClick().empty());
    }

    TestSoundServer &server() { return m_server; }
    SystemSound &sound() { return *m_sound; }
    /// Before there was a sound.
    bool hasLoadedBefore() const { return m_hasLoadedBefore; }

    bool hasHeard(size_t count) const
    {
        return waitUntil([&] { return m_server.sounds().size() >= count; });
    }
    /// Clicks until a click is heard; one at a time, as they sound into each other otherwise.
    bool clicksUntilHeard()
    {
        const size_t before = m_server.sounds().size();
        const auto clickIsHeard = [&] {
            m_sound->playNavigationClick();
            return waitUntil(
                [&] { return m_server.sounds().size() > before; }, std::chrono::milliseconds(500));
        };
        return waitUntil(clickIsHeard);
    }
    /// Waits until nothing more is heard of the clicks so far.
    bool isSilentAgain() const
    {
        return waitUntil([this] { return m_server.silence() > std::chrono::milliseconds(300); });
    }

    /// Whether it can be done is a matter of time here: the library itself gives up after thirty seconds.
    void clickAndEnd()
    {
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < 1000; ++i)
            m_sound->playNavigationClick();
        m_sound.reset();
        EXPECT_LT(timer.elapsed(), 10'000);
    }

private:
    TestSoundServer m_server;
    bool m_hasLoadedBefore = hasLoaded("/libcanberra");
    std::unique_ptr<SystemSound> m_sound = platform::makeDesktopSound();
};

TEST_F(SystemSoundTest, BeforeTheFirstClickNothingIsLoaded)
{
    if (hasLoadedBefore())
        GTEST_SKIP() << "a test before this one has clicked";
    EXPECT_FALSE(hasLoaded("/libcanberra"));
    ASSERT_TRUE(server().start());
    EXPECT_TRUE(clicksUntilHeard());
    EXPECT_TRUE(hasLoaded("/libcanberra"));
}

TEST_F(SystemSoundTest, AClickIsHeardAsItIs)
{
    ASSERT_TRUE(server().start());
    sound().playNavigationClick();
    ASSERT_TRUE(hasHeard(1));
    EXPECT_EQ(server().sounds().front(), audibleClick());
    EXPECT_NEAR(static_cast<double>(server().sounds().front().size()) / Rate, 0.030, 0.002);
}

TEST_F(SystemSoundTest, EachClickIsHeard)
{
    ASSERT_TRUE(server().start());
    for (size_t count = 1; count <= 3; ++count) {
        sound().playNavigationClick();
        ASSERT_TRUE(hasHeard(count));
    }
    EXPECT_EQ(server().sounds(), std::vector<Sound>(3, audibleClick()));
}

TEST_F(SystemSoundTest, TheDesktopKnowsItForAnEventOfThisProgram)
{
    ASSERT_TRUE(server().start());
    sound().playNavigationClick();
    ASSERT_TRUE(hasHeard(1));
    const QByteArray kept = server().keptSounds();
    EXPECT_EQ(kept.count("Sample #"), 1);
    for (const char *const line : {"event.id = \"larkspool-navigation-click\"", "media.role = \"event\"",
             "application.name = \"Larkspool\"", "application.id = \"org.larkspool.Larkspool\""})
        EXPECT_TRUE(kept.contains(line)) << line << '\n' << kept.constData();
}

TEST_F(SystemSoundTest, AServerThatComesLaterIsFound)
{
    sound().playNavigationClick();
    ASSERT_TRUE(server().start());
    EXPECT_TRUE(clicksUntilHeard());
}

TEST_F(SystemSoundTest, AServerThatStartsAnewIsFound)
{
    ASSERT_TRUE(server().start());
    EXPECT_TRUE(clicksUntilHeard());
    server().end();
    sound().playNavigationClick();
    ASSERT_TRUE(server().start());
    EXPECT_TRUE(clicksUntilHeard());
}

TEST_F(SystemSoundTest, AServerThatHangsHoldsNobodyUp)
{
    ASSERT_TRUE(server().start());
    ASSERT_TRUE(clicksUntilHeard());
    server().freeze();
    clickAndEnd();
}

TEST_F(SystemSoundTest, AServerThatHangsFromTheStartHoldsNobodyUp)
{
    ASSERT_TRUE(server().start());
    server().freeze();
    const qsizetype before = threadCount();
    sound().playNavigationClick();
    // Its own thread, and the library's, which waits for the server.
    ASSERT_TRUE(waitUntil([before] { return threadCount() >= before + 2; }));
    clickAndEnd();
}

TEST_F(SystemSoundTest, OfTheClicksDuringAHangOneIsHeard)
{
    ASSERT_TRUE(server().start());
    ASSERT_TRUE(clicksUntilHeard());
    ASSERT_TRUE(isSilentAgain());
    const size_t before = server().sounds().size();
    server().freeze();
    for (int i = 0; i < 1000; ++i)
        sound().playNavigationClick();
    server().thaw();
    ASSERT_TRUE(hasHeard(before + 1));
    ASSERT_TRUE(isSilentAgain());
    EXPECT_EQ(server().sounds().size(), before + 1);
    EXPECT_EQ(server().sounds().back(), audibleClick());
    EXPECT_TRUE(clicksUntilHeard());
}

TEST_F(SystemSoundTest, WithoutAServerNothingIsPrinted)
{
    const SoundFile click(clickResource());
    SoundContext context;
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    context.play("larkspool-navigation-click", click.path());
    context.play("larkspool-navigation-click", click.path());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    // It has tried, and left the sound cards alone.
    EXPECT_TRUE(hasLoaded("/libpulse.so"));
    EXPECT_FALSE(hasLoaded("/libasound.so"));
}

} // namespace
