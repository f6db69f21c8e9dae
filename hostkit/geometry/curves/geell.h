// What the elliptic arcs of the plane and of space share: axes, angles and all that a curve answers.
#pragma once

#include "gecurv.h"

namespace AcGeKernel {

/// An elliptic arc or a full ellipse. The point at parameter t is center + majorRadius * cos(t) * majorAxis +
/// minorRadius * sin(t) * minorAxis; the parameter is thus not the angle seen from the centre, except on the
/// axes. Angles are held as those of circular arcs.
template <class T>
class EllipseOf : public T::Curve {
    using Base = typename T::Curve;
    using Entity = typename T::Entity;
    using Ellipse = typename T::Ellipse;
    using Block = typename T::Block;
    using Point = typename T::Point;
    using Vector = typename T::Vector;
    using VectorArray = typename T::VectorArray;

public:
    Point center() const { return m_center; }
    Vector majorAxis() const { return m_majorAxis; }
    Vector minorAxis() const { return m_minorAxis; }
    double majorRadius() const { return m_majorRadius; }
    double minorRadius() const { return m_minorRadius; }
    double startAng() const { return m_startAngle; }
    double endAng() const { return m_endAngle; }
    Point startPoint() const { return evalPoint(m_startAngle); }
    Point endPoint() const { return evalPoint(m_endAngle); }
    /// As those of a circular arc are set.
    Ellipse& setAngles(double startAngle, double endAngle);
    Adesk::Boolean isCircular(const AcGeTol& tol = AcGeContext::gTol) const;

    Adesk::Boolean isEqualTo(const Entity& entity, const AcGeTol& tol = AcGeContext::gTol) const override;
    using Base::evalPoint;
    using Base::getInterval;
    void getInterval(AcGeInterval& interval) const override { interval.set(m_startAngle, m_endAngle); }
    Adesk::Boolean setInterval(const AcGeInterval& interval) override;
    Point evalPoint(double param) const override;
    Point evalPoint(double param, int numDeriv, VectorArray& derivatives) const override;
    double paramOfClosestPoint(const Point& point) const override;
    double paramOf(const Point& point, const AcGeTol& tol = AcGeContext::gTol) const override;
    Adesk::Boolean isPeriodic(double& period) const override;
    Block orthoBoundBlock() const override;
    void getSmoothPieces(AcGeDoubleArray& params) const override;
    double coordinateMagnitude() const override {
        return std::max(m_center.largestCoordinate(), m_majorRadius);
    }

protected:
    /// Radii are taken without their sign, angles as setAngles takes them; the minor axis is the class's own.
    EllipseOf(const Point& center, const Vector& majorAxis, double majorRadius, double minorRadius,
              double startAngle, double endAngle);
    /// What transformBy of the classes does.
    void move(const typename T::Matrix& matrix);
    /// What reverseParam of the classes does.
    void reverse();

    Point m_center;
    Vector m_majorAxis;
    Vector m_minorAxis;
    double m_majorRadius;
    double m_minorRadius;
    double m_startAngle;
    double m_endAngle;

private:
    const Ellipse& self() const { return static_cast<const Ellipse&>(*this); }
    Ellipse& self() { return static_cast<Ellipse&>(*this); }
};

} // namespace AcGeKernel
