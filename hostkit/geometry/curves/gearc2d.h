// Stand-in for the host's AcGeCircArc2d. Covers arcs and circles with their constructions and crossings; leaves out fillets and tangent circles.
#pragma once

#include "gearc.h"
#include "gecurv2d.h"

extern template class AcGeKernel::ArcOf<AcGeKernel::Plane>;

/// A circular arc or a full circle in the plane.
///
/// The parameter is the angle in radians from the reference vector, measured the way that the arc runs:
/// counter-clockwise, or clockwise when isClockWise(). A clockwise arc's angles are thus not those of a
/// counter-clockwise one. See ArcOf for what arcs of the plane and of space share.
class AcGeCircArc2d : public AcGeKernel::ArcOf<AcGeKernel::Plane> {
public:
    AcGeCircArc2d(); ///< the unit circle about the origin, counter-clockwise, reference +X
    /// A full circle, counter-clockwise, reference +X.
    AcGeCircArc2d(const AcGePoint2d& center, double radius);
    /// The reference vector is made a unit vector; a zero one becomes +X. Angles as setAngles takes them.
    AcGeCircArc2d(const AcGePoint2d& center, double radius, double startAngle, double endAngle,
                  const AcGeVector2d& refVec = AcGeVector2d::kXAxis,
                  Adesk::Boolean isClockWise = Adesk::kFalse);
    /// The arc from start through a point on it to end, clockwise or not as the points run. The reference
    /// vector points to the start, so that the angles run from 0 to the included angle. Points that are
    /// collinear, the middle one no farther from the chord's line than the global point test allows, or that
    /// coincide, give the degenerate arc: radius 0 at the start point, both angles 0, reference +X,
    /// counter-clockwise.
    /// From 0.3 to 5.5 radians, with the middle point well inside, all three points are met within 8 units in
    /// the last place of the largest of coordinates, centre and radius; ends that nearly meet let the middle
    /// point drift by a few more.
    AcGeCircArc2d(const AcGePoint2d& start, const AcGePoint2d& onArc, const AcGePoint2d& end);
    /// The arc between two points with a polyline's bulge, the tangent of a quarter of the included angle,
    /// positive for a counter-clockwise run. With bulgeIsHeight the number is the arc's height over the
    /// chord, of the same sign. A bulge of 0 gives the degenerate arc.
    AcGeCircArc2d(const AcGePoint2d& start, const AcGePoint2d& end, double bulge,
                  Adesk::Boolean bulgeIsHeight = Adesk::kFalse);

    AcGeCircArc2d& set(const AcGePoint2d& center, double radius) {
        return *this = AcGeCircArc2d(center, radius);
    }
    AcGeCircArc2d& set(const AcGePoint2d& center, double radius, double startAngle, double endAngle,
                       const AcGeVector2d& refVec = AcGeVector2d::kXAxis,
                       Adesk::Boolean isClockWise = Adesk::kFalse) {
        return *this = AcGeCircArc2d(center, radius, startAngle, endAngle, refVec, isClockWise);
    }
    AcGeCircArc2d& set(const AcGePoint2d& start, const AcGePoint2d& onArc, const AcGePoint2d& end) {
        return *this = AcGeCircArc2d(start, onArc, end);
    }
    AcGeCircArc2d& set(const AcGePoint2d& start, const AcGePoint2d& end, double bulge,
                       Adesk::Boolean bulgeIsHeight = Adesk::kFalse) {
        return *this = AcGeCircArc2d(start, end, bulge, bulgeIsHeight);
    }

    Adesk::Boolean isClockWise() const { return m_clockWise; }
    AcGeCircArc2d& setRefVec(const AcGeVector2d& refVec);
    /// Same angles, measured the other way: the arc that a mirror in the reference vector gives.
    AcGeCircArc2d& setIsClockWise(Adesk::Boolean clockWise);

    /// Is the point within the arc's circle, the rim included.
    Adesk::Boolean isInside(const AcGePoint2d& point, const AcGeTol& tol = AcGeContext::gTol) const;

    AcGe::EntityId type() const override { return AcGe::kCircArc2d; }
    AcGeCircArc2d* copy() const override { return new AcGeCircArc2d(*this); }
    /// A matrix that is not uniform cannot keep it circular: the radius then follows the reference
    /// vector. Points at equal parameters stay corresponding points under uniform ones, mirrors included.
    AcGeCircArc2d& transformBy(const AcGeMatrix2d& matrix) override;
    AcGeCircArc2d& reverseParam() override;
    Adesk::Boolean area(double startParam, double endParam, double& value,
                        const AcGeTol& tol = AcGeContext::gTol) const override;

private:
    friend AcGeKernel::ArcOf<AcGeKernel::Plane>;
    /// The reference vector a quarter turn on in the arc's sense.
    AcGeVector2d quarter() const { return m_clockWise ? -m_refVec.perpVector() : m_refVec.perpVector(); }
    bool hasSenseOf(const AcGeCircArc2d& other, const AcGeTol&) const {
        return m_clockWise == other.m_clockWise;
    }

    Adesk::Boolean m_clockWise = Adesk::kFalse;
};
