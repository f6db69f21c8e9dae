// The lines of hatch patterns: their strokes within an area, one after the other; leaves out which pattern a
// name means.
#pragma once

#include "acadstrc.h"
#include "hatcharea.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace hostkit {

/// A dash within the area; a dot has its ends at one place.
struct HatchStroke {
    AcGePoint2d from;
    AcGePoint2d to;
    bool isDot() const { return from.x == to.x && from.y == to.y; }
};
/// False ends the walk.
using HatchStrokeVisitor = std::function<bool(const HatchStroke&)>;

/// How many strokes drawings are given; a hatch with more counts as too dense.
constexpr std::size_t kMostHatchStrokes = 1'000'000;

/// The distance between the lines of a family; 0 when they all lie on one.
double spacingOf(const HatchPatternLine& line);

/// Visits the strokes of all families one after the other, line by line; nothing is kept of them. Dashes
/// count from the family's base, and on each further line from the base moved by the offset. A family without
/// spacing is the one line through its base.
///
/// Lines that run along a contour's edge are within on one side of the area and not on the other, so that
/// areas side by side have them once.
///
/// eInvalidInput: no family, or one with values that are no numbers or beyond 1e100; nothing is visited.
/// eOutOfRange: more than `limit` strokes, or so little drawn of so much that a stroke takes 64 steps; of a
/// family whose lines alone would be too many nothing is visited, and never more than `limit` in all. eOk too
/// where the visitor ended the walk. Takes time for the lines and their crossings with the contours, and
/// memory for the contours alone.
Acad::ErrorStatus forEachStroke(const HatchArea& area, const std::vector<HatchPatternLine>& families,
                                std::size_t limit, const HatchStrokeVisitor& visit);

/// About how many strokes there would be if the area filled the box around it along each family's lines.
/// Infinity for families that forEachStroke refuses.
double estimatedStrokes(const HatchArea& area, const std::vector<HatchPatternLine>& families);

} // namespace hostkit
