// The small tools of splitting and the cuts along lines, each against its contract or its plain form.
#include "vexogeometrytools.h"

#include "contourcases.h"

#include "dbcircle.h"
#include "dbline.h"
#include "dbxline.h"
#include "geline3d.h"

#include <gtest/gtest.h>

using namespace VEXOGeometryTools;
using namespace contourcases;

namespace {

AcDbXline lineAt(double x, double y, const AcGeVector3d& direction) {
    AcDbXline line;
    (void)line.setBasePoint(AcGePoint3d(x, y, 0));
    (void)line.setUnitDir(direction);
    return line;
}

const AcGeVector3d kUp = AcGeVector3d::kYAxis;
const AcGeVector3d kDown = -AcGeVector3d::kYAxis;

} // namespace

// ---- points along a direction ----

TEST(OrderPointsByDir, ExchangesAsThePlainLoopDoesTiesAndPointsOffTheLineIncluded) {
    const auto plainly = [](const AcGeVector3d& dir, AcArray<AcGePoint3d>& points, bool onLine) {
        if (dir.isZeroLength(toleranceOf(1e-10, 1e-10)) || points.isEmpty()) return;
        AcArray<AcGePoint3d> keys(points);
        const AcGePoint3d base = points[0];
        for (AcGePoint3d& key : keys)
            if (!onLine) key = AcGeLine3d(base, dir).closestPointTo(key);
        for (int i = 0; i < points.length(); ++i)
            for (int j = i + 1; j < points.length(); ++j)
                if (!(keys[j] - keys[i]).isCodirectionalTo(dir)) {
                    std::swap(points[i], points[j]);
                    std::swap(keys[i], keys[j]);
                }
    };
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
        plainly(dir, expected, onLine);
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

/// Every segment against every segment, every point against every point.
AcArray<AcGePoint3d> intersectPlainly(const AcDbPolyline& a, const AcDbPolyline& b) {
    const AcGeTol tolerance = toleranceOf(1e-6, 1e-6);
    AcArray<AcGePoint3d> points;
    for (unsigned int i = 0; i + (a.isClosed() ? 0 : 1) < a.numVerts(); ++i)
        for (unsigned int j = 0; j + (b.isClosed() ? 0 : 1) < b.numVerts(); ++j)
            for (const AcGePoint3d& point : meetingsOf(a, i, b, j, tolerance)) points.append(point);
    for (int i = 0; i < points.length(); ++i)
        for (int j = points.length() - 1; j > i; --j)
            if (points[j].isEqualTo(points[i], tolerance)) points.removeAt(j);
    return points;
}

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
        const AcArray<AcGePoint3d> expected = intersectPlainly(*first, *second);
        crossings += expected.length();
        ASSERT_TRUE(areSame(intersectPolyLines(first.get(), second.get()), expected)) << run;
    }
    EXPECT_GT(crossings, 6000);
    for (const int count : {300, 301}) { // many points, found again through the hashed grid
        const auto first = polylineOf(randomContour(random, count), true);
        const auto second = polylineOf(randomContour(random, count), true);
        const AcArray<AcGePoint3d> expected = intersectPlainly(*first, *second);
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

TEST(SplitPolyLineByPoints, PassesOverPointsOffTheCurveAndRepeats) {
    AcDbLine line(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0));
    const Curves parts(
        splitPolyLineByPoints(&line, pointsOf({{7, 0, 0}, {5, 3, 0}, {2, 0, 0}, {7, 5e-11, 0}, {0, 0, 0}})));
    ASSERT_EQ(parts.count(), 3);
    const double ends[] = {0, 2, 7, 10};
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(startOf(parts[i]).x, ends[i], 1e-12);
        EXPECT_NEAR(endOf(parts[i]).x, ends[i + 1], 1e-12);
    }
    AcDbXline endless;
    EXPECT_TRUE(splitPolyLineByPoints(&endless, pointsOf({{0, 0, 0}})).isEmpty());
    EXPECT_TRUE(splitPolyLineByPoints(nullptr, pointsOf({{0, 0, 0}})).isEmpty());
    EXPECT_TRUE(splitPolyLineByPoints(&line, pointsOf({{5, 3, 0}})).isEmpty());
    EXPECT_TRUE(splitPolyLineByPoints(&line, pointsOf({})).isEmpty());
}

TEST(GiveMeSplitContourByPoints, ChoosesByNearnessToTheMiddleAndTheFirstPartOnTies) {
    // The square's first part begins at (8,2): seen from the middle (4,2) the part over the top is 8 away,
    // the one over the bottom 2.
    const struct {
        const char* name;
        AcGePoint3d first, second;
        bool nearPart;
        double expectedLength;
    } cases[] = {{"far part", {8, 2, 0}, {0, 2, 0}, false, 8 + 8 + 8},
                 {"near part", {8, 2, 0}, {0, 2, 0}, true, 2 + 8 + 2},
                 {"points exchanged: the same part, the middle is the same", {0, 2, 0}, {8, 2, 0}, true, 12},
                 {"tie, false gives the first part", {8, 5, 0}, {0, 5, 0}, false, 5 + 8 + 5},
                 {"tie, true gives the second part", {8, 5, 0}, {0, 5, 0}, true, 5 + 8 + 5},
                 {"points off the contour stand for the nearest ones", {9, 2, 0}, {-3, 2, 0}, true, 12},
                 {"next to the start is the start", {5e-9, 0, 0}, {8, 10, 0}, false, 18}};
    const auto square = panel(0, 0, 8, 10);
    for (const auto& each : cases) {
        const std::unique_ptr<AcDbCurve> part(
            giveMeSplitContourByPoints(each.first, each.second, square.get(), each.nearPart));
        ASSERT_TRUE(part) << each.name;
        EXPECT_NEAR(lengthOf(*part), each.expectedLength, 1e-9) << each.name;
    }
    // On the tie the first part runs over the top: from the lower parameter, at the right, to the higher one.
    for (const bool nearPart : {false, true}) {
        const std::unique_ptr<AcDbCurve> part(
            giveMeSplitContourByPoints({8, 5, 0}, {0, 5, 0}, square.get(), nearPart));
        EXPECT_EQ(boxOf(*part).maxPoint().y > 6, !nearPart);
    }
}

TEST(GiveMeSplitContourByPoints, GivesTheCloneForOnePlaceTheFirstPartWhereTheMiddleMissesAndNullForNone) {
    const auto square = panel(0, 0, 8, 10);
    const std::unique_ptr<AcDbCurve> clone(
        giveMeSplitContourByPoints({8, 2, 0}, {8, 2, 0}, square.get(), true));
    ASSERT_TRUE(clone);
    EXPECT_TRUE(clone->isClosed());
    EXPECT_EQ(areaOf(*clone), 80.0);
    // Points so far off that the middle between them lies beside the contour: neither part crosses its line.
    for (const bool nearPart : {false, true}) {
        const std::unique_ptr<AcDbCurve> part(
            giveMeSplitContourByPoints({20, 4, 0}, {30, 2, 0}, square.get(), nearPart));
        ASSERT_TRUE(part);
        EXPECT_EQ(startOf(*part), AcGePoint3d(8, 2, 0)) << nearPart;
        EXPECT_EQ(endOf(*part), AcGePoint3d(8, 4, 0)) << nearPart;
    }
    EXPECT_FALSE(giveMeSplitContourByPoints({0, 0, 0}, {1, 0, 0}, nullptr, true));
    AcDbPolyline empty;
    EXPECT_FALSE(giveMeSplitContourByPoints({0, 0, 0}, {1, 0, 0}, &empty, true));
    EXPECT_FALSE(giveMeSplitContourByPoints({kNaN, 0, 0}, {1, 0, 0}, square.get(), true));
}

// ---- cuts along lines ----

TEST(SplitContourByLine, CutsAtTheTwoLowestCrossingsAndGivesTheHalfLeftOfTheLineFirst) {
    const double quarter = std::tan(kPi / 8);
    const Vertices rounded = {{0, 0, 0}, {8, 0, quarter}, {10, 2, 0}, {10, 3, quarter}, {8, 5, 0}, {0, 5, 0}};
    // Three teeth to the right: the line crosses six times.
    const Vertices comb = corners({0, 0, 6, 0, 6, 1, 2, 1, 2, 2, 6, 2, 6, 3, 2, 3, 2, 4, 6, 4, 6, 5, 0, 5});
    const struct {
        const Vertices& contour;
        double x, right; ///< the line's, and the area beyond it
    } cases[] = {{rounded, 9, 1 + 4 * kPi / 3 - std::sqrt(3.0)}, {comb, 4.5, 1.5}};
    for (const auto& [contour, x, right] : cases)
        for (const double offset : {0.0, 1e6})
            for (const bool isReversed : {false, true}) {
                const Vertices there = moved(contour, 0.0, offset, 0.0);
                const auto slab = polylineOf(isReversed ? reversed(there) : there, true);
                for (const AcGeVector3d& direction : {kUp, kDown}) {
                    AcDbXline line = lineAt(offset + x, 0, direction);
                    const Curves halves(splitContourByLine(slab.get(), line));
                    ASSERT_EQ(halves.count(), 2);
                    const int left = direction.y > 0 ? 0 : 1;
                    EXPECT_NEAR(areaOf(halves[1 - left]), right, 1e-8);
                    EXPECT_NEAR(areaOf(halves[left]), areaOf(*slab) - right, 1e-8);
                    EXPECT_TRUE(halves[0].isClosed() && halves[1].isClosed());
                }
            }
    AcDbXline aside = lineAt(40, 0, kUp);
    EXPECT_TRUE(splitContourByLine(polylineOf(comb, true).get(), aside).isEmpty());
    EXPECT_TRUE(splitContourByLine(nullptr, aside).isEmpty());
    AcDbPolyline empty;
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
