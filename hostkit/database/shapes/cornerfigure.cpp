#include "cornerfigure.h"

#include "fieldsetters.h"
#include "flatmotion.h"

namespace hostkit {

Acad::ErrorStatus CornerFigure::setNormal(AcDbObject& owner, const AcGeVector3d& newNormal) {
    if (!isDirection(newNormal)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = owner.assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const AcGeVector3d unit = newNormal.normal();
    for (AcGePoint3d& corner : corners) corner = toEntity(unit, toWorld(normal, corner));
    normal = unit;
    return Acad::eOk;
}

Acad::ErrorStatus CornerFigure::transformBy(AcDbObject& owner, const AcGeMatrix3d& matrix) {
    if (!isInvertible(matrix)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = owner.assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const FlatMotion motion(matrix, normal);
    for (AcGePoint3d& corner : corners) corner = motion.point(corner);
    normal = motion.normal();
    thickness *= motion.normalScale();
    return Acad::eOk;
}

void setToCorners(AcDbExtents& extents, const AcGePoint3d (&corners)[4], const AcGeVector3d& normal) {
    extents = AcDbExtents();
    for (const AcGePoint3d& corner : corners) extents.addPoint(toWorld(normal, corner));
}

} // namespace hostkit
