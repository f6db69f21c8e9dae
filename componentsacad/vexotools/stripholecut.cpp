#include "stripholecut.h"

#include "contourloopsegment.h"
#include "contoursplitting.h"
#include "vexogeometrytools.h"
#include "vexogeometrytools_internal.h"

#include "dbextents.h"
#include "dbpolyline.h"
#include "dbxline.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <utility>

namespace vexo {

namespace {

/// How far a cut may stand off the opening's outermost point, in nudges.
constexpr double kSliverNudges = 2.0;
/// The same in tolerances of the areas.
constexpr double kSliverTolerances = 4.0;
/// Cuts that leave an opening free on all sides are moved inwards by this many tolerances, then by the next.
constexpr std::array<double, 3> kInwardTolerances = {0.0, 16.0, 1024.0};

/// Parts within this share of the piece's size of each other count as equally far to the left, or level.
constexpr double kColumnShare = 1e-6;

/// The piece, the opening and what every step needs of them.
struct Cut {
    const ContourLoop& piece;
    const Opening& opening;
    PlaneBox pieceBox;
    ContourArea rest; ///< the piece without the opening
    double allowed;   ///< area that rounding and nudges may leave wrong
};

/// What is narrower comes from rounding and nudges.
double sliverWidth(double size) {
    return kSliverNudges * kExtentsNudge + kSliverTolerances * kComparisonTolerance * size;
}

double sliverOf(const PlaneBox& box, double size) { return sliverWidth(size) * box.halfPerimeter(); }

/// Does a way go to a tip and come back along itself, as far as the shorter part of it reaches.
bool comesBack(const ContourVertex& from, const ContourVertex& tip, const ContourVertex& to, double width) {
    const AcGeVector2d there(tip.x - from.x, tip.y - from.y);
    const AcGeVector2d back(to.x - tip.x, to.y - tip.y);
    const double longer = std::max(there.length(), back.length());
    return there.dotProduct(back) < 0.0 && std::abs(there.crossProduct(back)) <= width * longer;
}

/// The part without its hairs: where a cut runs beside a side that is upright but for rounding, or was nudged
/// off it, a part may reach along that side with next to no width.
ContourLoop withoutHairs(ContourLoop loop, double width) {
    std::vector<ContourVertex>& vertices = loop.vertices;
    for (std::size_t i = 0; i < vertices.size() && vertices.size() > 3;) {
        const std::size_t count = vertices.size();
        const ContourVertex& from = vertices[(i + count - 1) % count];
        const std::size_t next = (i + 1) % count;
        const AcGeVector2d step(vertices[next].x - vertices[i].x, vertices[next].y - vertices[i].y);
        const bool isBlunt = step.length() <= width;
        const std::size_t end = isBlunt ? (i + 2) % count : next;
        const bool isStraight =
            from.bulge == 0.0 && vertices[i].bulge == 0.0 && vertices[next].bulge * isBlunt == 0.0;
        if (!isStraight || !comesBack(from, vertices[i], vertices[end], width)) {
            ++i;
            continue;
        }
        if (isBlunt) vertices.erase(vertices.begin() + static_cast<std::ptrdiff_t>(next));
        vertices.erase(vertices.begin() + static_cast<std::ptrdiff_t>(isBlunt && next < i ? i - 1 : i));
        i = i > 2 ? i - 2 : 0;
    }
    return loop;
}

std::unique_ptr<AcDbPolyline> planePolyline(const ContourLoop& loop) {
    return polylineOf(loop, AcGeVector3d::kZAxis, 0.0);
}

/// Takes the curves of a result over as loops. Slivers are no parts.
void appendParts(AcArray<void*>& curves, double sliver, std::vector<ContourLoop>& parts) {
    for (void* curve : curves) {
        const AcDbPolyline* polyline = AcDbPolyline::cast(static_cast<AcDbCurve*>(curve));
        if (!polyline) continue;
        ContourLoop loop = loopOf(*polyline);
        const double area = signedArea(loop);
        if (std::abs(area) <= sliver) continue;
        parts.push_back(area < 0.0 ? reversedLoop(loop) : std::move(loop));
    }
    deleteCurves(curves);
}

/// The area that the parts leave out, cover twice, or cover beside the piece or on the opening. Sums of areas
/// would not tell: a strip on the opening can be as large as a part that is missing.
double errorOf(const Cut& cut, const std::vector<ContourLoop>& parts) {
    return trueArea(wronglyCovered(cut.rest, parts));
}

// ---- the plain steps ----

/// Cuts off what lies beyond a line, unless the line runs along the rest's side. `index` says which half
/// goes.
void cutOff(std::unique_ptr<AcDbPolyline>& rest, double x, int index, double sliver,
            std::vector<ContourLoop>& parts) {
    AcDbExtents extents;
    if (rest->getGeomExtents(extents) != Acad::eOk ||
        VEXOGeometryTools::isPointsOnExtents(AcGePoint3d(x, 0.0, 0.0), extents, true))
        return;
    AcDbXline line = lineAlongY({x, 0.0, 0.0});
    AcArray<void*> halves = VEXOGeometryTools::splitContourByLine(rest.get(), line);
    if (halves.length() != 2) return;
    rest.reset(AcDbPolyline::cast(static_cast<AcDbCurve*>(halves[1 - index])));
    halves.removeAt(1 - index);
    appendParts(halves, sliver, parts);
}

/// False when the strips are not those of a piece that each line and each side of the opening crosses once.
bool plainParts(const Cut& cut, std::vector<ContourLoop>& parts) {
    const double sliver = cut.allowed;
    std::unique_ptr<AcDbPolyline> rest = planePolyline(cut.piece);
    const std::unique_ptr<AcDbPolyline> hole = planePolyline(cut.opening.loop);
    cutOff(rest, cut.opening.left, 0, sliver, parts);
    cutOff(rest, cut.opening.right, 1, sliver, parts);
    bool isPlain = true;
    AcArray<void*> strips =
        stripsBetweenLines(rest.get(), hole.get(), lineAlongY({cut.opening.left, 0.0, 0.0}),
                           lineAlongY({cut.opening.right, 0.0, 0.0}), isPlain);
    appendParts(strips, sliver, parts);
    return isPlain;
}

// ---- any shape ----

/// The parts of the piece between both lines that have something in common with the opening.
ContourArea partsAtHole(const Cut& cut, double left, double right) {
    const double margin = cut.pieceBox.largerSide();
    const double low = cut.pieceBox.lowY - margin;
    const double high = cut.pieceBox.highY + margin;
    const ContourLoop band{{{left, low, 0.0}, {right, low, 0.0}, {right, high, 0.0}, {left, high, 0.0}}};
    ContourArea parts;
    for (ContourLoop& part : commonArea(cut.piece, band))
        if (trueArea(commonArea(part, cut.opening.loop)) > 0.0) parts.push_back(std::move(part));
    return parts;
}

/// Does a part of what is left of a piece lie left of its cut: with the cut's line, its run leads upwards.
bool liesLeftOf(const ContourLoop& part, double x, double tolerance) {
    const std::size_t count = part.vertices.size();
    for (std::size_t i = 0; i < count; ++i) {
        const ContourVertex& start = part.vertices[i];
        const ContourVertex& end = part.vertices[(i + 1) % count];
        if (start.bulge == 0.0 && std::abs(start.x - x) <= tolerance && std::abs(end.x - x) <= tolerance &&
            end.y - start.y > tolerance)
            return true;
    }
    return false;
}

/// How far a strip's run, counter-clockwise, leads to the right along the opening.
double runToRight(const ContourLoop& strip, const Opening& hole, double tolerance) {
    const PlaneBox near = hole.box.widened(tolerance);
    const std::vector<PlaneSegment> holeSides = planeSegmentsOf(hole.loop);
    double toRight = 0.0;
    for (const PlaneSegment& side : planeSegmentsOf(strip)) {
        const AcGePoint2d middle = side.middle();
        if (near.meets({middle.x, middle.x, middle.y, middle.y}) &&
            std::any_of(holeSides.begin(), holeSides.end(),
                        [&](const PlaneSegment& holeSide) { return holeSide.touches(middle, tolerance); }))
            toRight += side.end().x - side.start().x;
    }
    return toRight;
}

/// Has the strip the opening below it. A part between prongs has it on both sides: there the middles of the
/// boxes tell, and level with the opening counts as above.
bool liesAbove(const ContourLoop& strip, const Opening& hole, double slack, double tolerance) {
    const double toRight = runToRight(strip, hole, tolerance);
    if (std::abs(toRight) > slack) return toRight > 0.0;
    const PlaneBox box = boxOf(strip);
    return box.lowY + box.highY >= hole.box.lowY + hole.box.highY - slack;
}

/// Appends parts of one kind from left to right, and upwards where they begin equally far to the left to
/// about a millionth of the piece: a rounding does not change the order. Slivers are no parts.
void appendFromLeft(std::vector<ContourLoop> found, double size, std::vector<ContourLoop>& parts) {
    struct Placed {
        long long column;
        double low;
        ContourLoop loop;
    };
    std::vector<Placed> placed;
    for (ContourLoop& loop : found) {
        const PlaneBox box = boxOf(loop);
        if (trueArea(loop) <= sliverOf(box, size)) continue;
        placed.push_back(
            {std::llround(box.lowX / (size * kColumnShare)), box.lowY, withoutStraightVertices(loop)});
    }
    std::sort(placed.begin(), placed.end(), [](const Placed& a, const Placed& b) {
        return a.column != b.column ? a.column < b.column : a.low < b.low;
    });
    for (Placed& part : placed) parts.push_back(std::move(part.loop));
}

/// False when a line does not reach the opening, which then lies free inside a part.
bool partsOfAnyShape(const Cut& cut, double inward, std::vector<ContourLoop>& parts) {
    const double left = cut.opening.left + inward;
    const double right = cut.opening.right - inward;
    const ContourArea atHole = partsAtHole(cut, left, right);
    const double tolerance =
        kSliverTolerances * areaTolerance({cut.piece}, {cut.opening.loop}) + kExtentsNudge;
    const double slack = kColumnShare * cut.pieceBox.largerSide();
    std::vector<ContourLoop> upper;
    std::vector<ContourLoop> lower;
    for (const ContourLoop& part : atHole)
        for (ContourLoop& strip : areaWithout(part, cut.opening.loop)) {
            if (signedArea(strip) < 0.0) return false;
            (liesAbove(strip, cut.opening, slack, tolerance) ? upper : lower).push_back(std::move(strip));
        }
    std::vector<ContourLoop> before;
    std::vector<ContourLoop> behind;
    for (ContourLoop& part : areaWithout({cut.piece}, atHole))
        (liesLeftOf(part, left, tolerance) ? before : behind).push_back(std::move(part));
    for (std::vector<ContourLoop>* kind : {&before, &behind, &upper, &lower})
        appendFromLeft(std::move(*kind), cut.pieceBox.largerSide(), parts);
    return true;
}

/// By true areas, for whatever is not clear from the crossings alone.
bool cutByAreas(const ContourLoop& piece, const PlaneBox& pieceBox, const Opening& hole,
                std::vector<ContourLoop>& parts) {
    if (!(trueArea(commonArea(piece, hole.loop)) > sliverArea(hole.box))) return false;
    const Cut cut{piece, hole, pieceBox, areaWithout(piece, hole.loop), sliverArea(pieceBox)};
    if (trueArea(cut.rest) <= cut.allowed) return true;
    const bool isPlain = plainParts(cut, parts);
    double best = errorOf(cut, parts);
    if (isPlain && best <= cut.allowed) return true;

    const double tolerance = areaTolerance({piece}, {hole.loop});
    for (const double inward : kInwardTolerances) {
        std::vector<ContourLoop> tried;
        if (!partsOfAnyShape(cut, inward * tolerance, tried)) continue;
        const double error = errorOf(cut, tried);
        if (error > best && error > cut.allowed) continue;
        best = error;
        parts = std::move(tried);
        if (error <= cut.allowed) break;
    }
    return true;
}

} // namespace

Opening::Opening(ContourLoop counterClockwise)
    : loop(std::move(counterClockwise))
    , clockwise(reversedLoop(loop))
    , box(boxOf(loop))
    , left(box.lowX)
    , right(box.highX) {
    AcGePoint3d leftmost(left, 0.0, 0.0);
    AcGePoint3d rightmost(right, 0.0, 0.0);
    VEXOGeometryTools::correctExtentsPoints(leftmost, rightmost, planePolyline(loop).get());
    left = leftmost.x;
    right = rightmost.x;
}

double sliverArea(const PlaneBox& hole) { return sliverOf(hole, hole.largerSide()); }

bool cutAroundHole(const ContourLoop& piece, const Opening& hole, std::vector<ContourLoop>& parts) {
    const PlaneBox pieceBox = boxOf(piece);
    if (!pieceBox.overlaps(hole.box)) return false;
    const double sliver = std::max(sliverArea(hole.box), sliverArea(pieceBox));
    std::vector<ContourLoop> rough;
    const CleanCut clean = cutCleanly(piece, pieceBox, hole, sliver, rough);
    const bool isCut =
        clean == CleanCut::kCut || (clean == CleanCut::kUnclear && cutByAreas(piece, pieceBox, hole, rough));
    const double width = sliverWidth(std::max(pieceBox.largerSide(), hole.box.largerSide()));
    for (ContourLoop& part : rough) parts.push_back(withoutHairs(std::move(part), width));
    return isCut;
}

} // namespace vexo
