#include "geell3d.h"

#include "circlekernel.hpp"
#include "gearc3d.h"
#include "geplane.h"

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
    : EllipseOf(center, majorAxis, majorRadius, minorRadius, startAngle, endAngle) {
    const AcGeVector3d across = minorAxis.orthoProject(m_majorAxis);
    m_minorAxis = across.isZeroLength() ? m_majorAxis.perpVector().normal() : across.normal();
}

void AcGeEllipArc3d::getPlane(AcGePlane& plane) const { plane.set(m_center, m_majorAxis, m_minorAxis); }

Adesk::Boolean AcGeEllipArc3d::isPlanar(AcGePlane& plane, const AcGeTol&) const {
    getPlane(plane);
    return Adesk::kTrue;
}

Adesk::Boolean AcGeEllipArc3d::area(double startParam, double endParam, double& value, const AcGeTol&) const {
    // An ellipse is a circle stretched: areas scale by both radii.
    value = AcGeKernel::segmentArea(std::abs(endParam - startParam)) * m_majorRadius * m_minorRadius;
    return Adesk::kTrue;
}
