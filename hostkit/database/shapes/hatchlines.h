// What hatches show: the contours of what is filled, by the loops' nesting and the style, and the strokes of
// patterns; leaves out gradients.
#pragma once

#include "acadstrc.h"
#include "hatchloop.h"

#include <cstddef>
#include <functional>
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
/// into chords.
class HatchArea {
public:
    /// `style` as AcDbHatch::HatchStyle. Chords of splines are no farther from them than `deviation`; 0 stands
    /// for a millionth of the larger side of the loops' box. Loops of values that are no numbers, and
    /// those without edges, are left out.
    HatchArea(const std::vector<HatchLoop>& loops, int style, double deviation = 0.0);

    const std::vector<HatchContour>& contours() const { return m_contours; }
    /// The contours as points, the closing one left out, to be filled by even and odd in one go; chords of arcs
    /// are no farther from them than `deviation`, but an arc has at least a chord for each eighth of a turn.
    std::vector<std::vector<AcGePoint2d>> polygons(double deviation) const;
    /// Whether nothing is filled: no contours, or none with an area.
    bool isEmpty() const;
    /// Areas of the contours, those at odd depths taken away. What is filled, unless loops cross.
    double area() const;

private:
    std::vector<HatchContour> m_contours;
    std::vector<int> m_depths; ///< of the contours
};

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
/// eInvalidInput: no family, or one with values that are no numbers; nothing is visited. eOutOfRange: more
/// than `limit` strokes; nothing is visited where the lines alone would be too many, else `limit` strokes
/// were. eOk too where the visitor ended the walk. Takes time for the lines and their crossings with the
/// contours, and memory for the contours alone.
Acad::ErrorStatus forEachStroke(const HatchArea& area, const std::vector<HatchPatternLine>& families,
                                std::size_t limit, const HatchStrokeVisitor& visit);

/// How many strokes there would be if the area filled its box; never below what forEachStroke visits but for
/// rounding. Infinity for what is refused there.
double mostStrokes(const HatchArea& area, const std::vector<HatchPatternLine>& families);

} // namespace hostkit
