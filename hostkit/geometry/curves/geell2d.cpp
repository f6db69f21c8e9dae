#include "geell2d.h"

#include "circlekernel.hpp"
#include "gearc2d.h"

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
    : EllipseOf(center, majorAxis, majorRadius, minorRadius, startAngle, endAngle) {
    const AcGeVector2d left = m_majorAxis.perpVector();
    m_minorAxis = minorAxis.dotProduct(left) < 0.0 ? -left : left;
}

Adesk::Boolean AcGeEllipArc2d::area(double startParam, double endParam, double& value, const AcGeTol&) const {
    // An ellipse is a circle stretched: areas scale by both radii.
    value = AcGeKernel::segmentArea(endParam - startParam) * m_majorRadius * m_minorRadius *
            (isClockWise() ? -1.0 : 1.0);
    return Adesk::kTrue;
}
