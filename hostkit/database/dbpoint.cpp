#include "dbpoint.h"

#include "fieldsetters.h"
#include "flatmotion.h"

HOSTKIT_KIT_CLASS(AcDbPoint, AcDbEntity, L"POINT")

Acad::ErrorStatus AcDbPoint::setPosition(const AcGePoint3d& position) {
    return hostkit::setFiniteField(*this, m_position, position);
}

Acad::ErrorStatus AcDbPoint::setThickness(double thickness) {
    return hostkit::setFiniteField(*this, m_thickness, thickness);
}

Acad::ErrorStatus AcDbPoint::setNormal(const AcGeVector3d& normal) {
    if (!hostkit::isDirection(normal)) return Acad::eInvalidInput;
    return hostkit::assignField(*this, m_normal, normal.normal());
}

Acad::ErrorStatus AcDbPoint::setEcsRotation(double angle) {
    return hostkit::setFiniteField(*this, m_ecsRotation, angle);
}

Acad::ErrorStatus AcDbPoint::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents(m_position, m_position);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    m_position.transformBy(matrix);
    const hostkit::FlatMotion motion(matrix, m_normal);
    if (motion.isShift()) return Acad::eOk;
    m_ecsRotation = motion.angle(m_ecsRotation);
    m_thickness *= motion.normalScale();
    m_normal = motion.normal();
    return Acad::eOk;
}

void AcDbPoint::getEcs(AcGeMatrix3d& matrix) const { matrix = hostkit::arbitraryAxisSystem(m_normal); }
