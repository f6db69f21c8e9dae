#include "vexogeometrytools.h"

#include "vexogeometrytools_internal.h"

#include "contourcases.h"
#include "dbarc.h"
#include "dbline.h"
#include "dbpolyline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace VEXOGeometryTools;
using namespace contourcases;

namespace {

const AcGeVector3d kUp = AcGeVector3d::kZAxis;

} // namespace

TEST(ArcArithmetic, ComparisonWidensItsLeftOperandOnly) {
    struct Case {
        double a, b;
        bool less;
    };
    const Case cases[] = {{0.0, 1e-10, false},        {0.0, 1.1e-10, true},     {1.0, 1.0 + 2e-10, false},
                          {1.0, 1.0 + 3e-10, true},   {1e6, 1e6 + 1e-5, false}, {1e6, 1e6 + 2e-4, true},
                          {-1e6, -1e6 + 1e-5, false}, {0.0, -1.0, false},       {kNaN, 1.0, false}};
    for (const Case& c : cases) EXPECT_EQ(isDefinitelyLess(c.a, c.b), c.less) << c.a << " < " << c.b;
}

TEST(ArcArithmetic, FindsTheFirstValueWithinATolerance) {
    AcArray<double> values;
    EXPECT_EQ(findValueInDoubleArray(values, 1.0), -1);
    for (const double value : {kNaN, 2.0, 1.0005, 1.0}) values.append(value);
    EXPECT_EQ(findValueInDoubleArray(values, 1.0), 2);
    EXPECT_EQ(findValueInDoubleArray(values, 2.00099), 1);
    EXPECT_EQ(findValueInDoubleArray(values, 2.0011), -1);
    EXPECT_EQ(findValueInDoubleArray(values, kNaN), -1);
}

// One arc by all its numbers: chord from start to end, a point on it, the height, centre, radius and length.
TEST(ArcArithmetic, KnownArcs) {
    struct Case {
        AcGePoint3d start, end, apex, center;
        double bulge, radius, length, hostBulge;
    };
    const double root = std::sqrt(0.5);
    const Case cases[] = {
        {{0, 0, 0}, {2, 0, 0}, {1, 1, 0}, {1, 0, 0}, 1, 1, kPi, -1},
        {{0, 0, 0}, {2, 0, 0}, {1, -1, 0}, {1, 0, 0}, -1, 1, kPi, 1},
        {{1, 0, 0}, {0, 1, 0}, {root, root, 0}, {0, 0, 0}, root - 1, 1, kPi / 2, std::tan(kPi / 8)},
        {{1, 0, 0},
         {0, 1, 0},
         {-root, -root, 0},
         {0, 0, 0},
         1 + root,
         1,
         3 * kPi / 2,
         -std::tan(3 * kPi / 8)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.bulge);
        EXPECT_NEAR(getBulgeFrom3Points(c.start, c.end, c.apex, kUp), c.bulge, 1e-14);
        EXPECT_NEAR(getBulgeFrom3Points(c.start, c.end, c.apex, -kUp), -c.bulge, 1e-14);
        EXPECT_LE(getMiddleOf(c.start, c.end, c.bulge, kUp).distanceTo(c.apex), 1e-14);
        EXPECT_LE(getCenterFromArc(c.start, c.end, c.bulge, kUp).distanceTo(c.center), 1e-14);
        EXPECT_NEAR(getRadiusFromBulge(c.start, c.end, c.bulge), c.radius, 1e-14);
        EXPECT_NEAR(getLengthFromCurve(c.start, c.end, c.bulge, kUp), c.length, 1e-14);
        EXPECT_NEAR(getLengthFromCurve(c.start, c.end, c.apex, kUp), c.length, 1e-14);
        EXPECT_NEAR(getAcadBulgeFromArc(c.start, c.end, c.bulge), c.hostBulge, 1e-14);
        AcGeCircArc3d arc(c.start, c.apex, c.end);
        EXPECT_NEAR(getBulgeFromGeArc(&arc), c.bulge, 1e-14);
        EXPECT_LE((getBulgeVecFromGeArc(&arc) - (c.apex - getMiddleOf(c.start, c.end))).length(), 1e-14);
        AcGePoint3d middle;
        EXPECT_TRUE(getMiddleOfArc(arc, middle));
        EXPECT_LE(middle.distanceTo(c.apex), 1e-14);
        AcDbArc drawn;
        ASSERT_EQ(getArcFromCurve(c.start, c.end, c.apex, kUp, drawn), Acad::eOk);
        // The host's arc runs counter-clockwise, so that it comes out negative from its own start to its own
        // end.
        EXPECT_NEAR(getBulgeFromCurve(&drawn), -std::abs(c.bulge), 1e-14);
        EXPECT_LE(startOf(drawn).distanceTo(c.bulge > 0 ? c.end : c.start), 1e-14);
    }
    AcDbArc upper;
    AcDbArc lower;
    ASSERT_EQ(getArcFromCurve({0, 0, 0}, {2, 0, 0}, 1.0, kUp, upper), Acad::eOk);
    ASSERT_EQ(getArcFromCurve({0, 0, 0}, {2, 0, 0}, -1.0, kUp, lower), Acad::eOk);
    EXPECT_DOUBLE_EQ(upper.startAngle(), 0.0);
    EXPECT_DOUBLE_EQ(upper.endAngle(), kPi);
    EXPECT_DOUBLE_EQ(lower.startAngle(), kPi);
    EXPECT_DOUBLE_EQ(lower.endAngle(), 0.0);
}

TEST(ArcArithmetic, RoundTripsInEveryPlacement) {
    std::mt19937 random(31);
    double worst = 0.0;
    for (int i = 0; i < 4000; ++i) {
        const Arc arc = randomArc(random, i % 2 ? 0.0 : 1e6);
        SCOPED_TRACE(testing::Message() << "arc " << i << ", bulge " << arc.bulge);
        const AcGePoint3d apex = getMiddleOf(arc.start, arc.end, arc.bulge, kUp);
        const double back = getBulgeFrom3Points(arc.start, arc.end, apex, kUp);
        const double rounding = 1e-12 + 64 * AcGe::ulpOf(arc.start.largestCoordinate());
        worst = std::max(worst, std::abs(back - arc.bulge) / rounding);
        EXPECT_NEAR(back, arc.bulge, rounding * (1 + std::abs(arc.bulge) / arc.start.distanceTo(arc.end)));
        const AcGePoint3d center = getCenterFromArc(arc.start, arc.end, arc.bulge, kUp);
        const double radius = getRadiusFromBulge(arc.start, arc.end, arc.bulge);
        const double allowed = rounding + 64 * AcGe::ulpOf(radius);
        for (const AcGePoint3d& on : {arc.start, arc.end, apex})
            EXPECT_NEAR(center.distanceTo(on), radius, allowed);
        EXPECT_GT(radius, 0.0);
        // The length agrees with the angle that the chord spans, or with the rest of the turn.
        const double angle = chordToAngle(std::min(arc.start.distanceTo(arc.end), 2 * radius), radius);
        const double spanned = std::abs(arc.bulge) > radius ? 2 * kPi - angle : angle;
        EXPECT_NEAR(getLengthFromCurve(arc.start, arc.end, arc.bulge, kUp), spanned * radius, 1e-3);
        EXPECT_NEAR(angleToChord(angle, radius), arc.start.distanceTo(arc.end), allowed);
    }
    RecordProperty("worst_bulge_error_in_64_ulps", std::to_string(worst));
    EXPECT_LT(worst, 8.0);
}

TEST(ArcArithmetic, HostBulgeIsThatOfTheArcThroughItsPoints) {
    std::mt19937 random(33);
    std::uniform_real_distribution<double> place(-1.0, 1.0);
    std::uniform_real_distribution<double> power(-12.0, 6.0);
    int arcs = 0;
    for (int i = 0; i < 20000; ++i) {
        const double offset = i % 3 == 0 ? 1e6 : 0.0;
        const double rise = i % 5 == 0 ? 1.0 : 0.0;
        const AcGePoint3d start(offset + 100 * place(random), 100 * place(random), rise * place(random));
        const double reach = std::pow(10.0, power(random) / 2);
        const AcGePoint3d end =
            start + reach * AcGeVector3d(place(random), place(random), rise * place(random));
        const double bulge = std::copysign(std::pow(10.0, power(random)), place(random));
        SCOPED_TRACE(testing::Message()
                     << "arc " << i << ", chord " << start.distanceTo(end) << ", bulge " << bulge);
        const double host = getAcadBulgeFromArc(start, end, bulge);
        if (bulge * bulge <= 1e-20) {
            EXPECT_EQ(host, 0.0);
            continue;
        }
        const AcGeVector3d direction = (end - start).normal(AcGeContext::gTol);
        const AcGePoint3d apex =
            start + (end - start) / 2 + bulge * AcGeVector3d::kZAxis.crossProduct(direction);
        const AcGeCircArc3d arc(start, apex, end);
        const double told = std::tan((arc.endAng() - arc.startAng()) / 4);
        // Where rounding leaves the three points an arc at all, its angle is as good as the apex is.
        const double height = apex.distanceTo(start + (end - start) / 2);
        const double rounding = 64 * AcGe::ulpOf(offset + 200 + std::abs(bulge));
        const double relative = rounding / height + rounding / start.distanceTo(end);
        if (relative > 1e-3) continue;
        ++arcs;
        EXPECT_NEAR(host, bulge > 0 ? -told : told, told * (1e-12 + 4 * relative * (1 + told)));
    }
    EXPECT_GT(arcs, 10000);
}

TEST(ArcArithmetic, MovedTurnedMirroredAndReversedArcsKeepTheirBulge) {
    std::mt19937 random(32);
    const AcGeMatrix3d mirror =
        AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(1, 2, 0), AcGeVector3d(1, 1, 0)));
    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(0.8, AcGeVector3d(1, 2, 3), AcGePoint3d(4, 4, 4));
    for (int i = 0; i < 500; ++i) {
        const Arc arc = randomArc(random, 0.0);
        SCOPED_TRACE(arc.bulge);
        const AcGePoint3d apex = getMiddleOf(arc.start, arc.end, arc.bulge, kUp);
        const double allowed = 1e-11 * (1 + arc.bulge * arc.bulge);
        EXPECT_NEAR(getBulgeFrom3Points(arc.end, arc.start, apex, kUp), -arc.bulge, allowed);
        EXPECT_NEAR(getBulgeFrom3Points(mirror * arc.start, mirror * arc.end, mirror * apex, kUp), -arc.bulge,
                    allowed);
        EXPECT_NEAR(getBulgeFrom3Points(turn * arc.start, turn * arc.end, turn * apex, turn * kUp), arc.bulge,
                    allowed);
    }
}

TEST(ArcArithmetic, StraightAndDegenerateInput) {
    const AcGePoint3d a(0, 0, 0);
    const AcGePoint3d b(2, 0, 0);
    for (const AcGeVector3d& normal : {kUp, -kUp, AcGeVector3d::kXAxis, AcGeVector3d::kIdentity})
        EXPECT_EQ(getBulgeFrom3Points(a, b, AcGePoint3d(0.7, 0, 0), normal), 0.0);
    AcDbArc arc(AcGePoint3d(5, 5, 0), 3.0, 1.0, 2.0);
    for (const double bulge : {0.0, 0.9e-10, -0.9e-10, kNaN}) {
        EXPECT_EQ(getArcFromCurve(a, b, bulge, kUp, arc), Acad::eNoArcFromInput) << bulge;
        EXPECT_EQ(getLengthFromCurve(a, b, bulge, kUp), 2.0) << bulge;
        EXPECT_EQ(getAcadBulgeFromArc(a, b, bulge), 0.0) << bulge;
    }
    EXPECT_EQ(static_cast<int>(Acad::eNoArcFromInput), 154);
    EXPECT_EQ(arc.center(), AcGePoint3d(5, 5, 0));
    EXPECT_EQ(arc.radius(), 3.0);
    EXPECT_TRUE(std::isinf(getRadiusFromBulge(a, b, 0.0)));
    EXPECT_TRUE(std::isnan(getCenterFromArc(a, b, 0.0, kUp).x));
    EXPECT_EQ(getMiddleOf(a, a, 1.0, kUp), a);
    AcDbLine line(a, b);
    EXPECT_EQ(getBulgeFromCurve(&line), 0.0);
    EXPECT_EQ(getBulgeFromCurve(nullptr), 0.0);
    EXPECT_EQ(getBulgeFromGeArc(nullptr), 0.0);
    EXPECT_EQ(getBulgeVecFromGeArc(nullptr), AcGeVector3d::kIdentity);
    EXPECT_EQ(getNewBulge(a, b, 1e-11, AcGePoint3d(1, 0, 0), true), 0.0);
}

// The sign is taken against +Z whatever the arc's normal; callers compare with it.
TEST(ArcArithmetic, SignsOutOfTheXYPlaneFollowTheWorld) {
    AcDbArc down(AcGePoint3d(0, 0, 0), -kUp, 1.0, 0.0, kPi);
    EXPECT_NEAR(getBulgeFromCurve(&down), 1.0, 1e-15);
    AcDbArc up(AcGePoint3d(0, 0, 0), kUp, 1.0, 0.0, kPi);
    EXPECT_NEAR(getBulgeFromCurve(&up), -1.0, 1e-15);
    AcGeCircArc3d upright(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, -1), AcGePoint3d(2, 0, 0));
    EXPECT_NEAR(getBulgeFromGeArc(&upright), 1.0, 1e-15);
    AcGeCircArc3d other(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 1), AcGePoint3d(2, 0, 0));
    EXPECT_NEAR(getBulgeFromGeArc(&other), 1.0, 1e-15);
}

TEST(ArcArithmetic, PartOfAnArcKeepsItsCircle) {
    const AcGePoint3d start(3, 0, 0);
    const AcGePoint3d end(-3, 0, 0);
    const AcGeCircArc3d whole(start, AcGePoint3d(0, 3, 0), end);
    for (const double degrees : {95.0, 120.0, 150.0, 170.0}) {
        const double angle = degrees * kPi / 180;
        const AcGePoint3d cut(3 * std::cos(angle), 3 * std::sin(angle), 0);
        SCOPED_TRACE(degrees);
        const double first = getNewBulge(start, end, -3.0, cut, false);
        EXPECT_LE(getCenterFromArc(start, cut, first, kUp).distanceTo(AcGePoint3d::kOrigin), 1e-13);
        EXPECT_NEAR(getLengthFromCurve(start, cut, first, kUp), 3 * angle, 1e-13);
        EXPECT_NEAR(getNewBulge(whole, cut, false), first, 1e-14);
        const AcGePoint3d mirrored(-cut.x, cut.y, 0);
        const double last = getNewBulge(start, end, -3.0, mirrored, true);
        EXPECT_NEAR(last, first, 1e-13);
        EXPECT_NEAR(getNewBulge(whole, mirrored, true), last, 1e-14);
    }
}

TEST(ArcArithmetic, AnglesFoldOnce) {
    struct Case {
        double angle, folded;
    };
    const Case cases[] = {{0.0, 0.0},
                          {1.0, 1.0},
                          {-1.0, 2 * kPi - 1.0},
                          {7.0, 7.0 - 2 * kPi},
                          {2 * kPi, 0.0},
                          {5e-11, 0.0},
                          {2 * kPi - 5e-11, 0.0},
                          {-7.0, -7.0 + 2 * kPi},
                          {20.0, 20.0 - 2 * kPi}};
    for (const Case& c : cases) EXPECT_DOUBLE_EQ(GetNormalizedAngle(c.angle), c.folded) << c.angle;
    EXPECT_LT(GetNormalizedAngle(-7.0), 0.0);
    EXPECT_TRUE(std::isnan(GetNormalizedAngle(kNaN)));
}

TEST(ArcArithmetic, DecimalsAreRoundedToThoseOfTheStep) {
    struct Case {
        double value, step, result;
    };
    const double infinity = std::numeric_limits<double>::infinity();
    const Case cases[] = {{1.23456, 0.01, 1.23}, {1.239, 0.01, 1.24}, {-1.239, 0.01, -1.24},
                          {1.5, 1.0, 2.0},       {2.5, 1.0, 2.0},     {17.4, 10.0, 17.0},
                          {17.4, 0.0, 17.4},     {17.4, -1.0, 17.4},  {17.4, kNaN, 17.4},
                          {1e300, 0.1, 1e300},   {0.1, 1e-300, 0.1},  {infinity, 0.1, infinity},
                          {1.23456, 0.003, 1.23}};
    for (const Case& c : cases)
        EXPECT_EQ(truncateDecimals(c.value, c.step), c.result) << c.value << ", " << c.step;
}

TEST(ArcArithmetic, PointsAreSnappedToTheCircleAndSorted) {
    const AcGeCircArc3d whole(AcGePoint3d(1, 1, 0), kUp, 2.0);
    AcArray<AcGePoint3d> points = pointsOf({{1, 9, 0}, {1, 1, 0}, {-3, 1, 0}, {1.5, 1, 0}});
    getPointsOnCircle(whole, points);
    EXPECT_FALSE(arePointsDiff(points, pointsOf({{3, 1, 0}, {1, 3, 0}, {-1, 1, 0}})));
    // An arc that the line meets once only leaves the point where it is.
    AcArray<AcGePoint3d> one = pointsOf({{9, 1, 0}});
    getPointsOnCircle(AcGeCircArc3d(AcGePoint3d(1, 1, 0), kUp, AcGeVector3d::kXAxis, 2.0, -1.0, 1.0), one);
    EXPECT_EQ(one[0], AcGePoint3d(9, 1, 0));
}

TEST(ArcArithmetic, TangentsTouchTheCircleAtARightAngle) {
    const AcGeCircArc3d circle(AcGePoint3d(2, -1, 0), kUp, 1.5);
    AcGePoint3d first(7, 7, 7);
    AcGePoint3d second(7, 7, 7);
    for (const AcGePoint3d& from :
         {AcGePoint3d(2, -1, 0), AcGePoint3d(2.5, -1, 0), AcGePoint3d(3.5 + 1e-11, -1, 0)})
        EXPECT_FALSE(getArcTangents(circle, from, first, second));
    EXPECT_EQ(first.x, 7.0);
    for (const AcGePoint3d& from : {AcGePoint3d(6, 2, 0), AcGePoint3d(-30, 0, 0), AcGePoint3d(3.6, -1, 0)}) {
        ASSERT_TRUE(getArcTangents(circle, from, first, second));
        for (const AcGePoint3d& touch : {first, second}) {
            EXPECT_NEAR(touch.distanceTo(circle.center()), 1.5, 1e-9);
            EXPECT_NEAR((touch - from).dotProduct(touch - circle.center()), 0.0, 1e-6);
        }
        EXPECT_GT((circle.center() - from).crossProduct(first - from).z, 0.0);
        EXPECT_LT((circle.center() - from).crossProduct(second - from).z, 0.0);
    }
}

TEST(ArcArithmetic, DifferencesOfArcEndsAreSignedLengths) {
    const auto arcOf = [](double start, double end) {
        return AcGeCircArc3d(AcGePoint3d(1, 1, 0), kUp, AcGeVector3d::kXAxis, 2.0, start, end);
    };
    struct Case {
        double start, end, startDifference, endDifference;
    };
    const Case cases[] = {
        {1.0, 2.0, 0.0, 0.0}, {1.2, 2.5, 0.4, 1.0}, {0.7, 1.8, -0.6, -0.4}, {1.1, 1.9, 0.2, -0.2}};
    for (const Case& c : cases) {
        double atStart = kNaN;
        double atEnd = kNaN;
        getArcDifferences(arcOf(1.0, 2.0), arcOf(c.start, c.end), atStart, atEnd);
        EXPECT_NEAR(atStart, c.startDifference, 1e-12) << c.start;
        EXPECT_NEAR(atEnd, c.endDifference, 1e-12) << c.end;
    }
}

TEST(ArcArithmetic, LastSegmentOfAPolylineIsStraightened) {
    AcDbPolyline polyline;
    EXPECT_TRUE(setLastBulgeToZero(&polyline));
    for (int i = 0; i < 3; ++i) polyline.addVertexAt(0, AcGePoint2d(i, i * i), 0.5);
    EXPECT_TRUE(setLastBulgeToZero(&polyline));
    for (unsigned int i = 0; i < 3; ++i) EXPECT_EQ(bulgeOf(polyline, i), i == 2 ? 0.0 : 0.5);
    AcDbLine line;
    EXPECT_FALSE(setLastBulgeToZero(&line));
    EXPECT_FALSE(setLastBulgeToZero(nullptr));
}

namespace {

/// All pairs, as the contract has it.
void clearDoublesPlainly(AcArray<AcGePoint3d>& points, AcArray<AcGeVector3d>& bulges) {
    const AcGeTol tolerance = toleranceOf(0.001, 0.001);
    for (int i = 0; i < points.length() - 1; ++i) {
        for (int j = i + 1; j < points.length(); ++j) {
            if (!points[i].isEqualTo(points[j], tolerance)) continue;
            if (!bulges.isEmpty() && !bulges[i].isEqualTo(bulges[j], tolerance)) continue;
            points.removeAt(j);
            if (!bulges.isEmpty()) bulges.removeAt(j);
            --j;
        }
    }
}

} // namespace

TEST(ClearDooblons, SameResultAsAllPairs) {
    std::mt19937 random(33);
    int removed = 0;
    for (int round = 0; round < 300; ++round) {
        const double far[] = {0.0, 1e6, 1e12, 1e300};
        AcArray<AcGePoint3d> points = clusteredPoints(random, 60, far[round % 4], 0.001);
        AcArray<AcGeVector3d> bulges;
        if (round % 3 != 0)
            for (int i = 0; i < points.length(); ++i)
                bulges.append(AcGeVector3d(0, std::uniform_int_distribution<int>(0, 2)(random) * 0.0008, 0));
        AcArray<AcGePoint3d> expected(points);
        AcArray<AcGeVector3d> expectedBulges(bulges);
        const int before = points.length();
        clearDoublesPlainly(expected, expectedBulges);
        ClearDooblons(points, bulges);
        removed += before - points.length();
        ASSERT_TRUE(areSame(points, expected)) << round;
        ASSERT_TRUE(areSame(bulges, expectedBulges)) << round;
    }
    EXPECT_GT(removed, 1000);
}

TEST(ClearDooblons, MismatchedArraysStay) {
    AcArray<AcGePoint3d> points;
    AcArray<AcGeVector3d> bulges;
    ClearDooblons(points, bulges);
    points = pointsOf({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}});
    bulges.append(AcGeVector3d(1, 0, 0));
    ClearDooblons(points, bulges);
    EXPECT_EQ(points.length(), 3);
    EXPECT_EQ(bulges.length(), 1);
    points.setLogicalLength(2);
    bulges.append(AcGeVector3d(2, 0, 0));
    ClearDooblons(points, bulges);
    EXPECT_EQ(points.length(), 2);
    bulges.removeAll();
    ClearDooblons(points, bulges);
    EXPECT_EQ(points.length(), 1);
}
