#include "vexogeometrytools.h"

#include "contourcases.h"
#include "db2dpolyline.h"
#include "dbcircle.h"
#include "dbspline.h"

#include <gtest/gtest.h>

using namespace VEXOGeometryTools;
using namespace contourcases;

namespace {

AcArray<AcGePoint2d> flat(const AcArray<AcGePoint3d>& points) {
    AcArray<AcGePoint2d> result;
    for (const AcGePoint3d& point : points) result.append(AcGePoint2d(point.x, point.y));
    return result;
}

const std::vector<AcGePoint3d> kSquare = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};

} // namespace

TEST(Measures, AreasByTheirFormula) {
    const std::vector<AcGePoint3d> clockwise(kSquare.rbegin(), kSquare.rend());
    std::vector<AcGePoint3d> repeated(kSquare);
    repeated.push_back(kSquare[0]);
    const struct {
        const char* name;
        std::vector<AcGePoint3d> points;
        double area;
    } cases[] = {{"nothing", {}, 0.0},
                 {"a point", {{3, 4, 0}}, 0.0},
                 {"two points", {{0, 0, 0}, {5, 5, 0}}, 0.0},
                 {"square", kSquare, 1.0},
                 {"clockwise square", clockwise, -1.0},
                 {"square with its first point again", repeated, 1.0},
                 {"triangle out of the plane", {{0, 0, 5}, {2, 0, -7}, {0, 3, 1}}, 3.0}};
    for (const auto& c : cases) {
        const AcArray<AcGePoint3d> points = pointsOf(c.points);
        SCOPED_TRACE(c.name);
        EXPECT_EQ(getSignedArea(points), c.area);
        EXPECT_EQ(getSignedArea(flat(points)), c.area);
        EXPECT_EQ(getArea(points), std::abs(c.area));
        EXPECT_EQ(getArea(flat(points)), std::abs(c.area));
        double surface = 7.0;
        EXPECT_EQ(calculateSurface(points, surface), c.points.empty() ? Acad::eInvalidInput : Acad::eOk);
        EXPECT_EQ(surface, c.points.empty() ? 7.0 : std::abs(c.area));
    }
    EXPECT_EQ(static_cast<int>(Acad::eInvalidInput), 3);
    EXPECT_TRUE(std::isnan(getArea(pointsOf({{0, 0, 0}, {kNaN, 0, 0}, {1, 1, 0}}))));
}

TEST(Measures, SenseOfRandomContoursInEveryPlacement) {
    std::mt19937 random(41);
    const AcGeMatrix3d mirror = AcGeMatrix3d::mirroring(AcGePlane::kYZPlane());
    for (int round = 0; round < 200; ++round) {
        const Vertices contour = randomContour(random, 3 + round % 40, round % 2 ? 0.0 : 1e6);
        SCOPED_TRACE(round);
        const Outline outline(contour);
        EXPECT_EQ(IsCCW(outline.points, outline.bulges), 0);
        EXPECT_GT(getSignedArea(outline.points), 0.0);
        const auto closed = polylineOf(contour, true);
        EXPECT_FALSE(isContourClockWise(closed.get()));
        EXPECT_FALSE(isContourClockWise(polylineOf(contour, false).get()));
        const Outline back(reversed(contour));
        EXPECT_EQ(IsCCW(back.points, back.bulges), 1);
        EXPECT_TRUE(isContourClockWise(polylineOf(reversed(contour), true).get()));
        // A mirror, or a look from below, turns the sense.
        ASSERT_EQ(closed->transformBy(mirror), Acad::eOk);
        EXPECT_TRUE(isContourClockWise(closed.get()));
        ASSERT_EQ(closed->transformBy(AcGeMatrix3d::rotation(kPi, AcGeVector3d::kXAxis)), Acad::eOk);
        EXPECT_FALSE(isContourClockWise(closed.get()));
    }
}

TEST(Measures, SenseOfOtherCurvesAndBadInput) {
    AcDbCircle drawn(AcGePoint3d(3, 3, 0), AcGeVector3d::kZAxis, 2.0);
    EXPECT_FALSE(isContourClockWise(&drawn));
    AcGePoint3dArray points = pointsOf({{0, 0, 0}, {0, 2, 0}, {2, 2, 0}, {2, 0, 0}});
    AcDb2dPolyline old(AcDb::k2dSimplePoly, points, 0.0, true);
    EXPECT_TRUE(isContourClockWise(&old));
    old.setNormal(-AcGeVector3d::kZAxis);
    EXPECT_FALSE(isContourClockWise(&old));
    EXPECT_FALSE(isContourClockWise(nullptr));
    AcDbSpline spline;
    EXPECT_FALSE(isContourClockWise(&spline));
    AcDbPolyline empty;
    EXPECT_FALSE(isContourClockWise(&empty));
    AcArray<AcGeVector3d> bulges;
    EXPECT_EQ(IsCCW(AcArray<AcGePoint3d>(), bulges), 0);
    EXPECT_EQ(IsCCW(points, bulges), 0);
    bulges.setLogicalLength(4);
    EXPECT_EQ(IsCCW(points, bulges), 1);
    points[2].x = kNaN;
    EXPECT_EQ(IsCCW(points, bulges), 0);
}

TEST(Measures, SenseOfAHalfDiscComesFromItsArc) {
    auto [points, bulges] = Outline({{0, 0, 1}, {2, 0, 0}});
    EXPECT_EQ(getArea(points), 0.0);
    EXPECT_EQ(IsCCW(points, bulges), 0);
    bulges[0].y = 1;
    EXPECT_EQ(IsCCW(points, bulges), 1);
    bulges[0].y = 1e-11;
    EXPECT_EQ(IsCCW(points, bulges), 0);
}

TEST(Measures, GravityCentreOfHalfCirclesIsANumberForEveryRadius) {
    std::mt19937 random(42);
    for (int i = 0; i < 2000; ++i) {
        const double radius = std::uniform_real_distribution<double>(0.01, 100)(random);
        const Outline half({{-radius, 0, 1}, {radius, 0, 0}});
        EXPECT_NEAR(GetGravityCenter(half.points, half.bulges).y, (-radius - 4 / kPi) / 3, 1e-6 * radius)
            << radius;
    }
    auto [points, bulges] = Outline({{0, 0, 0}, {4, 0, 0}, {4, 2, 0}, {0, 2, 0}});
    EXPECT_EQ(GetGravityCenter(points, bulges), AcGePoint3d(2, 1, 0));
    bulges.removeLast();
    EXPECT_EQ(GetGravityCenter(points, bulges), AcGePoint3d::kOrigin);
    EXPECT_EQ(GetGravityCenter(AcArray<AcGePoint3d>(), AcArray<AcGeVector3d>()), AcGePoint3d::kOrigin);
    points[1] = points[0];
    bulges = Outline({{0, 0, 0}, {4, 0, 1}, {4, 2, 0}, {0, 2, 0}}).bulges;
    bulges[0] = AcGeVector3d(0, -2, 0);
    EXPECT_FALSE(std::isnan(GetGravityCenter(points, bulges).x)) << "an arc without a chord";
}

TEST(Measures, NormalOfTheFirstIndependentPoints) {
    const AcGeVector3d none;
    const struct {
        const char* name;
        std::vector<AcGePoint3d> points;
        AcGeVector3d normal;
    } cases[] = {{"nothing", {}, none},
                 {"two points", {{0, 0, 0}, {1, 0, 0}}, none},
                 {"one place", {{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, none},
                 {"on a line", {{0, 0, 0}, {1, 1, 1}, {2, 2, 2}, {-3, -3, -3}}, none},
                 {"counter-clockwise", kSquare, AcGeVector3d::kZAxis},
                 {"repeated start", {{0, 0, 0}, {0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, AcGeVector3d::kZAxis},
                 {"clockwise, late", {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {5, -1, 0}}, -AcGeVector3d::kZAxis},
                 {"upright", {{0, 0, 0}, {0, 1, 0}, {0, 0, 1}}, AcGeVector3d::kXAxis}};
    for (const auto& c : cases) EXPECT_EQ(getNormalFromPoints(pointsOf(c.points)), c.normal) << c.name;
}

TEST(Measures, PointsAreMovedOnToAPlaneAlongADirection) {
    const AcGePlane plane(AcGePoint3d(0, 0, 1), AcGeVector3d(0, 1, 1));
    AcArray<AcGePoint3d> points = pointsOf({{1, 2, 3}, {4, 5, 6}, {7, 8, -9}});
    const AcArray<AcGePoint3d> before(points);
    MakePlanarPolygon(points, plane, AcGeVector3d(1, 0, 0));
    EXPECT_TRUE(areSame(points, before));
    MakePlanarPolygon(points, plane, AcGeVector3d());
    EXPECT_TRUE(areSame(points, before));
    MakePlanarPolygon(points, plane, AcGeVector3d(0, 0, -0.01));
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(plane.isOn(points[i])) << i;
        EXPECT_EQ(points[i].x, before[i].x) << i;
        EXPECT_EQ(points[i].y, before[i].y) << i;
    }
    AcArray<AcGePoint3d> two = pointsOf({{1, 2, 3}, {4, 5, 6}});
    MakePlanarPolygon(two, plane, AcGeVector3d(0, 0, 1));
    EXPECT_EQ(two[0].z, 3.0);
}
