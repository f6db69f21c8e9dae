// Names of the editor: system variables and commands, by the number of commands that there are.
#include "aced.h"
#include "testhost.h"

#include <benchmark/benchmark.h>
#include <cstdlib>

namespace {

void fillStack(AcEdCommandStack& stack, std::int64_t count) {
    for (std::int64_t i = 0; i < count; ++i)
        stack.addCommand(L"BENCH", (L"COMMAND" + std::to_wstring(i)).c_str(),
                         (L"BEFEHL" + std::to_wstring(i)).c_str(), ACRX_CMD_MODAL, [] {});
}

// A local name is looked up as a global one first.
void CommandByName(benchmark::State& state) {
    hostkit::TestHost session;
    const AcEdCommandStack& stack = session.host().commands();
    fillStack(session.host().commands(), state.range(0));
    for (auto _ : state) {
        const AcEdCommand* command = stack.lookupGlobalCmd(L"Befehl7");
        if (!command) command = stack.lookupLocalCmd(L"Befehl7");
        benchmark::DoNotOptimize(command);
    }
}
BENCHMARK(CommandByName)->Arg(10)->Arg(1000)->Arg(100000);

// A number of the session, a text that the caller frees, one of the header, and one worked out from the view.
void VariableByName(benchmark::State& state) {
    hostkit::TestHost session;
    constexpr const wchar_t* names[] = {L"CMDECHO", L"CMDNAMES", L"LTSCALE", L"TILEMODE", L"VIEWCTR"};
    const wchar_t* const name = names[state.range(0)];
    resbuf record{};
    for (auto _ : state) {
        benchmark::DoNotOptimize(acedGetVar(name, &record));
        if (record.restype == RTSTR) std::free(record.resval.rstring);
    }
}
BENCHMARK(VariableByName)->DenseRange(0, 4);

} // namespace
