// The drawing's curves: contours of three sizes against a line, against each other, and one point.
#include "dbline.h"
#include "dbpolyline.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <numbers>

namespace {

/// A wavy ring in which every third segment is an arc.
std::unique_ptr<AcDbPolyline> ring(int count, double centerX) {
    auto polyline = std::make_unique<AcDbPolyline>(static_cast<unsigned int>(count));
    for (int i = 0; i < count; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / count;
        const double radius = 100.0 + 10.0 * std::sin(7.0 * angle) + (i % 2 ? 0.1 : 0.0);
        (void)polyline->addVertexAt(static_cast<unsigned int>(i),
                                    {centerX + radius * std::cos(angle), radius * std::sin(angle)},
                                    i % 3 == 0 ? 0.2 : 0.0);
    }
    polyline->setClosed(true);
    return polyline;
}

/// Long parallel sides in a stack: boxes that a search along one axis cannot tell apart.
std::unique_ptr<AcDbPolyline> stack(int count, double shift) {
    auto polyline = std::make_unique<AcDbPolyline>(static_cast<unsigned int>(count));
    for (int i = 0; i < count; ++i)
        (void)polyline->addVertexAt(static_cast<unsigned int>(i),
                                    {i % 4 == 0 || i % 4 == 3 ? 0.0 : 1000.0, i / 2 + shift});
    return polyline;
}

int size(const benchmark::State& state) { return static_cast<int>(state.range(0)); }

void meetCurves(benchmark::State& state, const AcDbCurve& first, const AcDbCurve& second) {
    for (auto _ : state) {
        AcGePoint3dArray points;
        benchmark::DoNotOptimize(first.intersectWith(&second, AcDb::kOnBothOperands, points));
        state.counters["points"] = points.length();
    }
    state.SetComplexityN(state.range(0));
}

void contourWithLine(benchmark::State& state) {
    meetCurves(state, *ring(size(state), 0.0), AcDbLine({-500, 3, 0}, {500, 20, 0}));
}

void contourWithContour(benchmark::State& state) {
    meetCurves(state, *ring(size(state), 0.0), *ring(size(state), 30.0));
}

void stackWithStack(benchmark::State& state) {
    meetCurves(state, *stack(size(state), 0.0), *stack(size(state), 0.25));
}

void closestPoint(benchmark::State& state) {
    const auto contour = ring(size(state), 0.0);
    for (auto _ : state) {
        AcGePoint3d closest;
        benchmark::DoNotOptimize(contour->getClosestPointTo({50, 20, 0}, closest));
    }
    state.SetComplexityN(state.range(0));
}

void parameterOfPoint(benchmark::State& state) {
    const auto contour = ring(size(state), 0.0);
    AcGePoint3d point;
    (void)contour->getPointAtParam(0.7 * size(state), point);
    for (auto _ : state) {
        double parameter = 0.0;
        benchmark::DoNotOptimize(contour->getParamAtPoint(point, parameter));
    }
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK(contourWithLine)->RangeMultiplier(10)->Range(100, 10000)->Complexity();
BENCHMARK(contourWithContour)->RangeMultiplier(10)->Range(100, 10000)->Complexity();
BENCHMARK(stackWithStack)->RangeMultiplier(10)->Range(100, 10000)->Complexity();
BENCHMARK(closestPoint)->RangeMultiplier(10)->Range(100, 10000)->Complexity();
BENCHMARK(parameterOfPoint)->RangeMultiplier(10)->Range(100, 10000)->Complexity();
