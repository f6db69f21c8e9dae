// Reading and writing drawings of polylines, lines and texts with extended data, at three sizes, by the
// entity. Wanted: 400,000 entities read a second (200,000 at least), 20 times the peer's rate, at most 5
// times the file's size in memory, and writing no slower than reading. The drawings are those of
// tools/make-drawing.
#include "drawingaudit.h"
#include "drawingpurge.h"
#include "drawingreader.h"
#include "drawingwriter.h"

#include "dbaccess.h"
#include "dbdatabase.h"
#include "dbsource.h"
#include "headervariables.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <map>
#include <sstream>
#include <string>

using namespace hostkit;

namespace {

std::string fileOf(int count) {
    return (std::filesystem::temp_directory_path() / ("vexo-bench-" + std::to_string(count) + ".dxf"))
        .string();
}

// Made once a run; empty when the generator cannot run.
const std::string& drawingOf(int count) {
    static std::map<int, std::string> drawings;
    std::string& bytes = drawings[count];
    if (!bytes.empty()) return bytes;
    const std::string command =
        VEXO_SOURCE_DIR "/tools/make-drawing " + std::to_string(count) + " " + fileOf(count);
    if (std::system(command.c_str()) != 0) return bytes;
    std::ostringstream content;
    content << std::ifstream(fileOf(count), std::ios::binary).rdbuf();
    bytes = content.str();
    return bytes;
}

std::size_t allocatedBytes() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void setRates(benchmark::State& state, const std::string& bytes) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}

void readFromFile(benchmark::State& state) {
    const std::string& bytes = drawingOf(static_cast<int>(state.range(0)));
    const std::string file = fileOf(static_cast<int>(state.range(0)));
    double memory = 0.0;
    for (auto _ : state) {
        const std::size_t before = allocatedBytes();
        auto database = openDrawing(std::wstring(file.begin(), file.end()));
        if (!database) return state.SkipWithError("the drawing cannot be read");
        memory = static_cast<double>(allocatedBytes() - before) / static_cast<double>(bytes.size());
        state.PauseTiming();
        database.reset();
        state.ResumeTiming();
    }
    setRates(state, bytes);
    state.counters["memory_per_byte"] = memory;
}

enum class Save { kUntouched, kOneChange, kEverythingChanged, kNeverInAFile };

// As if all had been made in memory.
void forgetFile(AcDbDatabase& database) {
    DatabaseAccess::forEachObject(database, [](AcDbObject& object) {
        DatabaseAccess::setSource(object, {});
        DatabaseAccess::markChanged(object);
    });
    DatabaseAccess::setSource(database, nullptr, L"");
}

void writeToMemory(benchmark::State& state, Save save) {
    const std::string& bytes = drawingOf(static_cast<int>(state.range(0)));
    const auto database = openDrawingFromMemory(bytes, L"bench");
    if (!database) return state.SkipWithError("the drawing cannot be read");
    if (save == Save::kOneChange) database->header().setReal(L"LTSCALE", 2.0);
    WriteOptions options;
    options.everythingFromFields = save == Save::kEverythingChanged;
    if (save == Save::kNeverInAFile) forgetFile(*database);
    for (auto _ : state) {
        std::string written;
        if (writeDrawingToMemory(*database, written, options) != Acad::eOk)
            return state.SkipWithError("the drawing cannot be written");
        benchmark::DoNotOptimize(written.data());
    }
    setRates(state, bytes);
}

void writeUntouched(benchmark::State& state) { writeToMemory(state, Save::kUntouched); }
void writeOneChange(benchmark::State& state) { writeToMemory(state, Save::kOneChange); }
void writeEverythingChanged(benchmark::State& state) { writeToMemory(state, Save::kEverythingChanged); }
void writeNew(benchmark::State& state) { writeToMemory(state, Save::kNeverInAFile); }

// What looks at the whole drawing and changes nothing: the check, and what nothing uses. Wanted: at most 2 s
// for the check of a million entities, and time linear in them.
template <class Look>
void lookAtWhole(benchmark::State& state, Look&& look) {
    const std::string& bytes = drawingOf(static_cast<int>(state.range(0)));
    const auto database = openDrawingFromMemory(bytes, L"bench");
    if (!database) return state.SkipWithError("the drawing cannot be read");
    for (auto _ : state) look(*database);
    setRates(state, bytes);
}

void audit(benchmark::State& state) {
    lookAtWhole(state, [](const AcDbDatabase& database) {
        benchmark::DoNotOptimize(auditDrawing(database).findings.data());
    });
}

void purge(benchmark::State& state) {
    lookAtWhole(state, [](const AcDbDatabase& database) {
        std::vector<PurgeItem> unused;
        benchmark::DoNotOptimize(findUnused(database, unused));
    });
}

// The peer, where it is installed, on the same file in the same run: how many times longer its reading takes.
void peerAgainstOurs(benchmark::State& state) {
    drawingOf(static_cast<int>(state.range(0)));
    const std::string file = fileOf(static_cast<int>(state.range(0)));
    const std::string command =
        "/usr/bin/python3 -c \"import time, ezdxf; t = time.process_time(); ezdxf.readfile('" + file +
        "'); print(time.process_time() - t)\" 2>/dev/null";
    double peer = 0.0;
    for (auto _ : state) {
        FILE* const pipe = popen(command.c_str(), "r");
        const bool isRead = pipe && std::fscanf(pipe, "%lf", &peer) == 1;
        if (pipe) pclose(pipe);
        if (!isRead) return state.SkipWithError("ezdxf is not installed");
    }
    const std::clock_t begin = std::clock();
    const auto database = openDrawing(std::wstring(file.begin(), file.end()));
    const double ours = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
    state.counters["peer_seconds"] = peer;
    state.counters["our_seconds"] = ours;
    state.counters["times_ours"] = peer / ours;
}

} // namespace

BENCHMARK(readFromFile)->Arg(2000)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond);
BENCHMARK(writeUntouched)->Arg(2000)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeOneChange)->Arg(2000)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeEverythingChanged)
    ->Arg(2000)
    ->Arg(20000)
    ->Arg(200000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(writeNew)->Arg(2000)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(audit)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(purge)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(peerAgainstOurs)->Arg(20000)->Iterations(1)->Unit(benchmark::kMillisecond);
