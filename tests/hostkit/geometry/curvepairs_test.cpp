#include "gearc2d.h"
#include "gearc3d.h"
#include "gecint2d.h"
#include "gecint3d.h"
#include "geell3d.h"
#include "geline2d.h"
#include "geline3d.h"
#include "gelnsg2d.h"
#include "gelnsg3d.h"
#include "genurb3d.h"
#include "placements.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using placements::segment;

TEST(CurvePairs, NearestPointsOfTwoCurves) {
    struct Case {
        const AcGeCurve3d *a, *b;
        double distance;
    };
    const AcGeLineSeg3d low = segment(0, 0, 4, 0), high({2, -3, 5}, AcGePoint3d(2, 3, 5)),
                        aside({7, 4, 0}, AcGePoint3d(9, 9, 0));
    const AcGeLine3d above(AcGePoint3d(0, 10, 0), AcGeVector3d(1, 0, 0)),
        tangent(AcGePoint3d(-3, 2, 0), AcGeVector3d(1, 0, 0));
    const AcGeCircArc3d circle(AcGePoint3d(), AcGeVector3d::kZAxis, 2.0),
        far(AcGePoint3d(10, 0, 0), AcGeVector3d::kZAxis, 3.0);
    const AcGeEllipArc3d ellipse(AcGePoint3d(0, 20, 0), AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, 6.0, 4.0);
    for (const Case& c : {Case{&low, &high, 5.0}, Case{&low, &aside, 5.0}, Case{&above, &circle, 8.0},
                          Case{&circle, &far, 5.0}, Case{&tangent, &circle, 0.0}, Case{&above, &ellipse, 6.0},
                          Case{&circle, &ellipse, 14.0}}) {
        AcGePoint3d onB, onA;
        const AcGePoint3d a = c.a->closestPointTo(*c.b, onB), b = c.b->closestPointTo(*c.a, onA);
        EXPECT_NEAR(c.distance, a.distanceTo(onB), 1e-13);
        EXPECT_NEAR(c.distance, b.distanceTo(onA), 1e-13);
        EXPECT_TRUE(c.a->isOn(a) && c.b->isOn(onB) && c.b->isOn(b) && c.a->isOn(onA));
    }
    AcGePoint3d onCircle;
    EXPECT_TRUE(tangent.closestPointTo(circle, onCircle).isEqualTo({0, 2, 0}));
    EXPECT_TRUE(above.closestPointTo(circle, onCircle).isEqualTo({0, 10, 0}));
    EXPECT_TRUE(onCircle.isEqualTo({0, 2, 0}));
    for (double out : {0.0, 1.0e6}) { // from a point outside: by the angle whose sine is 5/13
        const AcGePoint3d from(out + 13.0, -out, 0);
        const AcGeLine3d aimed(from, AcGeVector3d(-12, 5, 0));
        const AcGeCircArc3d round(AcGePoint3d(out, -out, 0), AcGeVector3d::kZAxis, 5.0);
        EXPECT_NEAR(12.0, aimed.closestPointTo(round, onCircle).distanceTo(from), 1e-9);
        EXPECT_TRUE(round.isOn(onCircle));
    }
}

TEST(CurvePairs, AllMeetingsWithRunsAndParams) {
    const AcGeCircArc3d c1(AcGePoint3d(), AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 2.0, 0.0, 5.0);
    const AcGeCircArc3d c2(AcGePoint3d(), -AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 2.0,
                           -AcGe::kTwoPi - 1.0, -4.0);
    const AcGeCurveCurveInt3d both(c1, c2);
    ASSERT_EQ(2, both.overlapCount());
    EXPECT_EQ(4, both.numIntPoints());
    for (int i = 0; i < 2; ++i) {
        AcGeInterval r1, r2;
        both.getOverlapRanges(i, r1, r2);
        EXPECT_NEAR(r1.length(), r2.length(), 1e-14);
        EXPECT_TRUE(c1.evalPoint(r1.lowerBound()).isEqualTo(c2.evalPoint(r2.upperBound())));
        EXPECT_TRUE(c1.evalPoint(r1.upperBound()).isEqualTo(c2.evalPoint(r2.lowerBound())));
    }
    const AcGeCurveCurveInt3d lines(segment(0, 0, 4, 0), segment(6, 0, 1, 0));
    ASSERT_EQ(1, lines.overlapCount());
    EXPECT_TRUE(lines.intPoint(0).isEqualTo({1, 0, 0}) && lines.intPoint(1).isEqualTo({4, 0, 0}));
    EXPECT_EQ(
        0, AcGeCurveCurveInt2d(AcGeLine2d({0, 0}, AcGeVector2d(1, 0)), AcGeLine2d({0, 1}, AcGeVector2d(1, 0)))
               .numIntPoints());
}

TEST(CurvePairs, GridCurvesAgreeInEveryOrderAndMissNoEnd) {
    // Coordinates on a coarse grid: vertices on curves, tangencies, common centres and common runs are all
    // frequent.
    placements::Random random(53);
    const auto gridPoint = [&] {
        return AcGePoint2d(std::floor(random.between(0, 5)), std::floor(random.between(0, 5)));
    };
    const auto gridCurve = [&]() -> std::unique_ptr<AcGeCurve2d> {
        const AcGePoint2d a = gridPoint(), b = gridPoint(), c = gridPoint();
        const double kind = random.between(0, 5), radius = 1.0 + std::floor(random.between(0, 2));
        const double quarter = std::floor(random.between(0, 4)) * AcGe::kPi / 2.0, sweep = AcGe::kPi / 2.0;
        if (kind < 1.0) return std::make_unique<AcGeLineSeg2d>(a, b);
        if (kind < 2.0) return std::make_unique<AcGeLineSeg2d>(a, AcGePoint2d(b.x, a.y));
        if (kind < 3.0) return std::make_unique<AcGeCircArc2d>(a, b, c);
        if (kind < 3.5) return std::make_unique<AcGeCircArc2d>(a, radius);
        if (kind < 4.0) return std::make_unique<AcGeCircArc2d>(a, b, random.between(0, 1) < 0.5 ? 1.0 : -1.0);
        return std::make_unique<AcGeCircArc2d>(AcGePoint2d(2, std::floor(random.between(1, 3))), radius,
                                               quarter, quarter + sweep * std::floor(random.between(1, 4)));
    };
    int meetings = 0, runs = 0;
    for (int i = 0; i < 20000; ++i) {
        const auto a = gridCurve(), b = gridCurve();
        const double out = i % 2 ? 1.0e6 : 0.0;
        a->translateBy({out, -out});
        b->translateBy({out, -out});
        const AcGeCurveCurveInt2d found(*a, *b);
        SCOPED_TRACE("case " + std::to_string(i));
        for (int k = 0; k < found.numIntPoints(); ++k) {
            EXPECT_TRUE(a->isOn(found.intPoint(k)) && b->isOn(found.intPoint(k)));
            for (int l = 0; l < k; ++l) EXPECT_FALSE(found.intPoint(k).isEqualTo(found.intPoint(l)));
        }
        const auto isTold = [&](const AcGePoint2d& point) {
            for (int k = 0; k < found.numIntPoints(); ++k)
                if (found.intPoint(k).distanceTo(point) < 1e-4) return true;
            // On a run the seam of a full circle is a point like any other.
            return found.overlapCount() > 0 && (a->isClosed() || b->isClosed());
        };
        AcGePoint2d start, end;
        for (const auto& [from, to] : {std::pair(&a, &b), std::pair(&b, &a)}) {
            (*from)->hasStartPoint(start);
            (*from)->hasEndPoint(end);
            for (const AcGePoint2d& point : {start, end}) EXPECT_TRUE(!(*to)->isOn(point) || isTold(point));
        }
        a->reverseParam();
        const AcGeCurveCurveInt2d swapped(*b, *a);
        EXPECT_EQ(found.overlapCount(), swapped.overlapCount());
        if (found.overlapCount() == 0) {
            EXPECT_EQ(found.numIntPoints(), swapped.numIntPoints());
        }
        meetings += found.numIntPoints();
        runs += found.overlapCount();
    }
    EXPECT_GT(meetings, 10000);
    EXPECT_GT(runs, 200);
}

TEST(CurvePairs, EllipsesAndSplinesMeetLinesArcsAndEachOther) {
    const AcGeEllipArc3d wide(AcGePoint3d(), AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, 4.0, 1.0);
    const AcGeEllipArc3d tall(AcGePoint3d(), AcGeVector3d::kYAxis, AcGeVector3d::kXAxis, 4.0, 1.0);
    const AcGeLine3d axis(AcGePoint3d(100, 0, 0), AcGeVector3d(-1, 0, 0)),
        touching(AcGePoint3d(-50, 1, 0), AcGeVector3d(1, 0, 0));
    const AcGeCircArc3d circle(AcGePoint3d(), AcGeVector3d::kZAxis, 2.0),
        miss(AcGePoint3d(), AcGeVector3d::kZAxis, 0.9);
    AcGePoint3dArray fit;
    for (int i = 0; i <= 20; ++i) fit.append(AcGePoint3d(i * 0.5, std::sin(i * 0.5 * AcGe::kPi), 0));
    const AcGeNurbCurve3d wave(fit, AcGeVector3d(), AcGeVector3d());
    struct Case {
        const char* what;
        const AcGeCurve3d *a, *b;
        int count;
    };
    const AcGeLine3d middle(AcGePoint3d(0.1, 0.3, 0), AcGeVector3d(1, 0, 0));
    for (const Case& c : {Case{"ellipses", &wide, &tall, 4}, Case{"axis", &axis, &wide, 2},
                          Case{"touching", &touching, &wide, 1}, Case{"circle", &wide, &circle, 4},
                          Case{"miss", &wide, &miss, 0}, Case{"wave", &middle, &wave, 10},
                          Case{"wave and ellipse", &wave, &wide, 9}}) {
        SCOPED_TRACE(c.what);
        const AcGeCurveCurveInt3d meetings(*c.a, *c.b), swapped(*c.b, *c.a);
        EXPECT_EQ(c.count, swapped.numIntPoints());
        ASSERT_EQ(c.count, meetings.numIntPoints());
        double before = -1e300;
        for (int i = 0; i < c.count; ++i) {
            double p1 = 0.0, p2 = 0.0;
            meetings.getIntParams(i, p1, p2);
            EXPECT_LT(before, p1);
            before = p1;
            EXPECT_TRUE(c.a->evalPoint(p1).isEqualTo(c.b->evalPoint(p2)));
        }
    }
}

} // namespace
