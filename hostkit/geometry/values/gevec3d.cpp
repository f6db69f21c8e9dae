#include "gevec3d.h"

#include "geplanar.h"
#include "gepnt2d.h"
#include "valuekernel.hpp"

namespace AcGe {

void arbitraryAxes(const AcGeVector3d& normal, AcGeVector3d& xAxis, AcGeVector3d& yAxis) {
    constexpr double limit = 1.0 / 64.0;
    const double size = normal.length();
    const AcGeVector3d unit = size > 0.0 ? normal / size : AcGeVector3d::kZAxis;
    const bool nearZ = std::abs(unit.x) < limit && std::abs(unit.y) < limit;
    const AcGeVector3d across = (nearZ ? AcGeVector3d::kYAxis : AcGeVector3d::kZAxis).crossProduct(unit);
    xAxis = across / across.length();
    yAxis = unit.crossProduct(xAxis);
    yAxis /= yAxis.length();
}

} // namespace AcGe

AcGeVector3d::AcGeVector3d(const AcGePlanarEnt& plane, const AcGeVector2d& vector) {
    AcGePoint3d origin;
    AcGeVector3d axis1, axis2;
    plane.getCoordSystem(origin, axis1, axis2);
    *this = axis1 * vector.x + axis2 * vector.y;
}

AcGeVector3d& AcGeVector3d::set(const AcGePlanarEnt& plane, const AcGeVector2d& vector) {
    return *this = AcGeVector3d(plane, vector);
}

AcGeVector2d AcGeVector3d::convert2d(const AcGePlanarEnt& plane) const {
    AcGePoint3d origin;
    AcGeVector3d axis1, axis2;
    plane.getCoordSystem(origin, axis1, axis2);
    // The axes need not be perpendicular or of unit length: the 2 x 2 system of their dot products is solved.
    const double a11 = axis1.lengthSqrd(), a12 = axis1.dotProduct(axis2), a22 = axis2.lengthSqrd();
    const double b1 = dotProduct(axis1), b2 = dotProduct(axis2);
    const double det = a11 * a22 - a12 * a12;
    if (det == 0.0) return {};
    return {(b1 * a22 - b2 * a12) / det, (b2 * a11 - b1 * a12) / det};
}

unsigned int AcGeVector3d::largestElement() const {
    const double ax = std::abs(x), ay = std::abs(y), az = std::abs(z);
    if (ax >= ay && ax >= az) return 0;
    return ay >= az ? 1 : 2;
}

double AcGeVector3d::angleTo(const AcGeVector3d& v, const AcGeVector3d& reference) const {
    const double angle = angleTo(v);
    return crossProduct(v).dotProduct(reference) < 0.0 ? AcGe::kTwoPi - angle : angle;
}

double AcGeVector3d::angleOnPlane(const AcGePlanarEnt& plane) const {
    AcGePoint3d origin;
    AcGeVector3d axis1, axis2;
    plane.getCoordSystem(origin, axis1, axis2);
    const AcGeVector3d normal = plane.normal();
    const double angle = std::atan2(normal.crossProduct(axis1).dotProduct(*this), axis1.dotProduct(*this));
    return angle < 0.0 ? angle + AcGe::kTwoPi : angle;
}

AcGeVector3d AcGeVector3d::perpVector() const {
    if (z == 0.0) return kZAxis.crossProduct(*this);
    AcGeVector3d xAxis, yAxis;
    AcGe::arbitraryAxes(*this, xAxis, yAxis);
    return xAxis;
}

Adesk::Boolean AcGeVector3d::isParallelTo(const AcGeVector3d& v, const AcGeTol& tol) const {
    return AcGeKernel::isParallel(*this, v, tol);
}

Adesk::Boolean AcGeVector3d::isCodirectionalTo(const AcGeVector3d& v, const AcGeTol& tol) const {
    return AcGeKernel::isCodirectional(*this, v, tol);
}

Adesk::Boolean AcGeVector3d::isPerpendicularTo(const AcGeVector3d& v, const AcGeTol& tol) const {
    return AcGeKernel::isPerpendicular(*this, v, tol);
}

AcGeVector3d& AcGeVector3d::rotateBy(double angle, const AcGeVector3d& axis) {
    const double size = axis.length();
    if (!(size > 0.0)) return *this;
    // Rodrigues' formula.
    const AcGeVector3d k = axis / size;
    const double c = std::cos(angle), s = std::sin(angle);
    return *this = *this * c + k.crossProduct(*this) * s + k * (k.dotProduct(*this) * (1.0 - c));
}

AcGeVector3d& AcGeVector3d::mirror(const AcGeVector3d& planeNormal) {
    const double sizeSquared = planeNormal.lengthSqrd();
    if (!(sizeSquared > 0.0)) return *this;
    return *this -= planeNormal * (2.0 * dotProduct(planeNormal) / sizeSquared);
}

AcGeVector3d AcGeVector3d::project(const AcGeVector3d& planeNormal, const AcGeVector3d& direction) const {
    const double across = direction.dotProduct(planeNormal);
    if (across == 0.0) return *this;
    return *this - direction * (dotProduct(planeNormal) / across);
}

AcGeVector3d AcGeVector3d::orthoProject(const AcGeVector3d& planeNormal) const {
    return project(planeNormal, planeNormal);
}
