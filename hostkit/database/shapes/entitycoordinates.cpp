#include "entitycoordinates.h"

#include <cmath>

namespace hostkit {

namespace {

/// How far the lengths of a matrix' axes may differ and how far they may be from right angles, relative.
constexpr double kUniformTolerance = 1e-10;

AcGeVector3d column(const AcGeMatrix3d& matrix, unsigned int index) {
    return {matrix(0, index), matrix(1, index), matrix(2, index)};
}

AcGeMatrix3d systemOf(const AcGeVector3d& normal) {
    AcGeVector3d x, y;
    AcGe::arbitraryAxes(normal, x, y);
    return AcGeMatrix3d().setCoordSystem(AcGePoint3d::kOrigin, x, y, normal);
}

} // namespace

AcGeMatrix3d arbitraryAxisSystem(const AcGeVector3d& normal) {
    return isZAxis(normal) ? AcGeMatrix3d::kIdentity : systemOf(normal);
}

AcGePoint3d toWorldSlow(const AcGeVector3d& normal, const AcGePoint3d& point) {
    return systemOf(normal) * point;
}

AcGePoint3d toEntitySlow(const AcGeVector3d& normal, const AcGePoint3d& point) {
    return systemOf(normal).transpose() * point;
}

AcGeVector3d toWorld(const AcGeVector3d& normal, const AcGeVector3d& vector) {
    return isZAxis(normal) ? vector : systemOf(normal) * vector;
}

AcGeVector3d toEntity(const AcGeVector3d& normal, const AcGeVector3d& vector) {
    return isZAxis(normal) ? vector : systemOf(normal).transpose() * vector;
}

bool isUniform(const AcGeMatrix3d& matrix, double& scale) {
    const AcGeVector3d axes[3] = {column(matrix, 0), column(matrix, 1), column(matrix, 2)};
    const double length = axes[0].length();
    const double slack = kUniformTolerance * length;
    for (unsigned int i = 0; i < 3; ++i) {
        if (!(std::abs(axes[i].length() - length) <= slack)) return false;
        if (!(std::abs(axes[i].dotProduct(axes[(i + 1) % 3])) <= slack * length)) return false;
    }
    scale = length;
    return true;
}

bool isInvertible(const AcGeMatrix3d& matrix) {
    for (unsigned int row = 0; row < 3; ++row)
        for (unsigned int column = 0; column < 4; ++column)
            if (!std::isfinite(matrix(row, column))) return false;
    const double determinant = matrix.det();
    return std::isfinite(determinant) && determinant != 0.0;
}

bool isFinite(const AcGePoint3d& point) {
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

bool isFinite(const AcGeVector3d& vector) {
    return std::isfinite(vector.x) && std::isfinite(vector.y) && std::isfinite(vector.z);
}

} // namespace hostkit
