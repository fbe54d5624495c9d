#include "bench/BareInsert.h"
#include "bench/HistoryFixture.h"

#include <benchmark/benchmark.h>

namespace
{

constexpr qsizetype TextSize = 80;

/// A new text, made, inserted and durable, into a history of `range(0)` entries.
void saveNewText(benchmark::State &state)
{
    History history(static_cast<int>(state.range(0)), TextSize);
    for (auto step : state) {
        history.context().insert(std::make_shared<ClipboardItem>(History::distinctText(TextSize),
            ClipboardItemType::Text, std::nullopt, std::nullopt, std::nullopt, false));
        if (!history.context().save())
            state.SkipWithError("the save failed");
    }
}
BENCHMARK(saveNewText)
    ->Arg(100)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Iterations(400)
    ->Repetitions(5)
    ->ReportAggregatesOnly()
    ->UseRealTime();

/// The same bytes with nothing but SQLite.
void bareInsertAndCommit(benchmark::State &state)
{
    const QTemporaryDir folder;
    BareInsert bare(
        folder.filePath(QStringLiteral("bare.sqlite")), static_cast<int>(state.range(0)), TextSize);
    for (auto step : state)
        bare.insertAndCommit(History::distinctText(TextSize));
}
BENCHMARK(bareInsertAndCommit)
    ->Arg(100)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Iterations(400)
    ->Repetitions(5)
    ->ReportAggregatesOnly()
    ->UseRealTime();

/// Whether a text that is not there is in a history of `range(0)` entries.
void duplicateCheckMiss(benchmark::State &state)
{
    History history(static_cast<int>(state.range(0)), TextSize);
    const QByteArray text = History::distinctText(TextSize);
    for (auto step : state)
        benchmark::DoNotOptimize(history.context().newestItem(ClipboardItemType::Text, text));
}
BENCHMARK(duplicateCheckMiss)->Arg(100)->Arg(10'000)->Arg(100'000)->Repetitions(5)->ReportAggregatesOnly();

/// The same for one that is there.
void duplicateCheckHit(benchmark::State &state)
{
    History history(static_cast<int>(state.range(0)), TextSize);
    const auto items = history.context().fetch<ClipboardItem>();
    const QByteArray text = items[items.size() / 2]->contentUtf8();
    for (auto step : state)
        benchmark::DoNotOptimize(history.context().newestItem(ClipboardItemType::Text, text));
}
BENCHMARK(duplicateCheckHit)->Arg(100)->Arg(10'000)->Arg(100'000)->Repetitions(5)->ReportAggregatesOnly();

/// Which entries a new copy prunes from a history of `range(0)` entries.
void pruneCheck(benchmark::State &state)
{
    History history(static_cast<int>(state.range(0)), TextSize);
    for (auto step : state)
        benchmark::DoNotOptimize(history.context().unpinnedItemsBeyond(state.range(0) - 1));
}
BENCHMARK(pruneCheck)->Arg(100)->Arg(10'000)->Arg(100'000);

/// Opening a history of `range(0)` entries.
void openStore(benchmark::State &state)
{
    History history(static_cast<int>(state.range(0)), TextSize);
    history.close();
    for (auto step : state) {
        benchmark::DoNotOptimize(
            ModelContainer::open(history.folder() + QStringLiteral("/larkspool/larkspool.sqlite")));
    }
}
BENCHMARK(openStore)->Arg(100)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace
