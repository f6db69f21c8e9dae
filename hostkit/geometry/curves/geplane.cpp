#include "geplane.h"

#include "geline3d.h"

void AcGePlanarEnt::getCoordSystem(AcGePoint3d& origin, AcGeVector3d& axis1, AcGeVector3d& axis2) const {
    origin = m_origin;
    axis1 = m_axis1;
    axis2 = m_axis2;
}

void AcGePlanarEnt::getCoefficients(double& a, double& b, double& c, double& d) const {
    a = m_normal.x;
    b = m_normal.y;
    c = m_normal.z;
    d = -m_normal.dotProduct(m_origin.asVector());
}

AcGePoint3d AcGePlanarEnt::closestPointTo(const AcGePoint3d& point, const AcGeTol&) const {
    return point - m_normal * signedDistanceTo(point);
}

AcGePoint3d AcGePlanarEnt::closestPointToLinearEnt(const AcGeLinearEnt3d& line, AcGePoint3d& pointOnLine,
                                                   const AcGeTol& tol) const {
    if (line.intersectWith(*this, pointOnLine, tol)) return pointOnLine;
    AcGeInterval interval;
    line.getInterval(interval);
    // Without a crossing the nearest point is an end, or any point of a parallel line.
    pointOnLine = line.pointOnLine();
    AcGePoint3d end;
    if (line.hasEndPoint(end) && distanceTo(end) < distanceTo(pointOnLine)) pointOnLine = end;
    return closestPointTo(pointOnLine, tol);
}

Adesk::Boolean AcGePlanarEnt::project(const AcGePoint3d& point, const AcGeVector3d& direction,
                                      AcGePoint3d& projected, const AcGeTol& tol) const {
    const AcGeVector3d unit = direction.normal(tol);
    const double across = unit.dotProduct(m_normal);
    if (!(std::abs(across) > tol.equalVector())) return Adesk::kFalse;
    projected = point - unit * (signedDistanceTo(point) / across);
    return Adesk::kTrue;
}

Adesk::Boolean AcGePlanarEnt::intersectWith(const AcGeLinearEnt3d& line, AcGePoint3d& point,
                                            const AcGeTol& tol) const {
    return line.intersectWith(*this, point, tol);
}

Adesk::Boolean AcGePlanarEnt::isOn(const AcGePoint3d& point, const AcGeTol& tol) const {
    if (m_normal.isZeroLength()) return Adesk::kFalse;
    const double distance = distanceTo(point);
    const double magnitude = std::max(point.largestCoordinate(), m_origin.largestCoordinate());
    return AcGe::isWithinAllowance(distance * distance, magnitude, tol);
}

Adesk::Boolean AcGePlanarEnt::isParallelTo(const AcGePlanarEnt& plane, const AcGeTol& tol) const {
    return m_normal.isParallelTo(plane.m_normal, tol);
}

Adesk::Boolean AcGePlanarEnt::isParallelTo(const AcGeLinearEnt3d& line, const AcGeTol& tol) const {
    return m_normal.isPerpendicularTo(line.direction(), tol);
}

Adesk::Boolean AcGePlanarEnt::isPerpendicularTo(const AcGePlanarEnt& plane, const AcGeTol& tol) const {
    return m_normal.isPerpendicularTo(plane.m_normal, tol);
}

Adesk::Boolean AcGePlanarEnt::isPerpendicularTo(const AcGeLinearEnt3d& line, const AcGeTol& tol) const {
    return m_normal.isParallelTo(line.direction(), tol);
}

Adesk::Boolean AcGePlanarEnt::isCoplanarTo(const AcGePlanarEnt& plane, const AcGeTol& tol) const {
    return isParallelTo(plane, tol) && isOn(plane.m_origin, tol);
}

AcGePlane::AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& normal) {
    m_origin = origin;
    const double size = normal.length();
    m_normal = size > 0.0 ? normal / size : AcGeVector3d::kIdentity;
    AcGe::arbitraryAxes(m_normal, m_axis1, m_axis2);
}

AcGePlane::AcGePlane(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c) {
    const AcGeVector3d along = b - a, other = c - a;
    const AcGeVector3d across = along.crossProduct(other);
    m_origin = a;
    // Below this the height of the triangle is what rounding of its corners leaves.
    const double magnitude = std::max({a.largestCoordinate(), b.largestCoordinate(), c.largestCoordinate()});
    const double base = std::max({along.length(), other.length(), b.distanceTo(c)});
    if (!(across.length() > AcGe::ulpOf(magnitude) * base)) {
        m_normal = AcGeVector3d::kIdentity;
        return;
    }
    m_normal = across / across.length();
    m_axis1 = along / along.length();
    m_axis2 = m_normal.crossProduct(m_axis1);
}

AcGePlane::AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& axis1, const AcGeVector3d& axis2) {
    m_origin = origin;
    m_axis1 = axis1;
    m_axis2 = axis2;
    const AcGeVector3d across = axis1.crossProduct(axis2);
    const double size = across.length();
    const bool spans = !axis1.isParallelTo(axis2) && size > 0.0;
    m_normal = spans ? across / size : AcGeVector3d::kIdentity;
}

AcGePlane::AcGePlane(double a, double b, double c, double d) {
    const AcGeVector3d normal(a, b, c);
    const double sizeSquared = normal.lengthSqrd();
    *this = AcGePlane(
        AcGePoint3d::kOrigin + (sizeSquared > 0.0 ? normal * (-d / sizeSquared) : AcGeVector3d()), normal);
}

const AcGePlane& AcGePlane::kXYPlane() {
    static const AcGePlane plane(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis);
    return plane;
}

const AcGePlane& AcGePlane::kYZPlane() {
    static const AcGePlane plane(AcGePoint3d::kOrigin, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis);
    return plane;
}

const AcGePlane& AcGePlane::kZXPlane() {
    static const AcGePlane plane(AcGePoint3d::kOrigin, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis);
    return plane;
}

AcGePlane& AcGePlane::reverseNormal() {
    m_normal.negate();
    m_axis2.negate();
    return *this;
}

Adesk::Boolean AcGePlane::intersectWith(const AcGePlane& plane, AcGeLine3d& line, const AcGeTol& tol) const {
    if (m_normal.isZeroLength() || plane.m_normal.isZeroLength() || isParallelTo(plane, tol))
        return Adesk::kFalse;
    const AcGeVector3d along = m_normal.crossProduct(plane.m_normal);
    // From this origin towards the other plane, within this one.
    const AcGeVector3d down = along.crossProduct(m_normal);
    const double distance = plane.signedDistanceTo(m_origin);
    line.set(m_origin - down * (distance / down.dotProduct(plane.m_normal)), along / along.length());
    return Adesk::kTrue;
}

AcGePlane& AcGePlane::transformBy(const AcGeMatrix3d& matrix) {
    const AcGeVector3d axis1 = matrix * m_axis1, axis2 = matrix * m_axis2;
    return *this = AcGePlane(matrix * m_origin, axis1, axis2);
}

Adesk::Boolean AcGePlane::isEqualTo(const AcGeEntity3d& entity, const AcGeTol& tol) const {
    if (entity.type() != AcGe::kPlane) return Adesk::kFalse;
    const auto& other = static_cast<const AcGePlane&>(entity);
    return m_origin.isEqualTo(other.m_origin, tol) && m_axis1.isEqualTo(other.m_axis1, tol) &&
           m_axis2.isEqualTo(other.m_axis2, tol) && m_normal.isEqualTo(other.m_normal, tol);
}
