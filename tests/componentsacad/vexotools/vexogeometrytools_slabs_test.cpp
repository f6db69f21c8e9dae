// Slabs with openings become strips: nothing is lost, nothing covered twice, no opening covered.
#include "vexogeometrytools.h"

#include "contourareas.h"
#include "contourcases.h"
#include "plaincontour.h"
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

/// Does a segment cross another one, away from both segments' ends, or two straight ones run along each
/// other.
bool crossesItself(const AcDbPolyline& strip, double away) {
    const unsigned int count = strip.numVerts();
    const auto isAtEnd = [&](const AcGePoint3d& point, unsigned int segment) {
        AcGePoint3d start, end;
        (void)strip.getPointAt(segment, start);
        (void)strip.getPointAt((segment + 1) % count, end);
        return point.distanceTo(start) < away || point.distanceTo(end) < away;
    };
    const auto runTogether = [&](unsigned int i, unsigned int j) {
        AcGeLineSeg3d a, b;
        AcGeCircArc3d arc, other;
        if (strip.getArcSegAt(i, arc) == Acad::eOk && strip.getArcSegAt(j, other) == Acad::eOk) {
            AcGePoint3d apex;
            return arc.center().distanceTo(other.center()) + std::abs(arc.radius() - other.radius()) < away &&
                   getMiddleOfArc(other, apex) && arc.distanceTo(apex) < away;
        }
        if (strip.getLineSegAt(i, a) != Acad::eOk || strip.getLineSegAt(j, b) != Acad::eOk) return false;
        const AcGeVector3d along = a.direction();
        const auto place = [&](const AcGePoint3d& p) { return (p - a.startPoint()).dotProduct(along); };
        const auto off = [&](const AcGePoint3d& p) {
            return (p - a.startPoint()).crossProduct(along).length();
        };
        const auto [low, high] = std::minmax({place(b.startPoint()), place(b.endPoint())});
        return std::max(off(b.startPoint()), off(b.endPoint())) < 0.1 * away &&
               std::min(high, a.length()) - std::max(low, 0.0) > away;
    };
    for (unsigned int i = 0; i < count; ++i)
        for (unsigned int j = i + 1; j < count; ++j) {
            if (runTogether(i, j)) return true;
            for (const AcGePoint3d& point : meetingsOf(strip, i, strip, j, AcGeTol()))
                if (!isAtEnd(point, i) && !isAtEnd(point, j)) return true;
        }
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

// ---- against the plain steps ----

namespace {

using plaincontour::Owned;

/// In the XY plane, the other way round for a look from below.
std::unique_ptr<AcDbPolyline> flatOf(const AcDbPolyline& polyline) {
    Vertices vertices;
    for (unsigned int i = 0; i < polyline.numVerts(); ++i) {
        AcGePoint3d point;
        (void)polyline.getPointAt(i, point);
        vertices.push_back({point.x, point.y, bulgeOf(polyline, i) * (polyline.normal().z < 0 ? -1 : 1)});
    }
    return polylineOf(vertices, true);
}

/// Does a strip touch itself: it is two strips then.
bool isPinched(const AcDbPolyline& strip, double away) {
    const unsigned int count = strip.numVerts();
    for (unsigned int i = 0; i < count; ++i)
        for (unsigned int step = 1; step + 1 < count; ++step) {
            AcGePoint3d point;
            AcGeLineSeg3d line;
            AcGeCircArc3d arc;
            (void)strip.getPointAt(i, point);
            const unsigned int j = (i + step) % count;
            if (strip.getLineSegAt(j, line) == Acad::eOk
                    ? line.distanceTo(point) < away
                    : strip.getArcSegAt(j, arc) == Acad::eOk && arc.distanceTo(point) < away)
                return true;
        }
    return false;
}

/// As faultOf, of parts in the form of the plain steps.
std::string faultOf(const Slab& slab, const std::vector<Owned>& parts) {
    for (const Owned& part : parts)
        if (isPinched(*AcDbPolyline::cast(part.get()), 1e-3 * slab.millimetre)) return "a pinched strip";
    AcArray<void*> copies;
    for (const Owned& part : parts) copies.append(static_cast<AcDbCurve*>(AcDbCurve::cast(part->clone())));
    return faultOf(slab, Curves(copies));
}

/// Crumbs do not count.
void expectSameParts(const Slab& slab, const Curves& parts, const std::vector<Owned>& expected) {
    const double crumb = slab.millimetre * slab.millimetre;
    std::vector<const AcDbCurve*> given, wanted;
    for (int i = 0; i < parts.count(); ++i)
        if (areaOf(parts[i]) > crumb) given.push_back(&parts[i]);
    for (const Owned& part : expected)
        if (areaOf(*part) > crumb) wanted.push_back(part.get());
    ASSERT_EQ(given.size(), wanted.size());
    for (std::size_t i = 0; i < given.size(); ++i) {
        const AcDbCurve& own = *given[i];
        const AcDbCurve& plain = *wanted[i];
        // A cut at an arc's tangent, by a nudge more or less, moves its ends by the root of that.
        const double corner = 1e-2 * slab.millimetre + 3e-4 * std::sqrt(2000 * slab.millimetre);
        EXPECT_NEAR(areaOf(own), areaOf(plain), 1e-7 * areaOf(*slab.contour)) << i;
        EXPECT_LT(boxOf(own).minPoint().distanceTo(boxOf(plain).minPoint()), corner) << i;
        EXPECT_LT(boxOf(own).maxPoint().distanceTo(boxOf(plain).maxPoint()), corner) << i;
    }
}

/// Each piece against each opening, then pairs of strips from the start after each merge.
std::vector<Owned> splitPlainly(const Slab& slab) {
    struct Piece {
        Owned contour;
        std::vector<bool> isDone;
    };
    std::vector<Owned> holes;
    for (const auto& opening : slab.openings) {
        AcDbCurve* common = getComonSurfaceFromPolylines(slab.contour.get(), opening.get());
        holes.emplace_back(common ? common : AcDbCurve::cast(opening->clone()));
    }
    std::deque<Piece> pieces;
    pieces.push_back({plaincontour::cloneOf(*slab.contour), std::vector<bool>(holes.size())});
    std::vector<Owned> strips;
    for (; !pieces.empty(); pieces.pop_front()) {
        Piece& piece = pieces.front();
        bool isCut = false;
        for (std::size_t j = 0; j < holes.size() && !isCut; ++j) {
            if (piece.isDone[j]) continue;
            for (Owned& part :
                 plaincontour::splitAround(slab.base, slab.dir, *AcDbPolyline::cast(piece.contour.get()),
                                           *AcDbPolyline::cast(holes[j].get()))) {
                pieces.push_back({std::move(part), piece.isDone});
                pieces.back().isDone[j] = true;
                isCut = true;
            }
        }
        if (!isCut) strips.push_back(std::move(piece.contour));
    }
    for (std::size_t a = 0; a < strips.size(); ++a)
        for (std::size_t b = a + 1; b < strips.size(); ++b) {
            Owned merged(MergeContoursIfTheyHaveOneComonSegment(strips[a].get(), strips[b].get()));
            if (!merged) continue;
            strips.erase(strips.begin() + static_cast<std::ptrdiff_t>(b));
            strips.erase(strips.begin() + static_cast<std::ptrdiff_t>(a));
            strips.push_back(std::move(merged));
            a = 0;
            b = 0;
        }
    return strips;
}

/// What the plain steps take: everything in the XY plane.
Slab flatSlabOf(unsigned int kind, unsigned int seed) {
    Slab slab = slabcases::slabOf(kind, seed);
    slab.contour = flatOf(*slab.contour);
    for (auto& opening : slab.openings) opening = flatOf(*opening);
    return slab;
}

} // namespace

TEST(SplitContourByHole, GivesThePartsOfThePlainStepsWhereTheseAreRight) {
    int compared = 0, several = 0;
    for (unsigned int kind = 0; kind < slabcases::kKinds; ++kind)
        for (unsigned int seed = 200; seed < 300; ++seed) {
            Slab slab = flatSlabOf(kind, seed);
            if (slab.openings.empty()) continue;
            slab.openings.resize(1);
            const std::vector<Owned> plain =
                plaincontour::splitAround(slab.base, slab.dir, *slab.contour, *slab.openings[0]);
            if (plain.empty() || !faultOf(slab, plain).empty()) continue;
            SCOPED_TRACE(slabcases::nameOf(kind) + ", seed " + std::to_string(seed));
            expectSameParts(
                slab,
                Curves(splitContourByHole(slab.base, slab.dir, slab.contour.get(), slab.openings[0].get())),
                plain);
            ++compared;
            several += plain.size() == 4;
        }
    EXPECT_GT(compared, 400);
    EXPECT_GT(several, 350);
}

TEST(SplitContourByHoles, GivesThePiecesOfThePlainLoopsWhereTheseAreRight) {
    int compared = 0, merged = 0;
    for (unsigned int kind = 0; kind < slabcases::kKinds; ++kind)
        for (unsigned int seed = 100; seed < 108; ++seed) {
            const Slab slab = flatSlabOf(kind, seed);
            if (slab.openings.size() > 14) continue;
            const std::vector<Owned> plain = splitPlainly(slab);
            if (!faultOf(slab, plain).empty()) continue;
            SCOPED_TRACE(slabcases::nameOf(kind) + ", seed " + std::to_string(seed));
            expectSameParts(
                slab, Curves(splitContourByHoles(slab.base, slab.dir, slab.contour.get(), slab.holes())),
                plain);
            ++compared;
            for (const Owned& strip : plain) merged += AcDbPolyline::cast(strip.get())->numVerts() > 8;
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

/// Of a slab of 20 by 10, around a disc of radius 3 in its middle.
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

Curves partsOf(const Contour& slab, AcDbCurve* hole) {
    return Curves(splitContourByHole(kBase, kAlongX, slab.get(), hole));
}
Curves stripsOf(const Contour& slab, const std::vector<AcDbCurve*>& holes) {
    return Curves(splitContourByHoles(kBase, kAlongX, slab.get(), curvesOf(holes)));
}

} // namespace

TEST(SplitContourByHole, GivesNothingForHolesThatTakeNothingOrAll) {
    const Contour slab = panel(0, 0, 20, 10);
    for (const auto& hole : {panel(30, 4, 32, 6), panel(20, 4, 32, 6), panel(0, 0, 20, 10),
                             panel(-1, -1, 21, 11), panel(20 - 1e-9, 4, 32, 6)})
        EXPECT_EQ(partsOf(slab, hole.get()).count(), 0) << boxOf(*hole).minPoint().x;
    EXPECT_EQ(areaOf(*slab), 200.0) << "the contour stays as it was";
    const AcGePoint3d elsewhere(-1e5, 777, 3); // moves nothing
    expectParts(Curves(splitContourByHole(elsewhere, kAlongX, slab.get(), panel(8, 4, 12, 6).get())),
                {{0, 0, 8, 10, 80}, {12, 0, 20, 10, 80}, {8, 6, 12, 10, 16}, {8, 0, 12, 4, 16}});
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
    for (const double inside : {1e-8, 1e-9, 1e-11, 1e-13}) {
        const Curves untouched = stripsOf(slab, {panel(20.0 - inside, 2, 24, 8).get()});
        ASSERT_EQ(untouched.count(), 1) << inside;
        EXPECT_EQ(widthsOf(untouched[0], 0).first, 0.5) << inside;
    }
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
