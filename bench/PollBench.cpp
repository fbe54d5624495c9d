#include "bench/AllocationCount.h"
#include "platform/PlatformLoader.h"

#include <benchmark/benchmark.h>

namespace
{

/// What a tick of the monitor asks of the desktop's pasteboard when nothing has been copied.
void pollWithNothingNew(benchmark::State &state)
{
    EventLoopQueue queue;
    const auto pasteboard = platform::loadPasteboard();
    const size_t before = allocationCount();
    for (auto step : state) {
        benchmark::DoNotOptimize(pasteboard->changeCount());
        benchmark::DoNotOptimize(pasteboard->advance());
    }
    state.counters["allocations"] = static_cast<double>(allocationCount() - before);
}
BENCHMARK(pollWithNothingNew);

} // namespace
