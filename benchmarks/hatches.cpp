// Lines of hatch patterns over boundaries of arcs: by lines, by arcs, dashed, and over many islands.
#include "dbhatch.h"
#include "hatchlines.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>

namespace {

constexpr double kTurn = 6.283185307179586;
constexpr double kRadius = 1000.0;

hostkit::HatchLoop ring(AcGePoint2d center, double radius, std::int64_t arcs) {
    hostkit::HatchLoop loop;
    loop.hasBulges = true;
    for (std::int64_t i = 0; i < arcs; ++i) {
        const double angle = kTurn * static_cast<double>(i) / static_cast<double>(arcs);
        loop.vertices.push_back(center + AcGeVector2d(std::cos(angle), std::sin(angle)) * radius);
        loop.bulges.push_back(i % 2 == 0 ? 0.3 : -0.2);
    }
    return loop;
}

hostkit::HatchPatternLine family(std::int64_t lines) {
    const double step = 2.0 * kRadius / static_cast<double>(lines);
    return {0.6, {17.0, 3.0}, AcGeVector2d(std::cos(0.6), std::sin(0.6)).perpVector() * step, {}};
}

void walk(benchmark::State& state, const std::vector<hostkit::HatchLoop>& loops,
          const hostkit::HatchPatternLine& lines) {
    std::size_t strokes = 0;
    for (auto _ : state) {
        strokes = 0;
        double length = 0.0;
        const hostkit::HatchArea area(loops, AcDbHatch::kNormal);
        const Acad::ErrorStatus status =
            hostkit::forEachStroke(area, {lines}, 100'000'000, [&](const hostkit::HatchStroke& stroke) {
                ++strokes;
                length += stroke.to.x - stroke.from.x;
                return true;
            });
        if (status != Acad::eOk) state.SkipWithError("too dense");
        benchmark::DoNotOptimize(length);
    }
    state.counters["strokes"] = static_cast<double>(strokes);
    state.SetComplexityN(state.range(0));
}

void byLines(benchmark::State& state) { walk(state, {ring({}, kRadius, 1000)}, family(state.range(0))); }
void byArcs(benchmark::State& state) { walk(state, {ring({}, kRadius, state.range(0))}, family(10'000)); }
void dashed(benchmark::State& state) {
    hostkit::HatchPatternLine lines = family(state.range(0));
    lines.dashes = {60.0, -20.0, 0.0, -20.0};
    walk(state, {ring({}, kRadius, 1000)}, lines);
}
// Round islands in a square grid, as many as there are lines.
void byIslands(benchmark::State& state) {
    std::vector<hostkit::HatchLoop> loops = {ring({}, 2.0 * kRadius, 100)};
    const auto side = static_cast<std::int64_t>(std::sqrt(static_cast<double>(state.range(0))));
    const double cell = 2.0 * kRadius / static_cast<double>(side);
    for (std::int64_t i = 0; i < side * side; ++i)
        loops.push_back(ring({cell * (static_cast<double>(i % side) + 0.5) - kRadius,
                              cell * (static_cast<double>(i / side) + 0.5) - kRadius},
                             cell / 4.0, 4));
    walk(state, loops, family(side * 4));
}

void explode(benchmark::State& state) {
    AcDbHatch hatch;
    AcGePoint2dArray vertices;
    AcGeDoubleArray bulges;
    const hostkit::HatchLoop loop = ring({}, kRadius, 1000);
    for (const AcGePoint2d& vertex : loop.vertices) vertices.append(vertex);
    for (const double bulge : loop.bulges) bulges.append(bulge);
    (void)hatch.appendLoop(AcDbHatch::kExternal, vertices, bulges);
    (void)hatch.setPattern(AcDbHatch::kCustomDefined, L"LINES");
    (void)hatch.setPatternDefinitions({family(state.range(0))});
    for (auto _ : state) {
        AcDbVoidPtrArray parts;
        if (hatch.explode(parts) != Acad::eOk) state.SkipWithError("not exploded");
        for (void* part : parts) delete static_cast<AcDbEntity*>(part);
    }
    state.SetComplexityN(state.range(0));
}

BENCHMARK(byLines)->RangeMultiplier(10)->Range(1'000, 100'000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(byArcs)->RangeMultiplier(10)->Range(100, 10'000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(dashed)->RangeMultiplier(10)->Range(1'000, 100'000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(byIslands)->RangeMultiplier(10)->Range(100, 10'000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(explode)->RangeMultiplier(10)->Range(1'000, 100'000)->Unit(benchmark::kMillisecond)->Complexity();

} // namespace
