// The small tools of splitting and the cuts along lines, each against its contract or its plain form.
#include "vexogeometrytools.h"

#include "contourcases.h"
#include "plaincontour.h"

#include "dbcircle.h"
#include "dbline.h"
#include "dbxline.h"
#include "geline3d.h"

#include <gtest/gtest.h>

using namespace VEXOGeometryTools;
using namespace contourcases;

namespace {

AcDbXline lineAt(double x, double y, const AcGeVector3d& direction) {
    return plaincontour::lineAt({x, y, 0}, direction);
}

const AcGeVector3d kUp = AcGeVector3d::kYAxis;
const AcGeVector3d kDown = -AcGeVector3d::kYAxis;

} // namespace

// ---- points along a direction ----

TEST(OrderPointsByDir, ExchangesAsThePlainLoopDoesTiesAndPointsOffTheLineIncluded) {
    std::mt19937 random(25);
    const AcGeVector3d dirs[] = {kUp, kDown, AcGeVector3d(3, 4, 0), AcGeVector3d(1e-11, 0, 0),
                                 AcGeVector3d(1, -2, 5)};
    for (int run = 0; run < 4000; ++run) {
        const AcGeVector3d dir = dirs[run % 5];
        const double offset = run % 3 ? 0.0 : 1e6;
        const int count = static_cast<int>(random() % 9);
        AcArray<AcGePoint3d> points;
        for (int i = 0; i < count; ++i) {
            AcGePoint3d point =
                AcGePoint3d(offset, offset, 0) + dir * (static_cast<int>(random() % 12) / 4.0);
            if (run % 2) point.x += static_cast<int>(random() % 3) * 1e-11;
            if (run % 7 == 0) point.y += static_cast<int>(random() % 3);
            if (run % 97 == 0) point.z = kNaN;
            points.append(point);
        }
        const bool onLine = run % 4 != 0;
        AcArray<AcGePoint3d> expected(points);
        plaincontour::order(dir, expected, onLine);
        orderPointsByDir(dir, points, onLine);
        ASSERT_TRUE(areSame(points, expected)) << run;
    }
}

TEST(ExtentsPoints, AreComparedInXCoarselyAndInYFinely) {
    const AcDbExtents box(AcGePoint3d(1, 2, 3), AcGePoint3d(5, 6, 7));
    const struct {
        AcGePoint3d point;
        bool inX, expected;
    } cases[] = {{{1 + 9e-7, 50, 50}, true, true},  {{5 - 9e-7, 0, 0}, true, true},
                 {{1 + 2e-6, 2, 3}, true, false},   {{3, 2, 3}, true, false},
                 {{50, 2 + 5e-11, 9}, false, true}, {{0, 6, 0}, false, true},
                 {{1, 2 + 9e-7, 3}, false, false},  {{kNaN, 2, 3}, true, false}};
    for (const auto& [point, inX, expected] : cases)
        EXPECT_EQ(isPointsOnExtents(point, box, inX), expected) << point.x << ' ' << point.y << ' ' << inX;
}

TEST(ExtentsPoints, AreNudgedOnceWhereTheirLinesMissTheHole) {
    const auto check = [](AcDbCurve& hole, double left, double right, double nudgedLeft, double nudgedRight) {
        AcGePoint3d l(left, 7, 0);
        AcGePoint3d r(right, -7, 0);
        correctExtentsPoints(l, r, &hole);
        EXPECT_EQ(l, AcGePoint3d(nudgedLeft, 7, 0));
        EXPECT_EQ(r, AcGePoint3d(nudgedRight, -7, 0));
    };
    const auto round = polylineOf(circle(0, 0, 1), true);
    check(*round, -1, 1, -1 + 1e-8, 1 - 1e-8);
    check(*round, -5, 0.5, -5 + 1e-8, 0.5);
    const auto diamond = polylineOf(corners({-1, 0, 0, -1, 1, 0, 0, 1}), true);
    check(*diamond, -1, 1, -1, 1);
    check(*panel(-1, -1, 1, 1), -1, 1, -1, 1);
    AcDbCircle drawn(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 2.0);
    check(drawn, -2, 1.9, -2 + 1e-8, 1.9);
    AcGePoint3d untouched(1, 2, 3);
    correctExtentsPoints(untouched, untouched, nullptr);
    EXPECT_EQ(untouched, AcGePoint3d(1, 2, 3));
}

// ---- crossings ----

namespace {

/// A run over a coarse lattice: many vertices on edges, edges on edges, arcs through lattice points.
std::unique_ptr<AcDbPolyline> randomRun(std::mt19937& random, double offset, double jitter) {
    auto polyline = polylineOf(latticeRun(random, 21, 6, offset, jitter), random() % 4 != 0);
    if (random() % 9 == 0) polyline->setNormal(-AcGeVector3d::kZAxis);
    return polyline;
}

} // namespace

TEST(IntersectPolyLines, FindsWhatThePlainLoopsFindInTheirOrder) {
    std::mt19937 random(7);
    int crossings = 0;
    for (int run = 0; run < 600; ++run) {
        const double offset = run % 3 ? 0.0 : 1e6;
        const double jitter = run % 2 ? 7e-7 : 2e-6;
        const auto first = randomRun(random, offset, jitter);
        const auto second = randomRun(random, offset, jitter);
        const AcArray<AcGePoint3d> expected = plaincontour::meetingsOfSegments(*first, *second);
        crossings += expected.length();
        ASSERT_TRUE(areSame(intersectPolyLines(first.get(), second.get()), expected)) << run;
    }
    EXPECT_GT(crossings, 6000);
    for (const int count : {300, 301}) { // many points, found again through the hashed grid
        const auto first = polylineOf(randomContour(random, count), true);
        const auto second = polylineOf(randomContour(random, count), true);
        const AcArray<AcGePoint3d> expected = plaincontour::meetingsOfSegments(*first, *second);
        EXPECT_GT(expected.length(), 100);
        EXPECT_TRUE(areSame(intersectPolyLines(first.get(), second.get()), expected));
    }
}

TEST(IntersectPolyLines, TakesWhatBecomesAPolylineAndNothingElse) {
    AcDbCircle circle(AcGePoint3d(0, 0, 5), AcGeVector3d::kZAxis, 2.0);
    AcDbLine line(AcGePoint3d(-9, 0, 0), AcGePoint3d(9, 0, 8));
    const AcArray<AcGePoint3d> points = intersectPolyLines(&line, &circle);
    ASSERT_EQ(points.length(), 2) << "elevations do not count";
    EXPECT_EQ(points[0], AcGePoint3d(-2, 0, 0));
    EXPECT_EQ(points[1], AcGePoint3d(2, 0, 0));
    AcDbXline endless;
    EXPECT_TRUE(intersectPolyLines(&endless, &circle).isEmpty());
    EXPECT_TRUE(intersectPolyLines(nullptr, &circle).isEmpty());
    EXPECT_TRUE(intersectPolyLines(&circle, nullptr).isEmpty());
    AcDbPolyline empty;
    EXPECT_TRUE(intersectPolyLines(&empty, &circle).isEmpty());
}

// ---- parts of a curve ----

TEST(PartsOfCurves, OfNothingAndForNoPlace) {
    AcDbLine line(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0));
    AcDbXline endless;
    EXPECT_TRUE(splitPolyLineByPoints(&endless, pointsOf({{0, 0, 0}})).isEmpty());
    EXPECT_TRUE(splitPolyLineByPoints(nullptr, pointsOf({{0, 0, 0}})).isEmpty());
    EXPECT_TRUE(splitPolyLineByPoints(&line, pointsOf({})).isEmpty());
    EXPECT_EQ(Curves(splitPolyLineByPoints(&line, pointsOf({{7, 0, 0}, {5, 3, 0}}))).count(), 2);
    AcDbPolyline empty;
    const auto square = panel(0, 0, 8, 10);
    EXPECT_FALSE(giveMeSplitContourByPoints({0, 0, 0}, {1, 0, 0}, nullptr, true));
    EXPECT_FALSE(giveMeSplitContourByPoints({0, 0, 0}, {1, 0, 0}, &empty, true));
    EXPECT_FALSE(giveMeSplitContourByPoints({kNaN, 0, 0}, {1, 0, 0}, square.get(), true));
    AcDbXline aside = lineAt(40, 0, kUp);
    EXPECT_TRUE(splitContourByLine(square.get(), aside).isEmpty());
    EXPECT_TRUE(splitContourByLine(nullptr, aside).isEmpty());
    EXPECT_TRUE(splitContourByLine(&empty, aside).isEmpty());
}

TEST(SplitContourByLine2, TakesTheUpperAndTheLowerStripWhereverTheHoleLies) {
    const double half = AcGe::kPi * 4 / 2;
    for (const double y : {3.0, 10.0, 17.0}) { // below, at and above the slab's middle
        const auto slab = panel(-2, 0, 2, 20);
        for (const bool isReversed : {false, true}) {
            const auto hole = polylineOf(isReversed ? reversed(circle(0, y, 2)) : circle(0, y, 2), true);
            AcDbXline left = lineAt(-2 + 1e-8, 0, kUp);
            AcDbXline right = lineAt(2 - 1e-8, 0, kUp);
            const Curves strips(splitContourByLine2(slab.get(), hole.get(), left, right));
            ASSERT_EQ(strips.count(), 2) << y;
            EXPECT_NEAR(areaOf(strips[0]), 4 * (20 - y) - half, 1e-3) << y;
            EXPECT_NEAR(areaOf(strips[1]), 4 * y - half, 1e-3) << y;
            EXPECT_TRUE(strips[0].isClosed() && strips[1].isClosed());
        }
    }
    // A hole beyond the upper edge has no upper strip; a line that misses it ends the work.
    const auto slab = panel(0, 0, 10, 20);
    const auto notch = panel(0, 15, 10, 25);
    AcDbXline left = lineAt(0, 0, kUp);
    AcDbXline right = lineAt(10, 0, kUp);
    AcDbXline beyond = lineAt(11, 0, kUp);
    const Curves strips(splitContourByLine2(slab.get(), notch.get(), left, right));
    ASSERT_EQ(strips.count(), 1);
    EXPECT_NEAR(areaOf(strips[0]), 150.0, 1e-9);
    EXPECT_TRUE(splitContourByLine2(slab.get(), notch.get(), left, beyond).isEmpty());
    EXPECT_TRUE(splitContourByLine2(slab.get(), nullptr, left, right).isEmpty());
    EXPECT_TRUE(splitContourByLine2(nullptr, notch.get(), left, right).isEmpty());
}

TEST(GetClosestPointsToLine, ProjectsEachPointInOrder) {
    const AcGeLine3d line(AcGePoint3d(0, 1, 0), AcGeVector3d(2, 0, 0));
    const auto closest = getClosestPointsToLine(line, pointsOf({{5, 9, 3}, {-7, 1, 0}}), AcGeTol());
    ASSERT_EQ(closest.length(), 2);
    EXPECT_EQ(closest[0], AcGePoint3d(5, 1, 0));
    EXPECT_EQ(closest[1], AcGePoint3d(-7, 1, 0));
}
