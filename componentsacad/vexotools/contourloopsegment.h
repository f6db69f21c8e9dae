#pragma once

#include "contourareas.h"
#include "contourplanesegment.h"

#include <cmath>
#include <cstddef>
#include <vector>

namespace vexo {

/// A segment of a loop.
struct LoopSegment {
    ContourVertex start;
    ContourVertex end;

    LoopSegment(const ContourLoop& loop, std::size_t i)
        : start(loop.vertices[i])
        , end(loop.vertices[i + 1 < loop.vertices.size() ? i + 1 : 0]) {}

    bool isArc() const { return start.bulge != 0.0; }
    double chord() const { return std::hypot(end.x - start.x, end.y - start.y); }
    /// A box that holds the segment and the margin.
    PlaneBox box(double margin) const;
};

struct ArcCircle {
    double x = 0.0;
    double y = 0.0;
    double radius = 0.0;
};

/// The circle of an arc.
ArcCircle circleOf(const LoopSegment& arc);

/// The sides of a loop that have a length, arcs of more than half a circle in two halves.
std::vector<PlaneSegment> planeSegmentsOf(const ContourLoop& loop);
/// The box of a loop with its arcs.
PlaneBox boxOf(const ContourLoop& loop);
/// The same run from its first vertex on the other way round.
ContourLoop reversedLoop(const ContourLoop& loop);

} // namespace vexo
