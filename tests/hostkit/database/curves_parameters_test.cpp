#include "curvecases.h"

#include <cmath>
#include <numbers>

using namespace curvecases;

namespace {

constexpr double kPi = std::numbers::pi;

} // namespace

TEST(CurveParameters, RefuseWhatIsOffTheCurveAndLeaveTheOutput) {
    for (const Case& each : allCurves()) {
        SCOPED_TRACE(each.name);
        const AcDbCurve& curve = *each.curve;
        double parameter = 123.0;
        const AcGePoint3d onCurve = pointAt(curve, paramAt(curve, 0.5));
        const double off = 1e-6 * std::max(1.0, onCurve.largestCoordinate());
        AcGeVector3d along;
        ASSERT_EQ(curve.getFirstDeriv(paramAt(curve, 0.5), along), Acad::eOk);
        EXPECT_EQ(curve.getParamAtPoint(onCurve + along.perpVector().normal() * off, parameter),
                  Acad::eInvalidInput);
        EXPECT_EQ(curve.getParamAtPoint(AcGePoint3d(NAN, 0, 0), parameter), Acad::eInvalidInput);
        EXPECT_EQ(curve.getParamAtDist(-1.0, parameter), Acad::eInvalidInput);
        EXPECT_EQ(curve.getParamAtDist(lengthOf(curve) * 1.01, parameter), Acad::eInvalidInput);
        EXPECT_EQ(parameter, 123.0);
        AcGePoint3d point(7, 7, 7);
        EXPECT_EQ(curve.getPointAtParam(NAN, point), Acad::eInvalidInput);
        EXPECT_TRUE(point == AcGePoint3d(7, 7, 7));
    }
}

TEST(CurveClosestPoint, ProlongsLinesAlongTheirLineAndArcsAlongTheirCircle) {
    const auto check = [](const AcDbCurve& curve, const AcGePoint3d& given, const AcGePoint3d& within,
                          const AcGePoint3d& prolonged) {
        AcGePoint3d closest;
        EXPECT_EQ(curve.getClosestPointTo(given, closest), Acad::eOk);
        EXPECT_TRUE(isNear(closest, within, 1e-12));
        EXPECT_EQ(curve.getClosestPointTo(given, closest, Adesk::kTrue), Acad::eOk);
        EXPECT_TRUE(isNear(closest, prolonged, 1e-12));
    };
    const double root = std::sqrt(26.0);
    check(AcDbLine({0, 0, 0}, {1, 0, 0}), {5, 1, 0}, {1, 0, 0}, {5, 0, 0});
    check(AcDbArc({0, 0, 0}, 2.0, 0.0, kPi / 2.0), {0, -5, 0}, {2, 0, 0}, {0, -2, 0});
    check(*polyline({{0, 0}, {1, 0}, {1, 1}}, false), {-3, 1, 0}, {0, 0, 0}, {-3, 0, 0});
    check(*polyline({{2, 0, 1.0}, {-2, 0}}, false), {1, -5, 0}, {2, 0, 0}, {2 / root, -10 / root, 0});
    check(*polyline({{0, 0}, {1, 0}, {1, 1}}, true), {-3, 1, 0}, {0, 0, 0}, {0, 0, 0});
}

TEST(CurveClosestPoint, CountsAsSeenWhenADirectionIsGiven) {
    const AcDbLine rising(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 100));
    AcGePoint3d closest;
    ASSERT_EQ(rising.getClosestPointTo(AcGePoint3d(5, 3, 0), AcGeVector3d::kZAxis, closest), Acad::eOk);
    EXPECT_TRUE(isNear(closest, AcGePoint3d(5, 0, 50), 1e-10));
    const auto square = polyline({{0, 0}, {4, 0}, {4, 4}, {0, 4}}, true);
    ASSERT_EQ(square->getClosestPointTo(AcGePoint3d(3, 2, 90), AcGeVector3d::kZAxis, closest), Acad::eOk);
    EXPECT_TRUE(isNear(closest, AcGePoint3d(4, 2, 0), 1e-10));
    EXPECT_EQ(square->getClosestPointTo(AcGePoint3d(3, 2, 90), AcGeVector3d(), closest), Acad::eInvalidInput);
}

TEST(CurveParameters, OfLinesWithoutEndsAreDistancesFromTheBasePoint) {
    const auto ray = throughPoint<AcDbRay>({1, 2, 3}, {0, 3, 4});
    const auto xline = throughPoint<AcDbXline>({1, 2, 3}, {0, 3, 4});
    EXPECT_EQ(ray->setUnitDir({0, 0, 0}), Acad::eInvalidInput);
    const AcGePoint3d beyond(1, 5, 7);
    const AcGePoint3d before(1, -1, -1);
    double parameter = NAN;
    EXPECT_EQ(ray->getParamAtPoint(beyond, parameter), Acad::eOk);
    EXPECT_NEAR(parameter, 5.0, 1e-12);
    EXPECT_EQ(ray->getParamAtPoint(before, parameter), Acad::eInvalidInput);
    EXPECT_EQ(xline->getParamAtPoint(before, parameter), Acad::eOk);
    EXPECT_NEAR(parameter, -5.0, 1e-12);
    EXPECT_TRUE(isNear(pointAt(*xline, -5.0), before, 1e-12));
    AcGePoint3d point;
    AcDbExtents extents;
    EXPECT_EQ(ray->getStartPoint(point), Acad::eOk);
    EXPECT_EQ(ray->getEndPoint(point), Acad::eNotApplicable);
    EXPECT_EQ(xline->getStartParam(parameter), Acad::eNotApplicable);
    EXPECT_EQ(xline->getEndPoint(point), Acad::eNotApplicable);
    EXPECT_EQ(xline->getGeomExtents(extents), Acad::eInvalidExtents);
    EXPECT_TRUE(extents.isEmpty());
}

TEST(DegenerateCurves, SayWhatTheyAreAndKeepTheirPoints) {
    const AcDbLine point(AcGePoint3d(1, 2, 3), AcGePoint3d(1, 2, 3));
    EXPECT_TRUE(startOf(point) == AcGePoint3d(1, 2, 3));
    EXPECT_EQ(endParamOf(point), 0.0);
    EXPECT_TRUE(pointAt(point, 0.0) == AcGePoint3d(1, 2, 3));
    AcGeVector3d direction;
    EXPECT_EQ(point.getFirstDeriv(0.0, direction), Acad::eDegenerateGeometry);
    double parameter = NAN;
    EXPECT_EQ(point.getParamAtPoint(AcGePoint3d(1, 2, 3), parameter), Acad::eOk);
    EXPECT_EQ(parameter, 0.0);
    const AcDbPolyline empty;
    AcGePoint3d place;
    EXPECT_EQ(empty.getStartPoint(place), Acad::eDegenerateGeometry);
    EXPECT_EQ(empty.getParamAtPoint(place, parameter), Acad::eDegenerateGeometry);
    EXPECT_EQ(AcDbArc().getPointAtParam(0.0, place), Acad::eDegenerateGeometry);
    EXPECT_EQ(AcDbSpline().getStartPoint(place), Acad::eDegenerateGeometry);
}
