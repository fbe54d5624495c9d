#include "base/Text.h"
#include "bench/HistoryFixture.h"
#include "capture/ClipboardMonitor.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualMainQueue.h"

#include <benchmark/benchmark.h>

namespace
{

constexpr qsizetype TenMegabytes = 10'000'000;

QByteArray textOf(const char *phrase, qsizetype size)
{
    return QByteArray(phrase).repeated(size / static_cast<qsizetype>(qstrlen(phrase)));
}

void countCharacters(benchmark::State &state, const char *phrase)
{
    const QByteArray text = textOf(phrase, TenMegabytes);
    for (auto step : state)
        benchmark::DoNotOptimize(text::characterCount(text));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * text.size());
}
BENCHMARK_CAPTURE(countCharacters, ascii, "The quick brown fox.\r\n")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(countCharacters, german, "Zwölf Boxkämpfer jagen Viktor.\n")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(countCharacters, japanese, "いろはにほへとちりぬるを漢字\n")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(countCharacters, emoji, "👨‍👩‍👧 ok 🇦🇹\n")->Unit(benchmark::kMillisecond);

/// A text of 10 MB from the pasteboard into the file, with everything in between.
void captureTenMegabytes(benchmark::State &state)
{
    History history(100, 80);
    FakePasteboard pasteboard;
    FakeWorkspace workspace;
    ManualMainQueue queue;
    ThreadedFileReader fileReader(queue);
    const SystemClock clock;
    ClipboardMonitor monitor(history.container(), pasteboard, workspace, fileReader, queue, clock);
    monitor.startMonitoring();
    for (auto step : state) {
        state.PauseTiming();
        pasteboard.copy({{PasteboardType::String, History::distinctText(TenMegabytes)}});
        state.ResumeTiming();
        queue.advanceBy(ClipboardMonitor::PollingInterval);
    }
}
BENCHMARK(captureTenMegabytes)->Iterations(10)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
