// Areas that things are picked with: windows, polygons and fences of the view plane; leaves out how a view is
// drawn.
#pragma once

#include "gepnt2d.h"

#include <vector>

namespace hostkit {

enum class PickMode : unsigned char {
    inside,  ///< all of it lies within the region; what lies on the edge counts as within
    touching ///< some of it lies within the region or on its edge
};

/// An area of the view plane: what a window, crossing, polygon or fence is drawn as. Coordinates are those
/// that a PickSight's matrix gives. A region with a coordinate that is infinite or no number takes nothing.
class PickRegion {
public:
    enum class Kind : unsigned char { box, polygon, fence };

    /// Between two opposite corners, in any order. Without width or height it is a segment or a point: that
    /// still touches, and what lies wholly on it is inside.
    static PickRegion box(const AcGePoint2d& one, const AcGePoint2d& other);
    /// Closed by its last side; where sides cross, what an odd number of turns enclose is within. Two corners
    /// are a segment, one is a point, none take nothing.
    static PickRegion polygon(std::vector<AcGePoint2d> corners);
    /// An open chain. It touches; nothing is inside a fence.
    static PickRegion fence(std::vector<AcGePoint2d> points);

    Kind kind() const { return m_kind; }
    /// Four of a box, counter-clockwise from the lowest; else as given. None where the region takes nothing.
    const std::vector<AcGePoint2d>& corners() const { return m_corners; }
    /// The box of the corners. Above each other's where the region takes nothing.
    const AcGePoint2d& low() const { return m_low; }
    const AcGePoint2d& high() const { return m_high; }
    bool isEmpty() const { return !(m_low.x <= m_high.x); }

private:
    PickRegion(Kind kind, std::vector<AcGePoint2d> corners);

    Kind m_kind;
    std::vector<AcGePoint2d> m_corners;
    AcGePoint2d m_low;
    AcGePoint2d m_high;
};

} // namespace hostkit
