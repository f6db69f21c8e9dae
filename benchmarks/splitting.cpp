// Slabs cut into strips around their openings, cuts along a line and crossings of contours, on small,
// ordinary and large input. Where CGAL is installed it takes the same openings out of the same slab in 20
// strips.
#include "vexogeometrytools.h"

#include "dbxline.h"
#include "ringcontour.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <vector>

#ifdef VEXO_PEER_CGAL
#include <CGAL/Exact_predicates_exact_constructions_kernel.h>
#include <CGAL/General_polygon_set_2.h>
#include <CGAL/Gps_circle_segment_traits_2.h>

#include <iterator>
#include <list>
#endif

using namespace VEXOGeometryTools;

namespace {

struct RoundOpening {
    double x;
    double y;
    double radius;
};

/// A slab and its openings, each in a cell of its own, in the order in which somebody drew them.
struct Slab {
    double width = 0.0;
    double height = 0.0;
    std::vector<RoundOpening> openings;

    /// In five rows when it is long, else in about as many rows as columns.
    explicit Slab(int count, bool isLong = false) {
        const int square = static_cast<int>(std::ceil(std::sqrt(1.5 * count)));
        const int columns = isLong ? (count + 4) / 5 : square;
        const int rows = (count + columns - 1) / columns;
        constexpr double cell = 1000.0;
        width = columns * cell;
        height = rows * cell;
        std::mt19937 random(11);
        std::uniform_real_distribution<double> radius(100.0, 250.0);
        std::uniform_real_distribution<double> place(0.3, 0.7);
        for (int i = 0; i < count; ++i)
            openings.push_back(
                {(i % columns + place(random)) * cell, (i / columns + place(random)) * cell, radius(random)});
        std::shuffle(openings.begin(), openings.end(), random);
    }
    std::unique_ptr<AcDbPolyline> contour() const {
        auto polyline = std::make_unique<AcDbPolyline>(4);
        const AcGePoint2d corners[] = {{0, 0}, {width, 0}, {width, height}, {0, height}};
        for (unsigned int i = 0; i < 4; ++i) polyline->addVertexAt(i, corners[i]);
        polyline->setClosed(Adesk::kTrue);
        return polyline;
    }
    double freeArea() const {
        double area = width * height;
        for (const RoundOpening& opening : openings) area -= AcGe::kPi * opening.radius * opening.radius;
        return area;
    }
};

enum class Shape { kRound, kSquare };

std::unique_ptr<AcDbPolyline> curveOf(const RoundOpening& opening, Shape shape) {
    auto polyline = std::make_unique<AcDbPolyline>();
    const auto add = [&](double x, double y, double bulge) {
        polyline->addVertexAt(polyline->numVerts(), {opening.x + x, opening.y + y}, bulge);
    };
    const double r = opening.radius;
    if (shape == Shape::kRound) {
        add(-r, 0, 1.0);
        add(r, 0, 1.0);
    } else {
        for (const auto& [x, y] : {std::pair(-r, -r), std::pair(r, -r), std::pair(r, r), std::pair(-r, r)})
            add(x, y, 0.0);
    }
    polyline->setClosed(Adesk::kTrue);
    return polyline;
}

double areaOf(const AcArray<void*>& curves) {
    double sum = 0.0;
    for (void* curve : curves) {
        double area = 0.0;
        (void)static_cast<AcDbCurve*>(curve)->getArea(area);
        sum += area;
    }
    return sum;
}

void splitSlab(benchmark::State& state, Shape shape, const AcGeVector3d& direction, bool isLong = false) {
    const Slab slab(static_cast<int>(state.range(0)), isLong);
    const auto contour = slab.contour();
    std::vector<std::unique_ptr<AcDbPolyline>> curves;
    AcArray<void*> holes;
    for (const RoundOpening& opening : slab.openings) {
        curves.push_back(curveOf(opening, shape));
        holes.append(static_cast<AcDbCurve*>(curves.back().get()));
    }
    int strips = 0;
    bool isRight = true;
    for (auto _ : state) {
        AcArray<void*> result = splitContourByHoles(AcGePoint3d::kOrigin, direction, contour.get(), holes);
        state.PauseTiming();
        strips = result.length();
        const double area = areaOf(result);
        isRight = isRight && (shape != Shape::kRound || std::abs(area - slab.freeArea()) <= 1e-8 * area);
        for (void* curve : result) delete static_cast<AcDbCurve*>(curve);
        state.ResumeTiming();
    }
    if (!isRight) state.SkipWithError("the strips are not the slab without its openings");
    state.counters["strips"] = strips;
}

/// A slab that grows in length: a cut meets no more openings than before.
void LongSlabWithRoundOpenings(benchmark::State& state) {
    splitSlab(state, Shape::kRound, AcGeVector3d::kXAxis, true);
}
BENCHMARK(LongSlabWithRoundOpenings)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

/// A slab that grows both ways: each cut runs across it, and the pieces that an opening reaches into grow
/// with the side of the slab.
void SlabWithRoundOpenings(benchmark::State& state) { splitSlab(state, Shape::kRound, AcGeVector3d::kXAxis); }
BENCHMARK(SlabWithRoundOpenings)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void SlabWithRoundOpeningsAslant(benchmark::State& state) {
    splitSlab(state, Shape::kRound, AcGeVector3d(2, 1, 0));
}
BENCHMARK(SlabWithRoundOpeningsAslant)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void SlabWithSquareOpenings(benchmark::State& state) {
    splitSlab(state, Shape::kSquare, AcGeVector3d::kXAxis);
}
BENCHMARK(SlabWithSquareOpenings)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

/// A wavy round contour, every third side an arc.
std::unique_ptr<AcDbPolyline> contourOf(int count, double shift) {
    return ringOf(count, shift, 0.2, [](int i) { return i % 2 ? 10000.0 : 9990.0; });
}

void CutByLine(benchmark::State& state) {
    const auto contour = contourOf(static_cast<int>(state.range(0)), 0.0);
    AcDbXline line;
    line.setBasePoint(AcGePoint3d(1234.5, 0, 0));
    line.setUnitDir(AcGeVector3d::kYAxis);
    for (auto _ : state) {
        AcArray<void*> halves = splitContourByLine(contour.get(), line);
        if (halves.length() != 2) state.SkipWithError("no cut");
        for (void* half : halves) delete static_cast<AcDbCurve*>(half);
    }
}
BENCHMARK(CutByLine)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

void crossings(benchmark::State& state, double shift) {
    const auto first = contourOf(static_cast<int>(state.range(0)), 0.0);
    const auto second = contourOf(static_cast<int>(state.range(0)), shift);
    int found = 0;
    for (auto _ : state) found = intersectPolyLines(first.get(), second.get()).length();
    if (found == 0) state.SkipWithError("no crossings");
    state.counters["points"] = found;
}

void FewCrossings(benchmark::State& state) { crossings(state, 5000.0); }
BENCHMARK(FewCrossings)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

/// About as many crossings as vertices: the waves run through each other.
void ManyCrossings(benchmark::State& state) { crossings(state, 3.0); }
BENCHMARK(ManyCrossings)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

#ifdef VEXO_PEER_CGAL

using Kernel = CGAL::Exact_predicates_exact_constructions_kernel;
using Traits = CGAL::Gps_circle_segment_traits_2<Kernel>;
using PolygonSet = CGAL::General_polygon_set_2<Traits>;

Traits::Polygon_2 boxPolygon(double x1, double y1, double x2, double y2) {
    const Kernel::Point_2 corners[] = {{x1, y1}, {x2, y1}, {x2, y2}, {x1, y2}};
    Traits::Polygon_2 polygon;
    for (int i = 0; i < 4; ++i)
        polygon.push_back(Traits::X_monotone_curve_2(corners[i], corners[(i + 1) % 4]));
    return polygon;
}

Traits::Polygon_2 circlePolygon(const RoundOpening& opening) {
    Traits traits;
    const Kernel::Circle_2 circle(Kernel::Point_2(opening.x, opening.y),
                                  CGAL::square(Kernel::FT(opening.radius)));
    std::list<CGAL::Object> halves;
    traits.make_x_monotone_2_object()(Traits::Curve_2(circle), std::back_inserter(halves));
    Traits::Polygon_2 polygon;
    for (const CGAL::Object& half : halves) {
        Traits::X_monotone_curve_2 curve;
        CGAL::assign(curve, half);
        polygon.push_back(curve);
    }
    return polygon;
}

void PeerRoundOpeningsIn20Strips(benchmark::State& state) {
    const Slab slab(static_cast<int>(state.range(0)));
    std::vector<Traits::Polygon_2> circles;
    for (const RoundOpening& opening : slab.openings) circles.push_back(circlePolygon(opening));
    constexpr int strips = 20;
    for (auto _ : state) {
        PolygonSet openings;
        openings.join(circles.begin(), circles.end());
        for (int i = 0; i < strips; ++i) {
            PolygonSet strip(
                boxPolygon(0, slab.height * i / strips, slab.width, slab.height * (i + 1) / strips));
            strip.difference(openings);
            benchmark::DoNotOptimize(strip.number_of_polygons_with_holes());
        }
    }
}
BENCHMARK(PeerRoundOpeningsIn20Strips)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

#endif

} // namespace
