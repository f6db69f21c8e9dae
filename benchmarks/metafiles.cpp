// Metafiles: recording strokes (a move and a line each), and pictures of that many lines by the library's
// tool. Wanted: at least 5 million strokes a second; a picture of 1,000,000 lines in at most 1 s, its copies
// included.
#include "dbents.h"
#include "host.h"
#include "scriptedport.h"
#include "vexodatabasetools.h"
#include "vexogiworlddraw.h"
#include "wingdi.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <vector>

namespace {

void Recording(benchmark::State& state) {
    hostkit::ScriptedPort port;
    const hostkit::ScopedPort use(port);
    for (auto _ : state) {
        const HDC dc = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
        for (int i = 0; i < state.range(0); ++i) {
            MoveToEx(dc, i, -i, nullptr);
            LineTo(dc, i + 10, i % 1000);
        }
        DeleteDC(dc);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Recording)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void PictureOfLines(benchmark::State& state) {
    hostkit::ScriptedPort port;
    const hostkit::Host host{port};
    std::vector<AcDbLine> lines;
    for (int i = 0; i < state.range(0); ++i)
        lines.emplace_back(AcGePoint3d(i % 1000, i / 1000.0, 0.0), AcGePoint3d(i % 777, i / 900.0, 0.0));
    const std::filesystem::path file = std::filesystem::temp_directory_path() / "vexo-bench.emf";
    for (auto _ : state) {
        AcArray<void*> copies;
        for (const AcDbLine& line : lines) copies.append(new AcDbLine(line));
        if (!VEXODatabaseTools::ExportEntitiesInWmfEx(copies, file.wstring().c_str(), 1.5))
            state.SkipWithError("no file");
        for (void* copy : copies) delete static_cast<AcDbLine*>(copy);
    }
    std::filesystem::remove(file);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(PictureOfLines)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void Capture(benchmark::State& state) {
    hostkit::ScriptedPort port;
    const hostkit::Host host{port};
    AcDbLine source;
    for (auto _ : state) {
        VEXOGiWorldDraw draw(&source);
        for (int i = 0; i < state.range(0); ++i) {
            const AcGePoint3d ends[] = {{double(i), 0.0, 0.0}, {0.0, double(i), 0.0}};
            draw.geometry().polyline(2, ends);
        }
        AcArray<void*> drawn;
        draw.getAcDbEnts(drawn);
        for (void* each : drawn) delete static_cast<AcDbEntity*>(each);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Capture)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void LinesAlone(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<AcDbEntity*> lines;
        for (int i = 0; i < state.range(0); ++i)
            lines.push_back(new AcDbLine({double(i), 0.0, 0.0}, {0.0, double(i), 0.0}));
        for (AcDbEntity* line : lines) delete line;
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(LinesAlone)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

} // namespace
