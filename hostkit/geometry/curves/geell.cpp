#include "curvekernel.hpp"
#include "ellipsekernel.hpp"
#include "geell2d.h"
#include "geell3d.h"

namespace AcGeKernel {

template <class T>
EllipseOf<T>::EllipseOf(const Point& center, const Vector& majorAxis, double majorRadius, double minorRadius,
                        double startAngle, double endAngle)
    : m_center(center)
    , m_majorAxis(majorAxis.isZeroLength() ? Vector::kXAxis : AcGe::unitOf(majorAxis))
    , m_majorRadius(std::abs(majorRadius))
    , m_minorRadius(std::abs(minorRadius))
    , m_startAngle(startAngle)
    , m_endAngle(endAngle) {
    normalizeAngles(m_startAngle, m_endAngle);
}

template <class T>
auto EllipseOf<T>::setAngles(double startAngle, double endAngle) -> Ellipse& {
    m_startAngle = startAngle;
    m_endAngle = endAngle;
    normalizeAngles(m_startAngle, m_endAngle);
    return self();
}

template <class T>
Adesk::Boolean EllipseOf<T>::isCircular(const AcGeTol& tol) const {
    return std::abs(m_majorRadius - m_minorRadius) <= AcGe::pointAllowance(tol, coordinateMagnitude());
}

template <class T>
void EllipseOf<T>::move(const typename T::Matrix& matrix) {
    m_center.transformBy(matrix);
    Vector major = matrix * (m_majorAxis * m_majorRadius), minor = matrix * (m_minorAxis * m_minorRadius);
    const double shift = principalAxes(major, minor);
    m_majorRadius = major.length();
    m_minorRadius = minor.length();
    if (m_majorRadius > 0.0) m_majorAxis = major / m_majorRadius;
    if (m_minorRadius > 0.0) m_minorAxis = minor / m_minorRadius;
    m_startAngle -= shift;
    m_endAngle -= shift;
}

template <class T>
Adesk::Boolean EllipseOf<T>::isEqualTo(const Entity& entity, const AcGeTol& tol) const {
    if (entity.type() != this->type()) return Adesk::kFalse;
    return areEqualEllipses(self(), static_cast<const Ellipse&>(entity), tol);
}

template <class T>
Adesk::Boolean EllipseOf<T>::setInterval(const AcGeInterval& interval) {
    if (!interval.isBounded() || !(interval.length() > 0.0)) return Adesk::kFalse;
    setAngles(interval.lowerBound(), interval.upperBound());
    return Adesk::kTrue;
}

template <class T>
void EllipseOf<T>::reverse() {
    m_minorAxis.negate();
    const double start = m_startAngle;
    m_startAngle = -m_endAngle;
    m_endAngle = -start;
}

template <class T>
auto EllipseOf<T>::evalPoint(double param) const -> Point {
    return m_center + (m_majorAxis * (m_majorRadius * std::cos(param)) +
                       m_minorAxis * (m_minorRadius * std::sin(param)));
}

template <class T>
auto EllipseOf<T>::evalPoint(double param, int numDeriv, VectorArray& derivatives) const -> Point {
    const Vector major = m_majorAxis * m_majorRadius, minor = m_minorAxis * m_minorRadius;
    const double c = std::cos(param), s = std::sin(param);
    const Vector point = major * c + minor * s, tangent = minor * c - major * s;
    const Vector cycle[4] = {tangent, -point, -tangent, point};
    derivatives.setLogicalLength(std::max(numDeriv, 0));
    for (int i = 0; i < numDeriv; ++i) derivatives[i] = cycle[i % 4];
    return m_center + point;
}

template <class T>
double EllipseOf<T>::paramOfClosestPoint(const Point& point) const {
    return nearestParam<T>(self(), [&](const Point&) { return point; });
}

template <class T>
double EllipseOf<T>::paramOf(const Point& point, const AcGeTol& tol) const {
    if (isFullTurn(m_startAngle, m_endAngle) && point.isEqualTo(startPoint(), tol)) return m_startAngle;
    return paramOfClosestPoint(point);
}

template <class T>
Adesk::Boolean EllipseOf<T>::isPeriodic(double& period) const {
    if (!isFullTurn(m_startAngle, m_endAngle)) return Adesk::kFalse;
    period = AcGe::kTwoPi;
    return Adesk::kTrue;
}

template <class T>
auto EllipseOf<T>::orthoBoundBlock() const -> Block {
    Block block(startPoint(), endPoint());
    for (unsigned int i = 0; i < T::dimensions; ++i) {
        const double extreme = std::atan2(m_minorAxis[i] * m_minorRadius, m_majorAxis[i] * m_majorRadius);
        for (double angle : {extreme, extreme + AcGe::kPi})
            if (angleFrom(m_startAngle, angle) <= m_endAngle) block.extend(evalPoint(angle));
    }
    return block;
}

template <class T>
void EllipseOf<T>::getSmoothPieces(AcGeDoubleArray& params) const {
    ellipsePieces(m_startAngle, m_endAngle, params);
}

template class EllipseOf<Plane>;
template class EllipseOf<Space>;

} // namespace AcGeKernel
