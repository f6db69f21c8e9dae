// Contours that cross themselves, and contours that are the same: the indexed forms against the contract's
// plain loops, on random and degenerate input.
#include "vexogeometrytools.h"

#include "contourcases.h"
#include "gearc2d.h"
#include "gelnsg2d.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>

using namespace VEXOGeometryTools;
using namespace contourcases;

namespace {

const AcGeVector3d kUp = AcGeVector3d::kZAxis;

struct Contour {
    AcArray<AcGePoint3d> points;
    AcArray<double> bulges;
};

// ---- crossing itself ----

/// Segments of a contour as the plain loops see them; an arc too flat for the kit is straight.
struct PlainSegment {
    std::unique_ptr<AcGeCurve2d> curve;
    AcGePoint2d start;
    AcGePoint2d end;
    bool isArc = false;
    bool isFinite = true;
};

std::vector<PlainSegment> plainSegmentsOf(Contour contour, const AcGeVector3d& normal,
                                          const AcGeTol& tolerance) {
    auto& [points, bulges] = contour;
    int m = std::min(points.length(), bulges.length());
    for (int i = 1; i < m; ++i)
        if (points[i].isEqualTo(points[i - 1], tolerance)) {
            points.removeAt(i);
            bulges.removeAt(i);
            --i;
            --m;
        }
    std::vector<PlainSegment> segments;
    for (int i = 0; i < m; ++i) {
        const AcGePoint3d a = points[i];
        const AcGePoint3d b = points[(i + 1) % points.length()];
        PlainSegment segment{nullptr, {a.x, a.y}, {b.x, b.y}};
        segment.isFinite = std::isfinite(a.x + a.y + b.x + b.y);
        const AcGePoint3d apex = getMiddleOf(a, b, bulges[i], normal);
        const AcGeCircArc2d arc(segment.start, {apex.x, apex.y}, segment.end);
        segment.isArc = bulges[i] * bulges[i] > 1e-20 && arc.radius() > 0.0;
        if (segment.isArc)
            segment.curve.reset(arc.copy());
        else
            segment.curve = std::make_unique<AcGeLineSeg2d>(segment.start, segment.end);
        segments.push_back(std::move(segment));
    }
    return segments;
}

bool doCrossPlainly(const PlainSegment& i, const PlainSegment& j, const AcGeTol& tolerance) {
    int count = 0;
    AcGePoint2d point;
    AcGePoint2d second;
    const auto& arcI = static_cast<const AcGeCircArc2d&>(*i.curve);
    const auto& arcJ = static_cast<const AcGeCircArc2d&>(*j.curve);
    const auto& lineI = static_cast<const AcGeLineSeg2d&>(*i.curve);
    const auto& lineJ = static_cast<const AcGeLineSeg2d&>(*j.curve);
    if (i.isArc && j.isArc)
        arcI.intersectWith(arcJ, count, point, second);
    else if (i.isArc)
        arcI.intersectWith(lineJ, count, point, second);
    else if (j.isArc)
        arcJ.intersectWith(lineI, count, point, second);
    else
        count = lineI.intersectWith(lineJ, point) ? 1 : 0;
    const auto same = [&](const AcGePoint2d& a, const AcGePoint2d& b) { return a.isEqualTo(b, tolerance); };
    if (count == 0) return i.isArc == j.isArc && (i.curve->isOn(j.end) || j.curve->isOn(i.start));
    if (count == 1) return !same(point, j.start) && !same(point, j.end);
    return !(same(i.start, j.start) && same(i.end, j.end)) && !(same(i.start, j.end) && same(i.end, j.start));
}

bool selfIntersectingPlainly(const Contour& contour, const AcGeVector3d& normal, double scale) {
    const AcGeTol tolerance = toleranceOf(scale * 1e-05, scale * 1e-07);
    const std::vector<PlainSegment> segments = plainSegmentsOf(contour, normal, tolerance);
    for (std::size_t i = 0; i < segments.size(); ++i)
        for (std::size_t j = i + 1; j < segments.size(); ++j)
            if (segments[i].isFinite && segments[j].isFinite &&
                doCrossPlainly(segments[i], segments[j], tolerance))
                return true;
    return false;
}

Contour contourOf(const Vertices& vertices) {
    Contour contour;
    for (const auto& [x, y, bulge] : vertices) {
        contour.points.append({x, y, 0.0});
        contour.bulges.append(bulge);
    }
    return contour;
}

bool crossesItself(const Contour& contour, double scale = 1.0, const AcGeVector3d& normal = kUp) {
    return isSelfIntersecting(contour.points, contour.bulges, normal, scale);
}

TEST(SelfIntersecting, OpenContoursScaleAndNaN) {
    Contour open = contourOf(corners({0, 0, 4, 4, 4, 0, 0, 4}));
    open.bulges.removeLast();
    EXPECT_TRUE(crossesItself(open));
    open.bulges.removeLast();
    EXPECT_FALSE(crossesItself(open)) << "the crossing side has no bulge";
    // A crossing within scale * 1e-05 of a vertex of the later segment is a touch.
    const Contour nearly = contourOf(corners({0, 0, 4, 0, 4, 4, 2, -5e-6, 0, 4}));
    EXPECT_FALSE(crossesItself(nearly));
    EXPECT_TRUE(crossesItself(nearly, 0.1));
    // Points within it of their predecessor go: here the whole spike.
    const Contour spike = contourOf(corners({0, 0, 4, 0, 4.00003, 0, 4, 0, 4, 4}));
    EXPECT_TRUE(crossesItself(spike));
    EXPECT_FALSE(crossesItself(spike, 10.0));
    // The kit lets a vertex that is this short of a side, or of an arc's apex, meet it.
    for (const auto& [offset, reached, missed] :
         {std::array{0.0, 0.9e-10, 3e-10}, std::array{1e6, 8e-10, 2e-9}})
        for (const bool isShort : {true, false})
            for (const double height : {0.0, 1.0}) {
                const double y = offset + height + (isShort ? reached : missed);
                const double top = offset + 4;
                const Contour touch =
                    contourOf({{2, y, 0}, {0, top, 0}, {0, offset, height}, {4, offset, 0}, {4, top, 0}});
                EXPECT_EQ(crossesItself(touch), isShort) << offset << ", arc's height " << height;
            }
    for (const double scale : {0.0, -1.0, kNaN})
        EXPECT_EQ(crossesItself(nearly, scale), selfIntersectingPlainly(nearly, kUp, scale)) << scale;
    const Contour broken = contourOf({{0, 0, 0}, {kNaN, 4, 0}, {4, 0, kNaN}, {0, 4, 0}});
    EXPECT_FALSE(crossesItself(broken));
    EXPECT_FALSE(isSelfIntersecting(AcArray<AcGePoint3d>(), AcArray<double>(), kUp, 1.0));
}

/// Lattice walks (of ordinary size or tiny), star shapes with one vertex pulled across, slanting teeth,
/// spirals.
Contour randomOutline(std::mt19937& random, int kind, double offset, bool isTiny) {
    std::uniform_real_distribution<double> share(-1.0, 1.0);
    Vertices vertices;
    if (kind == 0) {
        vertices = latticeRun(random, 8, 5, offset, 4e-11);
        if (random() % 30 == 0) vertices.back()[1] = kNaN;
        // Of the size of the point test.
        if (isTiny)
            for (auto& vertex : vertices)
                for (double& number : vertex) number = (number - offset) * 1e-10;
    } else if (kind == 1) {
        vertices = randomContour(random, 6 + static_cast<int>(random() % 60), offset);
        if (random() % 2) vertices[random() % vertices.size()][0] += share(random) * 9.0;
    } else if (kind == 3) {
        // Inwards and out again, turned or not; sides far from their neighbours along the contour.
        const int turns = 100 + static_cast<int>(random() % 40);
        const double angle = random() % 2 ? 0.5 : 0.0;
        for (int i = 0; i < 4 * turns; ++i) {
            const double size = i < 2 * turns ? 2 * turns - i : i - 2 * turns + 0.7;
            const int corner = i < 2 * turns ? i % 4 : (4 * turns - 1 - i) % 4;
            vertices.push_back({corner < 2 ? size : -size, corner % 3 ? size : -size, 0});
        }
        if (random() % 2) vertices[random() % vertices.size()][0] += random() % 2 ? 0.2 : 1.2;
        vertices = moved(vertices, angle, offset, offset);
    } else {
        // Teeth so narrow and so slanting that upright boxes say nothing.
        const int teeth = 30 + static_cast<int>(random() % 30);
        const double slant = share(random) * 2.0;
        for (int i = 0; i < 4 * teeth; ++i) {
            const double reach = i % 4 == 1 || i % 4 == 2 ? 40.0 : 0.0;
            const double height = random() % 5 ? 0.0 : 0.02 * share(random);
            vertices.push_back({offset + i / 2 * 0.2 + reach * slant, offset + reach, height});
        }
        vertices.push_back({offset + 2 * teeth * 0.2, offset - 1, 0});
        vertices.push_back({offset - 1, offset - 1, 0});
        if (random() % 2) vertices[random() % vertices.size()][0] += 0.5;
    }
    return contourOf(vertices);
}

TEST(SelfIntersecting, EqualsPlainForm) {
    std::mt19937 random(61);
    int crossing[4] = {0, 0, 0, 0};
    int asked[4] = {0, 0, 0, 0};
    for (int round = 0; round < 4000; ++round) {
        const int kind = round % 100 == 7 ? 3 : round % 20 == 0 ? 2 : round % 10 < 4 ? 1 : 0;
        const Contour contour = randomOutline(random, kind, round % 4 ? 0.0 : 1e6, round % 14 == 0);
        const double scale = round % 7 ? 1.0 : 1e-6;
        const AcGeVector3d normal = round % 5 ? kUp : -kUp;
        const bool expected = selfIntersectingPlainly(contour, normal, scale);
        ASSERT_EQ(crossesItself(contour, scale, normal), expected) << "round " << round << " kind " << kind;
        ++asked[kind];
        crossing[kind] += expected;
    }
    for (int kind = 0; kind < 4; ++kind) {
        EXPECT_GT(crossing[kind], asked[kind] / 10) << kind;
        EXPECT_LT(crossing[kind], asked[kind] * 97 / 100) << kind;
    }
}

// ---- the same outline ----

bool isSame(const Outline& a, const Outline& b, double tolerance = 1e-3, bool flatten = false) {
    return ComparePointsAndBulgesForClosedContours(a.points, a.bulges, b.points, b.bulges, tolerance,
                                                   flatten);
}

Outline startedElsewhere(Outline outline, int shift) {
    std::rotate(outline.points.begin(), outline.points.begin() + shift, outline.points.end());
    std::rotate(outline.bulges.begin(), outline.bulges.begin() + shift, outline.bulges.end());
    return outline;
}

/// What is compared of a segment; of a straight one only its ends.
struct Compared {
    bool isArc;
    AcGePoint3d start, middle, end;
};

/// The contract's steps with plain loops; nothing for what is no contour.
std::optional<std::vector<Compared>> comparedPlainly(Outline side, double tolerance, bool flatten) {
    const AcGeTol local = toleranceOf(tolerance * 0.001, tolerance * 0.001);
    auto& [points, bulges] = side;
    const int spare = points.length() - bulges.length();
    if (points.length() <= 1 || spare < 0 || spare > 1) return {};
    for (AcGePoint3d& point : points)
        if (flatten) point.z = 0;
    for (int i = 0; i < points.length(); ++i)
        if (points[i].isEqualTo(points[(i + 1) % points.length()])) {
            if (i < bulges.length()) bulges.removeAt(i);
            points.removeAt(i--);
        }
    if (points.length() != bulges.length()) return {};
    AcArray<void*> curves;
    for (int i = 0; i < points.length(); ++i) {
        const AcGePoint3d a = points[i];
        const AcGePoint3d b = points[(i + 1) % points.length()];
        if (a.isEqualTo(b, local)) continue;
        const AcGeCircArc3d arc(a, a + (b - a) / 2 + bulges[i], b);
        const bool isArc = bulges[i].length() * bulges[i].length() > 1e-20 && arc.radius() > 0.0;
        curves.append(isArc ? static_cast<AcGeCurve3d*>(arc.copy()) : new AcGeLineSeg3d(a, b));
    }
    ConcatenateLineSegments(curves, tolerance);
    std::vector<Compared> segments;
    for (void* each : curves) {
        const std::unique_ptr<AcGeCurve3d> curve(static_cast<AcGeCurve3d*>(each));
        AcGeInterval range;
        AcGePoint3d start, end;
        curve->getInterval(range, start, end);
        const AcGePoint3d middle = curve->evalPoint((range.lowerBound() + range.upperBound()) / 2);
        segments.push_back({curve->isKindOf(AcGe::kCircArc3d), start, middle, end});
    }
    return segments;
}

/// Each segment of the first takes the first one left that is the same, in either sense.
bool samePlainly(const Outline& first, const Outline& second, double tolerance, bool flatten) {
    const auto same = [local = toleranceOf(tolerance * 0.001)](const AcGePoint3d& a, const AcGePoint3d& b) {
        return a.isEqualTo(b, local);
    };
    const auto own = comparedPlainly(first, tolerance, flatten);
    auto left = comparedPlainly(second, tolerance, flatten);
    if (!own || !left || own->size() != left->size()) return false;
    for (const Compared& a : *own) {
        const auto partner = std::find_if(left->begin(), left->end(), [&](const Compared& b) {
            return a.isArc == b.isArc && (!a.isArc || same(a.middle, b.middle)) &&
                   ((same(a.start, b.start) && same(a.end, b.end)) ||
                    (same(a.start, b.end) && same(a.end, b.start)));
        });
        if (partner == left->end()) return false;
        left->erase(partner);
    }
    return true;
}

TEST(SameOutline, ArcsOverOneChordAndWhatIsNoContour) {
    // Two arcs over one chord, their apexes a tolerance apart or less: paired in order, not as they fit best.
    const auto arcs = [](double rise1, double rise2) {
        Outline outline({{0, 0, 0}, {4, 0, 0}});
        outline.bulges[0].set(0, 1 + rise1, 0);
        outline.bulges[1].set(0, 1 + rise2, 0);
        return outline;
    };
    EXPECT_TRUE(isSame(arcs(0, 1.2e-6), arcs(-0.6e-6, 0.6e-6)));
    EXPECT_FALSE(isSame(arcs(0, 1.2e-6), arcs(0.6e-6, -0.6e-6)));

    const Outline point({{1, 1, 0}, {1, 1, 0}});
    EXPECT_TRUE(isSame(point, Outline({{7, 7, 0}, {7, 7, 0}}))) << "nothing is left of either";
    EXPECT_FALSE(isSame(Outline({{1, 1, 0}}), Outline({{1, 1, 0}})));
    EXPECT_FALSE(isSame(Outline(), Outline()));
}

TEST(SameOutline, EqualsPlainFormAroundTheTolerance) {
    std::mt19937 random(71);
    constexpr double tolerance = 1e-3;
    std::uniform_int_distribution<int> step(-2, 2);
    std::uniform_int_distribution<int> place(0, 3);
    int same = 0;
    constexpr int rounds = 4000;
    for (int round = 0; round < rounds; ++round) {
        const double offset = round % 3 ? 0.0 : 1e6;
        Vertices vertices = randomContour(random, 3 + round % 20, offset);
        // On a lattice vertices, sides and stretches of sides fall together.
        if (round % 2)
            for (auto& [x, y, bulge] : vertices) {
                x = offset + place(random);
                y = offset + place(random);
                bulge = random() % 4 ? 0.0 : 0.5;
            }
        Vertices twin = random() % 2 ? vertices : reversed(vertices);
        for (auto& [x, y, bulge] : twin)
            if (random() % 5 == 0) x += step(random) * 0.51e-6;
        if (random() % 8 == 0) twin[random() % twin.size()][1] += 0.5;
        if (random() % 50 == 0) twin[0][0] = kNaN;
        Outline first(vertices);
        Outline second = startedElsewhere(Outline(twin), static_cast<int>(random() % twin.size()));
        if (random() % 4 == 0) second.points.append(AcGePoint3d(second.points[0]));
        if (random() % 40 == 0) first.bulges.removeLast();
        const bool flatten = random() % 2;
        if (random() % 6 == 0) first.points[0].z = 1e-5;
        const bool expected = samePlainly(first, second, tolerance, flatten);
        ASSERT_EQ(isSame(first, second, tolerance, flatten), expected) << "round " << round;
        same += expected;
    }
    EXPECT_GT(same, rounds / 4);
    EXPECT_LT(same, rounds * 3 / 4);
}

} // namespace
