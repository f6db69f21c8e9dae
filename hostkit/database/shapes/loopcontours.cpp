#include "loopcontours.h"

#include "hatchcurves.h"

#include "gearc2d.h"
#include "gebndblock2d.h"
#include "geell2d.h"
#include "geintrvl.h"
#include "genurb2d.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace hostkit {

namespace {

constexpr double kTurn = 6.28318530717958647693;
constexpr double kLargest = 1e100;
// Flatter bulges differ from their chords by less than rounding.
constexpr double kFlattestBulge = 1e-12;

using Pieces = std::vector<ContourPiece>;

ContourPiece segment(const AcGePoint2d& start, const AcGePoint2d& end) {
    ContourPiece piece;
    piece.start = start;
    piece.end = end;
    return piece;
}

AcGePoint2d pointAt(const ContourPiece& arc, double angle) {
    return arc.center + arc.u * std::cos(angle) + arc.v * std::sin(angle);
}

ContourPiece bulged(const AcGePoint2d& start, const AcGePoint2d& end, double bulge) {
    ContourPiece piece = segment(start, end);
    if (std::abs(bulge) < kFlattestBulge) return piece;
    const AcGeVector2d half = (end - start) / 2.0;
    piece.isArc = true;
    piece.center = start + half + half.perpVector() * ((1.0 / bulge - bulge) / 2.0);
    piece.u = start - piece.center;
    piece.v = piece.u.perpVector();
    piece.sweep = 4.0 * std::atan(bulge);
    return piece;
}

ContourPiece arc(const AcGePoint2d& center, const AcGeVector2d& u, const AcGeVector2d& v, double from,
                 double to) {
    ContourPiece piece;
    piece.isArc = true;
    piece.center = center;
    piece.u = u;
    piece.v = v;
    piece.startAngle = std::remainder(from, kTurn);
    piece.sweep = std::clamp(to - from, -kTurn, kTurn);
    piece.start = pointAt(piece, piece.startAngle);
    // A whole turn ends where it began, not a rounding beside it.
    piece.end = std::abs(piece.sweep) == kTurn ? piece.start : pointAt(piece, piece.startAngle + piece.sweep);
    return piece;
}

Pieces chords(const AcGeNurbCurve2d& spline, double deviation) {
    constexpr double partOfBox = 1e-6;
    AcGePoint2d low = spline.controlPointAt(0), high = low;
    for (int i = 0; i < spline.numControlPoints(); ++i) {
        const AcGePoint2d point = spline.controlPointAt(i);
        low.set(std::min(low.x, point.x), std::min(low.y, point.y));
        high.set(std::max(high.x, point.x), std::max(high.y, point.y));
    }
    const double reach = std::max(high.x - low.x, high.y - low.y);
    AcGeInterval interval;
    AcGePoint2dArray points;
    AcGeDoubleArray parameters;
    spline.getInterval(interval);
    spline.getSamplePoints(interval.lowerBound(), interval.upperBound(),
                           deviation > 0.0 ? deviation : reach * partOfBox, points, parameters);
    Pieces pieces;
    double beside = 0.0;
    for (int i = 0; i + 1 < points.length(); ++i) {
        pieces.push_back(segment(points[i], points[i + 1]));
        // As of a parabola through the middle: two thirds of the box between it and its chord.
        const AcGePoint2d middle = spline.evalPoint((parameters[i] + parameters[i + 1]) / 2.0);
        beside += (middle - points[i]).crossProduct(points[i + 1] - points[i]) * 2.0 / 3.0;
    }
    if (!pieces.empty()) pieces.front().besideChords = beside;
    return pieces;
}

Pieces piecesOf(const HatchEdge& edge, double deviation) {
    if (edge.kind == HatchEdge::kLine) return {segment(edge.start, edge.end)};
    const std::unique_ptr<AcGeCurve2d> curve = curveOf(edge);
    if (!curve) return {};
    switch (curve->type()) {
    case AcGe::kCircArc2d: {
        const auto& circle = static_cast<const AcGeCircArc2d&>(*curve);
        const AcGeVector2d u = circle.refVec() * circle.radius();
        return {arc(circle.center(), u, circle.isClockWise() ? -u.perpVector() : u.perpVector(),
                    circle.startAng(), circle.endAng())};
    }
    case AcGe::kEllipArc2d: {
        const auto& ellipse = static_cast<const AcGeEllipArc2d&>(*curve);
        return {arc(ellipse.center(), ellipse.majorAxis() * ellipse.majorRadius(),
                    ellipse.minorAxis() * ellipse.minorRadius(), ellipse.startAng(), ellipse.endAng())};
    }
    default:
        return chords(static_cast<const AcGeNurbCurve2d&>(*curve), deviation);
    }
}

bool isUsable(double value) { return std::abs(value) < kLargest; } // false for what is no number

bool isUsable(const ContourPiece& piece) {
    const auto& [start, end, isArc, center, u, v, startAngle, sweep, beside] = piece;
    return isUsable(start.x) && isUsable(start.y) && isUsable(end.x) && isUsable(end.y) &&
           isUsable(center.x) && isUsable(center.y) && isUsable(u.x) && isUsable(u.y) && isUsable(v.x) &&
           isUsable(v.y) && isUsable(startAngle) && isUsable(sweep) && std::isfinite(beside);
}

void turnRound(Pieces& edge) {
    std::reverse(edge.begin(), edge.end());
    for (ContourPiece& piece : edge) {
        std::swap(piece.start, piece.end);
        piece.startAngle += piece.sweep;
        piece.sweep = -piece.sweep;
        piece.besideChords = -piece.besideChords;
    }
}

double distance(const AcGePoint2d& a, const AcGePoint2d& b) { return a.distanceTo(b); }

double distance(const AcGePoint2d& point, const Pieces& edge) {
    return std::min(distance(point, edge.front().start), distance(point, edge.back().end));
}

/// Joins edges to one chain, each turned the way that brings it nearer to the one before. What rounding
/// leaves between them is taken up by the next one; a real gap gets a segment.
class ChainMaker {
public:
    /// `next` decides which way round the first edge runs.
    void add(Pieces edge, const Pieces* next) {
        if (m_chain.empty()) {
            if (next && distance(edge.front().start, *next) < distance(edge.back().end, *next))
                turnRound(edge);
        } else {
            const AcGePoint2d& end = m_chain.back().end;
            if (distance(end, edge.back().end) < distance(end, edge.front().start)) turnRound(edge);
            joinTo(edge.front().start);
            edge.front().start = m_chain.back().end;
        }
        m_chain.insert(m_chain.end(), edge.begin(), edge.end());
    }
    HatchContour finished() {
        if (m_chain.empty()) return {};
        const AcGePoint2d start = m_chain.front().start;
        joinTo(start);
        m_chain.back().end = start;
        return std::move(m_chain);
    }

private:
    void joinTo(const AcGePoint2d& point) {
        const AcGePoint2d end = m_chain.back().end;
        if (!end.isEqualTo(point)) m_chain.push_back(segment(end, point));
    }

    HatchContour m_chain;
};

std::vector<HatchContour> edgeContours(const HatchLoop& loop, double deviation) {
    std::vector<HatchContour> contours;
    std::vector<Pieces> open;
    for (const HatchEdge& edge : loop.edges) {
        Pieces pieces = piecesOf(edge, deviation);
        if (pieces.empty()) continue;
        if (!pieces.front().start.isEqualTo(pieces.back().end)) {
            open.push_back(std::move(pieces));
        } else if (edge.kind != HatchEdge::kLine) {
            pieces.back().end = pieces.front().start;
            contours.push_back(std::move(pieces));
        }
    }
    ChainMaker chain;
    for (std::size_t i = 0; i < open.size(); ++i)
        chain.add(std::move(open[i]), i + 1 < open.size() ? &open[i + 1] : nullptr);
    if (HatchContour joined = chain.finished(); !joined.empty()) contours.push_back(std::move(joined));
    return contours;
}

HatchContour polylineContour(const HatchLoop& loop) {
    HatchContour contour;
    const std::size_t count = loop.vertices.size();
    if (count < 2) return contour;
    contour.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const bool isGap = i + 1 == count && !loop.isClosed;
        contour.push_back(bulged(loop.vertices[i], loop.vertices[(i + 1) % count],
                                 i < loop.bulges.size() && !isGap ? loop.bulges[i] : 0.0));
    }
    return contour;
}

} // namespace

std::vector<HatchContour> contoursOf(const HatchLoop& loop, double deviation) {
    std::vector<HatchContour> contours;
    if (loop.edges.empty())
        contours.push_back(polylineContour(loop));
    else
        contours = edgeContours(loop, deviation);
    std::erase_if(contours, [](const HatchContour& contour) { return contour.empty(); });
    for (const HatchContour& contour : contours)
        for (const ContourPiece& piece : contour)
            if (!isUsable(piece)) return {};
    return contours;
}

} // namespace hostkit
