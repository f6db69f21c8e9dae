// Slabs with openings become strips: nothing is lost, nothing covered twice, no opening covered.
#include "vexogeometrytools.h"

#include "contourcases.h"
#include "scanlines.h"
#include "slabcases.h"

#include "dbcircle.h"
#include "dbline.h"
#include "dbxline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <sstream>
#include <string>

using namespace VEXOGeometryTools;
using contourcases::polylineOf;
using contourcases::Vertices;
using slabcases::Slab;

namespace {

constexpr double kAreaTolerance = 1e-7;

/// Owns what a tool gave.
struct Strips {
    std::vector<std::unique_ptr<AcDbPolyline>> polylines;

    explicit Strips(const AcArray<void*>& curves) {
        for (void* curve : curves) {
            AcDbPolyline* polyline = AcDbPolyline::cast(static_cast<AcDbCurve*>(curve));
            EXPECT_TRUE(polyline);
            if (polyline)
                polylines.emplace_back(polyline);
            else
                delete static_cast<AcDbCurve*>(curve);
        }
    }
    std::size_t count() const { return polylines.size(); }
};

AcGePoint2d originOf(const AcDbPolyline& polyline) {
    AcGePoint3d point;
    (void)polyline.getPointAt(0, point);
    return {point.x, point.y};
}

scanlines::Figure figureOf(const Slab& slab, const AcGePoint2d& origin) {
    scanlines::Figure figure{scanlines::contourOf(*slab.contour, origin), {}};
    for (const auto& opening : slab.openings) figure.holes.push_back(scanlines::contourOf(*opening, origin));
    return figure;
}

/// Does a segment cross another one, away from both segments' ends.
bool crossesItself(AcDbPolyline& strip) {
    const int count = static_cast<int>(strip.numVerts());
    struct Side {
        AcGeLineSeg3d line;
        AcGeCircArc3d arc;
        bool isArc = false;
    };
    std::vector<Side> sides(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        Side& side = sides[static_cast<std::size_t>(i)];
        (void)getSegmentFromPolyline(&strip, i, side.line, side.arc, side.isArc);
    }
    const auto ends = [](const Side& side) {
        return side.isArc ? std::pair(side.arc.startPoint(), side.arc.endPoint())
                          : std::pair(side.line.startPoint(), side.line.endPoint());
    };
    const AcGeTol fine;
    constexpr double away = 1e-3; // a micron of a slab in millimetres
    for (std::size_t i = 0; i < sides.size(); ++i)
        for (std::size_t j = i + 1; j < sides.size(); ++j) {
            const Side& a = sides[i];
            const Side& b = sides[j];
            AcGePoint3d points[2];
            int found = 0;
            if (!a.isArc && !b.isArc)
                found = a.line.intersectWith(b.line, points[0], fine) ? 1 : 0;
            else if (a.isArc && b.isArc)
                (void)a.arc.intersectWith(b.arc, found, points[0], points[1], fine);
            else
                (void)(a.isArc ? a.arc : b.arc)
                    .intersectWith(a.isArc ? b.line : a.line, found, points[0], points[1], fine);
            for (int k = 0; k < found; ++k) {
                bool atEnd = false;
                for (const Side* side : {&a, &b})
                    atEnd = atEnd || points[k].distanceTo(ends(*side).first) < away ||
                            points[k].distanceTo(ends(*side).second) < away;
                if (!atEnd) return true;
            }
        }
    return false;
}

/// A closed contour's crossings with any line run to and fro in turn, unless it overlaps itself.
bool turnsBack(const std::vector<scanlines::Crossing>& crossings) {
    for (std::size_t i = 1; i < crossings.size(); ++i)
        if (crossings[i].toRight == crossings[i - 1].toRight && crossings[i].y - crossings[i - 1].y > 1e-3)
            return true;
    return false;
}

/// What is wrong with the strips of a slab; nothing when they are its cut.
std::string faultOf(const Slab& slab, const Strips& strips) {
    const AcGePoint2d origin = originOf(*slab.contour);
    const scanlines::Figure figure = figureOf(slab, origin);
    const double whole = std::abs(scanlines::areaOf(figure.slab));
    std::vector<scanlines::Contour> contours;
    double sum = 0.0;
    for (const auto& strip : strips.polylines) {
        if (!strip->isClosed()) return "an open strip";
        if (crossesItself(*strip)) return "a strip that crosses itself";
        contours.push_back(scanlines::contourOf(*strip, origin));
        sum += std::abs(scanlines::areaOf(contours.back()));
    }
    const double error = sum - scanlines::freeArea(figure);
    if (!(std::abs(error) <= kAreaTolerance * whole)) {
        std::ostringstream text;
        text << "areas off by " << error / whole << " of the slab";
        return text.str();
    }
    const std::vector<double> breaks = scanlines::breaksOf(figure);
    const double low = breaks.front();
    const double span = breaks.back() - low;
    for (int k = 0; k < 200; ++k) {
        const double x = low + span * (k + 0.4142) / 200;
        scanlines::Intervals all;
        double lengths = 0.0;
        for (const scanlines::Contour& contour : contours) {
            if (turnsBack(scanlines::crossingsAt(contour, x))) return "a strip that overlaps itself";
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
        if (covered > 1e-2) return "strips that overlap by " + std::to_string(covered);
        if (outside > 1e-2) return "strips outside by " + std::to_string(outside);
        if (onHoles > 1e-2) return "strips over openings by " + std::to_string(onHoles);
    }
    return {};
}

} // namespace

TEST(SplitContourByHoles, StripsAreTheSlabWithoutItsOpeningsForEveryKindOfSlab) {
    constexpr unsigned int seeds = 12;
    for (const auto& outline : slabcases::kOutlines)
        for (const auto& placing : slabcases::kPlacings) {
            int faults = 0;
            std::string first;
            for (unsigned int seed = 0; seed < seeds; ++seed) {
                const Slab slab = slabcases::slabOf(outline.outline, placing.placing, seed);
                const Strips strips(
                    splitContourByHoles(slab.base, slab.dir, slab.contour.get(), slab.holes()));
                const std::string fault = faultOf(slab, strips);
                if (fault.empty()) continue;
                if (faults++ == 0) first = "seed " + std::to_string(seed) + ": " + fault;
            }
            EXPECT_EQ(faults, 0) << outline.name << ", openings " << placing.name << "; " << first;
        }
}

// ---- the list against its plain form ----

namespace {

double areaOf(const AcDbCurve& curve) {
    double area = -1.0;
    (void)curve.getArea(area);
    return area;
}

/// Every piece against every hole, every pair of strips from the start after each merge.
AcArray<void*> splitPlainly(const Slab& slab) {
    struct Piece {
        AcDbPolyline* contour;
        std::vector<int> done;
    };
    std::vector<std::unique_ptr<AcDbCurve>> holes;
    for (const auto& opening : slab.openings) {
        AcDbCurve* common = getComonSurfaceFromPolylines(slab.contour.get(), opening.get());
        holes.emplace_back(common ? common : AcDbCurve::cast(opening->clone()));
    }
    std::vector<Piece> list = {{AcDbPolyline::cast(slab.contour->clone()), {}}};
    for (std::size_t i = 0; i < list.size();) {
        bool isCut = false;
        for (int j = 0; j < static_cast<int>(holes.size()) && !isCut; ++j) {
            const Piece piece = list[i];
            AcDbCurve* hole = holes[static_cast<std::size_t>(j)].get();
            if (std::find(piece.done.begin(), piece.done.end(), j) != piece.done.end()) continue;
            const AcArray<void*> parts = splitContourByHole(slab.base, slab.dir, piece.contour, hole);
            // Nothing comes back for a piece that the hole covers either.
            const std::unique_ptr<AcDbCurve> common(getComonSurfaceFromPolylines(piece.contour, hole));
            isCut = !parts.isEmpty() || (common && areaOf(*common) > areaOf(*piece.contour) * (1 - 1e-9));
            if (!isCut) continue;
            for (void* part : parts) {
                list.push_back({AcDbPolyline::cast(static_cast<AcDbCurve*>(part)), piece.done});
                list.back().done.push_back(j);
            }
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
            delete piece.contour;
        }
        if (!isCut) ++i;
    }
    std::vector<AcDbCurve*> strips;
    for (const Piece& piece : list) strips.push_back(piece.contour);
    for (std::size_t a = 0; a < strips.size(); ++a)
        for (std::size_t b = a + 1; b < strips.size(); ++b) {
            AcDbCurve* merged = MergeContoursIfTheyHaveOneComonSegment(strips[a], strips[b]);
            if (!merged) continue;
            delete strips[a];
            delete strips[b];
            strips.erase(strips.begin() + static_cast<std::ptrdiff_t>(b));
            strips.erase(strips.begin() + static_cast<std::ptrdiff_t>(a));
            strips.push_back(merged);
            a = 0;
            b = 0;
        }
    AcArray<void*> result;
    for (AcDbCurve* strip : strips) result.append(strip);
    return result;
}

AcDbExtents boxOf(const AcDbCurve& curve) {
    AcDbExtents box;
    (void)curve.getGeomExtents(box);
    return box;
}

/// Several pieces of an opening inside the slab are cut out one by one, which the plain form does not do.
bool leavesTheSlabAndComesBack(const Slab& slab) {
    for (const auto& opening : slab.openings) {
        const AcGePoint2d origin = originOf(*slab.contour);
        const scanlines::Figure figure{scanlines::contourOf(*slab.contour, origin),
                                       {scanlines::contourOf(*opening, origin)}};
        const std::unique_ptr<AcDbCurve> largest(
            getComonSurfaceFromPolylines(slab.contour.get(), opening.get()));
        const double inside = std::abs(scanlines::areaOf(figure.slab)) - scanlines::freeArea(figure);
        if (largest && inside > areaOf(*largest) + 1.0) return true;
    }
    return false;
}

} // namespace

TEST(SplitContourByHoles, GivesThePiecesOfThePlainLoopsInTheirOrder) {
    int compared = 0;
    int merged = 0;
    for (const auto& outline : slabcases::kOutlines)
        for (const auto& placing : slabcases::kPlacings)
            for (unsigned int seed = 100; seed < 104; ++seed) {
                const Slab slab = slabcases::slabOf(outline.outline, placing.placing, seed);
                if (slab.openings.size() > 14 || leavesTheSlabAndComesBack(slab)) continue;
                SCOPED_TRACE(std::string(outline.name) + ", openings " + placing.name + ", seed " +
                             std::to_string(seed));
                const Strips expected(splitPlainly(slab));
                const Strips strips(
                    splitContourByHoles(slab.base, slab.dir, slab.contour.get(), slab.holes()));
                ASSERT_EQ(strips.count(), expected.count());
                for (std::size_t i = 0; i < strips.count(); ++i) {
                    const AcDbPolyline& strip = *strips.polylines[i];
                    const AcDbPolyline& plain = *expected.polylines[i];
                    ASSERT_NEAR(areaOf(strip), areaOf(plain), 1e-7 * areaOf(*slab.contour)) << i;
                    ASSERT_LT(boxOf(strip).minPoint().distanceTo(boxOf(plain).minPoint()), 1e-2) << i;
                    ASSERT_LT(boxOf(strip).maxPoint().distanceTo(boxOf(plain).maxPoint()), 1e-2) << i;
                    merged += strip.numVerts() > 8;
                }
                ++compared;
            }
    EXPECT_GT(compared, 70);
    EXPECT_GT(merged, 25);
}

// ---- one hole ----

namespace {

std::unique_ptr<AcDbPolyline> rectangle(double x1, double y1, double x2, double y2) {
    return polylineOf({{x1, y1, 0}, {x2, y1, 0}, {x2, y2, 0}, {x1, y2, 0}}, true);
}

const AcGePoint3d kBase(3, 4, 0);
const AcGeVector3d kAlongX(7, 0, 0);

struct ExpectedPart {
    double x1, y1, x2, y2; ///< the box
    double area;
};

/// Cuts through tangents are nudged, which moves corners on arcs by the root of that.
constexpr double kCorner = 1e-3;

void expectParts(const Strips& strips, const std::vector<ExpectedPart>& expected) {
    ASSERT_EQ(strips.count(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const AcDbExtents box = boxOf(*strips.polylines[i]);
        EXPECT_NEAR(box.minPoint().x, expected[i].x1, kCorner) << i;
        EXPECT_NEAR(box.minPoint().y, expected[i].y1, kCorner) << i;
        EXPECT_NEAR(box.maxPoint().x, expected[i].x2, kCorner) << i;
        EXPECT_NEAR(box.maxPoint().y, expected[i].y2, kCorner) << i;
        EXPECT_NEAR(areaOf(*strips.polylines[i]), expected[i].area, 1e-5) << i;
    }
}

} // namespace

TEST(SplitContourByHole, GivesLeftRightUpperAndLowerPartsEachWhereThereIsOne) {
    const double half = AcGe::kPi * 9 / 2;
    const struct {
        const char* name;
        std::unique_ptr<AcDbPolyline> hole;
        std::vector<ExpectedPart> parts;
    } cases[] = {
        {"inside",
         rectangle(8, 4, 12, 6),
         {{0, 0, 8, 10, 80}, {12, 0, 20, 10, 80}, {8, 6, 12, 10, 16}, {8, 0, 12, 4, 16}}},
        {"at the left side",
         rectangle(0, 4, 12, 6),
         {{12, 0, 20, 10, 80}, {0, 6, 12, 10, 48}, {0, 0, 12, 4, 48}}},
        {"over the right side",
         rectangle(15, 4, 30, 6),
         {{0, 0, 15, 10, 150}, {15, 6, 20, 10, 20}, {15, 0, 20, 4, 20}}},
        {"over the upper side",
         rectangle(8, 4, 12, 16),
         {{0, 0, 8, 10, 80}, {12, 0, 20, 10, 80}, {8, 0, 12, 4, 16}}},
        {"across the slab", rectangle(8, -4, 12, 16), {{0, 0, 8, 10, 80}, {12, 0, 20, 10, 80}}},
        {"along the slab", rectangle(-8, 4, 32, 6), {{0, 6, 20, 10, 80}, {0, 0, 20, 4, 80}}},
        {"round, its cuts nudged off the tangents",
         polylineOf({{7, 5, 1}, {13, 5, 1}}, true),
         {{0, 0, 7, 10, 70}, {13, 0, 20, 10, 70}, {7, 5, 13, 10, 30 - half}, {7, 0, 13, 5, 30 - half}}},
        {"apart", rectangle(30, 4, 32, 6), {}},
        {"touching from outside", rectangle(20, 4, 32, 6), {}},
        {"the contour itself", rectangle(0, 0, 20, 10), {}},
        {"around the contour", rectangle(-1, -1, 21, 11), {}},
        {"a breath inside, less than the nudges", rectangle(20 - 1e-9, 4, 32, 6), {}}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        const auto slab = rectangle(0, 0, 20, 10);
        expectParts(Strips(splitContourByHole(kBase, kAlongX, slab.get(), each.hole.get())), each.parts);
        EXPECT_EQ(areaOf(*slab), 200.0) << "the contour stays as it was";
    }
}

TEST(SplitContourByHole, GivesThePartsOfTheCutsAlongItsTwoLines) {
    // The cut at the left, the cut at the right, the two strips between, each by its own tool.
    std::mt19937 random(31);
    int compared = 0;
    for (int run = 0; run < 300; ++run) {
        const auto outline = slabcases::kOutlines[run % 3].outline;
        const auto slab = polylineOf(slabcases::outlineOf(outline, random), true);
        const double x = slabcases::between(random, 4000, 8000);
        const double y = slabcases::between(random, 3000, 5000);
        const auto hole = polylineOf(slabcases::turned(slabcases::openingOf(random, x, y, 600, 500), x, y,
                                                       slabcases::between(random, 0, 6)),
                                     true);
        if (!isPointInsideContour(AcGePoint3d(x, y, 0), slab.get()) ||
            !intersectPolyLines(slab.get(), hole.get()).isEmpty())
            continue;
        AcGePoint3d left = boxOf(*hole).minPoint();
        AcGePoint3d right = boxOf(*hole).maxPoint();
        correctExtentsPoints(left, right, hole.get());
        AcDbXline lines[2];
        for (AcDbXline& line : lines) line.setUnitDir(AcGeVector3d::kYAxis);
        lines[0].setBasePoint(left);
        lines[1].setBasePoint(right);
        const Strips first(splitContourByLine(slab.get(), lines[0]));
        ASSERT_EQ(first.count(), 2u);
        const Strips second(splitContourByLine(first.polylines[1].get(), lines[1]));
        ASSERT_EQ(second.count(), 2u);
        const Strips between(splitContourByLine2(second.polylines[0].get(), hole.get(), lines[0], lines[1]));
        ASSERT_EQ(between.count(), 2u);
        const AcDbPolyline* expected[] = {first.polylines[0].get(), second.polylines[1].get(),
                                          between.polylines[0].get(), between.polylines[1].get()};
        const Strips parts(splitContourByHole(kBase, kAlongX, slab.get(), hole.get()));
        ASSERT_EQ(parts.count(), 4u) << run;
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_NEAR(areaOf(*parts.polylines[i]), areaOf(*expected[i]), 1e-2) << run << ' ' << i;
            EXPECT_LT(boxOf(*parts.polylines[i]).minPoint().distanceTo(boxOf(*expected[i]).minPoint()), 1e-4);
            EXPECT_LT(boxOf(*parts.polylines[i]).maxPoint().distanceTo(boxOf(*expected[i]).maxPoint()), 1e-4);
        }
        ++compared;
    }
    EXPECT_GT(compared, 150);
}

TEST(SplitContourByHole, RunsItsPartsAlongTheDirection) {
    // Seen with the direction to the right: left is where it comes from.
    const auto slab = rectangle(0, 0, 20, 10);
    const auto hole = rectangle(8, 4, 12, 6);
    expectParts(Strips(splitContourByHole(kBase, AcGeVector3d(0, 2, 9), slab.get(), hole.get())),
                {{0, 0, 20, 4, 80}, {0, 6, 20, 10, 80}, {0, 4, 8, 6, 16}, {12, 4, 20, 6, 16}});
    expectParts(Strips(splitContourByHole(kBase, AcGeVector3d(-1, 0, 0), slab.get(), hole.get())),
                {{12, 0, 20, 10, 80}, {0, 0, 8, 10, 80}, {8, 0, 12, 4, 16}, {8, 6, 12, 10, 16}});
    const Strips moved(splitContourByHole(AcGePoint3d(-1e5, 777, 3), kAlongX, slab.get(), hole.get()));
    expectParts(moved, {{0, 0, 8, 10, 80}, {12, 0, 20, 10, 80}, {8, 6, 12, 10, 16}, {8, 0, 12, 4, 16}});
}

TEST(SplitContourByHole, CutsAConcaveContourOnlyAtThePartThatHoldsTheHole) {
    // Two legs side by side; the lines through the hole in the lower one cross both.
    const auto fork = polylineOf(
        {{0, 0, 0}, {20, 0, 0}, {20, 4, 0}, {4, 4, 0}, {4, 6, 0}, {20, 6, 0}, {20, 10, 0}, {0, 10, 0}}, true);
    expectParts(Strips(splitContourByHole(kBase, kAlongX, fork.get(), rectangle(8, 7, 12, 9).get())),
                {{0, 0, 20, 10, 168 - 32 - 16}, {12, 6, 20, 10, 32}, {8, 9, 12, 10, 4}, {8, 6, 12, 7, 4}});
    expectParts(Strips(splitContourByHole(kBase, kAlongX, fork.get(), rectangle(8, 1, 12, 3).get())),
                {{0, 0, 20, 10, 168 - 32 - 16}, {12, 0, 20, 4, 32}, {8, 3, 12, 4, 4}, {8, 0, 12, 1, 4}});
    // In the notch: inside the contour's box and outside the contour.
    EXPECT_EQ(
        Strips(splitContourByHole(kBase, kAlongX, fork.get(), rectangle(8, 4.5, 12, 5.5).get())).count(), 0u);
}

TEST(SplitContourByHole, GivesSeveralStripsWhereTheHoleLeavesSeveral) {
    // A hole with two prongs to the left leaves a strip between them; one that touches the upper side in a
    // point parts the upper strip.
    const auto slab = rectangle(0, 0, 20, 10);
    const auto prongs =
        polylineOf({{8, 2, 0}, {14, 2, 0}, {14, 8, 0}, {8, 8, 0}, {8, 6, 0}, {12, 5, 0}, {8, 4, 0}}, true);
    const Strips pronged(splitContourByHole(kBase, kAlongX, slab.get(), prongs.get()));
    ASSERT_EQ(pronged.count(), 5u);
    double sum = 0.0;
    for (const auto& part : pronged.polylines) sum += areaOf(*part);
    EXPECT_NEAR(sum, 200 - 36 + 4, 1e-6);
    const auto touching = polylineOf({{6, 4, 0}, {14, 4, 0}, {10, 10, 0}}, true);
    expectParts(
        Strips(splitContourByHole(kBase, kAlongX, slab.get(), touching.get())),
        {{0, 0, 6, 10, 60}, {14, 0, 20, 10, 60}, {6, 4, 10, 10, 12}, {10, 4, 14, 10, 12}, {6, 0, 14, 4, 32}});
}

TEST(SplitContourByHole, TakesAnyClosedHoleAtAnyHeightAndKeepsTheContoursPlaneAndSense) {
    AcDbCircle circle(AcGePoint3d(10, 5, -3), AcGeVector3d::kZAxis, 3.0);
    for (const bool isReversed : {false, true})
        for (const bool isMirrored : {false, true}) {
            Vertices vertices = {{0, 0, 0}, {20, 0, 0}, {20, 10, 0}, {0, 10, 0}};
            const auto slab = polylineOf(isReversed ? contourcases::reversed(vertices) : vertices, true);
            if (isMirrored) {
                // Seen from below: x counts to the left.
                for (unsigned int i = 0; i < 4; ++i) {
                    AcGePoint2d point;
                    slab->getPointAt(i, point);
                    slab->setPointAt(i, AcGePoint2d(-point.x, point.y));
                }
                slab->setNormal(-AcGeVector3d::kZAxis);
            }
            slab->setElevation(12.5);
            slab->setColorIndex(3);
            const Strips strips(splitContourByHole(kBase, kAlongX, slab.get(), &circle));
            const double half = AcGe::kPi * 9 / 2;
            expectParts(strips, {{0, 0, 7, 10, 70},
                                 {13, 0, 20, 10, 70},
                                 {7, 5, 13, 10, 30 - half},
                                 {7, 0, 13, 5, 30 - half}});
            for (const auto& strip : strips.polylines) {
                EXPECT_EQ(strip->normal(), slab->normal());
                EXPECT_EQ(strip->elevation(), 12.5);
                EXPECT_EQ(strip->colorIndex(), 3);
                EXPECT_EQ(isContourClockWise(strip.get()), isContourClockWise(slab.get()));
            }
        }
}

// ---- many holes ----

TEST(SplitContourByHoles, MergesStripsThatShareOneWholeSegment) {
    // Two holes side by side, the gap between them cut once by each.
    const auto slab = rectangle(0, 0, 30, 10);
    const auto first = rectangle(4, 4, 8, 6);
    const auto second = rectangle(12, 4, 16, 6);
    AcArray<void*> holes;
    holes.append(first.get());
    holes.append(second.get());
    expectParts(Strips(splitContourByHoles(kBase, kAlongX, slab.get(), holes)), {{0, 0, 4, 10, 40},
                                                                                 {4, 6, 8, 10, 16},
                                                                                 {4, 0, 8, 4, 16},
                                                                                 {8, 0, 12, 10, 40},
                                                                                 {16, 0, 30, 10, 140},
                                                                                 {12, 6, 16, 10, 16},
                                                                                 {12, 0, 16, 4, 16}});
    // One that reaches over the first one's cut: its strips come in two halves and are one again.
    const auto reaching = rectangle(6, 7, 12, 9);
    holes[1] = reaching.get();
    const Strips strips(splitContourByHoles(kBase, kAlongX, slab.get(), holes));
    double sum = 0.0;
    int reachOver = 0;
    for (const auto& strip : strips.polylines) {
        sum += areaOf(*strip);
        reachOver += boxOf(*strip).minPoint().x < 8 - 1e-3 && boxOf(*strip).maxPoint().x > 8 + 1e-3;
    }
    EXPECT_NEAR(sum, 300 - 8 - 12, 1e-6);
    EXPECT_GE(reachOver, 1) << "the upper halves are one strip";
}

TEST(SplitContourByHoles, TakesAwayWhatOverlappingHolesCoverAndPiecesThatOneCovers) {
    const auto slab = rectangle(0, 0, 20, 10);
    // The middle hole covers all that the others leave between x = 5 and 15.
    const auto lower = rectangle(5, -1, 15, 3);
    const auto upper = rectangle(5, 7, 15, 11);
    const auto middle = rectangle(4, 2, 16, 8);
    AcArray<void*> holes;
    for (const auto* hole : {&lower, &upper, &middle}) holes.append(hole->get());
    const Strips strips(splitContourByHoles(kBase, kAlongX, slab.get(), holes));
    double sum = 0.0;
    for (const auto& strip : strips.polylines) sum += areaOf(*strip);
    EXPECT_NEAR(sum, 200 - 100 - 2 * 6, 1e-6);
    const auto all = rectangle(-5, -5, 50, 50);
    holes.removeAll();
    holes.append(all.get());
    EXPECT_EQ(Strips(splitContourByHoles(kBase, kAlongX, slab.get(), holes)).count(), 0u);
}

TEST(SplitContourByHoles, CutsOutEveryPartOfAHoleThatLeavesTheSlabAndComesBack) {
    const auto fork = polylineOf(
        {{0, 0, 0}, {20, 0, 0}, {20, 4, 0}, {4, 4, 0}, {4, 6, 0}, {20, 6, 0}, {20, 10, 0}, {0, 10, 0}}, true);
    const auto bar = rectangle(8, 1, 12, 9);
    AcArray<void*> holes;
    holes.append(bar.get());
    const Strips strips(splitContourByHoles(kBase, kAlongX, fork.get(), holes));
    double sum = 0.0;
    for (const auto& strip : strips.polylines) sum += areaOf(*strip);
    EXPECT_NEAR(sum, 168 - 2 * 12, 1e-6);
}

TEST(SplitContourByHoles, PassesOverHolesThatAreNoneAndGivesTheCloneForNoHoles) {
    const auto slab = rectangle(0, 0, 20, 10);
    slab->setConstantWidth(0.5);
    const auto open = polylineOf({{8, 4, 0}, {12, 4, 0}, {12, 6, 0}}, false);
    const auto flat = polylineOf({{8, 4, 0}, {12, 4, 0}, {10, 4, 0}}, true);
    const auto upright = rectangle(8, 4, 12, 6);
    upright->transformBy(AcGeMatrix3d::rotation(1.0, AcGeVector3d::kXAxis));
    AcDbLine line(AcGePoint3d(1, 1, 0), AcGePoint3d(9, 9, 0));
    AcArray<void*> holes;
    holes.append(nullptr);
    for (AcDbCurve* curve : std::initializer_list<AcDbCurve*>{open.get(), flat.get(), upright.get(), &line})
        holes.append(curve);
    const Strips whole(splitContourByHoles(kBase, kAlongX, slab.get(), holes));
    ASSERT_EQ(whole.count(), 1u);
    double width = 0.0;
    EXPECT_EQ(whole.polylines[0]->getConstantWidth(width), Acad::eOk);
    EXPECT_EQ(width, 0.5) << "untouched, to the width";
    for (void* hole : holes)
        EXPECT_EQ(
            Strips(splitContourByHole(kBase, kAlongX, slab.get(), static_cast<AcDbCurve*>(hole))).count(),
            0u);
}

TEST(SplitContourByHoles, GivesNothingForContoursAndDirectionsThatAreNone) {
    const auto slab = rectangle(0, 0, 20, 10);
    const auto hole = rectangle(8, 4, 12, 6);
    const auto open = polylineOf({{0, 0, 0}, {20, 0, 0}, {20, 10, 0}, {0, 10, 0}}, false);
    const auto flat = polylineOf({{0, 0, 0}, {20, 0, 0}, {10, 0, 0}}, true);
    const auto upright = rectangle(0, 0, 20, 10);
    upright->transformBy(AcGeMatrix3d::rotation(1.0, AcGeVector3d::kXAxis));
    AcDbPolyline empty;
    const double nan = contourcases::kNaN;
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
    AcArray<void*> holes;
    holes.append(hole.get());
    for (const auto& each : cases) {
        EXPECT_EQ(Strips(splitContourByHoles(each.base, each.dir, each.contour, holes)).count(), 0u)
            << each.name;
        EXPECT_EQ(Strips(splitContourByHole(each.base, each.dir, each.contour, hole.get())).count(), 0u)
            << each.name;
    }
}
