// What hatches fill: the contours that their loops make by nesting and style; leaves out patterns and
// gradients.
#pragma once

#include "hatchloop.h"

#include <cstddef>
#include <vector>

namespace hostkit {

/// A segment, or the part of center + u cos t + v sin t for t from startAngle on over sweep radians, negative
/// for the other way. `start` and `end` are the ends of both.
struct ContourPiece {
    AcGePoint2d start;
    AcGePoint2d end;
    bool isArc = false;
    AcGePoint2d center;
    AcGeVector2d u;
    AcGeVector2d v;
    double startAngle = 0.0;
    double sweep = 0.0;
    /// On the first chord of a spline: the area between the spline and its chords, with the sign of the
    /// sense.
    double besideChords = 0.0;
};

/// Closed: each piece starts just where the one before it ends, the first where the last ends.
using HatchContour = std::vector<ContourPiece>;

/// What a hatch fills, in the plane of its loops: the points that lie within an odd number of contours.
///
/// Which loops are contours follows from how many other loops a loop lies in: all of them (normal), those in
/// none and in one (outer), those in none (ignore). Text boxes count for no other loop; one that lies in a
/// filled part is a hole, another one is left out. Flags of loops that say outermost are not looked at: they
/// are wrong too often. Edges of a loop may run either way; where they leave gaps, and between the ends of an
/// open loop, the contour has a segment. Lines and arcs, elliptic ones too, are kept as such; splines are cut
/// into chords. Takes time for the pieces of the loops and, where depths matter, for their crossings with one
/// line a loop.
class HatchArea {
public:
    /// `style` as AcDbHatch::HatchStyle. Chords of splines are no farther from them than `deviation`; 0
    /// stands for a millionth of their control points' box. Loops with values that are no numbers, or beyond
    /// 1e100, and those without edges are left out.
    HatchArea(const std::vector<HatchLoop>& loops, int style, double deviation = 0.0);

    const std::vector<HatchContour>& contours() const { return m_contours; }
    /// Which of the given loops each contour comes from, ascending; a loop may have several contours.
    const std::vector<std::size_t>& loops() const { return m_loops; }
    /// The contours as points, the closing one left out, to be filled by even and odd in one go; chords of
    /// arcs are no farther from them than `deviation`, but an arc has a chord for each eighth of a turn at
    /// least and 10,000 at most.
    std::vector<std::vector<AcGePoint2d>> polygons(double deviation) const;
    /// Whether nothing is filled: no contours, or none that enclose anything.
    bool isEmpty() const;
    /// Areas of the contours, those at odd depths taken away. What is filled, unless loops cross or touch.
    double area() const;

private:
    std::vector<HatchContour> m_contours;
    std::vector<std::size_t> m_loops;
};

/// The area of a contour with the sign of its sense; splines count as they are, not as their chords.
double signedArea(const HatchContour& contour);

} // namespace hostkit
