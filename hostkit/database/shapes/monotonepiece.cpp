#include "monotonepiece.h"

#include <algorithm>
#include <cmath>

namespace hostkit {

namespace {

constexpr double kHalfTurn = 3.14159265358979323846;

/// An arc in sweep coordinates: x = centre + lean cos s + width sin s, y = centre + radius cos s.
struct SweptArc {
    AcGePoint2d center;
    double lean = 0.0;
    double width = 0.0;
    double radius = 0.0;
    double from = 0.0; ///< s, rising
    double to = 0.0;
    AcGePoint2d start; ///< ends in the order of s
    AcGePoint2d end;
};

SweptArc sweptArc(const ContourPiece& piece, const SweepAxes& axes) {
    SweptArc arc;
    const AcGePoint2d u = axes.rotated(piece.u);
    const AcGePoint2d v = axes.rotated(piece.v);
    arc.center = axes(piece.center);
    arc.radius = std::hypot(u.y, v.y);
    arc.start = axes(piece.start);
    arc.end = axes(piece.end);
    if (arc.radius == 0.0) return arc;
    arc.lean = (u.x * u.y + v.x * v.y) / arc.radius;
    arc.width = (v.x * u.y - u.x * v.y) / arc.radius;
    const double top = std::atan2(v.y, u.y);
    arc.from = piece.startAngle - top;
    arc.to = arc.from + piece.sweep;
    if (piece.sweep < 0.0) {
        std::swap(arc.from, arc.to);
        std::swap(arc.start, arc.end);
    }
    return arc;
}

void appendSegment(const AcGePoint2d& start, const AcGePoint2d& end, std::vector<MonotonePiece>& pieces) {
    if (start.y == end.y) return;
    MonotonePiece piece;
    piece.low = std::min(start.y, end.y);
    piece.high = std::max(start.y, end.y);
    piece.baseX = start.x;
    piece.baseY = start.y;
    const double slope = (end.x - start.x) / (end.y - start.y);
    piece.slope = std::isfinite(slope) ? slope : 0.0; // it is infinite over no more than rounding
    pieces.push_back(piece);
}

// The end of a part of an arc: one of the arc's own, or a top or bottom.
struct PartEnd {
    AcGePoint2d point;
    bool isExtreme = false;
    double cosine = 0.0;
};

void appendPart(const SweptArc& arc, const PartEnd& start, const PartEnd& end, bool isFalling,
                std::vector<MonotonePiece>& pieces) {
    if (start.point.y == end.point.y) return;
    const PartEnd& base = start.isExtreme ? end : start;
    MonotonePiece piece;
    piece.low = std::min(start.point.y, end.point.y);
    piece.high = std::max(start.point.y, end.point.y);
    piece.baseX = base.point.x;
    piece.baseY = base.point.y;
    piece.slope = arc.lean / arc.radius;
    piece.radius = arc.radius;
    piece.width = isFalling ? arc.width : -arc.width;
    piece.baseCosine = base.cosine;
    piece.baseSine = std::sqrt((1.0 - base.cosine) * (1.0 + base.cosine));
    pieces.push_back(piece);
}

PartEnd ownEnd(const SweptArc& arc, const AcGePoint2d& point) {
    return {point, false, std::clamp((point.y - arc.center.y) / arc.radius, -1.0, 1.0)};
}

void appendArc(const SweptArc& arc, std::vector<MonotonePiece>& pieces) {
    // An ellipse on edge has no height; what is less than its width by that much is rounding.
    if (!std::isfinite(arc.lean / arc.radius) || !std::isfinite(arc.width / arc.radius))
        return appendSegment(arc.start, arc.end, pieces);
    double part = std::floor(arc.from / kHalfTurn);
    PartEnd start = ownEnd(arc, arc.start);
    for (; (part + 1.0) * kHalfTurn < arc.to; part += 1.0) {
        const bool isFalling = std::fmod(part, 2.0) == 0.0;
        const double cosine = isFalling ? -1.0 : 1.0; // a falling part ends at the bottom
        const PartEnd extreme{
            {arc.center.x + cosine * arc.lean, arc.center.y + cosine * arc.radius}, true, cosine};
        appendPart(arc, start, extreme, isFalling, pieces);
        start = extreme;
    }
    appendPart(arc, start, ownEnd(arc, arc.end), std::fmod(part, 2.0) == 0.0, pieces);
}

} // namespace

double MonotonePiece::abscissaAt(double height) const {
    const double rise = std::clamp(height, low, high) - baseY;
    const double straight = baseX + rise * slope;
    if (radius == 0.0) return straight;
    const double turn = rise / radius;
    const double cosine = std::clamp(baseCosine + turn, -1.0, 1.0);
    // A flat arc's turn has more digits than the difference of its cosines.
    const double change = cosine == baseCosine + turn ? turn : cosine - baseCosine;
    const double sine = std::sqrt((1.0 - cosine) * (1.0 + cosine));
    const double sines = sine + baseSine;
    return sines > 0.0 ? straight - width * ((cosine + baseCosine) * change / sines) : straight;
}

void appendMonotonePieces(const HatchContour& contour, const SweepAxes& axes,
                          std::vector<MonotonePiece>& pieces) {
    for (const ContourPiece& piece : contour) {
        if (piece.isArc)
            appendArc(sweptArc(piece, axes), pieces);
        else
            appendSegment(axes(piece.start), axes(piece.end), pieces);
    }
}

} // namespace hostkit
