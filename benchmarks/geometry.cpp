// The geometry kit: what contour tools call by the million.
#include "gearc2d.h"
#include "gearc3d.h"
#include "gelnsg2d.h"
#include "gelnsg3d.h"
#include "genurb3d.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

namespace {

std::vector<AcGePoint3d> randomPoints(int count, bool flat) {
    std::mt19937 engine(1);
    std::uniform_real_distribution<double> coordinate(0.0, 100.0);
    std::vector<AcGePoint3d> points(static_cast<std::size_t>(count));
    for (AcGePoint3d& p : points)
        p.set(coordinate(engine), coordinate(engine), flat ? 0.0 : coordinate(engine));
    return points;
}

void pointTest(benchmark::State& state) {
    const auto points = randomPoints(static_cast<int>(state.range(0)), false);
    for (auto _ : state) {
        int equal = 0;
        for (std::size_t i = 1; i < points.size(); ++i) equal += points[i].isEqualTo(points[i - 1]);
        benchmark::DoNotOptimize(equal);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void arcFromThreePoints(benchmark::State& state) {
    const auto points = randomPoints(static_cast<int>(state.range(0)) + 2, true);
    for (auto _ : state)
        for (std::size_t i = 2; i < points.size(); ++i) {
            const AcGeCircArc3d arc(points[i - 2], points[i - 1], points[i]);
            benchmark::DoNotOptimize(arc.radius());
        }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void arcEvaluation(benchmark::State& state) {
    const AcGeCircArc3d arc(AcGePoint3d(1, 2, 3), AcGeVector3d(1, 1, 1), 5.0);
    const auto count = static_cast<int>(state.range(0));
    for (auto _ : state)
        for (int i = 0; i < count; ++i) benchmark::DoNotOptimize(arc.evalPoint(6.0 * i / count));
    state.SetItemsProcessed(state.iterations() * count);
}

// All pairs of `count` segments, each met with each other once.
void segmentPairs(benchmark::State& state) {
    const auto points = randomPoints(static_cast<int>(state.range(0)) + 1, true);
    std::vector<AcGeLineSeg2d> segments;
    for (std::size_t i = 1; i < points.size(); ++i)
        segments.emplace_back(AcGePoint2d(points[i - 1].x, points[i - 1].y),
                              AcGePoint2d(points[i].x, points[i].y));
    for (auto _ : state) {
        int found = 0;
        AcGePoint2d point;
        for (std::size_t i = 0; i < segments.size(); ++i)
            for (std::size_t j = i + 1; j < segments.size(); ++j)
                found += segments[i].intersectWith(segments[j], point);
        benchmark::DoNotOptimize(found);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * (state.range(0) - 1) / 2);
}

void arcPairs(benchmark::State& state) {
    const auto points = randomPoints(static_cast<int>(state.range(0)) + 2, true);
    std::vector<AcGeCircArc3d> arcs;
    for (std::size_t i = 2; i < points.size(); ++i)
        arcs.emplace_back(points[i - 2], points[i - 1], points[i]);
    for (auto _ : state) {
        int found = 0, count = 0;
        AcGePoint3d p1, p2;
        for (std::size_t i = 0; i < arcs.size(); ++i)
            for (std::size_t j = i + 1; j < arcs.size(); ++j)
                found += arcs[i].intersectWith(arcs[j], count, p1, p2);
        benchmark::DoNotOptimize(found);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * (state.range(0) - 1) / 2);
}

AcGeNurbCurve3d spline(int fitPoints) {
    AcGePoint3dArray fit;
    for (const AcGePoint3d& p : randomPoints(fitPoints, false)) fit.append(p);
    return AcGeNurbCurve3d(fit, AcGeVector3d(), AcGeVector3d());
}

void splineEvaluation(benchmark::State& state) {
    const AcGeNurbCurve3d curve = spline(static_cast<int>(state.range(0)));
    double param = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(curve.evalPoint(param));
        param = std::fmod(param + 17.3, curve.endParam());
    }
    state.SetItemsProcessed(state.iterations());
}

void splineNearestPoint(benchmark::State& state) {
    const AcGeNurbCurve3d curve = spline(static_cast<int>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(curve.closestPointTo(AcGePoint3d(50, 50, 50)));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(pointTest)->Arg(1000)->Arg(10000)->Arg(100000);
BENCHMARK(arcFromThreePoints)->Arg(100)->Arg(1000)->Arg(10000);
BENCHMARK(arcEvaluation)->Arg(100)->Arg(1000)->Arg(10000);
BENCHMARK(segmentPairs)->Arg(30)->Arg(100)->Arg(300);
BENCHMARK(arcPairs)->Arg(30)->Arg(100)->Arg(300);
BENCHMARK(splineEvaluation)->Arg(10)->Arg(100)->Arg(1000);
BENCHMARK(splineNearestPoint)->Arg(10)->Arg(100)->Arg(1000);

} // namespace
