// Slabs with openings become strips: nothing is lost, nothing covered twice, no opening covered.
#include "vexogeometrytools.h"

#include "contourareas.h"
#include "contourcases.h"
#include "scanlines.h"
#include "slabcases.h"

#include "dbcircle.h"
#include "dbline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <memory>
#include <string>

using namespace VEXOGeometryTools;
using namespace vexo;
using namespace contourcases;
using slabcases::Slab;

namespace {

constexpr double kAreaTolerance = 1e-7;

AcGePoint2d originOf(const AcDbPolyline& polyline) {
    const AcGePoint3d start = startOf(polyline);
    return {start.x, start.y};
}

scanlines::Figure figureOf(const Slab& slab, const AcGePoint2d& origin) {
    scanlines::Figure figure{scanlines::contourOf(*slab.contour, origin), {}};
    for (const auto& opening : slab.openings) figure.holes.push_back(scanlines::contourOf(*opening, origin));
    return figure;
}

/// Does a segment cross another one, away from both segments' ends.
bool crossesItself(const AcDbPolyline& strip, double away) {
    const unsigned int count = strip.numVerts();
    const auto isAtEnd = [&](const AcGePoint3d& point, unsigned int segment) {
        AcGePoint3d start, end;
        (void)strip.getPointAt(segment, start);
        (void)strip.getPointAt((segment + 1) % count, end);
        return point.distanceTo(start) < away || point.distanceTo(end) < away;
    };
    for (unsigned int i = 0; i < count; ++i)
        for (unsigned int j = i + 1; j < count; ++j)
            for (const AcGePoint3d& point : meetingsOf(strip, i, strip, j, AcGeTol()))
                if (!isAtEnd(point, i) && !isAtEnd(point, j)) return true;
    return false;
}

/// A closed contour's crossings with any line run to and fro in turn, unless it overlaps itself.
bool turnsBack(const std::vector<scanlines::Crossing>& crossings, double away) {
    for (std::size_t i = 1; i < crossings.size(); ++i)
        if (crossings[i].toRight == crossings[i - 1].toRight && crossings[i].y - crossings[i - 1].y > away)
            return true;
    return false;
}

/// What is wrong with the strips of a slab; nothing when they are its cut.
std::string faultOf(const Slab& slab, const Curves& strips) {
    const AcGePoint2d origin = originOf(*slab.contour);
    const scanlines::Figure figure = figureOf(slab, origin);
    const double whole = std::abs(scanlines::areaOf(figure.slab));
    const double micron = 1e-3 * slab.millimetre;
    const double allowed = 10 * micron;
    std::vector<scanlines::Contour> contours;
    double sum = 0.0;
    for (int i = 0; i < strips.count(); ++i) {
        if (!strips[i].isClosed()) return "an open strip";
        if (crossesItself(strips[i], micron)) return "a strip that crosses itself";
        contours.push_back(scanlines::contourOf(strips[i], origin));
        sum += std::abs(scanlines::areaOf(contours.back()));
    }
    const double error = sum - scanlines::freeArea(figure);
    if (!(std::abs(error) <= kAreaTolerance * whole))
        return "areas off by " + testing::PrintToString(error / whole) + " of the slab";
    const std::vector<double> breaks = scanlines::breaksOf(figure);
    const double low = breaks.front();
    const double span = breaks.back() - low;
    for (int k = 0; k < 200; ++k) {
        const double x = low + span * (k + 0.4142) / 200;
        scanlines::Intervals all;
        double lengths = 0.0;
        for (const scanlines::Contour& contour : contours) {
            if (turnsBack(scanlines::crossingsAt(contour, x), micron)) return "a strip that overlaps itself";
            for (const auto& interval : scanlines::intervalsAt(contour, x)) {
                all.push_back(interval);
                lengths += interval.second - interval.first;
            }
        }
        const scanlines::Intervals joined = scanlines::unionOf(all);
        const scanlines::Intervals slabAt = scanlines::intervalsAt(figure.slab, x);
        const double covered = lengths - scanlines::lengthOf(joined);
        const double outside = scanlines::lengthOf(joined) - scanlines::commonLength(joined, slabAt);
        const double onHoles = scanlines::commonLength(joined, figure.holesAt(x));
        if (covered > allowed) return "strips that overlap by " + std::to_string(covered);
        if (outside > allowed) return "strips outside by " + std::to_string(outside);
        if (onHoles > allowed) return "strips over openings by " + std::to_string(onHoles);
    }
    return {};
}

} // namespace

TEST(SplitContourByHoles, StripsAreTheSlabWithoutItsOpeningsForEveryKindOfSlab) {
    constexpr unsigned int seeds = 14;
    for (unsigned int kind = 0; kind < slabcases::kKinds; ++kind) {
        int faults = 0;
        std::string first;
        for (unsigned int seed = 0; seed < seeds; ++seed) {
            const Slab slab = slabcases::slabOf(kind, seed);
            const Curves strips(splitContourByHoles(slab.base, slab.dir, slab.contour.get(), slab.holes()));
            const std::string fault = faultOf(slab, strips);
            if (fault.empty()) continue;
            if (faults++ == 0) first = "seed " + std::to_string(seed) + ": " + fault;
        }
        EXPECT_EQ(faults, 0) << slabcases::nameOf(kind) << "; " << first;
    }
}

// ---- the list against its plain form ----

namespace {

/// Every piece against every hole, every pair of strips from the start after each merge.
std::vector<std::unique_ptr<AcDbPolyline>> splitPlainly(const Slab& slab) {
    std::vector<std::unique_ptr<AcDbCurve>> holes;
    for (const auto& opening : slab.openings) {
        AcDbCurve* common = getComonSurfaceFromPolylines(slab.contour.get(), opening.get());
        holes.emplace_back(common ? common : AcDbCurve::cast(opening->clone()));
    }
    struct Piece {
        std::unique_ptr<AcDbPolyline> contour;
        std::vector<bool> isDone;
    };
    const auto owned = [](void* curve) {
        return std::unique_ptr<AcDbPolyline>(AcDbPolyline::cast(static_cast<AcDbCurve*>(curve)));
    };
    std::deque<Piece> pieces;
    pieces.push_back({owned(AcDbCurve::cast(slab.contour->clone())), std::vector<bool>(holes.size())});
    std::vector<std::unique_ptr<AcDbPolyline>> strips;
    for (; !pieces.empty(); pieces.pop_front()) {
        Piece& piece = pieces.front();
        bool isCut = false;
        for (std::size_t j = 0; j < holes.size() && !isCut; ++j) {
            if (piece.isDone[j]) continue;
            for (void* part : splitContourByHole(slab.base, slab.dir, piece.contour.get(), holes[j].get())) {
                pieces.push_back({owned(part), piece.isDone});
                pieces.back().isDone[j] = true;
                isCut = true;
            }
            // Nothing comes back for a piece that the hole covers either.
            const auto common = owned(getComonSurfaceFromPolylines(piece.contour.get(), holes[j].get()));
            isCut = isCut || (common && areaOf(*common) > areaOf(*piece.contour) * (1 - 1e-9));
        }
        if (!isCut) strips.push_back(std::move(piece.contour));
    }
    for (std::size_t a = 0; a < strips.size(); ++a)
        for (std::size_t b = a + 1; b < strips.size(); ++b) {
            auto merged = owned(MergeContoursIfTheyHaveOneComonSegment(strips[a].get(), strips[b].get()));
            if (!merged) continue;
            strips.erase(strips.begin() + static_cast<std::ptrdiff_t>(b));
            strips.erase(strips.begin() + static_cast<std::ptrdiff_t>(a));
            strips.push_back(std::move(merged));
            a = 0;
            b = 0;
        }
    return strips;
}

/// Several pieces of an opening inside the slab are cut out one by one, which the plain form does not do.
bool leavesTheSlabAndComesBack(const Slab& slab) {
    return std::any_of(slab.openings.begin(), slab.openings.end(), [&](const auto& opening) {
        return commonArea(loopOf(*slab.contour), loopOf(*opening)).size() > 1;
    });
}

} // namespace

TEST(SplitContourByHoles, GivesThePiecesOfThePlainLoopsInTheirOrder) {
    int compared = 0;
    int merged = 0;
    for (unsigned int kind = 0; kind < slabcases::kKinds; ++kind)
        for (unsigned int seed = 100; seed < 104; ++seed) {
            const Slab slab = slabcases::slabOf(kind, seed);
            if (slab.openings.size() > 14 || leavesTheSlabAndComesBack(slab)) continue;
            SCOPED_TRACE(slabcases::nameOf(kind) + ", seed " + std::to_string(seed));
            const auto expected = splitPlainly(slab);
            const Curves strips(splitContourByHoles(slab.base, slab.dir, slab.contour.get(), slab.holes()));
            ASSERT_EQ(strips.count(), static_cast<int>(expected.size()));
            for (int i = 0; i < strips.count(); ++i) {
                const AcDbPolyline& plain = *expected[static_cast<std::size_t>(i)];
                const double corner = 1e-2 * slab.millimetre;
                EXPECT_NEAR(areaOf(strips[i]), areaOf(plain), 1e-7 * areaOf(*slab.contour));
                EXPECT_LT(boxOf(strips[i]).minPoint().distanceTo(boxOf(plain).minPoint()), corner);
                EXPECT_LT(boxOf(strips[i]).maxPoint().distanceTo(boxOf(plain).maxPoint()), corner);
                merged += strips[i].numVerts() > 8;
            }
            ++compared;
        }
    EXPECT_GT(compared, 70);
    EXPECT_GT(merged, 25);
}

// ---- one hole ----

namespace {

const AcGePoint3d kBase(3, 4, 0);
const AcGeVector3d kAlongX(7, 0, 0);

struct ExpectedPart {
    double x1, y1, x2, y2; ///< the box
    double area;
};

/// Cuts through tangents are nudged, which moves corners on arcs by the root of that.
constexpr double kCorner = 1e-3;

void expectParts(const Curves& strips, const std::vector<ExpectedPart>& expected) {
    ASSERT_EQ(strips.count(), static_cast<int>(expected.size()));
    for (int i = 0; i < strips.count(); ++i) {
        const auto& [x1, y1, x2, y2, area] = expected[static_cast<std::size_t>(i)];
        const AcDbExtents box = boxOf(strips[i]);
        EXPECT_LT(box.minPoint().distanceTo({x1, y1, box.minPoint().z}), kCorner) << i;
        EXPECT_LT(box.maxPoint().distanceTo({x2, y2, box.maxPoint().z}), kCorner) << i;
        EXPECT_NEAR(areaOf(strips[i]), area, 1e-5) << i;
    }
}

/// Of a slab of 20 by 10, around a hole from (8, 4) to (12, 6) and around a disc of radius 3 in its middle.
const std::vector<ExpectedPart> kAroundHole = {
    {0, 0, 8, 10, 80}, {12, 0, 20, 10, 80}, {8, 6, 12, 10, 16}, {8, 0, 12, 4, 16}};
constexpr double kHalfDisc = AcGe::kPi * 9 / 2;
const std::vector<ExpectedPart> kAroundDisc = {
    {0, 0, 7, 10, 70}, {13, 0, 20, 10, 70}, {7, 5, 13, 10, 30 - kHalfDisc}, {7, 0, 13, 5, 30 - kHalfDisc}};
/// Two legs one over the other, joined at the left; 168 in area.
const Vertices kFork = corners({0, 0, 20, 0, 20, 4, 4, 4, 4, 6, 20, 6, 20, 10, 0, 10});

using Contour = std::unique_ptr<AcDbPolyline>;

Contour tilted(Contour contour) {
    (void)contour->transformBy(AcGeMatrix3d::rotation(1.0, AcGeVector3d::kXAxis));
    return contour;
}

Curves partsOf(const Contour& slab, AcDbCurve* hole, const AcGeVector3d& dir = kAlongX) {
    return Curves(splitContourByHole(kBase, dir, slab.get(), hole));
}
Curves stripsOf(const Contour& slab, const std::vector<AcDbCurve*>& holes) {
    return Curves(splitContourByHoles(kBase, kAlongX, slab.get(), curvesOf(holes)));
}

} // namespace

TEST(SplitContourByHole, GivesLeftRightUpperAndLowerPartsEachWhereThereIsOne) {
    const struct {
        const char* name;
        Contour hole;
        std::vector<ExpectedPart> parts;
    } cases[] = {
        {"inside", panel(8, 4, 12, 6), kAroundHole},
        {"left side", panel(0, 4, 12, 6), {{12, 0, 20, 10, 80}, {0, 6, 12, 10, 48}, {0, 0, 12, 4, 48}}},
        {"over the right",
         panel(15, 4, 30, 6),
         {{0, 0, 15, 10, 150}, {15, 6, 20, 10, 20}, {15, 0, 20, 4, 20}}},
        {"over the top", panel(8, 4, 12, 16), {{0, 0, 8, 10, 80}, {12, 0, 20, 10, 80}, {8, 0, 12, 4, 16}}},
        {"across the slab", panel(8, -4, 12, 16), {{0, 0, 8, 10, 80}, {12, 0, 20, 10, 80}}},
        {"along the slab", panel(-8, 4, 32, 6), {{0, 6, 20, 10, 80}, {0, 0, 20, 4, 80}}},
        {"round, its cuts nudged off the tangents", polylineOf(circle(10, 5, 3), true), kAroundDisc},
        {"apart", panel(30, 4, 32, 6), {}},
        {"touching from outside", panel(20, 4, 32, 6), {}},
        {"the contour itself", panel(0, 0, 20, 10), {}},
        {"around the contour", panel(-1, -1, 21, 11), {}},
        {"a breath inside, less than the nudges", panel(20 - 1e-9, 4, 32, 6), {}}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        const Contour slab = panel(0, 0, 20, 10);
        expectParts(partsOf(slab, each.hole.get()), each.parts);
        EXPECT_EQ(areaOf(*slab), 200.0) << "the contour stays as it was";
    }
}

TEST(SplitContourByHole, RunsItsPartsAlongTheDirection) {
    // Seen with the direction to the right: left is where it comes from.
    const Contour slab = panel(0, 0, 20, 10);
    const Contour hole = panel(8, 4, 12, 6);
    expectParts(partsOf(slab, hole.get(), AcGeVector3d(0, 2, 9)),
                {{0, 0, 20, 4, 80}, {0, 6, 20, 10, 80}, {0, 4, 8, 6, 16}, {12, 4, 20, 6, 16}});
    expectParts(partsOf(slab, hole.get(), AcGeVector3d(-1, 0, 0)),
                {{12, 0, 20, 10, 80}, {0, 0, 8, 10, 80}, {8, 0, 12, 4, 16}, {8, 6, 12, 10, 16}});
    const AcGePoint3d elsewhere(-1e5, 777, 3);
    expectParts(Curves(splitContourByHole(elsewhere, kAlongX, slab.get(), hole.get())), kAroundHole);
}

TEST(SplitContourByHole, CutsAConcaveContourOnlyAtThePartThatHoldsTheHole) {
    // The lines through a hole in one leg cross both.
    const Contour fork = polylineOf(kFork, true);
    expectParts(partsOf(fork, panel(8, 7, 12, 9).get()),
                {{0, 0, 20, 10, 168 - 32 - 16}, {12, 6, 20, 10, 32}, {8, 9, 12, 10, 4}, {8, 6, 12, 7, 4}});
    expectParts(partsOf(fork, panel(8, 1, 12, 3).get()),
                {{0, 0, 20, 10, 168 - 32 - 16}, {12, 0, 20, 4, 32}, {8, 3, 12, 4, 4}, {8, 0, 12, 1, 4}});
    // Across both: what lies on one side, upwards.
    expectParts(
        partsOf(fork, panel(8, 1, 12, 9).get()),
        {{0, 0, 8, 10, 72}, {12, 0, 20, 4, 32}, {12, 6, 20, 10, 32}, {8, 9, 12, 10, 4}, {8, 0, 12, 1, 4}});
    // The lines cross both legs, and the cut at the lower one alone is right: the upper one stays whole.
    expectParts(partsOf(fork, panel(2, 1, 8, 5).get()),
                {{0, 0, 2, 10, 20}, {8, 0, 20, 4, 48}, {2, 5, 20, 10, 74}, {2, 0, 8, 1, 6}});
    // Over the end of the upper leg: that end goes, not the other one, which is as large.
    Slab overEnd{polylineOf(kFork, true), {}, kBase, kAlongX, 1.0};
    overEnd.openings.push_back(panel(18, 5.5, 21, 10.5));
    const Curves rest = partsOf(overEnd.contour, overEnd.openings[0].get());
    expectParts(rest, {{0, 0, 20, 10, 168 - 8}});
    EXPECT_EQ(faultOf(overEnd, rest), "");
    // In the notch: inside the contour's box and outside the contour.
    expectParts(partsOf(fork, panel(8, 4.5, 12, 5.5).get()), {});
}

TEST(SplitContourByHole, GivesSeveralStripsWhereTheHoleLeavesSeveral) {
    // A hole with two prongs to the left, or two tips to the right, leaves a strip between them; one that
    // touches the upper side in a point parts the upper strip.
    const Contour slab = panel(0, 0, 20, 10);
    expectParts(
        partsOf(slab, polylineOf(corners({3, 1, 6, 2, 4, 4, 6, 6, 3, 7}), true).get()),
        {{0, 0, 3, 10, 30}, {6, 0, 20, 10, 140}, {3, 6, 6, 10, 10.5}, {4, 2, 6, 6, 4}, {3, 0, 6, 2, 4.5}});
    const auto prongs = polylineOf(corners({8, 2, 14, 2, 14, 8, 8, 8, 8, 6, 12, 5, 8, 4}), true);
    const Curves pronged = partsOf(slab, prongs.get());
    EXPECT_EQ(pronged.count(), 5);
    EXPECT_NEAR(pronged.area(), 200 - 36 + 4, 1e-6);
    expectParts(
        partsOf(slab, polylineOf(corners({6, 4, 14, 4, 10, 10}), true).get()),
        {{0, 0, 6, 10, 60}, {14, 0, 20, 10, 60}, {6, 4, 10, 10, 12}, {10, 4, 14, 10, 12}, {6, 0, 14, 4, 32}});
}

TEST(SplitContourByHole, TakesAnyClosedHoleAtAnyHeightAndKeepsTheContoursPlaneAndSense) {
    AcDbCircle circle(AcGePoint3d(10, 5, -3), AcGeVector3d::kZAxis, 3.0);
    for (const bool isReversed : {false, true})
        for (const bool isMirrored : {false, true}) {
            // Seen from below x counts to the left.
            const Vertices vertices = rectangle(isMirrored ? -20 : 0, 0, 20, 10);
            const auto slab = polylineOf(isReversed ? reversed(vertices) : vertices, true);
            if (isMirrored) slab->setNormal(-AcGeVector3d::kZAxis);
            slab->setElevation(12.5);
            slab->setColorIndex(3);
            const Curves strips = partsOf(slab, &circle);
            expectParts(strips, kAroundDisc);
            for (int i = 0; i < strips.count(); ++i) {
                EXPECT_EQ(strips[i].normal(), slab->normal());
                EXPECT_EQ(strips[i].elevation(), 12.5);
                EXPECT_EQ(strips[i].colorIndex(), 3);
                EXPECT_EQ(isContourClockWise(&strips[i]), isContourClockWise(slab.get()));
            }
        }
}

// ---- many holes ----

TEST(SplitContourByHoles, PassesOverHolesThatAreNoneAndGivesTheCloneForNoHoles) {
    const Contour slab = panel(0, 0, 20, 10);
    slab->setConstantWidth(0.5);
    const auto open = polylineOf(corners({8, 4, 12, 4, 12, 6}), false);
    const auto flat = polylineOf(corners({8, 4, 12, 4, 10, 4}), true);
    const Contour upright = tilted(panel(8, 4, 12, 6));
    AcDbLine line(AcGePoint3d(1, 1, 0), AcGePoint3d(9, 9, 0));
    const std::vector<AcDbCurve*> holes = {nullptr, open.get(), flat.get(), upright.get(), &line};
    const Curves whole = stripsOf(slab, holes);
    ASSERT_EQ(whole.count(), 1);
    double width = 0.0;
    EXPECT_EQ(whole[0].getConstantWidth(width), Acad::eOk);
    EXPECT_EQ(width, 0.5) << "untouched, to the width";
    for (AcDbCurve* hole : holes) EXPECT_EQ(partsOf(slab, hole).count(), 0);
    EXPECT_EQ(stripsOf(slab, {panel(-5, -5, 50, 50).get()}).count(), 0) << "nothing is left";
    // One that stands beside the slab and reaches into it by rounding alone.
    for (const double inside : {1e-9, 1e-11, 1e-13})
        EXPECT_EQ(stripsOf(slab, {panel(20.0 - inside, 2, 24, 8).get()}).count(), 1) << inside;
}

TEST(SplitContourByHoles, GivesNothingForContoursAndDirectionsThatAreNone) {
    const Contour slab = panel(0, 0, 20, 10);
    const Contour hole = panel(8, 4, 12, 6);
    const auto open = polylineOf(rectangle(0, 0, 20, 10), false);
    const auto flat = polylineOf(corners({0, 0, 20, 0, 10, 0}), true);
    const Contour upright = tilted(panel(0, 0, 20, 10));
    AcDbPolyline empty;
    const double nan = kNaN;
    const struct {
        const char* name;
        AcDbPolyline* contour;
        AcGePoint3d base;
        AcGeVector3d dir;
    } cases[] = {{"null", nullptr, kBase, kAlongX},
                 {"no vertices", &empty, kBase, kAlongX},
                 {"open", open.get(), kBase, kAlongX},
                 {"no area", flat.get(), kBase, kAlongX},
                 {"upright", upright.get(), kBase, kAlongX},
                 {"zero direction", slab.get(), kBase, AcGeVector3d(0, 0, 0)},
                 {"direction along Z", slab.get(), kBase, AcGeVector3d(0, 0, 1)},
                 {"direction is no number", slab.get(), kBase, AcGeVector3d(nan, 1, 0)},
                 {"base is no number", slab.get(), AcGePoint3d(0, nan, 0), kAlongX}};
    for (const auto& [name, contour, base, dir] : cases) {
        EXPECT_TRUE(splitContourByHoles(base, dir, contour, curvesOf({hole.get()})).isEmpty()) << name;
        EXPECT_TRUE(splitContourByHole(base, dir, contour, hole.get()).isEmpty()) << name;
    }
}
