#include "geell2d.h"

#include "curvekernel.hpp"
#include "ellipsekernel.hpp"
#include "gearc2d.h"

using AcGeKernel::Plane;

AcGeEllipArc2d::AcGeEllipArc2d()
    : AcGeEllipArc2d(AcGePoint2d::kOrigin, AcGeVector2d::kXAxis, AcGeVector2d::kYAxis, 1.0, 1.0) {}

AcGeEllipArc2d::AcGeEllipArc2d(const AcGeCircArc2d& arc)
    : AcGeEllipArc2d(arc.center(), arc.refVec(),
                     arc.isClockWise() ? -arc.refVec().perpVector() : arc.refVec().perpVector(), arc.radius(),
                     arc.radius()) {
    m_startAngle = arc.startAng();
    m_endAngle = arc.endAng();
}

AcGeEllipArc2d::AcGeEllipArc2d(const AcGePoint2d& center, const AcGeVector2d& majorAxis,
                               const AcGeVector2d& minorAxis, double majorRadius, double minorRadius)
    : AcGeEllipArc2d(center, majorAxis, minorAxis, majorRadius, minorRadius, 0.0, AcGe::kTwoPi) {}

AcGeEllipArc2d::AcGeEllipArc2d(const AcGePoint2d& center, const AcGeVector2d& majorAxis,
                               const AcGeVector2d& minorAxis, double majorRadius, double minorRadius,
                               double startAngle, double endAngle)
    : m_center(center)
    , m_majorAxis(majorAxis.isZeroLength() ? AcGeVector2d::kXAxis : majorAxis.normal())
    , m_majorRadius(std::abs(majorRadius))
    , m_minorRadius(std::abs(minorRadius)) {
    const AcGeVector2d left = m_majorAxis.perpVector();
    m_minorAxis = minorAxis.dotProduct(left) < 0.0 ? -left : left;
    setAngles(startAngle, endAngle);
}

AcGeEllipArc2d& AcGeEllipArc2d::setAngles(double startAngle, double endAngle) {
    m_startAngle = startAngle;
    m_endAngle = endAngle;
    AcGeKernel::normalizeAngles(m_startAngle, m_endAngle);
    return *this;
}

Adesk::Boolean AcGeEllipArc2d::isCircular(const AcGeTol& tol) const {
    return std::abs(m_majorRadius - m_minorRadius) <= AcGe::pointAllowance(tol, coordinateMagnitude());
}

AcGeEllipArc2d& AcGeEllipArc2d::transformBy(const AcGeMatrix2d& matrix) {
    m_center.transformBy(matrix);
    AcGeVector2d major = matrix * (m_majorAxis * m_majorRadius),
                 minor = matrix * (m_minorAxis * m_minorRadius);
    const double shift = AcGeKernel::principalAxes(major, minor);
    m_majorRadius = major.length();
    m_minorRadius = minor.length();
    if (m_majorRadius > 0.0) m_majorAxis = major / m_majorRadius;
    if (m_minorRadius > 0.0) m_minorAxis = minor / m_minorRadius;
    m_startAngle -= shift;
    m_endAngle -= shift;
    return *this;
}

Adesk::Boolean AcGeEllipArc2d::isEqualTo(const AcGeEntity2d& entity, const AcGeTol& tol) const {
    if (entity.type() != AcGe::kEllipArc2d) return Adesk::kFalse;
    return AcGeKernel::areEqualEllipses(*this, static_cast<const AcGeEllipArc2d&>(entity), tol);
}

Adesk::Boolean AcGeEllipArc2d::setInterval(const AcGeInterval& interval) {
    if (!interval.isBounded() || !(interval.length() > 0.0)) return Adesk::kFalse;
    setAngles(interval.lowerBound(), interval.upperBound());
    return Adesk::kTrue;
}

AcGeEllipArc2d& AcGeEllipArc2d::reverseParam() {
    m_minorAxis.negate();
    const double start = m_startAngle;
    m_startAngle = -m_endAngle;
    m_endAngle = -start;
    return *this;
}

AcGePoint2d AcGeEllipArc2d::evalPoint(double param) const {
    return m_center + (m_majorAxis * (m_majorRadius * std::cos(param)) +
                       m_minorAxis * (m_minorRadius * std::sin(param)));
}

AcGePoint2d AcGeEllipArc2d::evalPoint(double param, int numDeriv, AcGeVector2dArray& derivatives) const {
    const AcGeVector2d major = m_majorAxis * m_majorRadius, minor = m_minorAxis * m_minorRadius;
    const double c = std::cos(param), s = std::sin(param);
    const AcGeVector2d point = major * c + minor * s, tangent = minor * c - major * s;
    const AcGeVector2d cycle[4] = {tangent, -point, -tangent, point};
    derivatives.setLogicalLength(std::max(numDeriv, 0));
    for (int i = 0; i < numDeriv; ++i) derivatives[i] = cycle[i % 4];
    return m_center + point;
}

double AcGeEllipArc2d::paramOfClosestPoint(const AcGePoint2d& point) const {
    return AcGeKernel::nearestParam<Plane>(*this, [&](const AcGePoint2d&) { return point; });
}

double AcGeEllipArc2d::paramOf(const AcGePoint2d& point, const AcGeTol& tol) const {
    if (AcGeKernel::isFullTurn(m_startAngle, m_endAngle) && point.isEqualTo(startPoint(), tol))
        return m_startAngle;
    return paramOfClosestPoint(point);
}

Adesk::Boolean AcGeEllipArc2d::isPeriodic(double& period) const {
    if (!AcGeKernel::isFullTurn(m_startAngle, m_endAngle)) return Adesk::kFalse;
    period = AcGe::kTwoPi;
    return Adesk::kTrue;
}

Adesk::Boolean AcGeEllipArc2d::area(double startParam, double endParam, double& value, const AcGeTol&) const {
    // An ellipse is a circle stretched: areas scale by both radii.
    value = AcGeKernel::segmentArea(endParam - startParam) * m_majorRadius * m_minorRadius *
            (isClockWise() ? -1.0 : 1.0);
    return Adesk::kTrue;
}

AcGeBoundBlock2d AcGeEllipArc2d::orthoBoundBlock() const {
    AcGeBoundBlock2d block(startPoint(), endPoint());
    for (unsigned int i = 0; i < 2; ++i) {
        const double extreme = std::atan2(m_minorAxis[i] * m_minorRadius, m_majorAxis[i] * m_majorRadius);
        for (double angle : {extreme, extreme + AcGe::kPi})
            if (AcGeKernel::angleFrom(m_startAngle, angle) <= m_endAngle) block.extend(evalPoint(angle));
    }
    return block;
}

void AcGeEllipArc2d::getSmoothPieces(AcGeDoubleArray& params) const {
    AcGeKernel::ellipsePieces(m_startAngle, m_endAngle, params);
}
