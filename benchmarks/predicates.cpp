// Questions about points and contours, on small, ordinary and large contours. The peers, where installed, run
// on the same contours in the same run.
#include "vexogeometrytools.h"

#include "dbcircle.h"
#include "dbpolyline.h"
#include "gelnsg2d.h"

#include <benchmark/benchmark.h>

#ifdef VEXO_PEER_GEOS
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/geom/GeometryFactory.h>
#include <geos/geom/LineString.h>
#include <geos/geom/LinearRing.h>
#endif
#ifdef VEXO_PEER_POLYCLIPPING
#include <polyclipping/clipper.hpp>
#endif

#include <cmath>
#include <memory>
#include <random>
#include <vector>

using namespace VEXOGeometryTools;

namespace {

enum Form { kRound, kStar, kComb };
enum Sides { kStraight, kWithArcs, kArcsOnly };

/// Round: a circle's chords, nearly straight from side to side. Star: radii at random. Comb: long parallel
/// teeth, turned by 0.5.
AcArray<AcGePoint3d> pointsOf(int form, int count) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> radius(600.0, 1000.0);
    AcArray<AcGePoint3d> points;
    for (int i = 0; i < count; ++i) {
        const double angle = AcGe::kTwoPi * i / count;
        const double r = form == kStar ? radius(random) : i % 2 ? 1000.0 : 999.99;
        AcGePoint3d point(r * std::cos(angle), r * std::sin(angle), 0.0);
        if (form == kComb) {
            const bool isBack = i + 2 >= count;
            point.set(isBack ? -10.0 : (i / 2 % 2 ? 0.0 : 1000.0),
                      i + 1 == count ? 0.0 : 1000.0 * (i + 1) / count, 0.0);
            point.rotateBy(0.5, AcGeVector3d::kZAxis);
        }
        points.append(point);
    }
    return points;
}

/// Every third side, or every side, an arc that stays close to its chord.
AcArray<double> bulgesOf(const AcArray<AcGePoint3d>& points, int sides) {
    constexpr double heightOfChord = 1e-4;
    AcArray<double> bulges;
    const int count = points.length();
    for (int i = 0; i < count; ++i) {
        const double chord = points[i].distanceTo(points[i + 1 < count ? i + 1 : 0]);
        const bool isArc = sides == kArcsOnly || (sides == kWithArcs && i % 3 == 0);
        bulges.append(isArc ? heightOfChord * chord : 0.0);
    }
    return bulges;
}

std::unique_ptr<AcDbPolyline> contourOf(int form, int sides, int count, AcGePoint2d at = {0.0, 0.0}) {
    const AcArray<AcGePoint3d> points = pointsOf(form, count);
    auto polyline = std::make_unique<AcDbPolyline>(static_cast<unsigned int>(count));
    for (int i = 0; i < count; ++i)
        polyline->addVertexAt(static_cast<unsigned int>(i), {at.x + points[i].x, at.y + points[i].y},
                              sides == kWithArcs && i % 3 == 0 ? 0.1 : 0.0);
    polyline->setClosed(Adesk::kTrue);
    return polyline;
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond)->Complexity();
}

// ---- inside a polygon ----

const AcGePoint3d kInside(12.3, 45.6, 0.0);

void InteriorPoint(benchmark::State& state) {
    const AcArray<AcGePoint3d> points = pointsOf(kRound, static_cast<int>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(IsInteriorPoint(points, kInside));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(InteriorPoint)->Apply(sizes);

/// What the call above spends on handing its polygon over by value.
void InteriorPointCopyAlone(benchmark::State& state) {
    const AcArray<AcGePoint3d> points = pointsOf(kRound, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const AcArray<AcGePoint3d> copy(points);
        benchmark::DoNotOptimize(copy.asArrayPtr());
        benchmark::ClobberMemory();
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(InteriorPointCopyAlone)->Apply(sizes);

/// The polygon handed over for good: nothing is copied, the polygon is taken back by the next one.
void InteriorPointMoved(benchmark::State& state) {
    const AcArray<AcGePoint3d> points = pointsOf(kRound, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        AcArray<AcGePoint3d> given(points);
        state.ResumeTiming();
        benchmark::DoNotOptimize(IsInteriorPoint(std::move(given), kInside));
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(InteriorPointMoved)->Apply(sizes);

#ifdef VEXO_PEER_POLYCLIPPING
void InteriorPointPeer(benchmark::State& state) {
    constexpr double unitsPerLength = 1e6;
    ClipperLib::Path path;
    for (const AcGePoint3d& point : pointsOf(kRound, static_cast<int>(state.range(0))))
        path.emplace_back(static_cast<ClipperLib::cInt>(point.x * unitsPerLength),
                          static_cast<ClipperLib::cInt>(point.y * unitsPerLength));
    const ClipperLib::IntPoint inside(static_cast<ClipperLib::cInt>(kInside.x * unitsPerLength),
                                      static_cast<ClipperLib::cInt>(kInside.y * unitsPerLength));
    for (auto _ : state) benchmark::DoNotOptimize(ClipperLib::PointInPolygon(inside, path));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(InteriorPointPeer)->Apply(sizes);
#endif

// ---- crossing itself ----

/// A star's spikes are too sharp, and a comb's teeth too near each other, for arcs on every side.
void formsAndSizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"form", "arcs", ""})
        ->ArgsProduct({{kRound, kStar, kComb}, {kStraight}, {100, 1000, 10000}})
        ->ArgsProduct({{kRound, kComb}, {kWithArcs}, {100, 1000, 10000}})
        ->ArgsProduct({{kRound}, {kArcsOnly}, {100, 1000, 10000}})
        ->Unit(benchmark::kMicrosecond);
}

void SelfIntersecting(benchmark::State& state) {
    const AcArray<AcGePoint3d> points =
        pointsOf(static_cast<int>(state.range(0)), static_cast<int>(state.range(2)));
    const AcArray<double> bulges = bulgesOf(points, static_cast<int>(state.range(1)));
    bool crosses = false;
    for (auto _ : state)
        benchmark::DoNotOptimize(crosses = isSelfIntersecting(points, bulges, AcGeVector3d::kZAxis, 1.0));
    if (crosses) state.SkipWithError("the contour crosses itself");
}
BENCHMARK(SelfIntersecting)->Apply(formsAndSizes);

#ifdef VEXO_PEER_GEOS
void SelfIntersectingPeer(benchmark::State& state) {
    const auto factory = geos::geom::GeometryFactory::create();
    std::vector<geos::geom::Coordinate> coordinates;
    for (const AcGePoint3d& point :
         pointsOf(static_cast<int>(state.range(0)), static_cast<int>(state.range(1))))
        coordinates.emplace_back(point.x, point.y);
    coordinates.push_back(coordinates.front());
    const auto ring = factory->createLineString(
        std::make_unique<geos::geom::CoordinateArraySequence>(std::move(coordinates)));
    bool isSimple = true;
    for (auto _ : state) benchmark::DoNotOptimize(isSimple = ring->isSimple());
    if (!isSimple) state.SkipWithError("the contour crosses itself");
}
BENCHMARK(SelfIntersectingPeer)
    ->ArgNames({"form", ""})
    ->ArgsProduct({{kRound, kStar, kComb}, {100, 1000, 10000}})
    ->Unit(benchmark::kMicrosecond);
#endif

// ---- the same outline ----

void CompareOutlines(benchmark::State& state) {
    const auto count = static_cast<int>(state.range(0));
    const AcArray<AcGePoint3d> points = pointsOf(kStar, count);
    AcArray<AcGeVector3d> bulges;
    for (int i = 0; i < count; ++i) {
        const AcGeVector3d chord = points[i + 1 < count ? i + 1 : 0] - points[i];
        bulges.append(i % 3 ? AcGeVector3d() : 0.05 * chord.perpVector());
    }
    AcArray<AcGePoint3d> others(points);
    AcArray<AcGeVector3d> otherBulges(bulges);
    std::rotate(others.begin(), others.begin() + count / 3, others.end());
    std::rotate(otherBulges.begin(), otherBulges.begin() + count / 3, otherBulges.end());
    bool same = true;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            same = ComparePointsAndBulgesForClosedContours(points, bulges, others, otherBulges, 1e-3, true));
    if (!same) state.SkipWithError("the outlines differ");
    state.SetComplexityN(state.range(0));
}
BENCHMARK(CompareOutlines)->Apply(sizes);

// ---- contours of the drawing ----

void PointInsideContour(benchmark::State& state) {
    const auto contour = contourOf(kStar, kWithArcs, static_cast<int>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(isPointInsideContour(kInside, contour.get()));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(PointInsideContour)->Arg(10)->Apply(sizes);

void PointOnPolyline(benchmark::State& state) {
    const auto contour = contourOf(kStar, kWithArcs, static_cast<int>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(isPointOnPolyLine(contour.get(), kInside));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(PointOnPolyline)->Arg(10)->Apply(sizes);

void PerpendicularOriented(benchmark::State& state) {
    const auto contour = contourOf(kStar, kWithArcs, static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(
            isPerpVectorOrientedInsideContour({-5.0, 1.0, 0.0}, {7.0, 2.0, 0.0}, contour.get()));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(PerpendicularOriented)->Arg(10)->Apply(sizes);

/// The second contour, of eight vertices, apart (0), across the first one's side (1), and within its box (2).
void ContourOutside(benchmark::State& state) {
    const auto contour = contourOf(kStar, kWithArcs, static_cast<int>(state.range(1)));
    const auto hole = std::make_unique<AcDbCircle>(AcGePoint3d(state.range(0) == 0   ? 2500.0
                                                               : state.range(0) == 1 ? 1000.0
                                                                                     : 0.0,
                                                               0.0, 0.0),
                                                   AcGeVector3d::kZAxis, 300.0);
    for (auto _ : state) benchmark::DoNotOptimize(isContourOutside(contour.get(), hole.get()));
}
BENCHMARK(ContourOutside)->ArgNames({"place", ""})->ArgsProduct({{0, 1, 2}, {10, 100, 1000}});

} // namespace
