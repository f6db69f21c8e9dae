// Shapes on which an index that trusts in neighbours helps little: spirals, combs, spikes, fans. What is
// looked at is how the time grows from size to size.
#include "vexogeometrytools.h"

#include "dbline.h"
#include "dbpolyline.h"
#include "gearc2d.h"
#include "gelnsg3d.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <random>
#include <vector>

using namespace VEXOGeometryTools;

namespace {

enum Form { kSpiral, kSpiralAslant, kComb, kSpikes, kArcs };
constexpr const char* kFormNames[] = {"spiral", "spiral aslant", "comb", "spikes", "arcs"};

/// There and back: a way inwards in a square spiral, and the way out beside it.
AcArray<AcGePoint3d> spiral(int count, double angle) {
    AcArray<AcGePoint3d> inwards;
    const int half = count / 2;
    for (int i = 0; i < half; ++i) {
        const double size = half - i;
        const double x[] = {1, 1, -1, -1};
        const double y[] = {-1, 1, 1, -1};
        inwards.append(AcGePoint3d(size * x[i % 4], size * y[i % 4], 0));
    }
    AcArray<AcGePoint3d> points(inwards);
    for (int i = half - 1; i >= 0; --i)
        points.append(inwards[i] - (inwards[i] - AcGePoint3d::kOrigin) * (0.3 / (half - i)));
    for (AcGePoint3d& point : points) point.rotateBy(angle, AcGeVector3d::kZAxis);
    return points;
}

AcArray<AcGePoint3d> pointsOf(int form, int count) {
    if (form == kSpiral) return spiral(count, 0.0);
    if (form == kSpiralAslant) return spiral(count, 0.5);
    AcArray<AcGePoint3d> points;
    for (int i = 0; i < count; ++i) {
        const double angle = AcGe::kTwoPi * i / count;
        const double radius = form == kSpikes ? (i % 2 ? 1.0 : 1000.0) : 1000.0;
        if (form == kComb)
            points.append(AcGePoint3d(i / 2 + 0.1 * (i % 2), (i + 1) / 2 % 2 ? 1000.0 : 0.0, 0));
        else
            points.append(AcGePoint3d(radius * std::cos(angle), radius * std::sin(angle), 0));
    }
    if (form == kComb) {
        points[count - 2].y = -10.0;
        points[count - 1].set(0, -10, 0);
    }
    return points;
}

AcArray<double> bulgesOf(const AcArray<AcGePoint3d>& points, int form) {
    AcArray<double> bulges;
    for (int i = 0; i < points.length(); ++i)
        bulges.append(form == kArcs ? -0.05 * points[i].distanceTo(points[(i + 1) % points.length()]) : 0.0);
    return bulges;
}

std::unique_ptr<AcDbPolyline> contourOf(int form, int count, double shift = 0.0) {
    const AcArray<AcGePoint3d> points = pointsOf(form, count);
    auto polyline = std::make_unique<AcDbPolyline>(static_cast<unsigned int>(count));
    for (const AcGePoint3d& point : points)
        (void)polyline->addVertexAt(polyline->numVerts(), {point.x + shift, point.y + 0.7 * shift},
                                    form == kArcs ? 0.1 : 0.0);
    polyline->setClosed(Adesk::kTrue);
    return polyline;
}

void formsAndSizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"form", ""})
        ->ArgsProduct({{kSpiral, kSpiralAslant, kComb, kSpikes, kArcs}, {100, 1000, 10000}})
        ->Unit(benchmark::kMicrosecond);
}
void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
}
int size(const benchmark::State& state) { return static_cast<int>(state.range(0)); }

void CrossingItself(benchmark::State& state) {
    const int form = static_cast<int>(state.range(0));
    const AcArray<AcGePoint3d> points = pointsOf(form, static_cast<int>(state.range(1)));
    const AcArray<double> bulges = bulgesOf(points, form);
    bool crosses = false;
    for (auto _ : state)
        benchmark::DoNotOptimize(crosses = isSelfIntersecting(points, bulges, AcGeVector3d::kZAxis, 1.0));
    if (crosses) state.SkipWithError("crosses itself");
    state.SetLabel(kFormNames[form]);
}
BENCHMARK(CrossingItself)->Apply(formsAndSizes);

/// A small square around its first vertex.
std::unique_ptr<AcDbPolyline> squareAtStartOf(const AcDbPolyline& contour) {
    AcGePoint2d at;
    (void)contour.getPointAt(0, at);
    auto square = std::make_unique<AcDbPolyline>();
    for (const auto& [x, y] : {std::pair{-1, -1}, {1, -1}, {1, 1}, {-1, 1}})
        (void)square->addVertexAt(square->numVerts(), {at.x + 1.5 * x, at.y + 1.4 * y});
    square->setClosed(Adesk::kTrue);
    return square;
}

/// With a small square that takes away a corner of it.
void CommonWithSquare(benchmark::State& state) {
    const int form = static_cast<int>(state.range(0));
    const int count = static_cast<int>(state.range(1));
    const auto contour = contourOf(form, count);
    const auto square = squareAtStartOf(*contour);
    for (auto _ : state) {
        const std::unique_ptr<AcDbCurve> common(getComonSurfaceFromPolylines(contour.get(), square.get()));
        benchmark::DoNotOptimize(common.get());
    }
    state.SetLabel(kFormNames[form]);
}
BENCHMARK(CommonWithSquare)->Apply(formsAndSizes);

void OneOpening(benchmark::State& state) {
    const int form = static_cast<int>(state.range(0));
    const auto contour = contourOf(form, static_cast<int>(state.range(1)));
    const auto square = squareAtStartOf(*contour);
    for (auto _ : state)
        for (void* part :
             splitContourByHole(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis, contour.get(), square.get()))
            delete static_cast<AcDbCurve*>(part);
    state.SetLabel(kFormNames[form]);
}
BENCHMARK(OneOpening)->Apply(formsAndSizes);

void SplitAtPoints(benchmark::State& state) {
    const auto contour = contourOf(kArcs, size(state));
    AcArray<AcGePoint3d> points;
    for (int i = 0; i < size(state); ++i) {
        AcGePoint3d point;
        (void)contour->getPointAtParam(std::fmod(i * 0.6180339887 * size(state), size(state)), point);
        points.append(point);
    }
    for (auto _ : state)
        for (void* part : splitPolyLineByPoints(contour.get(), points)) delete static_cast<AcDbCurve*>(part);
}
BENCHMARK(SplitAtPoints)->Apply(sizes);

void PointsOnCircle(benchmark::State& state) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> coordinate(-20.0, 20.0);
    AcArray<AcGePoint3d> points;
    for (int i = 0; i < size(state); ++i)
        points.append(AcGePoint3d(coordinate(random), coordinate(random), 0));
    const AcGeCircArc3d circle(AcGePoint3d(1, 2, 0), AcGeVector3d::kZAxis, 7.0);
    for (auto _ : state) {
        AcArray<AcGePoint3d> moved(points);
        getPointsOnCircle(circle, moved);
        benchmark::DoNotOptimize(moved);
    }
}
BENCHMARK(PointsOnCircle)->Apply(sizes);

AcGePoint3d spoke(int i, int count) {
    const double angle = AcGe::kTwoPi * i / count;
    return {1000 * std::cos(angle), 1000 * std::sin(angle), 0};
}

void ConcatenateFan(benchmark::State& state) {
    for (auto _ : state) {
        AcArray<void*> segments;
        for (int i = 0; i < size(state); ++i)
            segments.append(
                static_cast<AcGeCurve3d*>(new AcGeLineSeg3d(AcGePoint3d(1, 1, 0), spoke(i, size(state)))));
        ConcatenateLineSegments(segments, 1e-3);
        for (void* segment : segments) delete static_cast<AcGeCurve3d*>(segment);
    }
}
BENCHMARK(ConcatenateFan)->Apply(sizes);

/// From one point, and all through one middle.
void DuplicatesInFans(benchmark::State& state) {
    for (auto _ : state) {
        AcArray<void*> curves;
        for (int i = 0; i < size(state); ++i) {
            const AcGePoint3d end = spoke(i, size(state));
            curves.append(static_cast<AcDbCurve*>(i % 2 ? new AcDbLine(AcGePoint3d(1, 1, 0), end)
                                                        : new AcDbLine(end, AcGePoint3d(-end.x, -end.y, 0))));
        }
        RemoveDuplicates(curves, AcGeVector3d::kZAxis);
        for (void* curve : curves) delete static_cast<AcDbCurve*>(curve);
    }
}
BENCHMARK(DuplicatesInFans)->Apply(sizes);

// ---- questions to a contour of arcs ----

void InsideRingOfCurves(benchmark::State& state) {
    const auto contour = contourOf(kArcs, size(state));
    std::vector<std::unique_ptr<AcGeCircArc2d>> owned;
    std::vector<AcGeCurve2d*> curves;
    for (int i = 0; i < size(state); ++i) {
        owned.push_back(std::make_unique<AcGeCircArc2d>());
        (void)contour->getArcSegAt(static_cast<unsigned int>(i), *owned.back());
        curves.push_back(owned.back().get());
    }
    for (auto _ : state) benchmark::DoNotOptimize(IsInteriorPoint(curves, AcGePoint2d(12.3, 45.6)));
}
BENCHMARK(InsideRingOfCurves)->Apply(sizes);

void InsideContourOfArcs(benchmark::State& state) {
    const auto contour = contourOf(kArcs, size(state));
    for (auto _ : state)
        benchmark::DoNotOptimize(isPointInsideContour(AcGePoint3d(12.3, 45.6, 0), contour.get()));
}
BENCHMARK(InsideContourOfArcs)->Apply(sizes);

void SenseOfArcs(benchmark::State& state) {
    const auto contour = contourOf(kArcs, size(state));
    for (auto _ : state) benchmark::DoNotOptimize(isContourClockWise(contour.get()));
}
BENCHMARK(SenseOfArcs)->Apply(sizes);

void AreaOfArcs(benchmark::State& state) {
    const auto contour = contourOf(kArcs, size(state));
    double area = 0.0;
    for (auto _ : state) {
        (void)contour->getArea(area);
        benchmark::DoNotOptimize(area);
    }
}
BENCHMARK(AreaOfArcs)->Apply(sizes);

void LengthOfArcs(benchmark::State& state) {
    const auto contour = contourOf(kArcs, size(state));
    double length = 0.0;
    for (auto _ : state) {
        (void)contour->getDistAtParam(size(state), length);
        benchmark::DoNotOptimize(length);
    }
}
BENCHMARK(LengthOfArcs)->Apply(sizes);

void ExtentsOfArcs(benchmark::State& state) {
    const auto contour = contourOf(kArcs, size(state));
    AcDbExtents box;
    for (auto _ : state) {
        (void)contour->getGeomExtents(box);
        benchmark::DoNotOptimize(box);
    }
}
BENCHMARK(ExtentsOfArcs)->Apply(sizes);

} // namespace
