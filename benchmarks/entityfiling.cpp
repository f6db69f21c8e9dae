// Filing of entities within objects, in memory: polylines by vertices, hatches by edges and by loops, lines
// by their number, out and in, through the binary and the text filer. Wanted: 5 million items a second,
// linear in all of them.
#include "vexoentityfiler.h"

#include "dbhatch.h"
#include "dbline.h"
#include "dbpl.h"
#include "gelnsg2d.h"
#include "memorydwgfiler.h"
#include "memorydxffiler.h"
#include "runtimeservices.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

using Entities = std::vector<std::unique_ptr<AcDbEntity>>;

Entities polyline(int vertices) {
    auto made = std::make_unique<AcDbPolyline>();
    for (int i = 0; i < vertices; ++i)
        made->addVertexAt(static_cast<unsigned>(i), AcGePoint2d(i, i % 7), 0.25, 1.0, 2.0);
    Entities entities;
    entities.push_back(std::move(made));
    return entities;
}

Entities hatch(int loops, int edgesOfLoop) {
    auto made = std::make_unique<AcDbHatch>();
    made->setPattern(AcDbHatch::kPreDefined, L"SOLID");
    std::vector<AcGeLineSeg2d> lines;
    for (int i = 0; i < edgesOfLoop; ++i) lines.emplace_back(AcGePoint2d(i, 0), AcGePoint2d(i + 1, 0));
    AcGeVoidPointerArray edges(edgesOfLoop);
    AcArray<int> types(edgesOfLoop);
    for (AcGeLineSeg2d& each : lines) edges.append(&each);
    for (int i = 0; i < edgesOfLoop; ++i) types.append(AcDbHatch::kLine);
    for (int i = 0; i < loops; ++i) made->appendLoop(AcDbHatch::kExternal, edges, types);
    Entities entities;
    entities.push_back(std::move(made));
    return entities;
}

Entities lines(int count) {
    Entities entities;
    for (int i = 0; i < count; ++i)
        entities.push_back(std::make_unique<AcDbLine>(AcGePoint3d(i, 0, 0), AcGePoint3d(0, i, 0)));
    return entities;
}

// The items of all: those of an entity's wrapper and kind, and those of each vertex, edge or loop.
struct Work {
    Entities entities;
    std::int64_t items = 0;
};
Work polylineWork(int count) { return {polyline(count), 9 + 4 * std::int64_t{count}}; }
Work edgeWork(int count) { return {hatch(1, count), 11 + 3 * std::int64_t{count}}; }
Work loopWork(int count) { return {hatch(count, 4), 9 + 14 * std::int64_t{count}}; }
Work lineWork(int count) { return {lines(count), 7 * std::int64_t{count}}; }

template <class Filer>
std::unique_ptr<Filer> newFiler() {
    if constexpr (std::is_same_v<Filer, hostkit::MemoryDwgFiler>)
        return std::make_unique<Filer>(AcDb::kFileFiler);
    else
        return std::make_unique<Filer>();
}

template <class Filer>
bool out(Filer& filer, const Entities& entities) {
    for (const auto& each : entities) {
        Acad::ErrorStatus status;
        if constexpr (std::is_same_v<Filer, hostkit::MemoryDwgFiler>)
            status = VEXOEntityFiler::dwgOutFieldsEntity(&filer, each.get());
        else
            status = VEXOEntityFiler::dxfOutFieldsEntity(&filer, each.get());
        if (status != Acad::eOk) return false;
    }
    return true;
}

template <class Filer>
bool in(Filer& filer, std::size_t count) {
    if constexpr (std::is_same_v<Filer, hostkit::MemoryDwgFiler>)
        filer.seek(0, 0);
    else
        filer.rewind();
    for (std::size_t i = 0; i < count; ++i) {
        AcDbEntity* entity = nullptr;
        Acad::ErrorStatus status;
        if constexpr (std::is_same_v<Filer, hostkit::MemoryDwgFiler>)
            status = VEXOEntityFiler::dwgInFieldsEntity(&filer, entity);
        else
            status = VEXOEntityFiler::dxfInFieldsEntity(&filer, entity);
        const std::unique_ptr<AcDbEntity> owned(entity);
        if (status != Acad::eOk || !owned) return false;
    }
    return true;
}

template <class Filer>
void writes(benchmark::State& state, Work (*make)(int)) {
    const Work work = make(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const auto filer = newFiler<Filer>();
        if (!out(*filer, work.entities)) return state.SkipWithError("not written");
    }
    state.SetItemsProcessed(state.iterations() * work.items);
}

template <class Filer>
void reads(benchmark::State& state, Work (*make)(int)) {
    hostkit::RuntimeServices services;
    const hostkit::ScopedRuntimeServices scope(services);
    const Work work = make(static_cast<int>(state.range(0)));
    const auto filer = newFiler<Filer>();
    if (!out(*filer, work.entities)) return state.SkipWithError("not written");
    for (auto _ : state)
        if (!in(*filer, work.entities.size())) return state.SkipWithError("not read");
    state.SetItemsProcessed(state.iterations() * work.items);
}

void writesBinary(benchmark::State& state, Work (*make)(int)) {
    writes<hostkit::MemoryDwgFiler>(state, make);
}
void readsBinary(benchmark::State& state, Work (*make)(int)) { reads<hostkit::MemoryDwgFiler>(state, make); }
void writesText(benchmark::State& state, Work (*make)(int)) { writes<hostkit::MemoryDxfFiler>(state, make); }
void readsText(benchmark::State& state, Work (*make)(int)) { reads<hostkit::MemoryDxfFiler>(state, make); }

#define VEXO_FILING(name, work)                                                                              \
    BENCHMARK_CAPTURE(writesBinary, name, work)->Arg(100)->Arg(10000)->Arg(1000000);                         \
    BENCHMARK_CAPTURE(readsBinary, name, work)->Arg(100)->Arg(10000)->Arg(1000000);                          \
    BENCHMARK_CAPTURE(writesText, name, work)->Arg(100)->Arg(10000)->Arg(1000000);                           \
    BENCHMARK_CAPTURE(readsText, name, work)->Arg(100)->Arg(10000)->Arg(1000000);
VEXO_FILING(vertices, polylineWork)
VEXO_FILING(edges, edgeWork)
VEXO_FILING(loops, loopWork)
VEXO_FILING(lines, lineWork)

} // namespace
