// What the trace record costs: the same function with and without it, tracing off and on.
#include "cvxlogentry.h"

#include <benchmark/benchmark.h>

#include <string>
#include <unistd.h>

namespace {

[[gnu::noinline]] double plain(double x) { return x * 1.5 + 1; }

[[gnu::noinline]] double recorded(double x) {
    CVxLogEntry entry(L"Tools::recorded");
    return x * 1.5 + 1;
}

void withoutRecord(benchmark::State& state) {
    double x = 1;
    for (auto step : state) benchmark::DoNotOptimize(x = plain(x));
}
BENCHMARK(withoutRecord);

void recordWithTraceOff(benchmark::State& state) {
    double x = 1;
    for (auto step : state) benchmark::DoNotOptimize(x = recorded(x));
}
BENCHMARK(recordWithTraceOff);

void recordWithTraceOn(benchmark::State& state) {
    const std::string file = "/tmp/vexo_callframe_" + std::to_string(getpid()) + ".json";
    {
        hostkit::TraceFile trace(file);
        double x = 1;
        for (auto step : state) benchmark::DoNotOptimize(x = recorded(x));
    }
    unlink(file.c_str());
}
BENCHMARK(recordWithTraceOn)->Arg(1)->Iterations(100000);

} // namespace
