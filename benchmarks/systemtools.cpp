// What the application asks the host all the time: which command runs, by the number of commands that there
// are, and system variables.
#include "aced.h"
#include "testhost.h"
#include "vexoacadsystemtools.h"

#include <benchmark/benchmark.h>
#include <functional>

namespace {

using Tools = VEXOAcadSystemTools;

std::function<void()> body;

// Within a running command, in a stack of that many others.
void whileACommandRuns(std::int64_t count, std::function<void()> what) {
    hostkit::TestHost session;
    AcEdCommandStack& stack = session.host().commands();
    for (std::int64_t i = 0; i < count; ++i)
        stack.addCommand(L"BENCH", (L"COMMAND" + std::to_wstring(i)).c_str(),
                         (L"BEFEHL" + std::to_wstring(i)).c_str(), ACRX_CMD_MODAL, [] {});
    stack.addCommand(L"RUN", L"RUNNING", L"LAUFEND", ACRX_CMD_MODAL, [] { body(); });
    body = std::move(what);
    session.host().run(L"RUNNING");
    body = nullptr;
}

void IsCommand(benchmark::State& state, const wchar_t* name) {
    whileACommandRuns(state.range(0), [&] {
        for (auto _ : state) benchmark::DoNotOptimize(Tools::isCommand(name));
    });
}
BENCHMARK_CAPTURE(IsCommand, TheRunningOne, L"LAUFEND")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK_CAPTURE(IsCommand, Another, L"BEFEHL7")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK_CAPTURE(IsCommand, Unknown, L"NO_SUCH_COMMAND")->Arg(10)->Arg(1000)->Arg(100000);

// The whole chain, of which none runs.
void IsAcadCommandModify(benchmark::State& state) {
    whileACommandRuns(state.range(0), [&] {
        for (auto _ : state) benchmark::DoNotOptimize(Tools::isAcadCommandModify());
    });
}
BENCHMARK(IsAcadCommandModify)->Arg(10)->Arg(1000)->Arg(100000);

void GetSysVar(benchmark::State& state, const wchar_t* name) {
    whileACommandRuns(state.range(0), [&] {
        for (auto _ : state) benchmark::DoNotOptimize(Tools::getSysVar(name));
    });
}
BENCHMARK_CAPTURE(GetSysVar, OfTheSession, L"CMDECHO")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK_CAPTURE(GetSysVar, OfTheDrawing, L"FILLMODE")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK_CAPTURE(GetSysVar, WorkedOut, L"CMDACTIVE")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK_CAPTURE(GetSysVar, Unknown, L"NOSUCHVARIABLE")->Arg(10)->Arg(1000)->Arg(100000);

} // namespace
