// What the circular arcs of the plane and of space share: angles, radius, crossings, measures.
#pragma once

#include "gecurv.h"

namespace AcGeKernel {

/// A circular arc or a full circle. The parameter is the angle in radians from the reference vector, measured
/// the way that the arc runs. startAng() < endAng() <= startAng() + 2*pi always holds, but for the degenerate
/// arc of radius 0 that collinear points give.
template <class T>
class ArcOf : public T::Curve {
    using Base = typename T::Curve;
    using Entity = typename T::Entity;
    using Linear = typename T::Linear;
    using Line = typename T::Line;
    using Arc = typename T::Arc;
    using Block = typename T::Block;
    using Point = typename T::Point;
    using Vector = typename T::Vector;
    using PointArray = typename T::PointArray;
    using VectorArray = typename T::VectorArray;

public:
    Point center() const { return m_center; }
    Vector refVec() const { return m_refVec; }
    double radius() const { return m_radius; }
    double startAng() const { return m_startAngle; }
    double endAng() const { return m_endAngle; }
    Point startPoint() const { return evalPoint(m_startAngle); }
    Point endPoint() const { return evalPoint(m_endAngle); }
    Arc& setCenter(const Point& center);
    /// A negative radius is taken without its sign.
    Arc& setRadius(double radius);
    /// An end not above the start gets full turns added until it is, an end more than one turn above is
    /// brought down to within one. Equal angles mean the full circle.
    Arc& setAngles(double startAngle, double endAngle);
    Arc& setToComplement();
    using Base::length;
    double length() const { return m_radius * (m_endAngle - m_startAngle); }

    /// The tangent line at a point of the arc, in the arc's sense. False when the point is not on the arc.
    Adesk::Boolean tangent(const Point& point, Line& line, const AcGeTol& tol = AcGeContext::gTol) const;

    /// Points in common with a straight curve, in the order in which the line runs. A line that comes within
    /// the point allowance of touching the circle gives one point: the foot of the centre, or an end of
    /// either curve that lies on the other within the stretch that they share. `count` is 0 to 2; points
    /// beyond it stay untouched.
    Adesk::Boolean intersectWith(const Linear& line, int& count, Point& p1, Point& p2,
                                 const AcGeTol& tol = AcGeContext::gTol) const;
    /// Points in common with another arc, in the order in which this arc runs. Arcs of one circle that run
    /// together give the ends of the common run, the first run's where there are two (the curve-curve
    /// intersections tell all); one point when the run is the full circle; touching ends as single points.
    Adesk::Boolean intersectWith(const Arc& arc, int& count, Point& p1, Point& p2,
                                 const AcGeTol& tol = AcGeContext::gTol) const;

    Adesk::Boolean isEqualTo(const Entity& entity, const AcGeTol& tol = AcGeContext::gTol) const override;
    using Base::evalPoint;
    using Base::getInterval;
    using Base::getSamplePoints;
    void getInterval(AcGeInterval& interval) const override { interval.set(m_startAngle, m_endAngle); }
    Adesk::Boolean setInterval(const AcGeInterval& interval) override;
    // What crossings ask for most is final: no class below has it otherwise, and calls need no table.
    Point evalPoint(double param) const final;
    Point evalPoint(double param, int numDeriv, VectorArray& derivatives) const override;
    double paramOfClosestPoint(const Point& point) const final;
    double paramOf(const Point& point, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean isPeriodic(double& period) const override;
    double length(double fromParam, double toParam, const AcGeTol& tol = AcGeContext::gTol) const override;
    double paramAtLength(double datumParam, double length, Adesk::Boolean forward = Adesk::kTrue,
                         const AcGeTol& tol = AcGeContext::gTol) const override;
    Block orthoBoundBlock() const override;
    /// At least one chord an eighth of a turn, and never more than a million.
    void getSamplePoints(double fromParam, double toParam, double tolerance, PointArray& points,
                         AcGeDoubleArray& params) const override;
    void getSmoothPieces(AcGeDoubleArray& params) const override;
    double coordinateMagnitude() const final { return std::max(m_center.largestCoordinate(), m_radius); }

protected:
    ArcOf() = default;
    /// The degenerate arc at a point: radius and angles 0, reference +X.
    explicit ArcOf(const Point& center)
        : m_center(center) {}
    /// A negative radius is taken without its sign, angles as setAngles takes them.
    ArcOf(const Point& center, double radius, double startAngle, double endAngle);
    /// Turns the angles round; the sense itself is the class's own.
    void reverseAngles();

    Point m_center;
    Vector m_refVec = Vector::kXAxis;
    double m_radius = 0.0;
    double m_startAngle = 0.0;
    double m_endAngle = 0.0;

private:
    const Arc& self() const { return static_cast<const Arc&>(*this); }
    Arc& self() { return static_cast<Arc&>(*this); }
};

} // namespace AcGeKernel
