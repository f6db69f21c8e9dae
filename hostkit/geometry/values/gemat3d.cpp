#include "gemat3d.h"

#include "geline3d.h"
#include "gemat2d.h"
#include "geplane.h"
#include "valuekernel.hpp"

namespace {

AcGeVector3d columnOf(const AcGeMatrix3d& m, int column) {
    return {m.entry[0][column], m.entry[1][column], m.entry[2][column]};
}

// The matrix with the given linear part (its columns) that leaves `fixed` in place.
AcGeMatrix3d& aboutPoint(AcGeMatrix3d& m, const AcGeVector3d columns[3], const AcGePoint3d& fixed) {
    m.setCoordSystem(AcGePoint3d::kOrigin, columns[0], columns[1], columns[2]);
    return m.setTranslation(fixed - m * fixed);
}

void planeAxes(const AcGePlane& plane, AcGePoint3d& origin, AcGeVector3d& x, AcGeVector3d& y,
               AcGeVector3d& z) {
    plane.getCoordSystem(origin, x, y);
    z = plane.normal();
}

} // namespace

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& right) const {
    return AcGeKernel::product(*this, right);
}

double AcGeMatrix3d::det() const {
    return columnOf(*this, 0).dotProduct(columnOf(*this, 1).crossProduct(columnOf(*this, 2)));
}

Adesk::Boolean AcGeMatrix3d::isSingular(const AcGeTol& tol) const {
    const double sizes =
        columnOf(*this, 0).length() * columnOf(*this, 1).length() * columnOf(*this, 2).length();
    return !(std::abs(det()) > tol.equalVector() * sizes);
}

Adesk::Boolean AcGeMatrix3d::inverse(AcGeMatrix3d& inv, const AcGeTol& tol) const {
    if (isSingular(tol)) return Adesk::kFalse;
    const AcGeVector3d a = columnOf(*this, 0), b = columnOf(*this, 1), c = columnOf(*this, 2);
    const double d = det();
    const AcGeVector3d rows[3] = {b.crossProduct(c) / d, c.crossProduct(a) / d, a.crossProduct(b) / d};
    const AcGeVector3d offset = translation();
    AcGeMatrix3d result;
    for (unsigned int row = 0; row < 3; ++row) {
        for (unsigned int column = 0; column < 3; ++column) result.entry[row][column] = rows[row][column];
        result.entry[row][3] = -rows[row].dotProduct(offset);
    }
    inv = result;
    return Adesk::kTrue;
}

AcGeMatrix3d AcGeMatrix3d::inverse() const {
    AcGeMatrix3d result;
    inverse(result, AcGeContext::gTol);
    return result;
}

AcGeMatrix3d& AcGeMatrix3d::invert() {
    inverse(*this, AcGeContext::gTol);
    return *this;
}

AcGeMatrix3d AcGeMatrix3d::transpose() const { return AcGeKernel::transposed(*this); }

Adesk::Boolean AcGeMatrix3d::isEqualTo(const AcGeMatrix3d& matrix, const AcGeTol& tol) const {
    return AcGeKernel::areEqual<AcGePoint3d>(*this, matrix, tol);
}

Adesk::Boolean AcGeMatrix3d::isScaledOrtho(const AcGeTol& tol) const {
    const AcGeVector3d a = columnOf(*this, 0), b = columnOf(*this, 1), c = columnOf(*this, 2);
    return a.isPerpendicularTo(b, tol) && b.isPerpendicularTo(c, tol) && c.isPerpendicularTo(a, tol);
}

Adesk::Boolean AcGeMatrix3d::isUniScaledOrtho(const AcGeTol& tol) const {
    if (!isScaledOrtho(tol)) return Adesk::kFalse;
    const double a = columnOf(*this, 0).length(), b = columnOf(*this, 1).length(),
                 c = columnOf(*this, 2).length();
    const double allowed = tol.equalVector() * scale();
    return std::abs(a - b) <= allowed && std::abs(b - c) <= allowed && std::abs(c - a) <= allowed;
}

double AcGeMatrix3d::scale() const {
    return std::max({columnOf(*this, 0).length(), columnOf(*this, 1).length(), columnOf(*this, 2).length()});
}

double AcGeMatrix3d::norm() const {
    double largest = 0.0;
    for (int row = 0; row < 3; ++row)
        largest =
            std::max(largest, std::abs(entry[row][0]) + std::abs(entry[row][1]) + std::abs(entry[row][2]));
    return largest;
}

AcGeMatrix3d& AcGeMatrix3d::setToTranslation(const AcGeVector3d& vector) {
    setToIdentity();
    return setTranslation(vector);
}

AcGeMatrix3d& AcGeMatrix3d::setToRotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center) {
    AcGeVector3d columns[3] = {AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis};
    for (AcGeVector3d& column : columns) column.rotateBy(angle, axis);
    return aboutPoint(*this, columns, center);
}

AcGeMatrix3d& AcGeMatrix3d::setToScaling(double factor, const AcGePoint3d& center) {
    const AcGeVector3d columns[3] = {AcGeVector3d::kXAxis * factor, AcGeVector3d::kYAxis * factor,
                                     AcGeVector3d::kZAxis * factor};
    return aboutPoint(*this, columns, center);
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePlane& plane) {
    AcGeVector3d columns[3] = {AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis};
    for (AcGeVector3d& column : columns) column.mirror(plane.normal());
    return aboutPoint(*this, columns, plane.pointOnPlane());
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePoint3d& point) { return setToScaling(-1.0, point); }

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGeLine3d& line) {
    AcGeVector3d columns[3] = {AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis};
    const AcGeVector3d direction = line.direction();
    for (AcGeVector3d& column : columns) column = direction * (2.0 * column.dotProduct(direction)) - column;
    return aboutPoint(*this, columns, line.pointOnLine());
}

AcGeMatrix3d& AcGeMatrix3d::setToProjection(const AcGePlane& plane, const AcGeVector3d& direction) {
    AcGeVector3d columns[3] = {AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, AcGeVector3d::kZAxis};
    for (AcGeVector3d& column : columns) column = column.project(plane.normal(), direction);
    return aboutPoint(*this, columns, plane.pointOnPlane());
}

AcGeMatrix3d& AcGeMatrix3d::setToPlaneToWorld(const AcGeVector3d& normal) {
    return setToPlaneToWorld(AcGePlane(AcGePoint3d::kOrigin, normal));
}

AcGeMatrix3d& AcGeMatrix3d::setToPlaneToWorld(const AcGePlane& plane) {
    AcGePoint3d origin;
    AcGeVector3d x, y, z;
    planeAxes(plane, origin, x, y, z);
    return setCoordSystem(origin, x, y, z);
}

AcGeMatrix3d& AcGeMatrix3d::setToWorldToPlane(const AcGeVector3d& normal) {
    return setToPlaneToWorld(normal).invert();
}

AcGeMatrix3d& AcGeMatrix3d::setToWorldToPlane(const AcGePlane& plane) {
    return setToPlaneToWorld(plane).invert();
}

AcGeMatrix3d& AcGeMatrix3d::setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromX,
                                               const AcGeVector3d& fromY, const AcGeVector3d& fromZ,
                                               const AcGePoint3d& toOrigin, const AcGeVector3d& toX,
                                               const AcGeVector3d& toY, const AcGeVector3d& toZ) {
    AcGeMatrix3d from, to;
    // The linear parts are combined without the origins, so that origins far out cost no digits.
    from.setCoordSystem(AcGePoint3d::kOrigin, fromX, fromY, fromZ);
    to.setCoordSystem(AcGePoint3d::kOrigin, toX, toY, toZ);
    setToIdentity();
    AcGeMatrix3d back;
    if (!from.inverse(back, AcGeContext::gTol)) return *this;
    *this = to * back;
    return setTranslation(toOrigin - *this * fromOrigin);
}

AcGeMatrix3d& AcGeMatrix3d::setTranslation(const AcGeVector3d& vector) {
    for (unsigned int row = 0; row < 3; ++row) entry[row][3] = vector[row];
    return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                           const AcGeVector3d& yAxis, const AcGeVector3d& zAxis) {
    setToIdentity();
    for (unsigned int row = 0; row < 3; ++row) {
        entry[row][0] = xAxis[row];
        entry[row][1] = yAxis[row];
        entry[row][2] = zAxis[row];
        entry[row][3] = origin[row];
    }
    return *this;
}

void AcGeMatrix3d::getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                                  AcGeVector3d& zAxis) const {
    origin = AcGePoint3d::kOrigin + translation();
    xAxis = columnOf(*this, 0);
    yAxis = columnOf(*this, 1);
    zAxis = columnOf(*this, 2);
}

AcGeMatrix2d AcGeMatrix3d::convertToLocal(AcGeVector3d& normal, double& elevation) const {
    const AcGeMatrix3d toWorld = planeToWorld(normal);
    const AcGeVector3d x = *this * columnOf(toWorld, 0), y = *this * columnOf(toWorld, 1);
    const AcGePoint3d origin = *this * (toWorld * AcGePoint3d(0.0, 0.0, elevation));
    // A mirrored plane keeps the side of its normal, as the moved normal shows.
    AcGeVector3d moved = x.crossProduct(y);
    if (moved.dotProduct(*this * normal) < 0.0) moved.negate();
    normal = moved / moved.length();
    const AcGeMatrix3d local = worldToPlane(normal);
    const AcGePoint3d localOrigin = local * origin;
    const AcGeVector3d localX = local * x, localY = local * y;
    elevation = localOrigin.z;
    return AcGeMatrix2d().setCoordSystem({localOrigin.x, localOrigin.y}, {localX.x, localX.y},
                                         {localY.x, localY.y});
}
