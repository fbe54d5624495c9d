#include "bench/HistoryFixture.h"
#include "capture/ClipboardMonitor.h"
#include "fakes/FakeWorkspace.h"
#include "platform/ImageCodec.h"
#include "platform/PlatformLoader.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

#include <benchmark/benchmark.h>

namespace
{

constexpr std::chrono::seconds Deadline{30};

double secondsOf(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) * 1e-9;
}

/// How long the store alone takes to write an entry of the same size: a turn may last that much longer.
double secondsToWrite(
    ModelContext &context, const QByteArray &content, const std::optional<QByteArray> &image)
{
    const auto item = std::make_shared<ClipboardItem>(
        content, ClipboardItemType::Text, image, std::nullopt, std::nullopt, false);
    QElapsedTimer timer;
    timer.start();
    context.insert(item);
    (void)context.save();
    return secondsOf(timer);
}

/// The longest turn of the main thread while another program's copy is captured; 0 when it never is.
double longestTurn(History &history, const QString &payload, const QString &target)
{
    EventLoopQueue queue;
    const auto pasteboard = platform::loadPasteboard();
    const FakeWorkspace workspace;
    ThreadedFileReader fileReader(queue);
    const SystemClock clock;
    ClipboardMonitor monitor(history.container(), *pasteboard, workspace, fileReader, queue, clock);
    monitor.startMonitoring();
    const qint64 before = history.context().fetchCount<ClipboardItem>();
    QProcess program;
    program.start(QStringLiteral("xclip"),
        {QStringLiteral("-quiet"), QStringLiteral("-selection"), QStringLiteral("clipboard"),
            QStringLiteral("-t"), target, QStringLiteral("-i"), payload});
    program.waitForStarted();
    double longest = 0;
    QElapsedTimer total;
    total.start();
    while (history.context().fetchCount<ClipboardItem>() == before) {
        if (std::chrono::milliseconds(total.elapsed()) > Deadline)
            return 0;
        QElapsedTimer turn;
        turn.start();
        QCoreApplication::processEvents();
        longest = std::max(longest, secondsOf(turn));
    }
    program.terminate();
    program.waitForFinished();
    return longest;
}

void measure(benchmark::State &state, const QByteArray &bytes, const QString &target)
{
    const QTemporaryDir folder;
    const QString payload = folder.filePath(QStringLiteral("payload"));
    QFile file(payload);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        state.SkipWithError("the payload could not be written");
        return;
    }
    file.close();

    for (auto step : state) {
        History history(100, 80);
        const double turn = longestTurn(history, payload, target);
        if (turn == 0) {
            state.SkipWithError("the copy was not captured");
            return;
        }
        const auto stored = history.context().fetch<ClipboardItem>().front();
        const double write =
            secondsToWrite(history.context(), stored->contentUtf8() + '.', stored->imageData());
        state.counters["write_ms"] = write * 1000;

        state.SetIterationTime(std::max(0.0, turn - write));
    }
}

/// The longest turn of the main thread, less the store's own write, while a text of 50 MB is captured.
void longestTurnText(benchmark::State &state)
{
    measure(state, History::distinctText(50'000'000), QStringLiteral("UTF8_STRING"));
}
BENCHMARK(longestTurnText)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);

/// The same for a picture of 3840 x 2160.
void longestTurnPicture(benchmark::State &state)
{
    QImage picture(3840, 2160, QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixel(x, y, qRgb(x ^ y, (x * y) >> 8, x + y));
    }
    measure(state, image::pngRepresentation(std::move(picture)).value_or(QByteArray()),
        QStringLiteral("image/png"));
}
BENCHMARK(longestTurnPicture)->Iterations(3)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
