// Stand-in for the host's AcGeLinearEnt2d. Covers direction, relations, crossings and overlaps of straight curves; leaves out nothing that callers ask for.
#pragma once

#include "gecurv2d.h"

/// Base of line, segment and ray. A straight curve of zero length or zero direction is a point: its direction
/// is the zero vector, it is parallel, perpendicular and collinear to nothing, and meets what passes through
/// it.
class AcGeLinearEnt2d : public AcGeCurve2d {
public:
    AcGeLinearEnt2d* copy() const override = 0;
    AcGeLinearEnt2d& transformBy(const AcGeMatrix2d& matrix) override;
    Adesk::Boolean isEqualTo(const AcGeEntity2d& entity,
                             const AcGeTol& tol = AcGeContext::gTol) const override;

    /// Unit vector; zero when the curve has no length.
    AcGeVector2d direction() const;
    /// The base point of a line, the start of a ray or segment.
    AcGePoint2d pointOnLine() const { return m_origin; }
    /// The point's derivative by the parameter: a unit vector on lines and rays, end less start on segments.
    AcGeVector2d paramStep() const { return m_step; }
    void getLine(AcGeLine2d& line) const;
    /// The line through `point` whose direction is this one turned left by a right angle.
    void getPerpLine(const AcGePoint2d& point, AcGeLine2d& line) const;

    /// Directions along one line in either sense. Between two segments also true when the angle is below what
    /// the rounding of their end points can tell.
    Adesk::Boolean isParallelTo(const AcGeLinearEnt2d& line, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isPerpendicularTo(const AcGeLinearEnt2d& line,
                                     const AcGeTol& tol = AcGeContext::gTol) const;
    /// Parallel, and on the same unbounded line. Bounds do not count: collinear segments may lie apart.
    Adesk::Boolean isColinearTo(const AcGeLinearEnt2d& line, const AcGeTol& tol = AcGeContext::gTol) const;

    /// The one point that both have. Also when they only touch, at an end or a vertex, and when two collinear
    /// ones touch end to end. False, and `point` untouched, when they miss each other by more than the
    /// tolerance or run together over a length (see overlap). When the lines cross a little beyond an end
    /// that lies within the tolerance of the other, the point is that end.
    Adesk::Boolean intersectWith(const AcGeLinearEnt2d& line, AcGePoint2d& point,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    /// The common run of two collinear curves: a new line, ray or segment in this one's sense, owned by the
    /// caller. False, and null, when there is none or when it has no length.
    Adesk::Boolean overlap(const AcGeLinearEnt2d& line, AcGeLinearEnt2d*& common,
                           const AcGeTol& tol = AcGeContext::gTol) const;

    using AcGeCurve2d::evalPoint;
    using AcGeCurve2d::getInterval;
    using AcGeCurve2d::getSamplePoints;
    using AcGeCurve2d::isOn;
    using AcGeCurve2d::length;

    void getInterval(AcGeInterval& interval) const override { interval = m_interval; }
    AcGePoint2d evalPoint(double param) const override;
    AcGePoint2d evalPoint(double param, int numDeriv, AcGeVector2dArray& derivatives) const override;
    double paramOfClosestPoint(const AcGePoint2d& point) const override;
    double paramOf(const AcGePoint2d& point, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean isClosed(const AcGeTol&) const override { return Adesk::kFalse; }
    Adesk::Boolean isLinear(AcGeLine2d& line, const AcGeTol& tol = AcGeContext::gTol) const override;
    double length(double fromParam, double toParam, const AcGeTol& tol = AcGeContext::gTol) const override;
    double paramAtLength(double datumParam, double length, Adesk::Boolean forward = Adesk::kTrue,
                         const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean area(double startParam, double endParam, double& value,
                        const AcGeTol& tol = AcGeContext::gTol) const override;
    AcGeBoundBlock2d orthoBoundBlock() const override;
    void getSamplePoints(double fromParam, double toParam, double tolerance, AcGePoint2dArray& points,
                         AcGeDoubleArray& params) const override;

protected:
    AcGeLinearEnt2d(const AcGePoint2d& origin, const AcGeVector2d& step, const AcGeInterval& interval)
        : m_origin(origin)
        , m_step(step)
        , m_end(origin + step)
        , m_interval(interval) {}

    AcGePoint2d m_origin;
    AcGeVector2d m_step;     ///< derivative by the parameter: a unit vector, on segments end less start
    AcGePoint2d m_end;       ///< point at parameter 1, kept so that a segment's end is exact
    AcGeInterval m_interval; ///< unbounded, 0 to infinity, or 0 to 1
};
