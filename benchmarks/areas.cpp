// Common areas and merging on small, ordinary and large contours with arcs. Where CGAL is installed, its
// general polygon set runs on the same contours in the same run, and `ratio` says how many times as long it
// takes.
#include "contourareas.h"
#include "vexogeometrytools.h"

#include "ringcontour.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>

#ifdef VEXO_PEER_CGAL
#include <CGAL/Exact_predicates_exact_constructions_kernel.h>
#include <CGAL/General_polygon_set_2.h>
#include <CGAL/Gps_circle_segment_traits_2.h>

#include <ctime>
#include <iterator>
#include <vector>
#endif

using namespace VEXOGeometryTools;
using namespace vexo;

namespace {

constexpr double kBulge = 0.1;

struct Pair {
    std::unique_ptr<AcDbPolyline> first;
    std::unique_ptr<AcDbPolyline> second;
};

/// Two wavy rings side by side: a handful of crossings.
Pair fewCrossings(int count) {
    const auto wave = [&](int i) { return 1000.0 + 20.0 * std::sin(7 * AcGe::kTwoPi * i / count); };
    return {ringOf(count, 0.0, kBulge, wave), ringOf(count, 300.0, kBulge, wave)};
}

/// Two zigzag rings, the teeth of one over the gaps of the other: as many crossings as either has vertices.
Pair manyCrossings(int count) {
    const double tooth = 1000.0 / count;
    return {ringOf(count, 0.0, kBulge, [&](int i) { return i % 2 ? 1000.0 + tooth : 1000.0 - tooth; }),
            ringOf(count, 0.0, kBulge, [&](int i) { return i % 2 ? 1000.0 - tooth : 1000.0 + tooth; })};
}

void commonSurface(benchmark::State& state, const Pair& pair) {
    for (auto _ : state) {
        const std::unique_ptr<AcDbCurve> common(
            getComonSurfaceFromPolylines(pair.first.get(), pair.second.get()));
        if (!common) state.SkipWithError("nothing in common");
        benchmark::DoNotOptimize(common.get());
    }
    state.SetComplexityN(state.range(0));
}

int size(const benchmark::State& state) { return static_cast<int>(state.range(0)); }

void CommonSurfaceFewCrossings(benchmark::State& state) { commonSurface(state, fewCrossings(size(state))); }
void CommonSurfaceManyCrossings(benchmark::State& state) { commonSurface(state, manyCrossings(size(state))); }

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond)->Complexity();
}
BENCHMARK(CommonSurfaceFewCrossings)->Apply(sizes);
BENCHMARK(CommonSurfaceManyCrossings)->Apply(sizes);

/// A slab with round openings in rows, all taken away in one go.
void AreaWithoutOpenings(benchmark::State& state) {
    const int count = size(state);
    const ContourArea slab{{{{0, 0, 0}, {100.0 * count, 0, 0}, {100.0 * count, 100, 0}, {0, 100, 0}}}};
    ContourArea openings;
    for (int i = 0; i < count; ++i) {
        const double y = i % 2 ? 30.0 : 90.0; // every second one crosses the edge
        openings.push_back({{{100.0 * i + 10, y, 1}, {100.0 * i + 50, y, 1}}});
    }
    for (auto _ : state) {
        const ContourArea rest = areaWithout(slab, openings);
        if (rest.size() != static_cast<std::size_t>(1 + count / 2)) state.SkipWithError("not all openings");
    }
    state.SetComplexityN(count);
}
BENCHMARK(AreaWithoutOpenings)->Apply(sizes);

/// Two quadrilaterals as the cutting of slabs gives them: what one look at a pair costs.
void mergePair(benchmark::State& state, double gap) {
    const auto box = [](double x, double width) {
        auto polyline = std::make_unique<AcDbPolyline>(4u);
        const double right = x + width;
        for (const AcGePoint2d& point : {AcGePoint2d(x, 0), {right, 0}, {right, 400}, {x, 400}})
            (void)polyline->addVertexAt(polyline->numVerts(), point);
        polyline->setClosed(Adesk::kTrue);
        return polyline;
    };
    const auto first = box(0, 1000);
    const auto second = box(1000 + gap, 500);
    for (auto _ : state) {
        const std::unique_ptr<AcDbCurve> merged(
            MergeContoursIfTheyHaveOneComonSegment(first.get(), second.get()));
        if ((merged != nullptr) != (gap == 0.0)) state.SkipWithError("wrong answer");
    }
}
void MergeNeighbours(benchmark::State& state) { mergePair(state, 0.0); }
void MergeRefusedByBoxes(benchmark::State& state) { mergePair(state, 1.0); }
BENCHMARK(MergeNeighbours);

/// Two rings with arcs that have one side in common, as long as a whole segment.
void MergeRings(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const auto first = ringOf(count, 0.0, -kBulge, [](int) { return 1000.0; });
    const auto second = std::make_unique<AcDbPolyline>(static_cast<unsigned int>(count));
    // The first one turned by half a turn about the middle of a straight side.
    AcGePoint2d a, b;
    (void)first->getPointAt(1, a);
    (void)first->getPointAt(2, b);
    for (int i = 0; i < count; ++i) {
        AcGePoint2d point;
        double bulge = 0.0;
        (void)first->getPointAt(static_cast<unsigned int>(i), point);
        (void)first->getBulgeAt(static_cast<unsigned int>(i), bulge);
        (void)second->addVertexAt(second->numVerts(),
                                  i == 1   ? b
                                  : i == 2 ? a
                                           : AcGePoint2d(a.x + b.x - point.x, a.y + b.y - point.y),
                                  bulge);
    }
    second->setClosed(Adesk::kTrue);
    for (auto _ : state) {
        const std::unique_ptr<AcDbCurve> merged(
            MergeContoursIfTheyHaveOneComonSegment(first.get(), second.get()));
        if (!merged) state.SkipWithError("not merged");
    }
}
BENCHMARK(MergeRings)->Apply(sizes);
BENCHMARK(MergeRefusedByBoxes);

#ifdef VEXO_PEER_CGAL

using Kernel = CGAL::Exact_predicates_exact_constructions_kernel;
using Traits = CGAL::Gps_circle_segment_traits_2<Kernel>;
using PeerSet = CGAL::General_polygon_set_2<Traits>;
using PeerPolygon = Traits::General_polygon_2;

/// Arcs go through three points of the host's arc: exact numbers have no tangent of an eighth turn.
PeerPolygon peerPolygonOf(const AcDbPolyline& polyline) {
    PeerPolygon polygon;
    const Traits traits;
    const ContourLoop loop = loopOf(polyline);
    const std::size_t count = loop.vertices.size();
    for (std::size_t i = 0; i < count; ++i) {
        const ContourVertex& start = loop.vertices[i];
        const ContourVertex& end = loop.vertices[(i + 1) % count];
        const Kernel::Point_2 from(start.x, start.y);
        const Kernel::Point_2 to(end.x, end.y);
        if (start.bulge == 0.0) {
            polygon.push_back(Traits::X_monotone_curve_2(from, to));
            continue;
        }
        const Kernel::Point_2 middle((start.x + end.x + start.bulge * (end.y - start.y)) / 2,
                                     (start.y + end.y - start.bulge * (end.x - start.x)) / 2);
        std::vector<CGAL::Object> parts;
        traits.make_x_monotone_2_object()(Traits::Curve_2(from, middle, to), std::back_inserter(parts));
        for (const CGAL::Object& part : parts) {
            Traits::X_monotone_curve_2 curve;
            if (CGAL::assign(curve, part)) polygon.push_back(curve);
        }
    }
    return polygon;
}

double processorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

void peerCommonSurface(benchmark::State& state, const Pair& pair) {
    int rounds = 0;
    const double begin = processorSeconds();
    for (auto _ : state) {
        // Made anew each time, as from a drawing: its numbers remember what was worked out for them before.
        PeerSet common(peerPolygonOf(*pair.first));
        common.intersection(peerPolygonOf(*pair.second));
        if (common.is_empty()) state.SkipWithError("nothing in common");
        ++rounds;
    }
    const double peer = (processorSeconds() - begin) / rounds;
    constexpr int ownRounds = 50;
    const double ownBegin = processorSeconds();
    for (int i = 0; i < ownRounds; ++i)
        delete getComonSurfaceFromPolylines(pair.first.get(), pair.second.get());
    state.counters["ratio"] = peer / ((processorSeconds() - ownBegin) / ownRounds);
    state.SetComplexityN(state.range(0));
}
void PeerFewCrossings(benchmark::State& state) { peerCommonSurface(state, fewCrossings(size(state))); }
void PeerManyCrossings(benchmark::State& state) { peerCommonSurface(state, manyCrossings(size(state))); }
BENCHMARK(PeerFewCrossings)->Apply(sizes);
BENCHMARK(PeerManyCrossings)->Apply(sizes);

#endif

} // namespace
