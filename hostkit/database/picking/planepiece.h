// Pieces of curves in the plane: straight ones and parts of conics, exact under every affine map; leaves out
// curves of higher degree.
#pragma once

#include "gepnt2d.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace hostkit {

/// A box of the plane; a fresh one is empty, and an empty one meets and holds nothing.
struct PlaneBox {
    AcGePoint2d low{HUGE_VAL, HUGE_VAL};
    AcGePoint2d high{-HUGE_VAL, -HUGE_VAL};

    void add(const AcGePoint2d& point) {
        low.set(std::min(low.x, point.x), std::min(low.y, point.y));
        high.set(std::max(high.x, point.x), std::max(high.y, point.y));
    }
    bool isEmpty() const { return !(low.x <= high.x && low.y <= high.y); }
    /// Boxes that come within `reach` of each other meet.
    bool meets(const PlaneBox& other, double reach) const {
        return low.x - reach <= other.high.x && other.low.x - reach <= high.x &&
               low.y - reach <= other.high.y && other.low.y - reach <= high.y;
    }
    bool holds(const PlaneBox& other) const {
        return low.x <= other.low.x && other.high.x <= high.x && low.y <= other.low.y &&
               other.high.y <= high.y && !other.isEmpty();
    }
    bool holds(const AcGePoint2d& point, double reach) const {
        return low.x - reach <= point.x && point.x <= high.x + reach && low.y - reach <= point.y &&
               point.y <= high.y + reach;
    }
    /// The largest magnitude of a coordinate.
    double magnitude() const { return std::max(low.largestCoordinate(), high.largestCoordinate()); }
};

/// Up to so many places on a piece, as parameters in [0, 1].
struct PieceParameters {
    std::array<double, 2> values{};
    int count = 0;

    void add(double value) { values[static_cast<std::size_t>(count++)] = value; }
};

/// A segment, or a part of a conic of less than half a turn: the rational quadratic through its ends with the
/// tangents' meeting point between them. Moving the three points moves the curve, whatever the affine map.
struct PlanePiece {
    AcGePoint2d start;
    AcGePoint2d middle; ///< of a conic: where the tangents at its ends meet
    AcGePoint2d end;
    double weight = 0.0; ///< of the middle point, the cosine of half the sweep for an arc; 0: straight

    static PlanePiece segment(const AcGePoint2d& start, const AcGePoint2d& end) {
        return {start, start, end, 0.0};
    }
    bool isStraight() const { return weight == 0.0; }
    bool isFinite() const {
        return std::isfinite(start.x + start.y + middle.x + middle.y + end.x + end.y + weight);
    }
    AcGePoint2d at(double parameter) const;
    /// Holds the piece; of a conic the box of its three points.
    PlaneBox hull() const;
    /// Where the piece meets the line through the point with that normal; where it passes it by, its nearest
    /// point is given, and whoever asks looks how near that is. None for a segment along the line.
    PieceParameters meetings(const AcGePoint2d& linePoint, const AcGeVector2d& lineNormal) const;
    /// How often a ray from the point towards +x is crossed, modulo 2. A point of the line through an end
    /// counts for one of two adjoining pieces.
    bool isCrossedBeside(const AcGePoint2d& point) const;

private:
    bool isMonotoneCrossed(const AcGePoint2d& point, double from, double to) const;
};

/// Distance of a point from a segment, which may be a point.
double distanceToSegment(const AcGePoint2d& point, const AcGePoint2d& start, const AcGePoint2d& end);

} // namespace hostkit
