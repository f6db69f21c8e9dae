#include "gearc2d.h"
#include "gearc3d.h"
#include "geline2d.h"
#include "geline3d.h"
#include "gelnsg2d.h"
#include "gelnsg3d.h"
#include "geplane.h"
#include "geray2d.h"
#include "geray3d.h"
#include "placements.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using placements::inUlps;
using placements::segment;

AcGePoint3d lifted(const AcGePoint2d& point) { return {point.x, point.y, 0}; }
AcGeLineSeg3d lifted(const AcGeLineSeg2d& line) {
    return {lifted(line.startPoint()), lifted(line.endPoint())};
}
AcGeCircArc3d lifted(const AcGeCircArc2d& arc) {
    return {lifted(arc.center()),
            AcGeVector3d(0, 0, arc.isClockWise() ? -1 : 1),
            AcGeVector3d(arc.refVec().x, arc.refVec().y, 0),
            arc.radius(),
            arc.startAng(),
            arc.endAng()};
}
AcGeLineSeg2d flattened(const AcGeLineSeg3d& line) {
    return {{line.startPoint().x, line.startPoint().y}, AcGePoint2d(line.endPoint().x, line.endPoint().y)};
}

TEST(LinearCrossings, AreToldOnceAndEndsCount) {
    const struct {
        const char* what;
        AcGeLineSeg3d a, b;
        bool meet;
        AcGePoint3d at;
    } cases[] = {
        {"end on the other", segment(0, 0, 4, 0), segment(2, 0, 2, 5), true, {2, 0, 0}},
        {"short of each other", segment(0, 0, 4, 0), segment(2, 1e-9, 2, 5), false, {}},
        {"short within the tolerance", segment(0, 0, 4, 0), segment(2, 5e-11, 2, 5), true, {2, 0, 0}},
        {"flat meeting at a vertex, within it",
         segment(0, 0, 4, 0),
         segment(4, 5e-11, 8, 4e-5),
         true,
         {4, 0, 0}},
        {"parallel", segment(0, 0, 4, 0), segment(0, 1, 4, 1), false, {}},
        {"run together", segment(0, 0, 4, 0), segment(2, 0, 9, 0), false, {}},
        {"collinear, end to end", segment(0, 0, 4, 0), segment(9, 0, 4, 0), true, {4, 0, 0}},
        {"a point off the other", segment(1, 1, 1, 1), segment(0, 0, 4, 0), false, {}},
        {"equal points", segment(1, 1, 1, 1), segment(1, 1, 1, 1), true, {1, 1, 0}},
        {"past each other in space",
         {{0, 0, 0}, AcGePoint3d(4, 4, 0)},
         {{0, 4, 1}, AcGePoint3d(4, 0, 1)},
         false,
         {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        for (int order = 0; order < 8; ++order) {
            AcGeLineSeg3d a = c.a, b = c.b;
            if (order & 1) a.reverseParam();
            if (order & 2) b.reverseParam();
            if (order & 4) std::swap(a, b);
            AcGePoint3d point(7, 7, 7);
            EXPECT_EQ(c.meet, a.intersectWith(b, point)) << order;
            EXPECT_TRUE(point.isEqualTo(c.meet ? c.at : AcGePoint3d(7, 7, 7)))
                << order << ": " << point.x << "," << point.y;
            AcGePoint2d flat;
            if (c.a.startPoint().z == c.b.startPoint().z) {
                EXPECT_EQ(c.meet, flattened(a).intersectWith(flattened(b), flat)) << order;
            }
        }
    }
}

TEST(LinearCrossings, OverlapGivesTheCommonRun) {
    const AcGeLine3d line(AcGePoint3d(9, 0, 0), AcGeVector3d(-2, 0, 0));
    const AcGeRay3d ray(AcGePoint3d(3, 0, 0), AcGeVector3d(1, 0, 0)),
        back(AcGePoint3d(5, 0, 0), AcGeVector3d(-1, 0, 0));
    const AcGeLineSeg3d first = segment(0, 0, 4, 0), second = segment(9, 0, 2, 0);
    struct Case {
        const AcGeLinearEnt3d &a, &b;
        AcGe::EntityId type;
        AcGePoint3d from, to;
    };
    for (const Case& c : {Case{first, second, AcGe::kLineSeg3d, {2, 0, 0}, {4, 0, 0}},
                          Case{second, first, AcGe::kLineSeg3d, {4, 0, 0}, {2, 0, 0}},
                          Case{first, line, AcGe::kLineSeg3d, {0, 0, 0}, {4, 0, 0}},
                          Case{ray, back, AcGe::kLineSeg3d, {3, 0, 0}, {5, 0, 0}},
                          Case{line, ray, AcGe::kRay3d, {3, 0, 0}, {4, 0, 0}},
                          Case{line, line, AcGe::kLine3d, {9, 0, 0}, {0, 0, 0}}}) {
        AcGeLinearEnt3d* common = nullptr;
        ASSERT_TRUE(c.a.overlap(c.b, common));
        const std::unique_ptr<AcGeLinearEnt3d> owned(common);
        EXPECT_EQ(c.type, common->type());
        EXPECT_TRUE(common->pointOnLine().isEqualTo(c.from));
        EXPECT_TRUE(common->isOn(c.to));
        EXPECT_TRUE(common->direction().isParallelTo(c.a.direction()));
    }
    AcGeLinearEnt3d* none = nullptr;
    EXPECT_FALSE(first.overlap(segment(4, 0, 7, 0), none));
    EXPECT_FALSE(first.overlap(segment(0, 1, 7, 1), none));
    EXPECT_EQ(nullptr, none);
}

TEST(LinearCrossings, CollinearityHoldsFarOutAndForNeighbours) {
    placements::Random random(31);
    for (const AcGeMatrix3d& m : placements::ofSpace())
        for (int i = 0; i < 200; ++i) {
            const AcGePoint3d a = random.point(20.0), c = random.point(20.0),
                              b = a + (c - a) * random.between(0.1, 0.9);
            const AcGeLineSeg3d first(m * a, m * b), second(m * b, m * c),
                off(m * (b + (c - a).perpVector() * 0.01), m * c);
            EXPECT_TRUE(first.isColinearTo(second) && second.isColinearTo(first));
            EXPECT_TRUE(first.isParallelTo(second));
            EXPECT_FALSE(first.isColinearTo(off));
        }
    const AcGeLineSeg3d point(AcGePoint3d(1, 0, 0), AcGePoint3d(1, 0, 0));
    EXPECT_FALSE(point.isColinearTo(segment(0, 0, 4, 0)));
    EXPECT_FALSE(point.isParallelTo(segment(0, 0, 4, 0)));
}

TEST(LinearCrossings, ProjectedCrossingsLieAboveEachOther) {
    const AcGeLineSeg3d low = segment(0, 0, 4, 4), high({0, 4, 3}, AcGePoint3d(4, 0, 5));
    AcGePoint3d onLow, onHigh;
    ASSERT_TRUE(low.projIntersectWith(high, AcGeVector3d(0, 0, -2), onLow, onHigh));
    EXPECT_TRUE(onLow.isEqualTo({2, 2, 0}) && onHigh.isEqualTo({2, 2, 4}));
    EXPECT_FALSE(low.projIntersectWith(high, AcGeVector3d(1, 1, 0), onLow, onHigh));
    EXPECT_FALSE(segment(0, 0, 1, 1).projIntersectWith(high, AcGeVector3d::kZAxis, onLow, onHigh));
    EXPECT_TRUE(high.projClosestPointTo({3, 3, -9}, AcGeVector3d::kZAxis).isEqualTo({2, 2, 4}));
    const AcGeCircArc3d upright(AcGePoint3d(0, 0, 7), AcGeVector3d(0, 1, 1), 2.0);
    const AcGePoint3d seen = upright.projClosestPointTo({9, 0, 0}, AcGeVector3d::kZAxis);
    EXPECT_TRUE(seen.isEqualTo({2, 0, 7}));
    int count = 0;
    AcGePoint3d arc1, arc2, line1, line2;
    ASSERT_TRUE(upright.projIntersectWith(segment(-5, 0, 5, 0), AcGeVector3d::kZAxis, count, arc1, arc2,
                                          line1, line2));
    EXPECT_EQ(2, count);
    EXPECT_TRUE(arc1.isEqualTo({-2, 0, 7}) && line1.isEqualTo({-2, 0, 0}) && arc2.isEqualTo({2, 0, 7}));
}

struct ArcCase {
    const char* what;
    std::vector<AcGePoint2d> expected;
};

/// Runs a pair of flat curves through the plane and through space in every placement, in both orders.
template <class Curve2d>
void expectMeetings(const ArcCase& c, const Curve2d& flatOther, const AcGeCircArc2d& flatArc) {
    SCOPED_TRACE(c.what);
    int count = -1;
    AcGePoint2d flat[2] = {{7, 7}, {7, 7}};
    EXPECT_EQ(!c.expected.empty(), flatArc.intersectWith(flatOther, count, flat[0], flat[1]));
    ASSERT_EQ(static_cast<int>(c.expected.size()), count);
    const auto isExpected = [&](double x, double y) {
        for (const AcGePoint2d& e : c.expected)
            if (e.distanceTo({x, y}) < 1e-8) return true;
        return false;
    };
    for (int i = 0; i < count; ++i)
        EXPECT_TRUE(isExpected(flat[i].x, flat[i].y)) << flat[i].x << "," << flat[i].y;
    int where = 0;
    for (const AcGeMatrix3d& m : placements::ofSpace()) {
        // The scaled placement takes what is within the tolerance out of it.
        if (where++ == 2 && std::string(c.what).find("tolerance") != std::string::npos) continue;
        auto movedOther = lifted(flatOther);
        AcGeCircArc3d movedArc = lifted(flatArc);
        movedOther.transformBy(m);
        movedArc.transformBy(m);
        AcGePoint3d p[2] = {{7, 7, 7}, {7, 7, 7}};
        movedArc.intersectWith(movedOther, count, p[0], p[1]);
        ASSERT_EQ(static_cast<int>(c.expected.size()), count) << "placement " << where - 1;
        for (int i = 0; i < count; ++i) {
            const AcGePoint3d back = m.inverse() * p[i];
            EXPECT_TRUE(isExpected(back.x, back.y)) << back.x << "," << back.y << "," << back.z;
            EXPECT_TRUE(movedOther.isOn(p[i]) && movedArc.isOn(p[i]));
        }
        if (count == 0) {
            EXPECT_EQ(7.0, p[0].x);
        }
    }
}

TEST(LineAndArc, TouchCrossAndMiss) {
    const AcGeCircArc2d circle({1, 1}, 2.0), upper({1, 1}, 2.0, 0.0, AcGe::kPi),
        mirrored({1, 1}, 2.0, AcGe::kPi, AcGe::kTwoPi, {1, 0}, true);
    const AcGeCircArc2d none({0, 0}, {1, 0}, {2, 0});
    const double r = std::sqrt(3.0);
    const struct {
        ArcCase c;
        AcGeCircArc2d arc;
        AcGePoint2d from, to;
    } cases[] = {
        {{"through", {{-1, 1}, {3, 1}}}, circle, {-5, 1}, {5, 1}},
        {{"inside", {}}, circle, {0.5, 1}, {1.5, 1}},
        {{"touching", {{1, 3}}}, circle, {-5, 3}, {5, 3}},
        {{"touching with its end", {{1, 3}}}, circle, {1, 3}, {5, 3}},
        {{"touching within the tolerance", {{1, 3}}}, circle, {-5, 3 + 5e-11}, {5, 3 + 5e-11}},
        {{"beside", {}}, circle, {-5, 3.001}, {5, 3.001}},
        {{"upper half, through both ends", {{-1, 1}, {3, 1}}}, upper, {-5, 1}, {5, 1}},
        {{"upper half, upright", {{2, 1 + r}}}, upper, {2, -9}, {2, 9}},
        {{"clockwise angles name the same half", {{2, 1 + r}}}, mirrored, {2, -9}, {2, 9}},
        {{"a point on it", {{3, 1}}}, circle, {3, 1}, {3, 1}},
        {{"the degenerate arc on the line", {{0, 0}}}, none, {-1, 0}, {5, 0}},
        {{"the degenerate arc off the line", {}}, none, {-1, 1}, {5, 1}},
    };
    for (const auto& k : cases)
        for (bool reversed : {false, true}) {
            AcGeLineSeg2d line(k.from, k.to);
            AcGeCircArc2d arc = k.arc;
            if (reversed) {
                line.reverseParam();
                arc.reverseParam();
            }
            expectMeetings(k.c, line, arc);
        }
}

TEST(ArcAndArc, TouchCrossAndRunTogether) {
    const double pi = AcGe::kPi;
    const auto arc = [](double x, double y, double r, double from, double to) {
        return AcGeCircArc2d({x, y}, r, from, to);
    };
    const struct {
        ArcCase c;
        AcGeCircArc2d a, b;
    } cases[] = {
        {{"touching outside", {{2, 0}}}, {{0, 0}, 2.0}, {{5, 0}, 3.0}},
        {{"touching inside", {{2, 0}}}, {{0, 0}, 2.0}, {{-3, 0}, 5.0}},
        {{"within the tolerance of touching", {{2, 0}}}, {{0, 0}, 2.0}, {{5 + 5e-11, 0}, 3.0}},
        {{"one in the other", {}}, {{0, 0}, 2.0}, {{0.5, 0}, 5.0}},
        {{"same centre", {}}, {{0, 0}, 2.0}, {{0, 0}, 3.0}},
        {{"one of two", {{1, 2}}}, arc(0, 0, std::sqrt(5.0), 0, pi), arc(2, 0, std::sqrt(5.0), 0, pi)},
        {{"common end only", {{2, 0}}}, arc(0, 0, 2, -1, 0), arc(4, 0, 2, pi, 4)},
        {{"one circle, overlapping", {{0, 2}, {-2, 0}}},
         arc(0, 0, 2, 0, pi),
         arc(0, 0, 2, pi / 2, 3 * pi / 2)},
        {{"one circle, end to end", {{-2, 0}}}, arc(0, 0, 2, 0, pi), arc(0, 0, 2, pi, 5)},
        {{"one circle, apart", {}}, arc(0, 0, 2, 0, 1), arc(0, 0, 2, 2, 3)},
        {{"arc of a circle", {{0, 2}, {-2, 0}}}, {{0, 0}, 2.0}, arc(0, 0, 2, pi / 2, pi)},
        {{"across the seam", {{0, -2}, {0, 2}}}, {{0, 0}, 2.0}, arc(0, 0, 2, -pi / 2, pi / 2)},
        {{"the same circle", {{2, 0}}}, {{0, 0}, 2.0}, {{0, 0}, 2.0}},
        {{"the same arc", {{2, 0}, {0, 2}}}, arc(0, 0, 2, 0, pi / 2), arc(0, 0, 2, 0, pi / 2)},
    };
    for (const auto& k : cases) {
        AcGeCircArc2d reversed = k.b;
        reversed.reverseParam();
        expectMeetings(k.c, k.b, k.a);
        expectMeetings(k.c, reversed, k.a);
        // The circle that is met as a whole tells its own start; the other order is then a different point.
        if (std::string(k.c.what) != "the same circle") expectMeetings(k.c, k.a, k.b);
    }
}

TEST(ArcAndArc, NearlyTangentNeighboursMeetAtTheirVertex) {
    // A fillet drawn with a few digits only: the line leaves the arc's end at a small angle. What they have
    // in common is the vertex, not the foot of the centre beside it.
    for (double out : {0.0, 1.0e6})
        for (double angle : {0.0, 1e-9, 1e-8, 1e-7, 1e-6, 1e-5, 1e-3})
            for (double side : {-1.0, 1.0})
                for (double sense : {-1.0, 1.0}) {
                    const AcGePoint2d vertex(out + 100.0, out), center(out, out);
                    AcGeVector2d along = AcGeVector2d::kYAxis * sense;
                    along.rotateBy(angle * side);
                    const AcGeLineSeg2d line(vertex, vertex + along * 50.0);
                    const AcGeCircArc2d arc(center, 100.0, sense < 0 ? 0.0 : -1.0, sense < 0 ? 1.0 : 0.0);
                    const AcGeCircArc2d next(vertex, vertex + along.perpVector() * 30.0 + along * 30.0,
                                             vertex + along.perpVector() * 60.0);
                    int count = 0;
                    AcGePoint2d p1, p2;
                    SCOPED_TRACE(std::to_string(angle) + " " + std::to_string(side) + " " +
                                 std::to_string(sense));
                    ASSERT_TRUE(arc.intersectWith(line, count, p1, p2));
                    EXPECT_EQ(1, count);
                    EXPECT_TRUE(p1.isEqualTo(vertex)) << p1.x - vertex.x << "," << p1.y - vertex.y;
                    ASSERT_TRUE(arc.intersectWith(next, count, p1, p2));
                    EXPECT_EQ(1, count);
                    EXPECT_TRUE(p1.isEqualTo(vertex)) << p1.x - vertex.x << "," << p1.y - vertex.y;
                    // Where the arc goes on past the vertex the line may cut it a second time.
                    const AcGeCircArc2d wide(center, 100.0, -1.0, 1.0);
                    ASSERT_TRUE(wide.intersectWith(line, count, p1, p2));
                    EXPECT_TRUE(p1.isEqualTo(vertex) || (count == 2 && p2.isEqualTo(vertex)));
                }
}

TEST(ArcAndArc, RandomCrossingsAreExactAnywhere) {
    placements::Random random(41);
    double worst = 0.0, worstAcross = 0.0;
    int lines = 0, arcs = 0, across = 0;
    for (const AcGeMatrix3d& m : placements::ofSpace())
        for (int i = 0; i < 400; ++i) {
            // Two circles and two lines through one point, each with a random direction there.
            const AcGePoint3d at = random.point(10.0);
            const bool samePlane = i % 2;
            const AcGeVector3d n1 = random.vector(1.0).normal(),
                               n2 = samePlane ? n1 : random.vector(1.0).normal();
            const AcGeVector3d to1 = random.vector(5.0).orthoProject(n1),
                               to2 = random.vector(5.0).orthoProject(n2);
            const AcGeVector3d tangent1 = n1.crossProduct(to1.normal()),
                               tangent2 = n2.crossProduct(to2.normal());
            // Grazing meetings magnify what rounding does to the curves themselves.
            if (samePlane
                    ? tangent1.crossProduct(tangent2).length() < 0.3
                    : std::min(std::abs(tangent1.dotProduct(n2)), std::abs(tangent2.dotProduct(n1))) < 0.3)
                continue;
            AcGeCircArc3d first(at + to1, n1, to1.length()),
                second(at + to2, n2, -to2, to2.length(), -1.0, 1.0);
            const AcGeVector3d along = to1.normal() + tangent1 * random.between(-1, 1);
            AcGeLineSeg3d line(at - along * 0.5, at + along * 0.25),
                crossing(at - tangent1 * random.between(0.01, 10), at + tangent1 * random.between(0.01, 10));
            for (AcGeCurve3d* curve : std::initializer_list<AcGeCurve3d*>{&first, &second, &line, &crossing})
                curve->transformBy(m);
            const auto check = [&](const AcGeCurve3d& one, const AcGeCurve3d& other, int count,
                                   const AcGePoint3d(&p)[2], double& worstHere) {
                double nearest = 1e300;
                for (int k = 0; k < count; ++k) {
                    const double magnitude = std::max(
                        {one.coordinateMagnitude(), other.coordinateMagnitude(), p[k].largestCoordinate()});
                    worstHere = std::max({worstHere, inUlps(one.closestPointTo(p[k]), p[k], magnitude),
                                          inUlps(other.closestPointTo(p[k]), p[k], magnitude)});
                    nearest = std::min(nearest, p[k].distanceTo(m * at));
                }
                EXPECT_LE(nearest, 100.0 * AcGe::ulpOf((m * at).largestCoordinate() + 10.0));
            };
            AcGePoint3d p[2];
            int count = 0;
            ASSERT_TRUE(line.intersectWith(crossing, p[0]));
            check(line, crossing, 1, p, worst);
            first.intersectWith(line, count, p[0], p[1]);
            check(first, line, count, p, worst);
            ++lines;
            first.intersectWith(second, count, p[0], p[1]);
            if (samePlane) {
                check(first, second, count, p, worst);
                ++arcs;
            } else if (count > 0) {
                // Circles in different planes meet only as well as their rounded centres let them.
                check(first, second, count, p, worstAcross);
                ++across;
            }
        }
    EXPECT_GT(lines, 500);
    EXPECT_GT(arcs, 300);
    EXPECT_GT(across, 300);
    EXPECT_LE(worst, 8.0);
    EXPECT_LE(worstAcross, 24.0);
}

TEST(ArcAndArc, PlanesAndPiercingLines) {
    const AcGeCircArc3d circle(AcGePoint3d(1, 0, 0), AcGeVector3d::kZAxis, 2.0);
    int count = 0;
    AcGePoint3d p1, p2;
    EXPECT_TRUE(circle.intersectWith(AcGePlane(AcGePoint3d(1, 0, 0), AcGeVector3d::kXAxis), count, p1, p2));
    EXPECT_EQ(2, count);
    EXPECT_TRUE(circle.intersectWith(AcGePlane(AcGePoint3d(3, 0, 0), AcGeVector3d::kXAxis), count, p1, p2));
    EXPECT_EQ(1, count);
    EXPECT_FALSE(circle.intersectWith(AcGePlane(AcGePoint3d(), AcGeVector3d::kZAxis), count, p1, p2));
    const AcGeLineSeg3d pierce({3, 0, -1}, AcGePoint3d(3, 0, 1)), inside({1, 0, -1}, AcGePoint3d(1, 0, 1)),
        above({3, 0, 0.5}, AcGePoint3d(3, 0, 1));
    EXPECT_TRUE(circle.intersectWith(pierce, count, p1, p2));
    EXPECT_EQ(1, count);
    EXPECT_FALSE(circle.intersectWith(inside, count, p1, p2));
    EXPECT_FALSE(circle.intersectWith(above, count, p1, p2));
    EXPECT_EQ(0, count);
    // Linked rings that pass through each other's planes without meeting, and rings that touch in one point
    // across planes.
    EXPECT_FALSE(
        circle.intersectWith(AcGeCircArc3d(AcGePoint3d(3, 0, 0), AcGeVector3d::kYAxis, 1.0), count, p1, p2));
    EXPECT_TRUE(
        circle.intersectWith(AcGeCircArc3d(AcGePoint3d(3, 0, 1), AcGeVector3d::kYAxis, 1.0), count, p1, p2));
    EXPECT_EQ(1, count);
    EXPECT_TRUE(p1.isEqualTo({3, 0, 0}));
}

} // namespace
