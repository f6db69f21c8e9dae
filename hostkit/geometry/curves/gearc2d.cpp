#include "gearc2d.h"

#include "circlekernel.hpp"

AcGeCircArc2d::AcGeCircArc2d()
    : AcGeCircArc2d(AcGePoint2d::kOrigin, 1.0) {}

AcGeCircArc2d::AcGeCircArc2d(const AcGePoint2d& center, double radius)
    : AcGeCircArc2d(center, radius, 0.0, AcGe::kTwoPi) {}

AcGeCircArc2d::AcGeCircArc2d(const AcGePoint2d& center, double radius, double startAngle, double endAngle,
                             const AcGeVector2d& refVec, Adesk::Boolean isClockWise)
    : ArcOf(center, radius, startAngle, endAngle)
    , m_clockWise(isClockWise) {
    setRefVec(refVec);
}

AcGeCircArc2d::AcGeCircArc2d(const AcGePoint2d& start, const AcGePoint2d& onArc, const AcGePoint2d& end)
    : ArcOf(start) {
    const double magnitude =
        std::max({start.largestCoordinate(), onArc.largestCoordinate(), end.largestCoordinate()});
    const double allowed = AcGe::pointAllowance(AcGeContext::gTol, magnitude);
    const double chord = start.distanceTo(end);
    const AcGeKernel::Corner<AcGePoint2d, AcGeVector2d> corner(start, onArc, end);
    const double across = corner.toNext.crossProduct(corner.toPrevious);
    if (!(chord > allowed) || !(std::abs(across) > allowed * chord)) return;
    m_center = corner.at + corner.squareDifference().perpVector() / (2.0 * across);
    // Counted from the centre as it came out rounded, so that its rounding is not felt twice.
    const AcGeVector2d toStart = start - m_center, toEnd = end - m_center;
    m_radius = (toStart.length() + toEnd.length()) / 2.0;
    m_refVec = toStart / toStart.length();
    m_clockWise = across > 0.0 ? Adesk::kFalse : Adesk::kTrue;
    m_endAngle =
        AcGeKernel::angleFrom(0.0, std::atan2(toEnd.dotProduct(quarter()), toEnd.dotProduct(m_refVec)));
}

AcGeCircArc2d::AcGeCircArc2d(const AcGePoint2d& start, const AcGePoint2d& end, double bulge,
                             Adesk::Boolean bulgeIsHeight)
    : ArcOf(start) {
    const AcGeVector2d chord = end - start;
    const double size = chord.length();
    const double tangent = bulgeIsHeight ? bulge * 2.0 / size : bulge;
    if (tangent == 0.0 || !(size > 0.0) || !std::isfinite(tangent)) return;
    // tan(theta/4) = b gives the centre at (1 - b^2) / (4 b) chords to the left of the chord's middle.
    const double aside = (1.0 - tangent) * (1.0 + tangent) / (4.0 * tangent);
    const AcGeVector2d toCenter = chord / 2.0 + chord.perpVector() * aside;
    m_center = start + toCenter;
    m_radius = size * (1.0 + tangent * tangent) / (4.0 * std::abs(tangent));
    m_refVec = -toCenter / toCenter.length();
    m_clockWise = tangent < 0.0;
    m_endAngle = 4.0 * std::atan(std::abs(tangent));
}

AcGeCircArc2d& AcGeCircArc2d::setRefVec(const AcGeVector2d& refVec) {
    m_refVec = refVec.isZeroLength() ? AcGeVector2d::kXAxis : refVec.normal();
    return *this;
}

AcGeCircArc2d& AcGeCircArc2d::setIsClockWise(Adesk::Boolean clockWise) {
    m_clockWise = clockWise;
    return *this;
}

Adesk::Boolean AcGeCircArc2d::isInside(const AcGePoint2d& point, const AcGeTol& tol) const {
    const double magnitude = std::max(coordinateMagnitude(), point.largestCoordinate());
    return point.distanceTo(m_center) <= m_radius + AcGe::pointAllowance(tol, magnitude);
}

AcGeCircArc2d& AcGeCircArc2d::transformBy(const AcGeMatrix2d& matrix) {
    m_center.transformBy(matrix);
    AcGeVector2d moved = matrix * m_refVec;
    const double scale = moved.length();
    m_radius *= scale;
    if (scale > 0.0) m_refVec = moved / scale;
    if (matrix.det() < 0.0) m_clockWise = !m_clockWise;
    return *this;
}

AcGeCircArc2d& AcGeCircArc2d::reverseParam() {
    m_clockWise = !m_clockWise;
    reverseAngles();
    return *this;
}

Adesk::Boolean AcGeCircArc2d::area(double startParam, double endParam, double& value, const AcGeTol&) const {
    const double sweep = endParam - startParam;
    value = AcGeKernel::segmentArea(sweep) * m_radius * m_radius * (m_clockWise ? -1.0 : 1.0);
    return Adesk::kTrue;
}
