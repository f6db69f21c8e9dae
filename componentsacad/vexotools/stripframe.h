#pragma once

#include "contourareas.h"

#include "gevec3d.h"

#include <memory>

class AcDbPolyline;

namespace vexo {

/// The view of a slab in which its strips run along +x: seen along Z, turned, and moved near the origin, so
/// that a slab far out is cut as exactly as one at zero. Loops in the frame run counter-clockwise.
class StripFrame {
public:
    /// The part of `dir` in the XY plane counts.
    StripFrame(const AcDbPolyline& contour, const AcGeVector3d& dir);

    /// False for a contour that is open, has no area or does not lie parallel to the XY plane, and for a
    /// direction without a part in that plane.
    bool isValid() const { return m_isValid; }
    /// The contour itself in the frame.
    const ContourLoop& contour() const { return m_loop; }
    /// Another closed contour parallel to the XY plane, whatever its elevation and sense. False for one that
    /// is open, elsewhere, or has no area.
    bool take(const AcDbPolyline& polyline, ContourLoop& loop) const;
    /// A polyline that lies, runs and looks as the contour does.
    std::unique_ptr<AcDbPolyline> give(const ContourLoop& loop, const AcDbPolyline& contour) const;

private:
    bool m_isValid = false;
    bool m_isClockwise = false; ///< the contour, seen against its normal
    double m_originX = 0.0;
    double m_originY = 0.0;
    double m_cosine = 1.0; ///< of the direction against the world's x axis
    double m_sine = 0.0;
    ContourLoop m_loop;
};

} // namespace vexo
