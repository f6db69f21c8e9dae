// Stand-in for the host's AcGeCircArc2d. Covers arcs and circles with their constructions and crossings; leaves out fillets and tangent circles.
#pragma once

#include "gecurv2d.h"

/// A circular arc or a full circle in the plane.
///
/// The parameter is the angle in radians from the reference vector, measured the way that the arc runs:
/// counter-clockwise, or clockwise when isClockWise(). A clockwise arc's angles are thus not those of a
/// counter-clockwise one. startAng() < endAng() <= startAng() + 2*pi always holds, but for the degenerate arc
/// of radius 0 that collinear points give.
class AcGeCircArc2d : public AcGeCurve2d {
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

    AcGePoint2d center() const { return m_center; }
    Adesk::Boolean isClockWise() const { return m_clockWise; }
    AcGeVector2d refVec() const { return m_refVec; }
    double radius() const { return m_radius; }
    double startAng() const { return m_startAngle; }
    double endAng() const { return m_endAngle; }
    AcGePoint2d startPoint() const { return evalPoint(m_startAngle); }
    AcGePoint2d endPoint() const { return evalPoint(m_endAngle); }
    AcGeCircArc2d& setCenter(const AcGePoint2d& center);
    AcGeCircArc2d& setRefVec(const AcGeVector2d& refVec);
    /// Same angles, measured the other way: the arc that a mirror in the reference vector gives.
    AcGeCircArc2d& setIsClockWise(Adesk::Boolean clockWise);
    /// A negative radius is taken without its sign.
    AcGeCircArc2d& setRadius(double radius);
    /// An end not above the start gets full turns added until it is, an end more than one turn above is
    /// brought down to within one. Equal angles mean the full circle.
    AcGeCircArc2d& setAngles(double startAngle, double endAngle);
    AcGeCircArc2d& setToComplement();
    using AcGeCurve2d::length;
    double length() const { return m_radius * (m_endAngle - m_startAngle); }

    /// Is the point within the arc's circle, the rim included.
    Adesk::Boolean isInside(const AcGePoint2d& point, const AcGeTol& tol = AcGeContext::gTol) const;
    /// The tangent line at a point of the arc, in the arc's sense. False when the point is not on the arc.
    Adesk::Boolean tangent(const AcGePoint2d& point, AcGeLine2d& line,
                           const AcGeTol& tol = AcGeContext::gTol) const;

    /// Points in common with a straight curve, in the order in which the line runs. A line that comes within
    /// the point allowance of touching the circle gives one point: the foot of the centre, or an end of
    /// either curve that lies on the other within the stretch that they share. `count` is 0 to 2; points
    /// beyond it stay untouched.
    Adesk::Boolean intersectWith(const AcGeLinearEnt2d& line, int& count, AcGePoint2d& p1, AcGePoint2d& p2,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    /// Points in common with another arc, in the order in which this arc runs. Arcs of one circle that run
    /// together give the ends of the common run, the first run's where there are two (AcGeCurveCurveInt2d
    /// tells all); one point when the run is the full circle; touching ends as single points.
    Adesk::Boolean intersectWith(const AcGeCircArc2d& arc, int& count, AcGePoint2d& p1, AcGePoint2d& p2,
                                 const AcGeTol& tol = AcGeContext::gTol) const;

    AcGe::EntityId type() const override { return AcGe::kCircArc2d; }
    AcGeCircArc2d* copy() const override { return new AcGeCircArc2d(*this); }
    /// A matrix that is not uniform cannot keep it circular: the radius then follows the reference
    /// vector. Points at equal parameters stay corresponding points under uniform ones, mirrors included.
    AcGeCircArc2d& transformBy(const AcGeMatrix2d& matrix) override;
    Adesk::Boolean isEqualTo(const AcGeEntity2d& entity,
                             const AcGeTol& tol = AcGeContext::gTol) const override;
    using AcGeCurve2d::evalPoint;
    using AcGeCurve2d::getInterval;
    using AcGeCurve2d::getSamplePoints;
    void getInterval(AcGeInterval& interval) const override { interval.set(m_startAngle, m_endAngle); }
    Adesk::Boolean setInterval(const AcGeInterval& interval) override;
    AcGeCircArc2d& reverseParam() override;
    AcGePoint2d evalPoint(double param) const override;
    AcGePoint2d evalPoint(double param, int numDeriv, AcGeVector2dArray& derivatives) const override;
    double paramOfClosestPoint(const AcGePoint2d& point) const override;
    double paramOf(const AcGePoint2d& point, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean isPeriodic(double& period) const override;
    double length(double fromParam, double toParam, const AcGeTol& tol = AcGeContext::gTol) const override;
    double paramAtLength(double datumParam, double length, Adesk::Boolean forward = Adesk::kTrue,
                         const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean area(double startParam, double endParam, double& value,
                        const AcGeTol& tol = AcGeContext::gTol) const override;
    AcGeBoundBlock2d orthoBoundBlock() const override;
    /// At least one chord an eighth of a turn, and never more than a million.
    void getSamplePoints(double fromParam, double toParam, double tolerance, AcGePoint2dArray& points,
                         AcGeDoubleArray& params) const override;
    void getSmoothPieces(AcGeDoubleArray& params) const override;
    double coordinateMagnitude() const override { return std::max(m_center.largestCoordinate(), m_radius); }

private:
    AcGePoint2d m_center;
    AcGeVector2d m_refVec;
    double m_radius;
    double m_startAngle;
    double m_endAngle;
    Adesk::Boolean m_clockWise = Adesk::kFalse;
};
