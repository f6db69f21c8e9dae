// Stand-in for the host's AcGeCircArc3d. Covers arcs and circles with their constructions and crossings; leaves out fillets and tangent circles.
#pragma once

#include "gecurv3d.h"

/// A circular arc or a full circle in space.
///
/// The parameter is the angle in radians from the reference vector, counter-clockwise about the normal (seen
/// from its tip). startAng() < endAng() <= startAng() + 2*pi always holds, but for the degenerate arc of
/// radius 0 that collinear points give.
class AcGeCircArc3d : public AcGeCurve3d {
public:
    AcGeCircArc3d(); ///< the unit circle about the origin, normal +Z, reference +X
    /// A full circle; the reference vector is the x axis that the arbitrary-axis rule gives for the normal.
    AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
    /// The reference vector is made perpendicular to the normal and of unit length; where it has no part in
    /// the plane, the arbitrary-axis rule gives it. Angles as setAngles takes them.
    AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& refVec,
                  double radius, double startAngle, double endAngle);
    /// The arc from start through a point on it to end. The reference vector points to the start, so that the
    /// angles run from 0 to the included angle, and the normal is that about which the run is
    /// counter-clockwise. Points that are collinear, the middle one no farther from the chord's line than the
    /// global point test allows, or that coincide, give the degenerate arc: radius 0 at the start point, both
    /// angles 0, normal +Z.
    /// From 0.3 to 5.5 radians, with the middle point well inside, all three points are met within 8 units in
    /// the last place of the largest of coordinates, centre and radius; ends that nearly meet let the middle
    /// point drift by a few more.
    AcGeCircArc3d(const AcGePoint3d& start, const AcGePoint3d& onArc, const AcGePoint3d& end);

    AcGeCircArc3d& set(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
    AcGeCircArc3d& set(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& refVec,
                       double radius, double startAngle, double endAngle);
    AcGeCircArc3d& set(const AcGePoint3d& start, const AcGePoint3d& onArc, const AcGePoint3d& end);

    AcGePoint3d center() const { return m_center; }
    AcGeVector3d normal() const { return m_normal; }
    AcGeVector3d refVec() const { return m_refVec; }
    double radius() const { return m_radius; }
    double startAng() const { return m_startAngle; }
    double endAng() const { return m_endAngle; }
    AcGePoint3d startPoint() const { return evalPoint(m_startAngle); }
    AcGePoint3d endPoint() const { return evalPoint(m_endAngle); }
    AcGeCircArc3d& setCenter(const AcGePoint3d& center);
    /// Unit normal and reference vector, as the constructor takes them.
    AcGeCircArc3d& setAxes(const AcGeVector3d& normal, const AcGeVector3d& refVec);
    /// A negative radius is taken without its sign.
    AcGeCircArc3d& setRadius(double radius);
    /// An end not above the start gets full turns added until it is, an end more than one turn above is
    /// brought down to within one. Equal angles mean the full circle.
    AcGeCircArc3d& setAngles(double startAngle, double endAngle);
    AcGeCircArc3d& setToComplement();
    void getPlane(AcGePlane& plane) const;
    using AcGeCurve3d::length;
    double length() const { return m_radius * (m_endAngle - m_startAngle); }

    /// Is the point in the arc's plane and within its circle, the rim included.
    Adesk::Boolean isInside(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const;
    /// The tangent line at a point of the arc, in the arc's sense. False when the point is not on the arc.
    Adesk::Boolean tangent(const AcGePoint3d& point, AcGeLine3d& line,
                           const AcGeTol& tol = AcGeContext::gTol) const;

    /// Points in common with a straight curve, in the order in which the line runs. A line that comes within
    /// the point allowance of touching the circle gives one point: the foot of the centre, or an end of
    /// either curve that lies on the other within the stretch that they share. `count` is 0 to 2; points
    /// beyond it stay untouched.
    Adesk::Boolean intersectWith(const AcGeLinearEnt3d& line, int& count, AcGePoint3d& p1, AcGePoint3d& p2,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    /// Points in common with another arc, in the order in which this arc runs. Arcs of one circle that run
    /// together give the ends of the common run, the first run's where there are two (AcGeCurveCurveInt3d
    /// tells all); one point when the run is the full circle; touching ends as single points.
    Adesk::Boolean intersectWith(const AcGeCircArc3d& arc, int& count, AcGePoint3d& p1, AcGePoint3d& p2,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    /// None when the arc lies in the plane.
    Adesk::Boolean intersectWith(const AcGePlanarEnt& plane, int& count, AcGePoint3d& p1, AcGePoint3d& p2,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    /// Crossings with a line as seen along `direction`, with the points on each. None when the view shows the
    /// arc from its edge or the line as a point.
    Adesk::Boolean projIntersectWith(const AcGeLinearEnt3d& line, const AcGeVector3d& direction, int& count,
                                     AcGePoint3d& onArc1, AcGePoint3d& onArc2, AcGePoint3d& onLine1,
                                     AcGePoint3d& onLine2, const AcGeTol& tol = AcGeContext::gTol) const;

    AcGe::EntityId type() const override { return AcGe::kCircArc3d; }
    AcGeCircArc3d* copy() const override { return new AcGeCircArc3d(*this); }
    /// A matrix that is not uniform in the arc's plane cannot keep it circular: the radius then follows the
    /// reference vector. Points at equal parameters stay corresponding points under uniform ones, mirrors
    /// included.
    AcGeCircArc3d& transformBy(const AcGeMatrix3d& matrix) override;
    Adesk::Boolean isEqualTo(const AcGeEntity3d& entity,
                             const AcGeTol& tol = AcGeContext::gTol) const override;
    using AcGeCurve3d::evalPoint;
    using AcGeCurve3d::getInterval;
    using AcGeCurve3d::getSamplePoints;
    void getInterval(AcGeInterval& interval) const override { interval.set(m_startAngle, m_endAngle); }
    Adesk::Boolean setInterval(const AcGeInterval& interval) override;
    AcGeCircArc3d& reverseParam() override;
    AcGePoint3d evalPoint(double param) const override;
    AcGePoint3d evalPoint(double param, int numDeriv, AcGeVector3dArray& derivatives) const override;
    double paramOfClosestPoint(const AcGePoint3d& point) const override;
    double paramOf(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean isPeriodic(double& period) const override;
    Adesk::Boolean isPlanar(AcGePlane& plane, const AcGeTol& tol = AcGeContext::gTol) const override;
    double length(double fromParam, double toParam, const AcGeTol& tol = AcGeContext::gTol) const override;
    double paramAtLength(double datumParam, double length, Adesk::Boolean forward = Adesk::kTrue,
                         const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean area(double startParam, double endParam, double& value,
                        const AcGeTol& tol = AcGeContext::gTol) const override;
    AcGeBoundBlock3d orthoBoundBlock() const override;
    /// At least one chord an eighth of a turn, and never more than a million.
    void getSamplePoints(double fromParam, double toParam, double tolerance, AcGePoint3dArray& points,
                         AcGeDoubleArray& params) const override;
    void getSmoothPieces(AcGeDoubleArray& params) const override;
    double coordinateMagnitude() const override { return std::max(m_center.largestCoordinate(), m_radius); }

private:
    AcGePoint3d m_center;
    AcGeVector3d m_normal;
    AcGeVector3d m_refVec;
    double m_radius;
    double m_startAngle;
    double m_endAngle;
};
