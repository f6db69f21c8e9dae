// What a deep loop pays for its meter: nextIteration in one to three levels of a thousand iterations.
#include "vexoprogressbar.h"

#include "host.h"
#include "scriptedport.h"

#include <benchmark/benchmark.h>

namespace {

void NextIteration(benchmark::State& state) {
    hostkit::ScriptedPort port;
    hostkit::Host host(port);
    VEXOProgressBar bar(L"", 100);
    // Outer levels that no call reaches: only their counts are multiplied.
    for (int level = 1; level < state.range(0); ++level) bar.setPhaseIterations(1000);
    int left = 0;
    for (auto _ : state) {
        if (left == 0) {
            left = 1000;
            bar.setPhaseIterations(left);
        }
        bar.nextIteration();
        --left;
    }
    std::size_t calls = 0;
    for (const auto& meter : port.meters) calls += meter.positions.size();
    state.counters["meter_calls"] = static_cast<double>(calls);
}
BENCHMARK(NextIteration)->Arg(1)->Arg(2)->Arg(3);

} // namespace
