// The contour tools on small, ordinary and large input.
#include "vexogeometrytools.h"

#include "dbline.h"
#include "dbxline.h"
#include "ringcontour.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <random>
#include <vector>

using namespace VEXOGeometryTools;

namespace {

const AcGePoint3d kStart(3.0, 1.0, 0.0);
const AcGePoint3d kEnd(7.0, 2.0, 0.0);
const AcGePoint3d kOnArc(5.0, 3.5, 0.0);
const AcGeVector3d kNormal = AcGeVector3d::kZAxis;
constexpr double kBulge = 0.8;

/// A round contour, every third side an arc.
std::unique_ptr<AcDbPolyline> contourOf(int count) {
    return ringOf(count, 0.0, 0.2, [](int i) { return i % 2 ? 1000.0 : 999.99; });
}

AcArray<AcGePoint3d> pointsOf(int count) {
    AcArray<AcGePoint3d> points;
    AcArray<double> bulges;
    convertPolyline(contourOf(count).get(), points, bulges);
    return points;
}

/// 0 to count-1 in runs of that length, the runs in any order: a drawing holds things in the order in which
/// they were drawn, some dozens in one go. Runs of 1 are the worst order for the processor's caches.
std::vector<int> numbersInRuns(int count, int run) {
    std::vector<int> runs(static_cast<std::size_t>((count + run - 1) / run));
    std::iota(runs.begin(), runs.end(), 0);
    std::mt19937 random(7);
    std::shuffle(runs.begin(), runs.end(), random);
    std::vector<int> numbers;
    for (const int first : runs)
        for (int i = first * run; i < std::min(count, (first + 1) * run); ++i) numbers.push_back(i);
    return numbers;
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100)->Arg(1000)->Arg(10000)->Complexity();
}
void sizesInRuns(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"", "run"})
        ->ArgsProduct({{1000, 10000, 100000}, {50}})
        ->ArgsProduct({{1000, 10000, 100000}, {1}})
        ->Unit(benchmark::kMicrosecond);
}
void largeSizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond)->Complexity();
}

// ---- arc arithmetic ----

void BulgeFrom3Points(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(getBulgeFrom3Points(kStart, kEnd, kOnArc, kNormal));
}
BENCHMARK(BulgeFrom3Points);

void CenterFromArc(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(getCenterFromArc(kStart, kEnd, kBulge, kNormal));
}
BENCHMARK(CenterFromArc);

void RadiusFromBulge(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(getRadiusFromBulge(kStart, kEnd, kBulge));
}
BENCHMARK(RadiusFromBulge);

void HostBulgeFromArc(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(getAcadBulgeFromArc(kStart, kEnd, kBulge));
}
BENCHMARK(HostBulgeFromArc);

void LengthFromBulge(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(getLengthFromCurve(kStart, kEnd, kBulge, kNormal));
}
BENCHMARK(LengthFromBulge);

// ---- linear tools ----

void SignedArea(benchmark::State& state) {
    const AcArray<AcGePoint3d> points = pointsOf(static_cast<int>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(getSignedArea(points));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(SignedArea)->Apply(sizes);

/// The host's bulge to the library's.
void PolylineToArrays(benchmark::State& state) {
    const auto polyline = contourOf(static_cast<int>(state.range(0)));
    AcArray<AcGePoint3d> points;
    AcArray<double> bulges;
    for (auto _ : state) {
        convertPolyline(polyline.get(), points, bulges);
        benchmark::DoNotOptimize(points.asArrayPtr());
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(PolylineToArrays)->Apply(sizes);

void CopyPolyline(benchmark::State& state) {
    const auto polyline = contourOf(static_cast<int>(state.range(0)));
    for (auto _ : state) delete ConvertToPolyline(polyline.get());
    state.SetComplexityN(state.range(0));
}
BENCHMARK(CopyPolyline)->Apply(sizes);

void ContourSense(benchmark::State& state) {
    const auto polyline = contourOf(static_cast<int>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(isContourClockWise(polyline.get()));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(ContourSense)->Apply(sizes);

void Tessellate(benchmark::State& state) {
    const auto polyline = contourOf(static_cast<int>(state.range(0)));
    AcArray<AcGePoint3d> points;
    AcArray<double> bulges;
    convertPolyline(polyline.get(), points, bulges);
    AcArray<AcGePoint3d> out;
    AcArray<AcArray<AcGePoint3d>> samples;
    for (auto _ : state) getTessellatedPoly(points, bulges, out, samples, 8, kNormal);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(Tessellate)->Apply(sizes);

// ---- tools with an index ----

void ClearRepeatedPoints(benchmark::State& state) {
    const AcArray<AcGePoint3d> contour = pointsOf(static_cast<int>(state.range(0)));
    AcArray<AcGeVector3d> none;
    for (auto _ : state) {
        AcArray<AcGePoint3d> points(contour);
        ClearDooblons(points, none);
        benchmark::DoNotOptimize(points.asArrayPtr());
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(ClearRepeatedPoints)->Apply(largeSizes);

/// Halves of lines on a grid: every line comes together again.
void ConcatenateSegments(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const std::vector<int> order = numbersInRuns(count, static_cast<int>(state.range(1)));
    for (auto _ : state) {
        state.PauseTiming();
        AcArray<void*> segments;
        for (const int number : order) {
            const AcGePoint3d start(number / 2 % 1000 + (number % 2 ? 0.4 : 0.0), number / 2 / 1000, 0);
            segments.append(static_cast<AcGeCurve3d*>(new AcGeLineSeg3d(start, AcGeVector3d(0.4, 0, 0))));
        }
        state.ResumeTiming();
        ConcatenateLineSegments(segments, 0.01);
        state.PauseTiming();
        if (segments.length() != count / 2) state.SkipWithError("segments did not come together");
        for (void* segment : segments) delete static_cast<AcGeCurve3d*>(segment);
        state.ResumeTiming();
    }
}
BENCHMARK(ConcatenateSegments)->Apply(sizesInRuns);

/// The sides of a closed contour as curves of their own.
AcArray<void*> sidesInRuns(int count, int run) {
    const auto contour = contourOf(count);
    AcArray<void*> sides;
    for (const int number : numbersInRuns(count, run)) {
        auto* side = new AcDbPolyline(2);
        AcGePoint2d point;
        double bulge = 0.0;
        contour->getPointAt(static_cast<unsigned int>(number), point);
        contour->getBulgeAt(static_cast<unsigned int>(number), bulge);
        side->addVertexAt(0, point, bulge);
        contour->getPointAt(static_cast<unsigned int>((number + 1) % count), point);
        side->addVertexAt(1, point);
        sides.append(static_cast<AcDbCurve*>(side));
    }
    return sides;
}

void ChainCurves(benchmark::State& state) {
    const AcArray<void*> sides =
        sidesInRuns(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    for (auto _ : state) {
        AcDbCurve* chain = createPolyLineFromCurves(sides);
        if (!chain->isClosed()) state.SkipWithError("the chain did not close");
        delete chain;
    }
    for (void* side : sides) delete static_cast<AcDbCurve*>(side);
}
BENCHMARK(ChainCurves)->Apply(sizesInRuns);

void RemoveDuplicateLines(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const AcArray<AcGePoint3d> points = pointsOf(count / 2);
    const std::vector<int> order = numbersInRuns(count, static_cast<int>(state.range(1)));
    for (auto _ : state) {
        state.PauseTiming();
        AcArray<void*> lines;
        for (const int number : order) {
            const AcGePoint3d& start = points[number / 2];
            const AcGePoint3d& end = points[number / 2 + 1];
            lines.append(
                static_cast<AcDbCurve*>(number % 2 ? new AcDbLine(start, end) : new AcDbLine(end, start)));
        }
        state.ResumeTiming();
        RemoveDuplicates(lines, kNormal);
        state.PauseTiming();
        if (lines.length() != points.length() - 1) state.SkipWithError("duplicates stayed");
        for (void* line : lines) delete static_cast<AcDbCurve*>(line);
        state.ResumeTiming();
    }
}
BENCHMARK(RemoveDuplicateLines)->Apply(sizesInRuns);

// ---- the drawing's curves under them ----

void IntersectTwoContours(benchmark::State& state) {
    const auto first = contourOf(static_cast<int>(state.range(0)));
    const auto second = contourOf(static_cast<int>(state.range(0)));
    second->transformBy(AcGeMatrix3d::translation(AcGeVector3d(500, 0, 0)));
    for (auto _ : state) {
        AcGePoint3dArray points;
        first->intersectWith(second.get(), AcDb::kOnBothOperands, points);
        if (points.isEmpty()) state.SkipWithError("no crossings");
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(IntersectTwoContours)->Apply(largeSizes);

void IntersectContourWithLine(benchmark::State& state) {
    const auto contour = contourOf(static_cast<int>(state.range(0)));
    AcDbXline line;
    line.setUnitDir(AcGeVector3d(1, 3, 0));
    for (auto _ : state) {
        AcGePoint3dArray points;
        contour->intersectWith(&line, AcDb::kOnBothOperands, points);
        if (points.length() != 2) state.SkipWithError("not two crossings");
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(IntersectContourWithLine)->Apply(largeSizes);

void ParameterAtPoint(benchmark::State& state) {
    const auto contour = contourOf(static_cast<int>(state.range(0)));
    AcGePoint3d point;
    contour->getPointAtParam(static_cast<double>(state.range(0)) - 0.3, point);
    double parameter = 0.0;
    for (auto _ : state) benchmark::DoNotOptimize(contour->getParamAtPoint(point, parameter));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(ParameterAtPoint)->Apply(sizes);

void ClosestPoint(benchmark::State& state) {
    const auto contour = contourOf(static_cast<int>(state.range(0)));
    AcGePoint3d closest;
    for (auto _ : state) benchmark::DoNotOptimize(contour->getClosestPointTo(AcGePoint3d(1, 2, 0), closest));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(ClosestPoint)->Apply(sizes);

} // namespace
