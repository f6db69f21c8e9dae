// Contours seen along a direction: pieces over which the distance across it only rises or only falls, for
// sweeps; leaves out what is swept.
#pragma once

#include "hatcharea.h"

#include <vector>

namespace hostkit {

/// Axes at an origin near the contours, so that far ones are as exact as near ones.
struct SweepAxes {
    AcGePoint2d origin;
    AcGeVector2d along; ///< of length 1

    /// x along and y across.
    AcGePoint2d operator()(const AcGePoint2d& point) const { return rotated(point - origin); }
    AcGePoint2d rotated(const AcGeVector2d& vector) const {
        return {vector.x * along.x + vector.y * along.y, vector.y * along.x - vector.x * along.y};
    }
    AcGePoint2d back(double x, double y) const {
        return {origin.x + (x * along.x - y * along.y), origin.y + (x * along.y + y * along.x)};
    }
};

/// A segment, or a part of an arc that has no extreme across within. Pieces of a contour share the heights of
/// their common ends to the bit, so that a contour crosses each height that counts as within [low, high) an
/// even number of times.
struct MonotonePiece {
    double low = 0.0;
    double high = 0.0;
    double baseX = 0.0; ///< a point of the piece, from which abscissae are reckoned: flat arcs stay exact
    double baseY = 0.0;
    double slope = 0.0;  ///< segments: x by y; arcs: of the ellipse's middle
    double radius = 0.0; ///< arcs: half the height of the ellipse; 0 for segments
    double width = 0.0;  ///< arcs: half the width of the ellipse at its middle, with the side's sign
    double baseSine = 0.0;
    double baseCosine = 0.0;

    /// The abscissa at that height, which is cut to [low, high].
    double abscissaAt(double height) const;
};

/// Appends the pieces of a contour; those that have one height only are left out.
void appendMonotonePieces(const HatchContour& contour, const SweepAxes& axes,
                          std::vector<MonotonePiece>& pieces);

} // namespace hostkit
