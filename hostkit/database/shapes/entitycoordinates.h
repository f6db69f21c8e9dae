// Coordinate systems of normals: the arbitrary-axis rule and points to and from it; leaves out anything else.
#pragma once

#include "gemat3d.h"
#include "gepnt3d.h"
#include "gevec3d.h"

namespace hostkit {

// Entities keep such points as the drawing file has them, in the coordinates of the normal, so that writing
// them again gives the same numbers to the bit; the world's are computed when asked for. With the normal +Z
// both are the same.

inline bool isZAxis(const AcGeVector3d& normal) {
    return normal.x == 0.0 && normal.y == 0.0 && normal.z == 1.0;
}

/// The published rule: x is world Y x normal when both |nx| and |ny| are below 1/64, else world Z x normal; y
/// is normal x x. `normal` is a unit vector. The matrix takes the normal's coordinates to the world's.
AcGeMatrix3d arbitraryAxisSystem(const AcGeVector3d& normal);

AcGePoint3d toWorldSlow(const AcGeVector3d& normal, const AcGePoint3d& point);
AcGePoint3d toEntitySlow(const AcGeVector3d& normal, const AcGePoint3d& point);

inline AcGePoint3d toWorld(const AcGeVector3d& normal, const AcGePoint3d& point) {
    return isZAxis(normal) ? point : toWorldSlow(normal, point);
}
inline AcGePoint3d toEntity(const AcGeVector3d& normal, const AcGePoint3d& point) {
    return isZAxis(normal) ? point : toEntitySlow(normal, point);
}
AcGeVector3d toWorld(const AcGeVector3d& normal, const AcGeVector3d& vector);
AcGeVector3d toEntity(const AcGeVector3d& normal, const AcGeVector3d& vector);

/// True when the matrix keeps angles: equal scales and right angles between its axes, to 1e-10 of the scale.
/// `scale` is the factor of lengths (positive, for a mirror too).
bool isUniform(const AcGeMatrix3d& matrix, double& scale);
/// Every value is a number and the determinant is not 0.
bool isInvertible(const AcGeMatrix3d& matrix);
bool isFinite(const AcGePoint3d& point);
bool isFinite(const AcGeVector3d& vector);

} // namespace hostkit
