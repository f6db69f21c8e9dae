// What the straight curves of the plane and of space share: direction, relations, crossings and overlaps.
#pragma once

#include "gecurv.h"

namespace AcGeKernel {

/// Base of line, segment and ray. A straight curve of zero length or zero direction is a point: its direction
/// is the zero vector, it is parallel, perpendicular and collinear to nothing, and meets what passes through
/// it.
template <class T>
class LinearOf : public T::Curve {
    using Base = typename T::Curve;
    using Entity = typename T::Entity;
    using Linear = typename T::Linear;
    using Line = typename T::Line;
    using Block = typename T::Block;
    using Point = typename T::Point;
    using Vector = typename T::Vector;
    using PointArray = typename T::PointArray;
    using VectorArray = typename T::VectorArray;

public:
    Adesk::Boolean isEqualTo(const Entity& entity, const AcGeTol& tol = AcGeContext::gTol) const override;

    /// Unit vector; zero when the curve has no length.
    Vector direction() const;
    /// The base point of a line, the start of a ray or segment.
    Point pointOnLine() const { return m_origin; }
    /// The point's derivative by the parameter: a unit vector on lines and rays, end less start on segments.
    Vector paramStep() const { return m_step; }
    void getLine(Line& line) const;

    /// Directions along one line in either sense. Between two segments also true when the angle is below what
    /// the rounding of their end points can tell.
    Adesk::Boolean isParallelTo(const Linear& line, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isPerpendicularTo(const Linear& line, const AcGeTol& tol = AcGeContext::gTol) const;
    /// Parallel, and on the same unbounded line. Bounds do not count: collinear segments may lie apart.
    Adesk::Boolean isColinearTo(const Linear& line, const AcGeTol& tol = AcGeContext::gTol) const;

    /// The one point that both have. Also when they only touch, at an end or a vertex, and when two collinear
    /// ones touch end to end. False, and `point` untouched, when they miss each other by more than the
    /// tolerance or run together over a length (see overlap). When the lines cross a little beyond an end
    /// that lies within the tolerance of the other, the point is that end.
    Adesk::Boolean intersectWith(const Linear& line, Point& point,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    /// The common run of two collinear curves: a new line, ray or segment in this one's sense, owned by the
    /// caller. False, and null, when there is none or when it has no length.
    Adesk::Boolean overlap(const Linear& line, Linear*& common, const AcGeTol& tol = AcGeContext::gTol) const;

    using Base::evalPoint;
    using Base::getInterval;
    using Base::getSamplePoints;
    using Base::isOn;
    using Base::length;

    void getInterval(AcGeInterval& interval) const override { interval = m_interval; }
    Point evalPoint(double param) const override;
    Point evalPoint(double param, int numDeriv, VectorArray& derivatives) const override;
    double paramOfClosestPoint(const Point& point) const override;
    double paramOf(const Point& point, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean isClosed(const AcGeTol&) const override { return Adesk::kFalse; }
    Adesk::Boolean isLinear(Line& line, const AcGeTol& tol = AcGeContext::gTol) const override;
    double length(double fromParam, double toParam, const AcGeTol& tol = AcGeContext::gTol) const override;
    double paramAtLength(double datumParam, double length, Adesk::Boolean forward = Adesk::kTrue,
                         const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean area(double startParam, double endParam, double& value,
                        const AcGeTol& tol = AcGeContext::gTol) const override;
    Block orthoBoundBlock() const override;
    void getSamplePoints(double fromParam, double toParam, double tolerance, PointArray& points,
                         AcGeDoubleArray& params) const override;

protected:
    LinearOf(const Point& origin, const Vector& step, const AcGeInterval& interval)
        : m_origin(origin)
        , m_step(step)
        , m_end(origin + step)
        , m_interval(interval) {}

    /// Moves the defining points; what transformBy of the classes does.
    void move(const typename T::Matrix& matrix);

    Point m_origin;
    Vector m_step;           ///< derivative by the parameter: a unit vector, on segments end less start
    Point m_end;             ///< point at parameter 1, kept so that a segment's end is exact
    AcGeInterval m_interval; ///< unbounded, 0 to infinity, or 0 to 1

private:
    const Linear& self() const { return static_cast<const Linear&>(*this); }
};

} // namespace AcGeKernel
