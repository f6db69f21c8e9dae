// Stand-in for the host's AcGeLinearEnt3d. Covers direction, relations, crossings and overlaps of straight curves; leaves out projected overlaps.
#pragma once

#include "gecurv3d.h"

/// Base of line, segment and ray. A straight curve of zero length or zero direction is a point: its direction
/// is the zero vector, it is parallel, perpendicular and collinear to nothing, and meets what passes through
/// it.
class AcGeLinearEnt3d : public AcGeCurve3d {
public:
    AcGeLinearEnt3d* copy() const override = 0;
    AcGeLinearEnt3d& transformBy(const AcGeMatrix3d& matrix) override;
    Adesk::Boolean isEqualTo(const AcGeEntity3d& entity,
                             const AcGeTol& tol = AcGeContext::gTol) const override;

    /// Unit vector; zero when the curve has no length.
    AcGeVector3d direction() const;
    /// The base point of a line, the start of a ray or segment.
    AcGePoint3d pointOnLine() const { return m_origin; }
    /// The point's derivative by the parameter: a unit vector on lines and rays, end less start on segments.
    AcGeVector3d paramStep() const { return m_step; }
    void getLine(AcGeLine3d& line) const;
    /// The plane through the point of the unbounded line at `point`'s foot, perpendicular to the line.
    void getPerpPlane(const AcGePoint3d& point, AcGePlane& plane) const;

    /// Directions along one line in either sense. Between two segments also true when the angle is below what
    /// the rounding of their end points can tell.
    Adesk::Boolean isParallelTo(const AcGeLinearEnt3d& line, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isParallelTo(const AcGePlanarEnt& plane, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isPerpendicularTo(const AcGeLinearEnt3d& line,
                                     const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isPerpendicularTo(const AcGePlanarEnt& plane,
                                     const AcGeTol& tol = AcGeContext::gTol) const;
    /// Parallel, and on the same unbounded line. Bounds do not count: collinear segments may lie apart.
    Adesk::Boolean isColinearTo(const AcGeLinearEnt3d& line, const AcGeTol& tol = AcGeContext::gTol) const;

    /// The one point that both have. Also when they only touch, at an end or a vertex, and when two collinear
    /// ones touch end to end. False, and `point` untouched, when they miss each other by more than the
    /// tolerance or run together over a length (see overlap). When the lines cross a little beyond an end
    /// that lies within the tolerance of the other, the point is that end.
    Adesk::Boolean intersectWith(const AcGeLinearEnt3d& line, AcGePoint3d& point,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    /// False, and `point` untouched, when they miss or when this runs in the plane.
    Adesk::Boolean intersectWith(const AcGePlanarEnt& plane, AcGePoint3d& point,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    /// Crossing as seen along `direction`, with the point on each. False when they do not cross in that view.
    Adesk::Boolean projIntersectWith(const AcGeLinearEnt3d& line, const AcGeVector3d& direction,
                                     AcGePoint3d& pointOnThis, AcGePoint3d& pointOnOther,
                                     const AcGeTol& tol = AcGeContext::gTol) const;
    /// The common run of two collinear curves: a new line, ray or segment in this one's sense, owned by the
    /// caller. False, and null, when there is none or when it has no length.
    Adesk::Boolean overlap(const AcGeLinearEnt3d& line, AcGeLinearEnt3d*& common,
                           const AcGeTol& tol = AcGeContext::gTol) const;

    using AcGeCurve3d::evalPoint;
    using AcGeCurve3d::getInterval;
    using AcGeCurve3d::getSamplePoints;
    using AcGeCurve3d::isOn;
    using AcGeCurve3d::length;
    /// Does the whole curve lie in the plane.
    Adesk::Boolean isOn(const AcGePlane& plane, const AcGeTol& tol = AcGeContext::gTol) const;

    void getInterval(AcGeInterval& interval) const override { interval = m_interval; }
    AcGePoint3d evalPoint(double param) const override;
    AcGePoint3d evalPoint(double param, int numDeriv, AcGeVector3dArray& derivatives) const override;
    double paramOfClosestPoint(const AcGePoint3d& point) const override;
    double paramOf(const AcGePoint3d& point, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean isClosed(const AcGeTol&) const override { return Adesk::kFalse; }
    Adesk::Boolean isLinear(AcGeLine3d& line, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean isPlanar(AcGePlane& plane, const AcGeTol& tol = AcGeContext::gTol) const override;
    double length(double fromParam, double toParam, const AcGeTol& tol = AcGeContext::gTol) const override;
    double paramAtLength(double datumParam, double length, Adesk::Boolean forward = Adesk::kTrue,
                         const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean area(double startParam, double endParam, double& value,
                        const AcGeTol& tol = AcGeContext::gTol) const override;
    AcGeBoundBlock3d orthoBoundBlock() const override;
    void getSamplePoints(double fromParam, double toParam, double tolerance, AcGePoint3dArray& points,
                         AcGeDoubleArray& params) const override;

protected:
    AcGeLinearEnt3d(const AcGePoint3d& origin, const AcGeVector3d& step, const AcGeInterval& interval)
        : m_origin(origin)
        , m_step(step)
        , m_end(origin + step)
        , m_interval(interval) {}

    AcGePoint3d m_origin;
    AcGeVector3d m_step;     ///< derivative by the parameter: a unit vector, on segments end less start
    AcGePoint3d m_end;       ///< point at parameter 1, kept so that a segment's end is exact
    AcGeInterval m_interval; ///< unbounded, 0 to infinity, or 0 to 1
};
