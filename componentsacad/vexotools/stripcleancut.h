#pragma once

#include "contourareas.h"
#include "contourloopsegment.h"

#include <vector>

namespace vexo {

/// An opening in the frame of the strips, with what every cut around it needs.
struct Opening {
    ContourLoop loop;      ///< counter-clockwise
    ContourLoop clockwise; ///< the same the other way round
    PlaneBox box;
    double left;  ///< where the cuts along y stand: at the outermost points, or nudged inwards by
    double right; ///< correctExtentsPoints where they would only touch

    explicit Opening(ContourLoop counterClockwise);
};

enum class CleanCut {
    kApart,   ///< piece and opening have no area in common
    kCut,     ///< the parts are told; none when the opening covers the piece
    kUnclear, ///< something touches, or comes too close to it: ask the areas
};

/// The cut of cutAroundHole for the ordinary case, at a small part of its cost: whatever meets crosses at a
/// clear angle away from all vertices, a cut crosses the piece twice, the opening leaves no bay at a cut, and
/// there is at most one strip above it and one below. The parts then follow from the order of the crossings
/// alone and are those of the plain steps. Anything else is unclear, strips up to the area `sliver` too.
CleanCut cutCleanly(const ContourLoop& piece, const PlaneBox& pieceBox, const Opening& hole, double sliver,
                    std::vector<ContourLoop>& parts);

} // namespace vexo
