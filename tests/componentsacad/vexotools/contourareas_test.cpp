// Common parts, remainders and unions: areas against scan lines and against each other, loops against what
// the header promises of them.
#include "areacases.h"
#include "contourareas.h"
#include "contourloopsegment.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

using namespace vexo;
using namespace areacases;

namespace {

constexpr double kAnyError = std::numeric_limits<double>::infinity();

struct Parts {
    ContourArea common, firstOnly, secondOnly, joined;
};

Parts partsOf(const ContourLoop& first, const ContourLoop& second) {
    return {commonArea(first, second), areaWithout(first, second), areaWithout(second, first),
            joinedArea(first, second)};
}

/// The largest error of the three sums, as a share of both areas.
double identityError(const Parts& parts, double first, double second) {
    const double common = trueArea(parts.common);
    return std::max({std::abs(common + trueArea(parts.firstOnly) - first),
                     std::abs(common + trueArea(parts.secondOnly) - second),
                     std::abs(common + trueArea(parts.joined) - first - second)}) /
           (first + second);
}

/// By the drawing's own curve.
double distanceFrom(const AcDbPolyline& curve, const AcGePoint3d& point) {
    AcGePoint3d closest;
    return curve.getClosestPointTo(point, closest) == Acad::eOk ? closest.distanceTo(point) : 1e300;
}

/// Loops in order, none through a node twice, every segment on a line or circle of the input.
std::string faultOf(const ContourArea& area, const ContourLoop& first, const ContourLoop& second) {
    const double tolerance = areaTolerance({first}, {second});
    const auto firstCurve = polylineOf(first, AcGeVector3d::kZAxis, 0.0);
    const auto secondCurve = polylineOf(second, AcGeVector3d::kZAxis, 0.0);
    const auto isOff = [&](const AcGePoint3d& point) {
        return std::min(distanceFrom(*firstCurve, point), distanceFrom(*secondCurve, point)) > 4 * tolerance;
    };
    bool hasOpening = false;
    double last = 1e300;
    for (const ContourLoop& loop : area) {
        const double size = signedArea(loop);
        if (hasOpening && size > 0.0) return "an outer loop after an opening";
        if (!hasOpening && size < 0.0) last = 1e300;
        if (std::abs(size) > last) return "a larger loop after a smaller one";
        hasOpening = size < 0.0;
        last = std::abs(size);
        const auto curve = polylineOf(loop, AcGeVector3d::kZAxis, 0.0);
        for (std::size_t i = 0; i < loop.vertices.size(); ++i) {
            AcGePoint3d point, middle;
            (void)curve->getPointAt(static_cast<unsigned int>(i), point);
            (void)curve->getPointAtParam(static_cast<double>(i) + 0.5, middle);
            if (isOff(point)) return "a vertex off the input";
            if (isOff(middle)) return "a segment off the input";
            for (std::size_t j = 0; j < i; ++j)
                if (std::hypot(loop.vertices[j].x - point.x, loop.vertices[j].y - point.y) < tolerance)
                    return "a loop through a point twice";
        }
    }
    return {};
}

/// What is wrong with the parts of two contours: the sums, the common area by scan lines (unless any error is
/// allowed), both as shares of the areas, and the loops where they are asked for.
std::string faultOf(const Vertices& a, const Vertices& b, double allowedSum, double allowedArea,
                    bool areLoopsAsked) {
    const ContourLoop first = loopOf(a);
    const ContourLoop second = loopOf(b);
    const Parts parts = partsOf(first, second);
    const double size = trueArea(first) + trueArea(second);
    const double sumError = identityError(parts, trueArea(first), trueArea(second));
    std::string fault;
    if (!(sumError < allowedSum)) fault += "sums off by " + testing::PrintToString(sumError);
    if (allowedArea < kAnyError) {
        const double areaError = std::abs(trueArea(parts.common) - commonAreaByScanlines(a, b)) / size;
        if (!(areaError < allowedArea)) fault += " area off by " + testing::PrintToString(areaError);
    }
    if (areLoopsAsked)
        for (const ContourArea* area : {&parts.common, &parts.firstOnly, &parts.secondOnly, &parts.joined})
            fault += faultOf(*area, first, second);
    if (fault.empty()) return fault;
    return fault + "\n" + testing::PrintToString(a) + "\n" + testing::PrintToString(b);
}

/// How often a loop runs round a point; no number for a point within `least` of it.
double windingSeen(const ContourLoop& loop, const AcGePoint2d& from, double least) {
    const auto curve = polylineOf(loop, AcGeVector3d::kZAxis, 0.0);
    if (distanceFrom(*curve, AcGePoint3d(from.x, from.y, 0)) < least) return kNaN;
    return scanlines::windingAt(scanlines::contourOf(*curve, from), 0.0, 0.0);
}

struct State {
    const char* name;
    bool isTurned;
    double offset;
};
constexpr State kStates[] = {{"as they stand", false, 0}, {"turned", true, 0}, {"moved", true, 1e6}};

} // namespace

// All pairs by the sums, every fourth also by scan lines. Worst errors seen: sums 4e-13 (moved; 6e-16
// elsewhere). The scan lines themselves are good to 3e-9.
TEST(ContourAreas, PairsOnAGridInAllStates) {
    for (const State& state : kStates) {
        SCOPED_TRACE(state.name);
        std::mt19937 random(20);
        for (int i = 0; i < 10000; ++i) {
            const double angle = state.isTurned ? std::uniform_real_distribution<double>(0, 6)(random) : 0.0;
            const Vertices a = moved(onGrid(random), angle, state.offset, -state.offset);
            const Vertices b = moved(onGrid(random), angle, state.offset, -state.offset);
            const double allowedArea = i % 4 ? kAnyError : 1e-8;
            ASSERT_EQ(faultOf(a, b, 1e-11, allowedArea, i % 10 == 0), "") << "pair " << i;
        }
    }
}

// Vertices shaken by a little less, about and more than the tolerance: no length at which it goes wrong.
TEST(ContourAreas, PairsShakenAboutTheTolerance) {
    for (const double shake : {1e-9, 1e-8, 3e-8, 1e-7, 3e-7, 1e-6, 1e-4}) {
        std::mt19937 random(7);
        std::uniform_real_distribution<double> step(-shake, shake);
        for (int i = 0; i < 600; ++i) {
            const double angle = i % 3 ? 0.0 : 0.7;
            const Vertices a = moved(onGrid(random), angle, 0, 0);
            Vertices b = i % 2 ? a : moved(onGrid(random), angle, 0, 0);
            for (auto& vertex : b) {
                vertex[0] += step(random);
                vertex[1] += step(random);
            }
            ASSERT_EQ(faultOf(a, b, 1e-8, 1e-7 + shake / 100, false), "") << "shaken by " << shake;
        }
    }
}

TEST(ContourAreas, StarsWithArcs) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> shift(-8, 8);
    for (int i = 0; i < 100; ++i) {
        const int count = 4 + i % 30;
        const double offset = i % 3 ? 0.0 : 1e6;
        const Vertices a = contourcases::randomContour(random, count, offset);
        Vertices b = moved(contourcases::randomContour(random, count / 2 + 2, 0.0), shift(random),
                           offset + shift(random), offset + shift(random));
        if (i % 2) b = reversed(b);
        ASSERT_EQ(faultOf(a, b, 1e-11, 1e-8, true), "") << "pair " << i;
    }
}

// A loop bounds all that it runs round, however it crosses itself: asked at points away from all boundaries.
TEST(ContourAreas, ContoursThatCrossThemselves) {
    for (const State& state : kStates) {
        SCOPED_TRACE(state.name);
        std::mt19937 random(17);
        std::uniform_real_distribution<double> coordinate(-1.5, 4.5);
        int asked = 0;
        for (int i = 0; i < 250; ++i) {
            const double angle = state.isTurned ? 0.1 + i : 0.0;
            const auto placed = [&](const Vertices& v) {
                return moved(v, angle, state.offset, -state.offset);
            };
            // On a lattice of four by four: through themselves, back on themselves, through a point often.
            const ContourLoop first = loopOf(placed(latticeRun(random, 8, 3, 0.0, 0.0)));
            const ContourLoop second = loopOf(placed(latticeRun(random, 8, 3, 0.0, 0.0)));
            const Parts parts = partsOf(first, second);
            for (int k = 0; k < 10; ++k) {
                const Vertices at = placed({{coordinate(random), coordinate(random), 0}});
                const AcGePoint2d point(at[0][0], at[0][1]);
                const double one = windingSeen(first, point, 0.005);
                const double two = windingSeen(second, point, 0.005);
                if (std::isnan(one) || std::isnan(two)) continue;
                const auto coverage = [&](const ContourArea& area) {
                    double sum = 0.0;
                    for (const ContourLoop& loop : area) sum += windingSeen(loop, point, 0.0);
                    return sum;
                };
                const bool isIn[] = {one != 0.0, two != 0.0};
                ASSERT_EQ(coverage(parts.common), isIn[0] && isIn[1]) << "pair " << i;
                ASSERT_EQ(coverage(parts.firstOnly), isIn[0] && !isIn[1]) << "pair " << i;
                ASSERT_EQ(coverage(parts.joined), isIn[0] || isIn[1]) << "pair " << i;
                ++asked;
            }
        }
        EXPECT_GT(asked, 2000);
    }
}

// A slab with openings that overlap each other and cross its edge, by taking them away one by one and at
// once.
TEST(ContourAreas, OpeningsOneByOneAndAtOnce) {
    std::mt19937 random(11);
    for (int i = 0; i < 60; ++i) {
        const Vertices outline = roundedRectangle(0, 0, 1200, 900, i % 4 * kGrid);
        ContourArea oneByOne{loopOf(outline)};
        ContourArea atOnce = oneByOne;
        scanlines::Figure figure{scanlinesOf(outline, {0, 0}), {}};
        for (int k = 0; k < i % 12; ++k) {
            Vertices opening = moved(onGrid(random), 0, 0, 0);
            for (auto& vertex : opening) vertex = {vertex[0] / 3, vertex[1] / 3, vertex[2]};
            if (signedArea(loopOf(opening)) < 0.0) opening = reversed(opening);
            oneByOne = areaWithout(oneByOne, {loopOf(opening)});
            atOnce.push_back(loopOf(reversed(opening)));
            figure.holes.push_back(scanlinesOf(opening, {0, 0}));
        }
        const double expected = scanlines::freeArea(figure);
        EXPECT_NEAR(trueArea(oneByOne), expected, 1e-3) << "slab " << i;
        EXPECT_NEAR(trueArea(joinedArea(atOnce, {})), trueArea(oneByOne), 1e-8) << "slab " << i;
        EXPECT_NEAR(trueArea(areaWithout(oneByOne, atOnce)), 0.0, 1e-6) << "slab " << i;
    }
}

TEST(ContourAreas, VerticesAndWholeArcsStayToTheBit) {
    Vertices slab = {{0.1, 0.2, 0.3}, {7.7, 0.3, 0}, {8.1, 6.6, -0.37}, {0.7, 7.1, 0}};
    const ContourArea same = commonArea(loopOf(slab), loopOf(rectangle(-100, -100, 200, 200)));
    ASSERT_EQ(same.size(), 1u);
    Vertices left = verticesOf(same[0]);
    std::sort(slab.begin(), slab.end());
    std::sort(left.begin(), left.end());
    EXPECT_EQ(left, slab);
}

TEST(ContourAreas, WhatBoundsNothing) {
    const ContourLoop square = loopOf(rectangle(0, 0, 1, 1));
    const double infinite = std::numeric_limits<double>::infinity();
    const ContourLoop nothings[] = {
        {},
        loopOf({{0, 0, 0}}),
        loopOf({{0, 0, 0}, {1, 1, 0}}),
        loopOf({{0, 0, 0.5}, {1, 1, -0.5}}),
        loopOf({{0.5, 0.5, 1}, {0.5, 0.5, 1}}),
        loopOf({{0, 0, 0}, {1, kNaN, 0}, {1, 1, 0}}),
        loopOf({{0, 0, 0}, {infinite, 0, 0}, {1, 1, 0}}),
        loopOf({{0, 0, kNaN}, {1, 0, 0}, {1, 1, 0}}),
        loopOf({{0, 0, 0}, {1e200, 0, 0}, {1, 1e200, 0}}),
        loopOf({{0, 0, 0}, {1, 0, 0}, {0.3, 0, 0}, {2, 0, 0}}),
    };
    for (const ContourLoop& nothing : nothings) {
        SCOPED_TRACE(testing::PrintToString(verticesOf(nothing)));
        EXPECT_TRUE(commonArea(square, nothing).empty());
        EXPECT_TRUE(areaWithout(nothing, square).empty());
        EXPECT_NEAR(trueArea(areaWithout(square, nothing)), 1.0, 1e-14);
        EXPECT_NEAR(trueArea(joinedArea(nothing, square)), 1.0, 1e-14);
    }
    EXPECT_TRUE(commonArea(ContourArea{}, ContourArea{}).empty());
}

TEST(ContourAreas, WhereAnAreaIsNotCoveredOnce) {
    const auto box = [](double x, double y, double width, double height) {
        return loopOf(rectangle(x, y, width, height));
    };
    // A square with an opening, and the strips around it.
    const ContourLoop opening = box(1, 1, 1, 1);
    const ContourArea area = {box(0, 0, 4, 4), vexo::reversed(opening)};
    const ContourLoop left = box(0, 0, 1, 4);
    const ContourLoop right = box(2, 0, 2, 4);
    const ContourLoop upper = box(1, 2, 1, 2);
    const ContourLoop lower = box(1, 0, 1, 1);
    const struct {
        const char* name;
        ContourArea parts;
        double wrong;
    } cases[] = {{"once", {left, right, upper, lower}, 0},
                 {"nothing", {}, 15},
                 {"a gap", {left, right, upper}, 1},
                 {"one twice", {left, right, upper, lower, lower}, 1},
                 {"on the opening", {left, right, box(1, 1, 1, 3), lower}, 1},
                 {"on the opening for a gap, with the right sum", {left, right, upper, opening}, 2},
                 {"beside", {left, box(3, 0, 2, 4), upper, lower}, 8},
                 {"clockwise", {left, right, upper, vexo::reversed(lower)}, 1}};
    for (const auto& each : cases)
        EXPECT_NEAR(trueArea(wronglyCovered(area, each.parts)), each.wrong, 1e-12) << each.name;
}

TEST(ContourAreas, SignedAreaOfArcs) {
    EXPECT_NEAR(signedArea(loopOf(circle(1e6, -1e6, 2))), 4 * AcGe::kPi, 1e-9);
    EXPECT_NEAR(signedArea(loopOf(reversed(capsule(0, 0, 3, 1, true)))), -6 - AcGe::kPi, 1e-14);
    // Beside a chord of 1: R^2 (t - sin t) / 2 in a wider type, on both sides of where the series takes over.
    for (const double bulge : {1e-12, 1e-5, 0.01, 0.0499, 0.0501, 0.3, 1.0, 5.0, 300.0}) {
        const long double b = bulge;
        const long double angle = 4 * std::atan(b);
        const long double radius = (1 + b * b) / (4 * b);
        const long double exact =
            bulge < 1e-3 ? b / 3 * (1 + b * b / 5) : radius * radius * (angle - std::sin(angle)) / 2;
        const double area = signedArea(loopOf({{0, 0, bulge}, {1, 0, 0}}));
        EXPECT_NEAR(area / static_cast<double>(exact), 1.0, 1e-13) << bulge;
    }
}

TEST(ContourAreas, SidesOfALoopAreHalfCirclesAtMost) {
    for (const double bulge : {-5.3, -1.0, 0.0, 0.2, 1.1, 40.0}) {
        const ContourLoop loop = loopOf({{0, 0, bulge}, {1, 0, 0}, {1, 0, 0}, {1, 2, -bulge}});
        ContourLoop again;
        for (const PlaneSegment& side : planeSegmentsOf(loop)) {
            EXPECT_LE(std::abs(side.bulge()), 1.0) << bulge;
            again.vertices.push_back({side.start().x, side.start().y, side.bulge()});
        }
        EXPECT_NEAR(signedArea(again), signedArea(loop), 1e-11 * std::abs(signedArea(loop))) << bulge;
    }
}

TEST(ContourAreas, StraightVerticesGo) {
    const double eighth = std::tan(AcGe::kPi / 16);
    const struct {
        const char* name;
        Vertices vertices;
        std::size_t kept;
    } cases[] = {
        {"one on a side", {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}}, 4},
        {"first and last", {{1, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}, {0, 0, 0}, {0.5, 0, 0}}, 4},
        {"repeated", {{0, 0, 0}, {2, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}, {0, 0, 0}}, 4},
        {"a turn stays", {{0, 0, 0}, {1, 1e-6, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}}, 5},
        {"a reversal stays", {{0, 0, 0}, {3, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}}, 5},
        {"arcs of one circle",
         {{0, -1, eighth}, {std::sqrt(0.5), -std::sqrt(0.5), eighth}, {1, 0, 0}, {0, 0, 0}},
         3},
        {"arcs of two circles", {{0, 0, 0}, {2, 0, kQuarter}, {3, 1, kQuarter / 2}, {3, 2, 0}, {0, 2, 0}}, 5},
        {"quarters of a circle",
         {{1, 0, kQuarter}, {0, 1, kQuarter}, {-1, 0, kQuarter}, {0, -1, kQuarter}},
         2},
        {"a bit of an arc behind a side",
         {{0, 0, 0}, {2, 0, 2.5e-9}, {2 + 1e-8, 0, 0}, {2, 2, 0}, {0, 2, 0}},
         4},
    };
    for (const auto& c : cases)
        for (const double offset : {0.0, 1000.0}) {
            const ContourLoop loop = loopOf(moved(c.vertices, 0.0, offset, offset));
            const ContourLoop kept = withoutStraightVertices(loop);
            EXPECT_EQ(kept.vertices.size(), c.kept) << c.name;
            EXPECT_NEAR(signedArea(kept), signedArea(loop), 1e-9) << c.name;
            for (const ContourVertex& vertex : kept.vertices)
                EXPECT_TRUE(vertex.bulge == 0.0 || std::abs(vertex.bulge) > 1e-6) << c.name;
        }
}
