// Booleans of bodies with planar faces: boxes, slabs with openings at once and one by one, crossing
// cylinders; and a long run of random operations that counts what is refused and stops at what is wrong.
#include "randombodies.h"

#include <benchmark/benchmark.h>

#ifdef VEXO_PEER_OCCT
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <TopTools_ListOfShape.hxx>
#include <gp_Ax1.hxx>
#include <gp_Trsf.hxx>
#endif

#include <ctime>

namespace {

using namespace polyhedra;
using hostkit::modeler::combine;

const AcGeMatrix3d genericTurn = AcGeMatrix3d::rotation(0.7, AcGeVector3d(0.3, 0.5, 0.8).normal()) *
                                 AcGeMatrix3d::rotation(0.4, AcGeVector3d(1, 0.2, 0.1).normal());

AcGeMatrix3d placing(bool turned) { return turned ? genericTurn : AcGeMatrix3d(); }

std::optional<Polyhedron> apply(Operation operation, const Polyhedron& a, const Polyhedron& b) {
    const std::array<const Polyhedron*, 1> others{&b};
    return combine(operation, a, others, 1e-6);
}

double threadMilliseconds() {
    timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return now.tv_sec * 1e3 + now.tv_nsec * 1e-6;
}

/// A slab of 10 x 10 x 0.2 and openings of 16 sides through it, in rows.
struct Slab {
    static constexpr int sides = 16;
    static constexpr double size = 10;
    static constexpr double thickness = 0.2;
    int rows;
    double step;
    double radius;

    explicit Slab(int openings)
        : rows(static_cast<int>(std::ceil(std::sqrt(openings))))
        , step(size / rows)
        , radius(0.3 * step) {}

    Outline opening(int i) const {
        return circle((i % rows + 0.5) * step, (i / rows + 0.5) * step, radius, sides);
    }
};

#ifdef VEXO_PEER_OCCT
TopoDS_Shape peerPrism(const Outline& outline, double bottom, double top) {
    BRepBuilderAPI_MakePolygon polygon;
    for (const auto& [x, y] : outline) polygon.Add(gp_Pnt(x, y, bottom));
    polygon.Close();
    return BRepPrimAPI_MakePrism(BRepBuilderAPI_MakeFace(polygon.Wire(), true).Face(),
                                 gp_Vec(0, 0, top - bottom))
        .Shape();
}

// The peer's thread time for the same work, and how many times ours it takes.
template <class Work>
void comparePeer(benchmark::State& state, double own, Work&& work) {
    const double start = threadMilliseconds();
    benchmark::DoNotOptimize(work());
    const double taken = threadMilliseconds() - start;
    state.counters["peer_ms"] = taken;
    state.counters["peer_ratio"] = taken / own;
}
#endif

// The arguments: operation, what the boxes share (0: a face, 1: part of the volume), turned.
void boxes(benchmark::State& state) {
    const AcGeMatrix3d placed = placing(state.range(2) != 0);
    const Polyhedron a = moved(box(0, 0, 0, 1, 1, 1), placed);
    const Polyhedron b =
        moved(state.range(1) == 0 ? box(1, 0, 0, 2, 1, 1) : box(0.5, 0.25, 0, 1.5, 0.75, 1), placed);
    const double start = threadMilliseconds();
    for (auto _ : state) benchmark::DoNotOptimize(apply(static_cast<Operation>(state.range(0)), a, b));
#ifdef VEXO_PEER_OCCT
    const double own = (threadMilliseconds() - start) / static_cast<double>(state.iterations());
    const TopoDS_Shape first = peerPrism({{0, 0}, {1, 0}, {1, 1}, {0, 1}}, 0, 1);
    const TopoDS_Shape second = peerPrism({{1, 0}, {2, 0}, {2, 1}, {1, 1}}, 0, 1);
    if (state.range(0) == 0 && state.range(1) == 0 && state.range(2) == 0)
        comparePeer(state, own, [&] { return BRepAlgoAPI_Fuse(first, second).Shape(); });
#endif
    (void)start;
}

// The arguments: openings, at once (0) or one by one (1), turned. The result's faces and handles are counted.
void openings(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const Slab slab(count);
    const AcGeMatrix3d placed = placing(state.range(2) != 0);
    const Polyhedron whole = moved(box(0, 0, 0, Slab::size, Slab::size, Slab::thickness), placed);
    std::vector<Polyhedron> shapes;
    std::vector<const Polyhedron*> others;
    for (int i = 0; i < count; ++i)
        shapes.push_back(moved(prism(slab.opening(i), 0, Slab::thickness), placed));
    for (const Polyhedron& shape : shapes) others.push_back(&shape);
    std::optional<Polyhedron> result;
    const double start = threadMilliseconds();
    for (auto _ : state) {
        result = state.range(1) == 0 ? combine(Operation::subtract, whole, others, 1e-6) : whole;
        for (std::size_t i = 0; state.range(1) != 0 && result && i < others.size(); ++i)
            result = apply(Operation::subtract, *result, *others[i]);
        if (!result || result->faces.size() != 6u + Slab::sides * shapes.size() ||
            eulerCharacteristic(*result) != 2 - 2 * count) {
            state.SkipWithError("other faces or handles");
            return;
        }
    }
#ifdef VEXO_PEER_OCCT
    if (state.range(0) <= 100 && state.range(1) == 0 && state.range(2) == 0) {
        const double own = (threadMilliseconds() - start) / static_cast<double>(state.iterations());
        comparePeer(state, own, [&] {
            TopTools_ListOfShape first;
            TopTools_ListOfShape tools;
            first.Append(peerPrism({{0, 0}, {Slab::size, 0}, {Slab::size, Slab::size}, {0, Slab::size}}, 0,
                                   Slab::thickness));
            for (int i = 0; i < count; ++i) tools.Append(peerPrism(slab.opening(i), 0, Slab::thickness));
            BRepAlgoAPI_Cut cut;
            cut.SetArguments(first);
            cut.SetTools(tools);
            cut.Build();
            return cut.Shape();
        });
    }
#endif
    (void)start;
}

// The arguments: facets, operation, turned. Equal cylinders that cross at a right angle.
void cylinders(benchmark::State& state) {
    const AcGeMatrix3d placed = placing(state.range(2) != 0);
    const Outline outline = circle(0, 0, 1, static_cast<int>(state.range(0)));
    const Polyhedron upright = prism(outline, -2, 2);
    const Polyhedron a = moved(upright, placed);
    const Polyhedron b =
        moved(moved(upright, AcGeMatrix3d::rotation(std::numbers::pi / 2, AcGeVector3d(1, 0, 0))), placed);
    const double start = threadMilliseconds();
    for (auto _ : state) {
        const auto result = apply(static_cast<Operation>(state.range(1)), a, b);
        if (!result) state.SkipWithError("refused");
        benchmark::DoNotOptimize(result);
    }
#ifdef VEXO_PEER_OCCT
    if (state.range(1) == 0 && state.range(2) == 0) {
        const double own = (threadMilliseconds() - start) / static_cast<double>(state.iterations());
        const TopoDS_Shape first = peerPrism(outline, -2, 2);
        gp_Trsf lying;
        lying.SetRotation(gp_Ax1(gp_Pnt(0, 0, 0), gp_Dir(1, 0, 0)), std::numbers::pi / 2);
        const TopoDS_Shape second = first.Moved(TopLoc_Location(lying));
        comparePeer(state, own, [&] { return BRepAlgoAPI_Fuse(first, second).Shape(); });
    }
#endif
    (void)start;
}

// The argument: how many operations. Stops at the first contradiction.
void randomOperations(benchmark::State& state) {
    ChainReport report;
    for (auto _ : state)
        for (std::uint64_t seed = 1000000; report.operations < state.range(0); ++seed) {
            Chain(seed, report).run();
            if (!report.wrong.empty()) {
                state.SkipWithError(report.wrong.c_str());
                return;
            }
        }
    state.counters["operations"] = static_cast<double>(report.operations);
    state.counters["refused"] = static_cast<double>(report.refused);
}

BENCHMARK(boxes)
    ->ArgNames({"operation", "overlap", "turned"})
    ->ArgsProduct({{0, 1, 2}, {0, 1}, {0, 1}})
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(openings)
    ->ArgNames({"openings", "singly", "turned"})
    ->ArgsProduct({{10, 100}, {0, 1}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(openings)
    ->ArgNames({"openings", "singly", "turned"})
    ->ArgsProduct({{1000}, {0}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(cylinders)
    ->ArgNames({"facets", "operation", "turned"})
    ->ArgsProduct({{100, 300, 1000}, {0, 1, 2}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(randomOperations)
    ->ArgName("operations")
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(120000)
    ->Iterations(1)
    ->Unit(benchmark::kSecond);

} // namespace
