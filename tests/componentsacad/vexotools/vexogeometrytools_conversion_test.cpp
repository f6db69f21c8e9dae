#include "vexogeometrytools.h"

#include "contourcases.h"
#include "db2dpolyline.h"
#include "dbarc.h"
#include "dbcircle.h"
#include "dbellipse.h"
#include "dbline.h"
#include "dbspline.h"
#include "gearc2d.h"
#include "gelnsg2d.h"
#include "geray2d.h"
#include "geray3d.h"

#include <gtest/gtest.h>

using namespace VEXOGeometryTools;
using namespace contourcases;

namespace {

const AcGeVector3d kUp = AcGeVector3d::kZAxis;

AcArray<double> numbersOf(const std::vector<double>& list) {
    AcArray<double> numbers;
    for (const double number : list) numbers.append(number);
    return numbers;
}

} // namespace

TEST(Conversion, EveryTakenCurveBecomesAPolylineOfItsShape) {
    AcGePoint3dArray vertices = pointsOf({{0, 0, 0}, {4, 0, 0}, {4, 3, 0}});
    AcGeDoubleArray bulges = numbersOf({0.0, 0.5, -0.2});
    auto downwards =
        std::make_shared<AcDb2dPolyline>(AcDb::k2dSimplePoly, vertices, 0.0, true, 0.0, 0.0, &bulges);
    downwards->setNormal(-kUp);
    const struct {
        const char* name;
        std::shared_ptr<AcDbCurve> curve;
        unsigned int vertices;
    } cases[] = {
        {"light polyline", std::shared_ptr<AcDbCurve>(polylineOf({{0, 0, 0.3}, {4, 1, 0}, {2, 5, -1}}, true)),
         3},
        {"2d polyline",
         std::make_shared<AcDb2dPolyline>(AcDb::k2dSimplePoly, vertices, 0.0, false, 0.0, 0.0, &bulges), 3},
        {"2d polyline seen from below", downwards, 3},
        {"line", std::make_shared<AcDbLine>(AcGePoint3d(1, 2, 0), AcGePoint3d(5, 6, 0)), 2},
        {"circle", std::make_shared<AcDbCircle>(AcGePoint3d(1, 2, 0), kUp, 3.0), 2},
        {"arc", std::make_shared<AcDbArc>(AcGePoint3d(1, 2, 0), 3.0, 1.0, 2.0), 2},
        {"arc across angle 0", std::make_shared<AcDbArc>(AcGePoint3d(1, 2, 0), 3.0, 5.0, 1.0), 2},
        {"arc seen from below", std::make_shared<AcDbArc>(AcGePoint3d(1, 2, 0), -kUp, 3.0, 5.0, 1.0), 2},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::unique_ptr<AcDbPolyline> polyline(ConvertToPolyline(c.curve.get()));
        ASSERT_TRUE(polyline);
        EXPECT_EQ(polyline->numVerts(), c.vertices);
        EXPECT_EQ(polyline->isClosed(), c.curve->isClosed());
        EXPECT_NEAR(lengthOf(*polyline), lengthOf(*c.curve), 1e-12);
        for (int i = 0; i <= 12; ++i) {
            AcGePoint3d original;
            AcGePoint3d converted;
            const double distance = lengthOf(*c.curve) * i / 12;
            ASSERT_EQ(c.curve->getPointAtDist(distance, original), Acad::eOk);
            ASSERT_EQ(polyline->getPointAtDist(distance, converted), Acad::eOk);
            EXPECT_LE(original.distanceTo(converted), 1e-9) << i;
        }
    }
    const AcDbCircle circle(AcGePoint3d(1, 2, 9), kUp, 3.0);
    const std::unique_ptr<AcDbPolyline> halves(ConvertToPolyline(&circle));
    EXPECT_EQ(verticesOf(*halves), (Vertices{{4, 2, 1}, {-2, 2, 1}}));
    EXPECT_EQ(halves->elevation(), 0.0);
    AcDbSpline spline;
    AcDbEllipse ellipse;
    EXPECT_EQ(ConvertToPolyline(&spline), nullptr);
    EXPECT_EQ(ConvertToPolyline(&ellipse), nullptr);
    EXPECT_EQ(ConvertToPolyline(nullptr), nullptr);
}

TEST(Conversion, OldPolylineKeepsWidthsElevationAndLeavesOutControlPoints) {
    AcDb2dPolyline source(AcDb::k2dCubicSplinePoly, AcGePoint3dArray(), 2.5, false);
    source.appendVertex(new AcDb2dVertex(AcGePoint3d(9, 9, 0), 0, 0, 0, 0, AcDb::k2dSplineCtlVertex));
    source.appendVertex(new AcDb2dVertex(AcGePoint3d(0, 0, 0), 0.5, 1.0, 2.0));
    source.appendVertex(new AcDb2dVertex(AcGePoint3d(4, 0, 0), 0.0, 2.0, 3.0, 0, AcDb::k2dSplineFitVertex));
    AcDbPolyline target;
    ASSERT_EQ(convert2DbPolyline(&source, &target), Acad::eOk);
    ASSERT_EQ(target.numVerts(), 2u);
    EXPECT_EQ(widthsOf(target, 0), std::pair(1.0, 2.0));
    EXPECT_EQ(bulgeOf(target, 0), 0.5);
    EXPECT_EQ(target.elevation(), 2.5);
    EXPECT_FALSE(target.isClosed());
    source.makeClosed();
    AcDbPolyline closed;
    ASSERT_EQ(convert2DbPolyline(&source, &closed), Acad::eOk);
    EXPECT_TRUE(closed.isClosed());
    EXPECT_EQ(convert2DbPolyline(&source, nullptr), Acad::eInvalidInput);
    EXPECT_EQ(convert2DbPolyline(nullptr, &target), Acad::eInvalidInput);
    const std::unique_ptr<AcDbPolyline> converted(ConvertToPolyline(&source));
    EXPECT_EQ(converted->numVerts(), 2u);
}

TEST(Conversion, ArraysOfAPolylineAndBackAgain) {
    AcArray<AcGePoint3d> points;
    AcArray<double> bulges;
    std::mt19937 random(51);
    for (int round = 0; round < 100; ++round) {
        const bool closed = round % 2;
        const int count = 2 + round % 20;
        const Vertices vertices = randomContour(random, count, round % 3 ? 0.0 : 1e6);
        ASSERT_EQ(convertPolyline(polylineOf(vertices, closed).get(), points, bulges), Acad::eOk);
        ASSERT_EQ(points.length(), closed ? count + 1 : count);
        ASSERT_EQ(bulges.length(), closed ? count : count - 1);
        for (int i = 0; i < bulges.length(); ++i) {
            const double host = getAcadBulgeFromArc(points[i], points[i + 1], bulges[i]);
            EXPECT_NEAR(host, vertices[static_cast<std::size_t>(i)][2], round % 3 ? 1e-10 : 1e-6) << i;
        }
    }
    AcDbPolyline empty;
    EXPECT_EQ(convertPolyline(&empty, points, bulges), Acad::eOk);
    EXPECT_TRUE(points.isEmpty() && bulges.isEmpty());
    points = pointsOf({{1, 1, 1}});
    EXPECT_EQ(convertPolyline(nullptr, points, bulges), Acad::eInvalidInput);
    EXPECT_EQ(points.length(), 1);
}

TEST(Conversion, PointsOnArcsGiveArcHeightsAsBulges) {
    AcDbPolyline polyline;
    const AcArray<AcGePoint3d> points = pointsOf({{0, 0, 0}, {2, 0, 0}, {6, 0, 0}});
    ASSERT_EQ(ConvertPointsToPolyline(points, pointsOf({{1, 1, 0}, {4, 0, 0}}), kUp, polyline), Acad::eOk);
    ASSERT_EQ(polyline.numVerts(), 3u);
    EXPECT_NEAR(bulgeOf(polyline, 0), 1.0, 1e-15);
    EXPECT_EQ(bulgeOf(polyline, 1), 0.0);
    EXPECT_EQ(bulgeOf(polyline, 2), 0.0);
    EXPECT_EQ(ConvertPointsToPolyline(points, pointsOf({{1, 1, 0}}), kUp, polyline), Acad::eInvalidInput);
    EXPECT_EQ(ConvertPointsToPolyline(pointsOf({}), pointsOf({}), kUp, polyline), Acad::eInvalidInput);
    EXPECT_EQ(polyline.numVerts(), 3u);
    // A middle that is no number has no angle: the segment is straight.
    ASSERT_EQ(
        ConvertPointsToPolyline(pointsOf({{0, 0, 0}, {1, 0, 0}}), pointsOf({{kNaN, 0, 0}}), kUp, polyline),
        Acad::eOk);
    EXPECT_EQ(bulgeOf(polyline, 3), 0.0);
    EXPECT_NE(
        ConvertPointsToPolyline(pointsOf({{0, 0, 0}, {1, kNaN, 0}}), pointsOf({{0, 0, 0}}), kUp, polyline),
        Acad::eOk);
}

TEST(Conversion, CopyTakesVerticesAndNormalOnly) {
    const auto source = polylineOf({{0, 0, 0.5}, {3, 0, 0}, {3, 3, 0}}, true);
    source->setWidthsAt(1, 0.5, 0.25);
    source->setElevation(4.0);
    source->setThickness(2.0);
    source->setNormal(AcGeVector3d(0, 1, 0));
    AcDbPolyline target;
    target.addVertexAt(0, AcGePoint2d(9, 9));
    copyAcDbPolyline(source.get(), &target);
    ASSERT_EQ(target.numVerts(), 3u);
    EXPECT_EQ(widthsOf(target, 1), std::pair(0.5, 0.25));
    EXPECT_EQ(bulgeOf(target, 0), 0.5);
    EXPECT_TRUE(target.isClosed());
    EXPECT_EQ(target.normal(), AcGeVector3d::kYAxis);
    EXPECT_EQ(target.elevation(), 0.0);
    EXPECT_EQ(target.thickness(), 0.0);
    copyAcDbPolyline(&target, &target);
    copyAcDbPolyline(nullptr, &target);
    copyAcDbPolyline(&target, nullptr);
    EXPECT_EQ(target.numVerts(), 3u);
}

TEST(Conversion, SegmentsOfAPolyline) {
    const auto polyline = polylineOf({{0, 0, 0}, {2, 0, 1}, {2, 2, 0}, {2, 2, 0}}, false);
    const struct {
        int index;
        bool found, isArc;
    } cases[] = {{0, true, false},  {1, true, true},   {2, false, false},
                 {3, false, false}, {4, false, false}, {-1, false, false}};
    AcGeLineSeg3d line;
    AcGeCircArc3d arc;
    for (const auto& c : cases) {
        bool isArc = true;
        EXPECT_EQ(getSegmentFromPolyline(polyline.get(), c.index, line, arc, isArc), c.found) << c.index;
        EXPECT_EQ(isArc, c.isArc) << c.index;
    }
    EXPECT_EQ(line.endPoint(), AcGePoint3d(2, 0, 0));
    EXPECT_EQ(arc.center(), AcGePoint3d(2, 1, 0));
    bool isArc = true;
    EXPECT_FALSE(getSegmentFromPolyline(nullptr, 0, line, arc, isArc));
}

TEST(Tessellation, ByChordTolerance) {
    const AcArray<AcGePoint3d> points = pointsOf({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}});
    AcArray<AcGePoint3d> out = pointsOf({{7, 7, 7}});
    AcArray<AcArray<AcGePoint3d>> samples;
    EXPECT_EQ(getTessellatedPoly(points, numbersOf({1}), out, samples, 0.1, kUp), Acad::eInvalidInput);
    EXPECT_EQ(out.length(), 1);
    const AcArray<double> bulges = numbersOf({0, -1, 0, 0});
    ASSERT_EQ(getTessellatedPoly(points, bulges, out, samples, 0.0, kUp), Acad::eOk);
    EXPECT_TRUE(areSame(out, points));
    // (int)(pi / (2 acos((1 - t) / 1))) + 1
    const struct {
        double tolerance;
        int samples;
    } cases[] = {{0.5, 2}, {0.1, 4}, {0.01, 12}, {2.0, 2}, {-1.0, 2}, {kNaN, 2}, {1.0, 2}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.tolerance);
        ASSERT_EQ(getTessellatedPoly(points, bulges, out, samples, c.tolerance, kUp), Acad::eOk);
        ASSERT_EQ(samples.length(), 1);
        ASSERT_EQ(samples[0].length(), c.samples);
        // The start of the segment behind the arc is the arc's own end.
        EXPECT_EQ(out.length(), 2 + c.samples);
        EXPECT_EQ(samples[0].first(), points[1]);
        EXPECT_EQ(samples[0].last(), points[2]);
        for (const AcGePoint3d& sample : samples[0])
            EXPECT_NEAR(sample.distanceTo(AcGePoint3d(2, 1, 0)), 1.0, 1e-12);
    }
    EXPECT_GT(samples[0][samples[0].length() - 1].y, 1.0);
    // Finer than any use: the count is bounded.
    ASSERT_EQ(
        getTessellatedPoly(pointsOf({{0, 0, 0}, {2, 0, 0}}), numbersOf({1e9, 0}), out, samples, 1e-9, kUp),
        Acad::eOk);
    EXPECT_EQ(samples[0].length(), 1000000);
    ASSERT_EQ(getTessellatedPoly(pointsOf({}), numbersOf({}), out, samples, 0.1, kUp), Acad::eOk);
    EXPECT_TRUE(out.isEmpty());
}

TEST(Tessellation, ByCount) {
    AcArray<AcGePoint3d> out;
    AcArray<AcArray<AcGePoint3d>> samples;
    const struct {
        const char* name;
        std::vector<AcGePoint3d> points;
        std::vector<double> bulges;
        int count, expected;
    } cases[] = {
        {"nothing", {}, {}, 5, 0},
        {"one point", {{1, 1, 0}}, {}, 5, 1},
        {"straight", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {0, 0}, 5, 3},
        {"missing bulges", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {}, 5, 3},
        {"arc first", {{0, 0, 0}, {2, 0, 0}, {4, 0, 0}}, {1, 0}, 5, 6},
        {"arc last", {{0, 0, 0}, {2, 0, 0}, {4, 0, 0}}, {0, 1}, 5, 6},
        {"arcs in a row", {{0, 0, 0}, {2, 0, 0}, {4, 0, 0}}, {1, -1}, 5, 10},
        {"no samples", {{0, 0, 0}, {2, 0, 0}}, {1}, 0, 1},
        {"NaN bulge", {{0, 0, 0}, {2, 0, 0}}, {kNaN}, 5, 2},
    };
    for (const auto& c : cases) {
        out = pointsOf({{7, 7, 7}});
        SCOPED_TRACE(c.name);
        EXPECT_EQ(getTessellatedPoly(pointsOf(c.points), numbersOf(c.bulges), out, samples, c.count, kUp),
                  Acad::eOk);
        EXPECT_EQ(out.length(), c.expected);
        if (c.points.empty()) continue;
        EXPECT_EQ(out.last(), c.points.back());
    }
}

TEST(Conversion, KitCurvesAndDrawingCurvesChangePlaces) {
    std::mt19937 random(52);
    std::uniform_real_distribution<double> number(-3, 3);
    for (int i = 0; i < 200; ++i) {
        const AcGeVector3d normal(number(random), number(random), number(random));
        const double start = number(random);
        AcGeCircArc3d arc(AcGePoint3d(number(random), number(random), 0), normal,
                          AcGeVector3d(number(random), 1, number(random)), std::abs(number(random)) + 0.1,
                          start, start + 0.2 + std::abs(number(random)));
        const std::unique_ptr<AcDbCurve> drawn(TransformGe2Db(&arc));
        ASSERT_TRUE(AcDbArc::cast(drawn.get()));
        const std::unique_ptr<AcGeCurve3d> back(TransformDb2Ge(drawn.get()));
        ASSERT_TRUE(back && back->isKindOf(AcGe::kCircArc3d));
        for (const double share : {0.0, 0.3, 1.0}) {
            const AcGePoint3d expected =
                arc.evalPoint(arc.startAng() + share * (arc.endAng() - arc.startAng()));
            AcGePoint3d onDrawn;
            ASSERT_EQ(drawn->getPointAtDist(arc.length() * share, onDrawn), Acad::eOk);
            EXPECT_LE(onDrawn.distanceTo(expected), 1e-9);
            EXPECT_LE(back->distanceTo(expected), 1e-9);
        }
    }
    AcGeLineSeg3d segment(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 5, 6));
    const std::unique_ptr<AcDbCurve> line(TransformGe2Db(&segment));
    const std::unique_ptr<AcGeCurve3d> segmentBack(TransformDb2Ge(line.get()));
    EXPECT_TRUE(segmentBack->isEqualTo(segment));
    AcGeCircArc2d arc2d(AcGePoint2d(3, 4), 2.0, 1.0, 2.0);
    const std::unique_ptr<AcDbCurve> circle(TransformGe2Db(&arc2d));
    EXPECT_NEAR(lengthOf(*circle), 4 * kPi, 1e-12);
    AcGeLineSeg2d segment2d(AcGePoint2d(3, 4), AcGePoint2d(5, 6));
    const std::unique_ptr<AcDbCurve> line2d(TransformGe2Db(&segment2d));
    EXPECT_EQ(AcDbLine::cast(line2d.get())->endPoint(), AcGePoint3d(5, 6, 0));
    AcGeRay3d ray;
    AcGeRay2d ray2d;
    EXPECT_EQ(TransformGe2Db(&ray), nullptr);
    EXPECT_EQ(TransformGe2Db(&ray2d), nullptr);
    EXPECT_EQ(TransformGe2Db(static_cast<AcGeCurve3d*>(nullptr)), nullptr);
    EXPECT_EQ(TransformGe2Db(static_cast<AcGeCurve2d*>(nullptr)), nullptr);
    EXPECT_EQ(TransformDb2Ge(nullptr), nullptr);
    AcDbCircle drawnCircle;
    EXPECT_EQ(TransformDb2Ge(&drawnCircle), nullptr);
}

// Arcs that were mirrored bulge to the same side as before they were joined.
TEST(Conversion, CurvesWithOppositeNormalsAreJoinedInOnePlane) {
    AcDbLine line(AcGePoint3d(-2, 0, 0), AcGePoint3d(0, 0, 0));
    AcDbArc arc(AcGePoint3d(1, 0, 0), -kUp, 1.0, 0.0, kPi / 2);
    ASSERT_LE(startOf(arc).distanceTo(AcGePoint3d(0, 0, 0)), 1e-15);
    ASSERT_LE(endOf(arc).distanceTo(AcGePoint3d(1, 1, 0)), 1e-15);
    const std::unique_ptr<AcDbCurve> joined(concatenateCurves(&line, &arc, false));
    AcGePoint3d onArc;
    ASSERT_EQ(joined->getPointAtParam(1.5, onArc), Acad::eOk);
    EXPECT_LE(onArc.distanceTo(AcGePoint3d(1 - std::sqrt(0.5), std::sqrt(0.5), 0)), 1e-12);
    AcDbSpline spline;
    EXPECT_EQ(concatenateCurves(&line, &spline, true), nullptr);
    EXPECT_EQ(concatenateCurves(&spline, &line, true), nullptr);
    EXPECT_EQ(concatenateCurves(nullptr, &line, true), nullptr);
}

TEST(Conversion, StraightThroughVerticesGo) {
    const struct {
        const char* name;
        std::vector<AcGePoint3d> points;
        bool result;
        std::vector<AcGePoint3d> left;
    } cases[] = {
        {"two points", {{0, 0, 0}, {1, 0, 0}}, false, {{0, 0, 0}, {1, 0, 0}}},
        {"square with middles",
         {{1, 0, 0}, {2, 0, 0}, {2, 1, 0}, {2, 2, 0}, {0, 2, 0}, {0, 0, 0}},
         true,
         {{2, 0, 0}, {2, 2, 0}, {0, 2, 0}, {0, 0, 0}}},
        {"spike stays",
         {{0, 0, 0}, {4, 0, 0}, {2, 0, 0}, {2, 2, 0}},
         true,
         {{0, 0, 0}, {4, 0, 0}, {2, 0, 0}, {2, 2, 0}}},
        {"one place", {{1, 1, 0}, {1, 1, 0}, {1, 1, 0}}, true, {}},
    };
    for (const auto& c : cases) {
        AcArray<AcGePoint3d> points = pointsOf(c.points);
        EXPECT_EQ(removeCoLinearPoints(points), c.result) << c.name;
        EXPECT_TRUE(areSame(points, pointsOf(c.left))) << c.name;
    }
}

TEST(Conversion, FilterKeepsTheOuterTwoFromLeftToRight) {
    const struct {
        std::vector<AcGePoint3d> points, left;
    } cases[] = {{{}, {}},
                 {{{1, 2, 3}}, {{1, 2, 3}, {1, 2, 3}}},
                 {{{0, 0, 0}, {5, 5, 0}, {3, 0, 0}}, {{0, 0, 0}, {3, 0, 0}}},
                 {{{3, 0, 0}, {5, 5, 0}, {0, 0, 0}}, {{0, 0, 0}, {3, 0, 0}}},
                 {{{1, 0, 0}, {1 - 5e-11, 9, 0}}, {{1, 0, 0}, {1 - 5e-11, 9, 0}}}};
    for (const auto& c : cases) {
        AcArray<AcGePoint3d> points = pointsOf(c.points);
        filterArray(points);
        EXPECT_TRUE(areSame(points, pointsOf(c.left))) << c.points.size();
    }
}
