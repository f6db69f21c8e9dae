// Points and contours: inside, on, outside. The plain forms here are the contract's steps written down one by
// one; the library's must give the same answers on any input.
#include "vexogeometrytools.h"

#include "contourcases.h"
#include "dbcircle.h"
#include "dbline.h"
#include "dbxline.h"
#include "geell2d.h"
#include "scanlines.h"

#include <gtest/gtest.h>

using namespace VEXOGeometryTools;
using namespace contourcases;

namespace {

constexpr double kOffsets[] = {0.0, 1e6};

bool isDefinitelyBelow(double a, double b) { return a + std::abs(a) * 1e-10 + 1e-10 < b; }
bool isBelowNarrowed(double a, double b) { return a < b - (std::abs(b) * 1e-10 + 1e-10); }
bool isNearby(double a, double b) { return (a - b) * (a - b) <= 1e-20; }

int interiorPlainly(const AcArray<AcGePoint3d>& polygon, const AcGePoint3d& q) {
    const auto atMost = [](double x, double y) { return x <= y + std::abs(y) * 1e-10 + 1e-10; };
    int total = 0;
    const int n = polygon.length();
    for (int i = 0; i < n; ++i) {
        const AcGePoint3d a = polygon[i];
        const AcGePoint3d b = polygon[(i + 1) % n];
        const AcGePoint3d c = polygon[(i + n - 1) % n];
        if (isNearby(a.x, q.x) && isNearby(a.y, q.y)) return 1;
        if (isNearby(a.x, q.x) && isNearby(b.x, q.x) &&
            ((atMost(a.y, q.y) && atMost(q.y, b.y)) || (atMost(b.y, q.y) && atMost(q.y, a.y))))
            return 1;
        if ((isBelowNarrowed(a.x, q.x) && isBelowNarrowed(q.x, b.x)) ||
            (isBelowNarrowed(b.x, q.x) && isBelowNarrowed(q.x, a.x))) {
            const double y = a.y + (b.y - a.y) * ((q.x - a.x) / (b.x - a.x));
            if (isNearby(q.y, y)) return 1;
            total += isDefinitelyBelow(y, q.y);
        }
        if (isNearby(a.x, q.x) && isDefinitelyBelow(a.y, q.y))
            total += isDefinitelyBelow(q.x, c.x) + isDefinitelyBelow(q.x, b.x);
    }
    return total % 2;
}

/// The segments of a closed contour as 2d curves.
struct Ring {
    std::vector<std::unique_ptr<AcGeCurve2d>> owned;
    std::vector<AcGeCurve2d*> curves;

    explicit Ring(const Vertices& vertices) {
        for (const scanlines::Segment& segment :
             scanlines::contourOf(*polylineOf(vertices, true), AcGePoint2d::kOrigin))
            owned.push_back(scanlines::curveOf(segment));
        for (const auto& curve : owned) curves.push_back(curve.get());
    }
};

TEST(InteriorPoint, EqualsPlainFormOnLatticesAndNaN) {
    std::mt19937 random(11);
    int inside = 0;
    for (int round = 0; round < 20000; ++round) {
        const double offset = round % 5 ? 0.0 : 1e6;
        const auto coordinate = [&] { return onLattice(random, 4, offset, 0.5e-10); };
        AcArray<AcGePoint3d> polygon;
        // Long polygons wander on one side of the point for a while, so that corners are passed over.
        const int count = static_cast<int>(random() % (round % 3 ? 8 : 90));
        for (int i = 0; i < count; ++i) {
            const double far = count > 20 && (i / 15) % 2 ? 3.0 : 0.0;
            polygon.append({coordinate() + far, coordinate(), 0.0});
            if (random() % 60 == 0) polygon.last().x = kNaN;
        }
        const AcGePoint3d q(coordinate(), coordinate(), 0.0);
        ASSERT_EQ(IsInteriorPoint(polygon, q), interiorPlainly(polygon, q)) << "round " << round;
        inside += interiorPlainly(polygon, q);
    }
    EXPECT_GT(inside, 4000);
}

TEST(InsideTests, AgreeWithWindingNumberAwayFromBoundary) {
    std::mt19937 random(5);
    int asked = 0;
    for (const double offset : kOffsets)
        for (int round = 0; round < 30; ++round) {
            Vertices vertices = randomContour(random, 5 + round, offset);
            if (round % 2) vertices = reversed(vertices);
            if (round % 3 == 0) // a polygon
                for (auto& vertex : vertices) vertex[2] = 0.0;
            const auto polyline = polylineOf(vertices, true);
            const AcArray<AcGePoint3d> polygon = Outline(vertices).points;
            const scanlines::Contour contour = scanlines::contourOf(*polyline, {0, 0});
            const Ring ring(vertices);
            std::uniform_real_distribution<double> coordinate(offset - 11, offset + 11);
            for (int k = 0; k < 40; ++k) {
                const AcGePoint2d q(coordinate(random), coordinate(random));
                const AcGePoint3d point(q.x, q.y, 0.0);
                AcGePoint3d closest;
                ASSERT_EQ(polyline->getClosestPointTo(point, closest), Acad::eOk);
                if (closest.distanceTo(point) < 0.05) continue;
                const bool inside = scanlines::windingAt(contour, q.x, q.y) != 0;
                ++asked;
                SCOPED_TRACE(testing::Message() << q.x << ' ' << q.y << " round " << round);
                if (round % 3 == 0) {
                    EXPECT_EQ(IsInteriorPoint(polygon, point), inside);
                }
                EXPECT_EQ(IsInteriorPoint(ring.curves, q), inside);
                EXPECT_EQ(isPointInsideContour(point, polyline.get()), inside);
            }
        }
    EXPECT_GT(asked, 1500);
}

TEST(InteriorPointOfCurves, SeesSoFarAndPassesOthersOver) {
    const Vertices wide = rectangle(-3e8, -1, 6e8, 2);
    EXPECT_EQ(IsInteriorPoint(Ring(wide).curves, {2.5e8, 0}), 1);
    EXPECT_EQ(IsInteriorPoint(Ring(wide).curves, {0, 0}), 0) << "the right side is beyond the ray";
    const Vertices dome = {{0, 0, 0}, {4, 0, 0}, {4, 4, 1}, {0, 4, 0}};
    EXPECT_EQ(IsInteriorPoint(Ring(dome).curves, {2, 4}), 0) << "the arc counts besides the side below it";
    AcGeEllipArc2d ellipse;
    const Ring ring(rectangle(0, 0, 4, 4));
    std::vector<AcGeCurve2d*> mixed = ring.curves;
    mixed.push_back(nullptr);
    mixed.push_back(&ellipse);
    EXPECT_EQ(IsInteriorPoint(mixed, {2, 2}), 1);
    EXPECT_EQ(IsInteriorPoint(mixed, {kNaN, 2}), 0);
    EXPECT_EQ(IsInteriorPoint(std::vector<AcGeCurve2d*>(), {0, 0}), 0);
}

TEST(InsideContour, KindsOfCurvesHeightsAndNothing) {
    AcDbCircle drawn({0, 0, 5}, AcGeVector3d::kZAxis, 2.0);
    EXPECT_TRUE(isPointInsideContour({0.5, 0.3, 0}, &drawn)) << "a contour is taken at elevation 0";
    EXPECT_FALSE(isPointInsideContour({0.5, 0.3, 5}, &drawn));
    EXPECT_FALSE(isPointInsideContour({0.5, 2.3, 0}, &drawn));
    const auto square = panel(0, 0, 4, 4);
    EXPECT_FALSE(isPointInsideContour({2, -1, 0}, square.get())) << "below the box, over its lower side";
    EXPECT_TRUE(isPointInsideContour({2, 1, 0}, square.get()));
    (void)square->setElevation(5.0);
    EXPECT_TRUE(isPointInsideContour({2, 1, 0}, square.get())) << "polylines too";
    EXPECT_FALSE(isPointInsideContour({2, 1, 5}, square.get()));
    const auto open = polylineOf(corners({0, 4, 0, 0, 4, 0, 4, 4}), false);
    EXPECT_TRUE(isPointInsideContour({2, 5, 0}, open.get())) << "an open curve is asked as it is";
    AcDbXline line;
    AcDbPolyline empty;
    for (AcDbCurve* none : std::initializer_list<AcDbCurve*>{nullptr, &line, &empty})
        EXPECT_FALSE(isPointInsideContour({0, 0, 0}, none));
    EXPECT_FALSE(isPointInsideContour({kNaN, 1, 0}, square.get()));
    EXPECT_FALSE(isPointInsideContour({1, kNaN, 0}, square.get()));
}

TEST(OnPolyline, HoldsWithinTheToleranceOfAnySegment) {
    std::mt19937 random(31);
    std::uniform_real_distribution<double> share(0.0, 1.0);
    constexpr double shifts[] = {0, 0.4e-6, 0.98e-6, 1.02e-6, 3e-6, 1e-3};
    int on = 0;
    int parallel = 0;
    for (int round = 0; round < 6000; ++round) {
        const double offset = kOffsets[round % 2];
        Vertices vertices = randomContour(random, 4 + round % 9, offset);
        vertices[1][2] = round % 2 ? 4.0 : 0.0; // far more than half a circle
        const auto polyline = polylineOf(vertices, round % 3 != 0);
        if (round % 4 == 0) (void)polyline->setNormal({0.3, -0.2, 1.0});
        (void)polyline->setElevation(round % 5);
        AcGePoint3d point;
        AcGeVector3d along;
        const double parameter = share(random) * (polyline->numVerts() - 1);
        ASSERT_EQ(polyline->getPointAtParam(parameter, point), Acad::eOk);
        ASSERT_EQ(polyline->getFirstDeriv(parameter, along), Acad::eOk);
        const double shift = shifts[random() % 6];
        point += along.crossProduct(polyline->normal()).normal() * shift;
        const bool isOn = shift < 1e-6;
        ASSERT_EQ(isPointOnPolyLine(polyline.get(), point), isOn) << round;
        on += isOn;
        const bool isView = random() % 2;
        const AcGeVector3d aside = along.crossProduct(polyline->normal());
        const AcGeVector3d view = isView ? -3.0 * along : along + 0.001 * aside;
        const bool isStraight =
            polyline->segType(static_cast<unsigned int>(parameter)) == AcDbPolyline::kLine;
        ASSERT_EQ(isPointOnPolySegParalelWithViewDir(polyline.get(), point, view),
                  isOn && isView && isStraight)
            << round;
        parallel += isOn && isView && isStraight;
    }
    EXPECT_GT(on, 2000);
    EXPECT_GT(parallel, 500);
}

TEST(OnPolyline, OpenChordVerticesAndNothing) {
    const auto open = polylineOf(corners({0, 0, 4, 0, 4, 4}), false);
    const auto closed = polylineOf(corners({0, 0, 4, 0, 4, 4}), true);
    EXPECT_FALSE(isPointOnPolyLine(open.get(), {2, 2, 0}));
    EXPECT_TRUE(isPointOnPolyLine(closed.get(), {2, 2, 0}));
    EXPECT_FALSE(isPointOnPolyLine(open.get(), {2, 0, 1}));
    EXPECT_TRUE(isPointOnPolyLine(open.get(), {-0.9e-6, 0, 0})) << "as near to an end as to a side";
    EXPECT_FALSE(isPointOnPolySegParalelWithViewDir(open.get(), {2, 0, 0}, AcGeVector3d::kIdentity));
    AcDbPolyline empty;
    EXPECT_FALSE(isPointOnPolyLine(&empty, {0, 0, 0}));
    EXPECT_FALSE(isPointOnPolyLine(nullptr, {0, 0, 0}));
    EXPECT_FALSE(isPointOnPolySegParalelWithViewDir(nullptr, {0, 0, 0}, AcGeVector3d::kXAxis));
    EXPECT_FALSE(isPointOnPolyLine(closed.get(), {kNaN, 0, 0}));
}

TEST(PerpendicularVector, PointsIntoTheContourOrNot) {
    for (const double o : {0.0, 1e6, -3e6}) {
        SCOPED_TRACE(o);
        const Vertices vertices = {{o, o, 0}, {o + 4, o, 1}, {o + 4, o + 4, 0}, {o, o + 4, 0}};
        // A piece as a cut leaves it: open, its two ends on the cut.
        const auto piece = polylineOf(vertices, false);
        const auto whole = polylineOf(vertices, true);
        const auto ask = [o](double x1, double y1, double x2, double y2, AcDbPolyline& contour) {
            return isPerpVectorOrientedInsideContour({o + x1, o + y1, 0}, {o + x2, o + y2, 0}, &contour);
        };
        EXPECT_TRUE(ask(0, 4, 0, 0, *piece));
        EXPECT_FALSE(ask(0, 0, 0, 4, *piece));
        // The meeting at the middle itself counts for the left side, whichever that is: odd against odd.
        EXPECT_FALSE(ask(0, 0, 0, 4, *whole));
        EXPECT_FALSE(ask(0, 4, 0, 0, *whole));
        EXPECT_FALSE(ask(0, 2, 0, 2, *piece));
        // A meeting half a millimetre away, where rounding turns directions at a million units.
        EXPECT_EQ(ask(0.0005, 0, 0.0005, 4, *piece), ask(3.9, 0, 3.9, 4, *piece));
    }
    EXPECT_FALSE(isPerpVectorOrientedInsideContour({0, 0, 0}, {0, 4, 0}, nullptr));
    const auto piece = polylineOf({{0, 0, 0}, {4, 0, 0}}, false);
    EXPECT_FALSE(isPerpVectorOrientedInsideContour({kNaN, 0, 0}, {0, 4, 0}, piece.get()));
}

TEST(ContourOutside, CurvesMeetInSpaceAndBoxesAlongZ) {
    const auto slab = panel(0, 0, 10, 10);
    auto raised = panel(8, 8, 15, 15);
    EXPECT_FALSE(isContourOutside(slab.get(), raised.get()));
    (void)raised->setElevation(1.0);
    EXPECT_TRUE(isContourOutside(slab.get(), raised.get())) << "they do not meet in space";
    auto held = panel(2, 2, 5, 5);
    (void)held->setElevation(1.0);
    EXPECT_FALSE(isContourOutside(slab.get(), held.get())) << "boxes are seen along z";
    AcDbPolyline empty;
    EXPECT_FALSE(isContourOutside(slab.get(), &empty));
    EXPECT_FALSE(isContourOutside(nullptr, slab.get()));
    EXPECT_FALSE(isContourOutside(slab.get(), nullptr));
}

TEST(Boxes, OverlapAndUnion) {
    const AcDbExtents box({0, 0, 0}, {2, 2, 2});
    EXPECT_TRUE(IsIntersecting(box, AcDbExtents({1, 1, 1}, {3, 3, 3})));
    EXPECT_TRUE(IsIntersecting(box, AcDbExtents({0.5, 0.5, 0.5}, {1, 1, 1})));
    EXPECT_TRUE(IsIntersecting(box, AcDbExtents({2, 2, 2}, {3, 3, 3}))) << "a corner in common";
    EXPECT_TRUE(IsIntersecting(AcDbExtents({-1, 0.5, 0.5}, {3, 1, 1}), box)) << "no corner inside";
    for (int axis = 0; axis < 3; ++axis) {
        AcGePoint3d low(1, 1, 1);
        AcGePoint3d high(3, 3, 3);
        low[static_cast<unsigned int>(axis)] = 2.1;
        EXPECT_FALSE(IsIntersecting(box, AcDbExtents(low, high))) << axis;
        EXPECT_FALSE(IsIntersecting(AcDbExtents(low, high), box)) << axis;
    }
    EXPECT_FALSE(IsIntersecting(box, AcDbExtents()));
    EXPECT_FALSE(IsIntersecting(box, AcDbExtents({kNaN, 0, 0}, {1, 1, 1})));

    AcDbLine line({0, 0, 1}, {4, 0, 1});
    AcDbCircle circle({10, 0, 0}, AcGeVector3d::kZAxis, 2.0);
    AcDbPolyline empty;
    AcDbExtents extents({7, 7, 7}, {8, 8, 8});
    EXPECT_FALSE(getEntitiesExtents(curvesOf({}), extents));
    EXPECT_FALSE(getEntitiesExtents(curvesOf({nullptr, &empty}), extents));
    EXPECT_EQ(extents.minPoint(), AcGePoint3d(7, 7, 7));
    EXPECT_TRUE(getEntitiesExtents(curvesOf({nullptr, &empty, &line, &circle}), extents));
    EXPECT_EQ(extents.minPoint(), AcGePoint3d(0, -2, 0));
    EXPECT_EQ(extents.maxPoint(), AcGePoint3d(12, 2, 1));
}

TEST(PointsDiff, LengthToleranceAndNaN) {
    const auto points = pointsOf({{1, 2, 0}, {3, 4, 0}});
    for (const auto& [z, areDiff] : {std::pair(0.9e-10, false), {1.1e-10, true}, {kNaN, true}})
        EXPECT_EQ(arePointsDiff(points, pointsOf({{1, 2, 0}, {3, 4, z}})), areDiff) << z;
    EXPECT_TRUE(arePointsDiff(points, pointsOf({{1, 2, 0}})));
    EXPECT_FALSE(arePointsDiff(AcArray<AcGePoint3d>(), AcArray<AcGePoint3d>()));
}

} // namespace
