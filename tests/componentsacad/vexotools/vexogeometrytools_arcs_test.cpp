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
    const struct {
        double a, b;
        bool less;
    } cases[] = {{0.0, 1e-10, false},        {0.0, 1.1e-10, true},     {1.0, 1.0 + 2e-10, false},
                 {1.0, 1.0 + 3e-10, true},   {1e6, 1e6 + 1e-5, false}, {1e6, 1e6 + 2e-4, true},
                 {-1e6, -1e6 + 1e-5, false}, {0.0, -1.0, false},       {kNaN, 1.0, false}};
    for (const auto& c : cases) EXPECT_EQ(vexo::isDefinitelyLess(c.a, c.b), c.less) << c.a << " < " << c.b;
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

// Every number of an arc, and of parts of it, by its circle and its angles.
TEST(ArcArithmetic, ArcsOfKnownCircles) {
    std::mt19937 random(31);
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    const AcGeMatrix3d mirror =
        AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(1, 2, 0), AcGeVector3d(1, 1, 0)));
    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(0.8, AcGeVector3d(1, 2, 3), AcGePoint3d(4, 4, 4));
    for (int i = 0; i < 4000; ++i) {
        const double offset = i % 2 ? 0.0 : 1e6;
        const AcGePoint3d center(offset + between(-10, 10), offset + between(-10, 10), 0);
        const double radius = between(0.5, 30);
        const double first = between(0, 2 * kPi);
        const double size = between(0.1, 5.5);
        const double sweep = random() % 2 ? size : -size;
        const auto at = [&](double share) {
            const double angle = first + share * sweep;
            return center + radius * AcGeVector3d(std::cos(angle), std::sin(angle), 0);
        };
        const auto bulgeOf = [&](double share) { // to the left of the chord
            return std::copysign(radius * (1 - std::cos(share * size / 2)), -sweep);
        };
        const AcGePoint3d start = at(0), apex = at(0.5), end = at(1);
        const double bulge = bulgeOf(1);
        // What rounds the points moves a flat arc's centre by much more.
        const double near = (1e-12 + 64 * AcGe::ulpOf(offset + 40)) * (1 + radius / start.distanceTo(end));
        const double wide = near * (1 + 1 / size);
        SCOPED_TRACE(testing::Message() << "arc " << i << ", sweep " << sweep << ", radius " << radius);

        EXPECT_NEAR(getBulgeFrom3Points(start, end, apex, kUp), bulge, near);
        EXPECT_NEAR(getBulgeFrom3Points(start, end, apex, -kUp), -bulge, near);
        EXPECT_NEAR(getBulgeFrom3Points(end, start, apex, kUp), -bulge, near);
        EXPECT_NEAR(getBulgeFrom3Points(mirror * start, mirror * end, mirror * apex, kUp), -bulge, near);
        EXPECT_NEAR(getBulgeFrom3Points(turn * start, turn * end, turn * apex, turn * kUp), bulge, near);
        EXPECT_LE(getMiddleOf(start, end, bulge, kUp).distanceTo(apex), near);
        EXPECT_LE(getCenterFromArc(start, end, bulge, kUp).distanceTo(center), wide);
        EXPECT_NEAR(getRadiusFromBulge(start, end, bulge), radius, wide);
        EXPECT_NEAR(getLengthFromCurve(start, end, bulge, kUp), radius * size, wide);
        EXPECT_NEAR(getLengthFromCurve(start, end, apex, kUp), radius * size, wide);
        EXPECT_NEAR(getAcadBulgeFromArc(start, end, bulge), std::tan(sweep / 4), wide / radius);
        EXPECT_NEAR(angleToChord(size, radius), start.distanceTo(end), near);
        const double shorter = std::min(size, 2 * kPi - size);
        EXPECT_NEAR(chordToAngle(angleToChord(shorter, radius), radius), shorter, 1e-7);

        AcGeCircArc3d arc(start, apex, end);
        EXPECT_NEAR(getBulgeFromGeArc(&arc), bulge, wide);
        EXPECT_LE((getBulgeVecFromGeArc(&arc) - (apex - getMiddleOf(start, end))).length(), wide);
        AcGePoint3d middle;
        EXPECT_TRUE(getMiddleOfArc(arc, middle));
        EXPECT_LE(middle.distanceTo(apex), wide);
        for (const double share : {0.6, 0.9}) {
            EXPECT_NEAR(getNewBulge(start, end, bulge, at(share), false), bulgeOf(share), wide);
            EXPECT_NEAR(getNewBulge(start, end, bulge, at(1 - share), true), bulgeOf(share), wide);
            // About the arc's own normal it is to the right.
            EXPECT_NEAR(getNewBulge(arc, at(share), false), -std::abs(bulgeOf(share)), wide);
            EXPECT_NEAR(getNewBulge(arc, at(1 - share), true), -std::abs(bulgeOf(share)), wide);
        }
        for (const bool isByHeight : {false, true}) {
            AcDbArc drawn;
            ASSERT_EQ(isByHeight ? getArcFromCurve(start, end, bulge, kUp, drawn)
                                 : getArcFromCurve(start, end, apex, kUp, drawn),
                      Acad::eOk);
            // The host's arc runs counter-clockwise, so that it comes out negative in its own sense.
            EXPECT_NEAR(getBulgeFromCurve(&drawn), -std::abs(bulge), wide);
            EXPECT_LE(startOf(drawn).distanceTo(sweep > 0 ? start : end), wide);
        }
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
    // The apex stands off level, so that a chord that rises has a lower arc and an upright one none.
    EXPECT_DOUBLE_EQ(getAcadBulgeFromArc(a, AcGePoint3d(3, 0, 4), 1.0), -2 * 0.6 / 5);
    EXPECT_EQ(getAcadBulgeFromArc(a, AcGePoint3d(0, 0, 4), 1.0), 0.0);
    EXPECT_EQ(getAcadBulgeFromArc({1e6, 0, 0}, {1e6 + 2, 0, 0}, 5e-10), 0.0) << "no arc to be seen";
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

TEST(ArcArithmetic, AnglesFoldOnce) {
    const struct {
        double angle, folded;
    } cases[] = {{0.0, 0.0},
                 {-1.0, 2 * kPi - 1.0},
                 {7.0, 7.0 - 2 * kPi},
                 {5e-11, 0.0},
                 {2 * kPi - 5e-11, 0.0},
                 {-7.0, -7.0 + 2 * kPi},
                 {20.0, 20.0 - 2 * kPi}};
    for (const auto& c : cases) EXPECT_DOUBLE_EQ(GetNormalizedAngle(c.angle), c.folded) << c.angle;
    EXPECT_LT(GetNormalizedAngle(-7.0), 0.0);
    EXPECT_TRUE(std::isnan(GetNormalizedAngle(kNaN)));
}

TEST(ArcArithmetic, DecimalsAreRoundedToThoseOfTheStep) {
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        double value, step, result;
    } cases[] = {{1.23456, 0.01, 1.23}, {1.239, 0.01, 1.24}, {-1.239, 0.01, -1.24}, {1.5, 1.0, 2.0},
                 {2.5, 1.0, 2.0},       {17.4, 10.0, 17.0},  {17.4, 0.0, 17.4},     {17.4, -1.0, 17.4},
                 {17.4, kNaN, 17.4},    {1e300, 0.1, 1e300}, {0.1, 1e-300, 0.1},    {infinity, 0.1, infinity},
                 {1.23456, 0.003, 1.23}};
    for (const auto& c : cases)
        EXPECT_EQ(truncateDecimals(c.value, c.step), c.result) << c.value << ", " << c.step;
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
        AcArray<AcGePoint3d> points;
        const auto near = [&](int most) { // in small heaps about the tolerance wide
            return static_cast<int>(random() % (most + 1)) + (static_cast<int>(random() % 5) - 2) * 4e-4;
        };
        for (int i = 0; i < 60; ++i)
            points.append({far[round % 4] + near(3), random() % 40 ? near(3) : kNaN, near(0)});
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
}
