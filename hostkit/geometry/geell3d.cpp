#include "geell3d.h"

#include "curvekernel.hpp"
#include "ellipsekernel.hpp"
#include "gearc3d.h"
#include "geplane.h"

using AcGeKernel::Space;

AcGeEllipArc3d::AcGeEllipArc3d()
    : AcGeEllipArc3d(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, 1.0, 1.0) {}

AcGeEllipArc3d::AcGeEllipArc3d(const AcGeCircArc3d& arc)
    : AcGeEllipArc3d(arc.center(), arc.refVec(), arc.normal().crossProduct(arc.refVec()), arc.radius(),
                     arc.radius()) {
    m_startAngle = arc.startAng();
    m_endAngle = arc.endAng();
}

AcGeEllipArc3d::AcGeEllipArc3d(const AcGePoint3d& center, const AcGeVector3d& majorAxis,
                               const AcGeVector3d& minorAxis, double majorRadius, double minorRadius)
    : AcGeEllipArc3d(center, majorAxis, minorAxis, majorRadius, minorRadius, 0.0, AcGe::kTwoPi) {}

AcGeEllipArc3d::AcGeEllipArc3d(const AcGePoint3d& center, const AcGeVector3d& majorAxis,
                               const AcGeVector3d& minorAxis, double majorRadius, double minorRadius,
                               double startAngle, double endAngle)
    : m_center(center)
    , m_majorAxis(majorAxis.isZeroLength() ? AcGeVector3d::kXAxis : majorAxis.normal())
    , m_majorRadius(std::abs(majorRadius))
    , m_minorRadius(std::abs(minorRadius)) {
    const AcGeVector3d across = minorAxis.orthoProject(m_majorAxis);
    m_minorAxis = across.isZeroLength() ? m_majorAxis.perpVector().normal() : across.normal();
    setAngles(startAngle, endAngle);
}

AcGeEllipArc3d& AcGeEllipArc3d::setAngles(double startAngle, double endAngle) {
    m_startAngle = startAngle;
    m_endAngle = endAngle;
    AcGeKernel::normalizeAngles(m_startAngle, m_endAngle);
    return *this;
}

Adesk::Boolean AcGeEllipArc3d::isCircular(const AcGeTol& tol) const {
    return std::abs(m_majorRadius - m_minorRadius) <= AcGe::pointAllowance(tol, coordinateMagnitude());
}

void AcGeEllipArc3d::getPlane(AcGePlane& plane) const { plane.set(m_center, m_majorAxis, m_minorAxis); }

AcGeEllipArc3d& AcGeEllipArc3d::transformBy(const AcGeMatrix3d& matrix) {
    m_center.transformBy(matrix);
    AcGeVector3d major = matrix * (m_majorAxis * m_majorRadius),
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

Adesk::Boolean AcGeEllipArc3d::isEqualTo(const AcGeEntity3d& entity, const AcGeTol& tol) const {
    if (entity.type() != AcGe::kEllipArc3d) return Adesk::kFalse;
    return AcGeKernel::areEqualEllipses(*this, static_cast<const AcGeEllipArc3d&>(entity), tol);
}

Adesk::Boolean AcGeEllipArc3d::setInterval(const AcGeInterval& interval) {
    if (!interval.isBounded() || !(interval.length() > 0.0)) return Adesk::kFalse;
    setAngles(interval.lowerBound(), interval.upperBound());
    return Adesk::kTrue;
}

AcGeEllipArc3d& AcGeEllipArc3d::reverseParam() {
    m_minorAxis.negate();
    const double start = m_startAngle;
    m_startAngle = -m_endAngle;
    m_endAngle = -start;
    return *this;
}

AcGePoint3d AcGeEllipArc3d::evalPoint(double param) const {
    return m_center + (m_majorAxis * (m_majorRadius * std::cos(param)) +
                       m_minorAxis * (m_minorRadius * std::sin(param)));
}

AcGePoint3d AcGeEllipArc3d::evalPoint(double param, int numDeriv, AcGeVector3dArray& derivatives) const {
    const AcGeVector3d major = m_majorAxis * m_majorRadius, minor = m_minorAxis * m_minorRadius;
    const double c = std::cos(param), s = std::sin(param);
    const AcGeVector3d point = major * c + minor * s, tangent = minor * c - major * s;
    const AcGeVector3d cycle[4] = {tangent, -point, -tangent, point};
    derivatives.setLogicalLength(std::max(numDeriv, 0));
    for (int i = 0; i < numDeriv; ++i) derivatives[i] = cycle[i % 4];
    return m_center + point;
}

double AcGeEllipArc3d::paramOfClosestPoint(const AcGePoint3d& point) const {
    return AcGeKernel::nearestParam<Space>(*this, [&](const AcGePoint3d&) { return point; });
}

double AcGeEllipArc3d::paramOf(const AcGePoint3d& point, const AcGeTol& tol) const {
    if (AcGeKernel::isFullTurn(m_startAngle, m_endAngle) && point.isEqualTo(startPoint(), tol))
        return m_startAngle;
    return paramOfClosestPoint(point);
}

Adesk::Boolean AcGeEllipArc3d::isPeriodic(double& period) const {
    if (!AcGeKernel::isFullTurn(m_startAngle, m_endAngle)) return Adesk::kFalse;
    period = AcGe::kTwoPi;
    return Adesk::kTrue;
}

Adesk::Boolean AcGeEllipArc3d::isPlanar(AcGePlane& plane, const AcGeTol&) const {
    getPlane(plane);
    return Adesk::kTrue;
}

Adesk::Boolean AcGeEllipArc3d::area(double startParam, double endParam, double& value, const AcGeTol&) const {
    // An ellipse is a circle stretched: areas scale by both radii.
    value = AcGeKernel::segmentArea(std::abs(endParam - startParam)) * m_majorRadius * m_minorRadius;
    return Adesk::kTrue;
}

AcGeBoundBlock3d AcGeEllipArc3d::orthoBoundBlock() const {
    AcGeBoundBlock3d block(startPoint(), endPoint());
    for (unsigned int i = 0; i < 3; ++i) {
        const double extreme = std::atan2(m_minorAxis[i] * m_minorRadius, m_majorAxis[i] * m_majorRadius);
        for (double angle : {extreme, extreme + AcGe::kPi})
            if (AcGeKernel::angleFrom(m_startAngle, angle) <= m_endAngle) block.extend(evalPoint(angle));
    }
    return block;
}

void AcGeEllipArc3d::getSmoothPieces(AcGeDoubleArray& params) const {
    AcGeKernel::ellipsePieces(m_startAngle, m_endAngle, params);
}
