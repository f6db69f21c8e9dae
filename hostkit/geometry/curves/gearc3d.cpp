#include "gearc3d.h"

#include "circlekernel.hpp"
#include "geline3d.h"
#include "geplane.h"

AcGeCircArc3d::AcGeCircArc3d()
    : ArcOf(AcGePoint3d::kOrigin, 1.0, 0.0, AcGe::kTwoPi) {}

AcGeCircArc3d::AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : AcGeCircArc3d(center, normal, AcGeVector3d::kIdentity, radius, 0.0, AcGe::kTwoPi) {}

AcGeCircArc3d::AcGeCircArc3d(const AcGePoint3d& center, const AcGeVector3d& normal,
                             const AcGeVector3d& refVec, double radius, double startAngle, double endAngle)
    : ArcOf(center, radius, startAngle, endAngle) {
    setAxes(normal, refVec);
}

AcGeCircArc3d::AcGeCircArc3d(const AcGePoint3d& start, const AcGePoint3d& onArc, const AcGePoint3d& end)
    : ArcOf(start) {
    const double magnitude =
        std::max({start.largestCoordinate(), onArc.largestCoordinate(), end.largestCoordinate()});
    const double allowed = AcGe::pointAllowance(AcGeContext::gTol, magnitude);
    const double chord = start.distanceTo(end);
    const AcGeKernel::Corner<AcGePoint3d, AcGeVector3d> corner(start, onArc, end);
    const AcGeVector3d across = corner.toNext.crossProduct(corner.toPrevious);
    const double size = across.length();
    if (!(chord > allowed) || !(size > allowed * chord)) return;
    m_normal = across / size;
    m_center = corner.at + m_normal.crossProduct(corner.squareDifference()) / (2.0 * size);
    // Counted from the centre as it came out rounded, so that its rounding is not felt twice.
    const AcGeVector3d toStart = start - m_center, toEnd = end - m_center;
    m_radius = (toStart.length() + toEnd.length()) / 2.0;
    m_refVec = toStart.orthoProject(m_normal);
    m_refVec /= m_refVec.length();
    m_endAngle =
        AcGeKernel::angleFrom(0.0, std::atan2(toEnd.dotProduct(quarter()), toEnd.dotProduct(m_refVec)));
}

AcGeCircArc3d& AcGeCircArc3d::setAxes(const AcGeVector3d& normal, const AcGeVector3d& refVec) {
    const double size = normal.length();
    m_normal = size > 0.0 ? normal / size : AcGeVector3d::kZAxis;
    const AcGeVector3d inPlane = refVec.orthoProject(m_normal);
    AcGeVector3d unused;
    if (inPlane.isZeroLength())
        AcGe::arbitraryAxes(m_normal, m_refVec, unused);
    else
        m_refVec = inPlane / inPlane.length();
    return *this;
}

void AcGeCircArc3d::getPlane(AcGePlane& plane) const { plane.set(m_center, m_refVec, quarter()); }

Adesk::Boolean AcGeCircArc3d::isInside(const AcGePoint3d& point, const AcGeTol& tol) const {
    const double magnitude = std::max(coordinateMagnitude(), point.largestCoordinate());
    const double allowed = AcGe::pointAllowance(tol, magnitude);
    const AcGeVector3d offset = point - m_center;
    return std::abs(offset.dotProduct(m_normal)) <= allowed && offset.length() <= m_radius + allowed;
}

Adesk::Boolean AcGeCircArc3d::intersectWith(const AcGePlanarEnt& plane, int& count, AcGePoint3d& p1,
                                            AcGePoint3d& p2, const AcGeTol& tol) const {
    count = 0;
    AcGePlane own;
    getPlane(own);
    AcGeLine3d line;
    if (!own.intersectWith(AcGePlane(plane.pointOnPlane(), plane.normal()), line, tol)) return Adesk::kFalse;
    return intersectWith(line, count, p1, p2, tol);
}

Adesk::Boolean AcGeCircArc3d::projIntersectWith(const AcGeLinearEnt3d& line, const AcGeVector3d& direction,
                                                int& count, AcGePoint3d& onArc1, AcGePoint3d& onArc2,
                                                AcGePoint3d& onLine1, AcGePoint3d& onLine2,
                                                const AcGeTol& tol) const {
    count = 0;
    const AcGeVector3d view = direction.normal(tol);
    const double across = view.dotProduct(m_normal);
    if (direction.isZeroLength(tol) || !(std::abs(across) > tol.equalVector())) return Adesk::kFalse;
    // The line is moved along the view into the arc's plane and met there; what it meets is moved back.
    const auto intoPlane = [&](const AcGePoint3d& p) {
        return p - view * ((p - m_center).dotProduct(m_normal) / across);
    };
    AcGeLine3d seen(intoPlane(line.pointOnLine()), line.paramStep().project(m_normal, view));
    if (seen.direction().isZeroLength(tol)) return Adesk::kFalse;
    AcGePoint3d meetings[2];
    int found = 0;
    intersectWith(seen, found, meetings[0], meetings[1], tol);
    for (int i = 0; i < found; ++i) {
        const AcGePoint3d onLine = line.projClosestPointTo(meetings[i], view, tol);
        if (!intoPlane(onLine).isEqualTo(meetings[i], tol)) continue;
        (count == 0 ? onArc1 : onArc2) = meetings[i];
        (count == 0 ? onLine1 : onLine2) = onLine;
        ++count;
    }
    return count > 0;
}

AcGeCircArc3d& AcGeCircArc3d::transformBy(const AcGeMatrix3d& matrix) {
    const AcGeVector3d turned = matrix * quarter(), moved = matrix * m_refVec;
    const double scale = moved.length();
    m_center.transformBy(matrix);
    m_radius *= scale;
    // The normal is that of the moved axes, so that equal parameters stay corresponding points under a
    // mirror.
    if (!(scale > 0.0) || !(moved.crossProduct(turned).length() > 0.0)) return *this;
    return setAxes(moved.crossProduct(turned), moved / scale);
}

AcGeCircArc3d& AcGeCircArc3d::reverseParam() {
    m_normal.negate();
    reverseAngles();
    return *this;
}

Adesk::Boolean AcGeCircArc3d::isPlanar(AcGePlane& plane, const AcGeTol&) const {
    getPlane(plane);
    return Adesk::kTrue;
}

Adesk::Boolean AcGeCircArc3d::area(double startParam, double endParam, double& value, const AcGeTol&) const {
    value = AcGeKernel::segmentArea(std::abs(endParam - startParam)) * m_radius * m_radius;
    return Adesk::kTrue;
}
