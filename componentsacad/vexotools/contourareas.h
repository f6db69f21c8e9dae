#pragma once

#include <memory>
#include <vector>

class AcDbPolyline;
class AcGeVector3d;

/// Common parts, remainders and unions of plane areas bounded by lines and arcs.
///
/// All coordinates are those of the contours' own plane. Points, edges and arcs nearer to each other than
/// areaTolerance are taken to touch, so that shared edges, partly shared arcs, tangencies and vertices on
/// edges are found as such although their coordinates are rounded; no boundary moves by more than a few of
/// these tolerances. The work is done near a local origin and is near linear in vertices plus crossings.
/// Where areas only touch along a line or in points there is no result there: every loop encloses an area.
namespace vexo {

/// A corner and the host's bulge of the segment that leaves it: tan of a quarter of the included angle,
/// positive for a counter-clockwise arc, 0 for a straight segment.
struct ContourVertex {
    double x = 0.0;
    double y = 0.0;
    double bulge = 0.0;
};

/// A closed run; the last vertex's segment leads back to the first. A full circle has two vertices of
/// bulge 1.
struct ContourLoop {
    std::vector<ContourVertex> vertices;
};

/// An area with any number of parts and openings: what lies to the left of its loops. Loops that bound it
/// from outside run counter-clockwise, openings clockwise, in any order. Where loops overlap, a point belongs
/// to the area when counter-clockwise loops round it outnumber clockwise ones, so that openings which overlap
/// each other or cross the edge are simply taken away.
using ContourArea = std::vector<ContourLoop>;

/// The same loop in the other sense of travel: vertex k becomes the last but k.
ContourLoop reversed(const ContourLoop& loop);

/// The area of a loop with its arcs, positive when it runs counter-clockwise. Relative error about 1e-15 of
/// the square of the loop's own size, wherever it lies. 0 for fewer than two vertices.
double signedArea(const ContourLoop& loop);
/// The same without its sign.
double trueArea(const ContourLoop& loop);
/// The sum over the loops: openings count negative.
double trueArea(const ContourArea& area);

/// The distance below which points of these areas are the same: 1e-10 of their common box's larger side, or
/// 16 units in the last place of the largest coordinate if that is more. Where boundaries run along each
/// other just about that far apart and would cross unseen, the work is done again with 8 times, an eighth, or
/// 64 times the distance, the first that leaves no contradiction.
double areaTolerance(const ContourArea& first, const ContourArea& second);

/// Both senses of travel of a single loop mean the same area. A loop that crosses itself bounds everything
/// that it runs round. Loops with a coordinate or bulge that is no number or infinite, or with fewer than two
/// vertices, bound nothing.
///
/// The results' loops touch each other in points at most, none touches itself; arcs stay arcs, and a piece of
/// an arc keeps its circle. Vertices of the input stay where they are to the bit as far as they bound the
/// result. Straight-through vertices stay too: see withoutStraightVertices. Order: outer loops first, the
/// largest first, then openings, the largest first.
ContourArea commonArea(const ContourLoop& first, const ContourLoop& second);
/// What `first` has and `second` has not.
ContourArea areaWithout(const ContourLoop& first, const ContourLoop& second);
/// What either has.
ContourArea joinedArea(const ContourLoop& first, const ContourLoop& second);

/// The same for areas with several loops; here the sense of the loops counts.
ContourArea commonArea(const ContourArea& first, const ContourArea& second);
ContourArea areaWithout(const ContourArea& first, const ContourArea& second);
ContourArea joinedArea(const ContourArea& first, const ContourArea& second);

/// Where an area is not covered exactly once by its parts: what no part covers, what several do, and what
/// parts cover beside the area. All loops count by their sense, so that a part that runs clockwise or round
/// something twice is wrong there. Loops as of the results above.
ContourArea wronglyCovered(const ContourArea& area, const ContourArea& parts);

/// The loop without vertices at which it runs straight on or along the same circle, and without repeated
/// vertices; a loop of two vertices keeps both. Tolerance: as areaTolerance of the loop.
ContourLoop withoutStraightVertices(const ContourLoop& loop);

/// The vertices of a polyline in its own plane; its normal, elevation and widths are not looked at. An open
/// polyline gives its run too: ask isClosed first.
ContourLoop loopOf(const AcDbPolyline& polyline);
/// A closed polyline with these vertices in the plane of a normal and an elevation.
std::unique_ptr<AcDbPolyline> polylineOf(const ContourLoop& loop, const AcGeVector3d& normal,
                                         double elevation);

} // namespace vexo
