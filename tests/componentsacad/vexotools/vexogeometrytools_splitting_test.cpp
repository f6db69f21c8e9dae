// The small tools of splitting and the cuts along lines, each against its contract or its plain form.
#include "vexogeometrytools.h"

#include "contourcases.h"

#include "dbarc.h"
#include "dbcircle.h"
#include "dbextents.h"
#include "dbline.h"
#include "dbpoint.h"
#include "dbxline.h"
#include "geline3d.h"

#include <gtest/gtest.h>

#include <functional>

using namespace VEXOGeometryTools;
using contourcases::kNaN;
using contourcases::polylineOf;
using contourcases::Vertices;

namespace {

AcGeTol toleranceBoth(double value) {
    AcGeTol tolerance;
    tolerance.setEqualPoint(value);
    tolerance.setEqualVector(value);
    return tolerance;
}

AcArray<AcGePoint3d> pointsOf(std::initializer_list<AcGePoint3d> list) {
    AcArray<AcGePoint3d> points;
    for (const AcGePoint3d& point : list) points.append(point);
    return points;
}

/// Owns the curves of a result.
struct Curves {
    AcArray<void*> array;

    explicit Curves(const AcArray<void*>& given)
        : array(given) {}
    Curves(const Curves&) = delete;
    Curves& operator=(const Curves&) = delete;
    ~Curves() {
        for (void* curve : array) delete static_cast<AcDbCurve*>(curve);
    }
    int count() const { return array.length(); }
    AcDbPolyline& operator[](int i) const { return *AcDbPolyline::cast(static_cast<AcDbCurve*>(array[i])); }
};

double areaOf(const AcDbCurve& curve) {
    double area = -1.0;
    (void)curve.getArea(area);
    return area;
}

AcDbXline lineAt(double x, double y, const AcGeVector3d& direction) {
    AcDbXline line;
    (void)line.setBasePoint(AcGePoint3d(x, y, 0));
    (void)line.setUnitDir(direction);
    return line;
}

const AcGeVector3d kUp = AcGeVector3d::kYAxis;
const AcGeVector3d kDown = -AcGeVector3d::kYAxis;

std::unique_ptr<AcDbPolyline> rectangle(double x1, double y1, double x2, double y2) {
    return polylineOf({{x1, y1, 0}, {x2, y1, 0}, {x2, y2, 0}, {x1, y2, 0}}, true);
}

AcDbExtents boxOf(const AcDbCurve& curve) {
    AcDbExtents box;
    (void)curve.getGeomExtents(box);
    return box;
}

} // namespace

// ---- points along a direction ----

TEST(OrderPointsByDir, ExchangesAsThePlainLoopDoesTiesAndPointsOffTheLineIncluded) {
    const auto plainly = [](const AcGeVector3d& dir, AcArray<AcGePoint3d>& points, bool onLine) {
        if (dir.isZeroLength(toleranceBoth(1e-10)) || points.isEmpty()) return;
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
        ASSERT_TRUE(contourcases::areSame(points, expected)) << run;
    }
}

TEST(FilterArray, KeepsTheEndsFromLeftToRight) {
    auto points = pointsOf({{3, 1, 0}, {9, 9, 0}, {1, 5, 0}});
    filterArray(points);
    ASSERT_EQ(points.length(), 2);
    EXPECT_EQ(points[0], AcGePoint3d(1, 5, 0));
    EXPECT_EQ(points[1], AcGePoint3d(3, 1, 0));
    points = pointsOf({{1, 5, 0}, {1 - 5e-11, 2, 0}});
    filterArray(points);
    EXPECT_EQ(points[0].y, 5.0) << "on a line across x the order stays";
    points = pointsOf({{4, 4, 0}});
    filterArray(points);
    EXPECT_EQ(points.length(), 2);
    points.removeAll();
    filterArray(points);
    EXPECT_TRUE(points.isEmpty());
}

TEST(ExtentsPoints, AreComparedInXCoarselyAndInYFinely) {
    const AcDbExtents box(AcGePoint3d(1, 2, 3), AcGePoint3d(5, 6, 7));
    const struct {
        AcGePoint3d point;
        bool inX;
        bool expected;
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
    const auto round = polylineOf({{-1, 0, 1}, {1, 0, 1}}, true);
    check(*round, -1, 1, -1 + 1e-8, 1 - 1e-8);
    check(*round, -5, 0.5, -5 + 1e-8, 0.5);
    const auto diamond = polylineOf({{-1, 0, 0}, {0, -1, 0}, {1, 0, 0}, {0, 1, 0}}, true);
    check(*diamond, -1, 1, -1, 1);
    check(*rectangle(-1, -1, 1, 1), -1, 1, -1, 1);
    AcDbCircle circle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 2.0);
    check(circle, -2, 1.9, -2 + 1e-8, 1.9);
    AcGePoint3d untouched(1, 2, 3);
    correctExtentsPoints(untouched, untouched, nullptr);
    EXPECT_EQ(untouched, AcGePoint3d(1, 2, 3));
}

// ---- crossings ----

namespace {

/// Every segment against every segment, every point against every point.
AcArray<AcGePoint3d> intersectPlainly(AcDbCurve* first, AcDbCurve* second) {
    const std::unique_ptr<AcDbPolyline> a(ConvertToPolyline(first));
    const std::unique_ptr<AcDbPolyline> b(ConvertToPolyline(second));
    AcArray<AcGePoint3d> points;
    if (!a || !b) return points;
    const AcGeTol tolerance = toleranceBoth(1e-6);
    for (unsigned int i = 0; i + (a->isClosed() ? 0 : 1) < a->numVerts(); ++i)
        for (unsigned int j = 0; j + (b->isClosed() ? 0 : 1) < b->numVerts(); ++j) {
            AcGeLineSeg3d line1, line2;
            AcGeCircArc3d arc1, arc2;
            const bool isLine1 = a->segType(i) == AcDbPolyline::kLine;
            const bool isLine2 = b->segType(j) == AcDbPolyline::kLine;
            if (isLine1 ? a->getLineSegAt(i, line1) != Acad::eOk : a->getArcSegAt(i, arc1) != Acad::eOk)
                continue;
            if (isLine2 ? b->getLineSegAt(j, line2) != Acad::eOk : b->getArcSegAt(j, arc2) != Acad::eOk)
                continue;
            AcGePoint3d found[2];
            int count = 0;
            if (isLine1 && isLine2)
                count = line1.intersectWith(line2, found[0], tolerance);
            else if (isLine1)
                arc2.intersectWith(line1, count, found[0], found[1], tolerance);
            else if (isLine2)
                arc1.intersectWith(line2, count, found[0], found[1], tolerance);
            else
                arc1.intersectWith(arc2, count, found[0], found[1], tolerance);
            for (int k = 0; k < count; ++k) points.append(found[k]);
        }
    for (int i = 0; i < points.length(); ++i)
        for (int j = points.length() - 1; j > i; --j)
            if (points[j].isEqualTo(points[i], tolerance)) points.removeAt(j);
    return points;
}

/// A closed run over a coarse lattice: many vertices on edges, edges on edges, arcs through lattice points.
std::unique_ptr<AcDbPolyline> latticeRun(std::mt19937& random, double offset, double jitter) {
    Vertices vertices;
    const int count = 2 + static_cast<int>(random() % 20);
    for (int i = 0; i < count; ++i) {
        const double bulges[] = {0.0, 0.0, 1.0, -1.0, std::tan(AcGe::kPi / 8), 0.3};
        vertices.push_back({offset + static_cast<int>(random() % 7) + (random() % 5 ? 0.0 : jitter),
                            offset + static_cast<int>(random() % 7), bulges[random() % 6]});
    }
    auto polyline = polylineOf(vertices, random() % 4 != 0);
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
        const auto first = latticeRun(random, offset, jitter);
        const auto second = latticeRun(random, offset, jitter);
        const AcArray<AcGePoint3d> expected = intersectPlainly(first.get(), second.get());
        crossings += expected.length();
        ASSERT_TRUE(contourcases::areSame(intersectPolyLines(first.get(), second.get()), expected)) << run;
    }
    EXPECT_GT(crossings, 6000);
    for (const int count : {300, 301}) { // many points, found again through the hashed grid
        const auto first = polylineOf(contourcases::randomContour(random, count), true);
        const auto second = polylineOf(contourcases::randomContour(random, count), true);
        const AcArray<AcGePoint3d> expected = intersectPlainly(first.get(), second.get());
        EXPECT_GT(expected.length(), 100);
        EXPECT_TRUE(contourcases::areSame(intersectPolyLines(first.get(), second.get()), expected));
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
        AcGePoint3d start, end;
        ASSERT_EQ(parts[i].getStartPoint(start), Acad::eOk);
        ASSERT_EQ(parts[i].getEndPoint(end), Acad::eOk);
        EXPECT_NEAR(start.x, ends[i], 1e-12);
        EXPECT_NEAR(end.x, ends[i + 1], 1e-12);
    }
    AcDbXline endless;
    EXPECT_EQ(Curves(splitPolyLineByPoints(&endless, pointsOf({{0, 0, 0}}))).count(), 0);
    EXPECT_EQ(Curves(splitPolyLineByPoints(nullptr, pointsOf({{0, 0, 0}}))).count(), 0);
    EXPECT_EQ(Curves(splitPolyLineByPoints(&line, pointsOf({{5, 3, 0}}))).count(), 0);
    EXPECT_EQ(Curves(splitPolyLineByPoints(&line, AcArray<AcGePoint3d>())).count(), 0);
}

TEST(GiveMeSplitContourByPoints, ChoosesByNearnessToTheMiddleAndTheFirstPartOnTies) {
    const struct {
        const char* name;
        AcGePoint3d first, second;
        bool nearPart;
        double expectedLength;
    } cases[] = {// The square's first part begins at (8,2): seen from the middle (4,2) the part over the top
                 // is 8 away,
                 // the one over the bottom 2.
                 {"far part", {8, 2, 0}, {0, 2, 0}, false, 8 + 8 + 8},
                 {"near part", {8, 2, 0}, {0, 2, 0}, true, 2 + 8 + 2},
                 {"points exchanged: the same part, the middle is the same", {0, 2, 0}, {8, 2, 0}, true, 12},
                 {"tie, false gives the first part", {8, 5, 0}, {0, 5, 0}, false, 5 + 8 + 5},
                 {"tie, true gives the second part", {8, 5, 0}, {0, 5, 0}, true, 5 + 8 + 5},
                 {"points off the contour stand for the nearest ones", {9, 2, 0}, {-3, 2, 0}, true, 12},
                 {"next to the start is the start", {5e-9, 0, 0}, {8, 10, 0}, false, 18}};
    const auto square = rectangle(0, 0, 8, 10);
    for (const auto& each : cases) {
        const std::unique_ptr<AcDbCurve> part(
            giveMeSplitContourByPoints(each.first, each.second, square.get(), each.nearPart));
        ASSERT_TRUE(part) << each.name;
        double end = 0.0;
        double length = 0.0;
        ASSERT_EQ(part->getEndParam(end), Acad::eOk);
        ASSERT_EQ(part->getDistAtParam(end, length), Acad::eOk);
        EXPECT_NEAR(length, each.expectedLength, 1e-9) << each.name;
    }
    // On the tie the first part runs over the top: from the lower parameter, at the right, to the higher one.
    for (const bool nearPart : {false, true}) {
        const std::unique_ptr<AcDbCurve> part(
            giveMeSplitContourByPoints({8, 5, 0}, {0, 5, 0}, square.get(), nearPart));
        EXPECT_EQ(boxOf(*part).maxPoint().y > 6, !nearPart);
    }
}

TEST(GiveMeSplitContourByPoints, GivesTheCloneForOnePlaceTheFirstPartWhereTheMiddleMissesAndNullForNone) {
    const auto square = rectangle(0, 0, 8, 10);
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
        AcGePoint3d start, end;
        ASSERT_EQ(part->getStartPoint(start), Acad::eOk);
        ASSERT_EQ(part->getEndPoint(end), Acad::eOk);
        EXPECT_EQ(start, AcGePoint3d(8, 2, 0)) << nearPart;
        EXPECT_EQ(end, AcGePoint3d(8, 4, 0)) << nearPart;
    }
    EXPECT_FALSE(giveMeSplitContourByPoints({0, 0, 0}, {1, 0, 0}, nullptr, true));
    AcDbPolyline empty;
    EXPECT_FALSE(giveMeSplitContourByPoints({0, 0, 0}, {1, 0, 0}, &empty, true));
    EXPECT_FALSE(giveMeSplitContourByPoints({kNaN, 0, 0}, {1, 0, 0}, square.get(), true));
}

// ---- cuts along lines ----

TEST(SplitContourByLine, GivesTheHalfLeftOfTheLineFirst) {
    const double quarter = std::tan(AcGe::kPi / 8);
    for (const bool isReversed : {false, true})
        for (const double offset : {0.0, 1e6}) {
            Vertices vertices = {{0, 0, 0}, {8, 0, quarter}, {10, 2, 0}, {10, 5, 0}, {0, 5, 0}};
            for (auto& vertex : vertices) vertex[0] += offset;
            const auto slab = polylineOf(isReversed ? contourcases::reversed(vertices) : vertices, true);
            const double whole = areaOf(*slab);
            for (const AcGeVector3d& direction : {kUp, kDown}) {
                AcDbXline line = lineAt(offset + 9, 0, direction);
                const Curves halves(splitContourByLine(slab.get(), line));
                ASSERT_EQ(halves.count(), 2);
                const int left = direction.y > 0 ? 0 : 1;
                EXPECT_NEAR(boxOf(halves[left]).maxPoint().x, offset + 9, 1e-9);
                EXPECT_NEAR(boxOf(halves[1 - left]).minPoint().x, offset + 9, 1e-9);
                EXPECT_NEAR(areaOf(halves[0]) + areaOf(halves[1]), whole, 1e-8);
                EXPECT_TRUE(halves[0].isClosed() && halves[1].isClosed());
                EXPECT_GT(areaOf(halves[1 - left]), 1.0 * 3) << "the corner's arc stays";
            }
        }
}

TEST(SplitContourByLine, CutsAtTheTwoLowestCrossingsOnly) {
    // Three teeth to the right: the line crosses six times.
    const auto comb = polylineOf({{0, 0, 0},
                                  {6, 0, 0},
                                  {6, 1, 0},
                                  {2, 1, 0},
                                  {2, 2, 0},
                                  {6, 2, 0},
                                  {6, 3, 0},
                                  {2, 3, 0},
                                  {2, 4, 0},
                                  {6, 4, 0},
                                  {6, 5, 0},
                                  {0, 5, 0}},
                                 true);
    for (const AcGeVector3d& direction : {kUp, kDown}) {
        AcDbXline line = lineAt(4, 0, direction);
        const Curves halves(splitContourByLine(comb.get(), line));
        ASSERT_EQ(halves.count(), 2);
        const int right = direction.y > 0 ? 1 : 0;
        EXPECT_NEAR(areaOf(halves[right]), 2.0, 1e-12);
        EXPECT_NEAR(areaOf(halves[1 - right]), areaOf(*comb) - 2.0, 1e-12);
    }
    AcDbXline aside = lineAt(40, 0, kUp);
    EXPECT_EQ(Curves(splitContourByLine(comb.get(), aside)).count(), 0);
    EXPECT_EQ(Curves(splitContourByLine(nullptr, aside)).count(), 0);
    AcDbPolyline empty;
    EXPECT_EQ(Curves(splitContourByLine(&empty, aside)).count(), 0);
}

TEST(SplitContourByLine2, TakesTheUpperAndTheLowerStripWhereverTheHoleLies) {
    const double half = AcGe::kPi * 4 / 2;
    for (const double y : {3.0, 10.0, 17.0}) { // below, at and above the slab's middle
        const auto slab = rectangle(-2, 0, 2, 20);
        for (const bool isReversed : {false, true}) {
            const Vertices round = {{-2, y, 1}, {2, y, 1}};
            const auto hole = polylineOf(isReversed ? contourcases::reversed(round) : round, true);
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
    const auto slab = rectangle(0, 0, 10, 20);
    const auto notch = rectangle(0, 15, 10, 25);
    AcDbXline left = lineAt(0, 0, kUp);
    AcDbXline right = lineAt(10, 0, kUp);
    AcDbXline beyond = lineAt(11, 0, kUp);
    const Curves strips(splitContourByLine2(slab.get(), notch.get(), left, right));
    ASSERT_EQ(strips.count(), 1);
    EXPECT_NEAR(areaOf(strips[0]), 150.0, 1e-9);
    EXPECT_EQ(Curves(splitContourByLine2(slab.get(), notch.get(), left, beyond)).count(), 0);
    EXPECT_EQ(Curves(splitContourByLine2(slab.get(), nullptr, left, right)).count(), 0);
    EXPECT_EQ(Curves(splitContourByLine2(nullptr, notch.get(), left, right)).count(), 0);
}

TEST(GetClosestPointsToLine, ProjectsEachPointInOrder) {
    const AcGeLine3d line(AcGePoint3d(0, 1, 0), AcGeVector3d(2, 0, 0));
    const auto closest = getClosestPointsToLine(line, pointsOf({{5, 9, 3}, {-7, 1, 0}}), AcGeTol());
    ASSERT_EQ(closest.length(), 2);
    EXPECT_EQ(closest[0], AcGePoint3d(5, 1, 0));
    EXPECT_EQ(closest[1], AcGePoint3d(-7, 1, 0));
}
