#include "dbpoint.h"

#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"
#include "flatmotion.h"

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbPoint, AcDbEntity, L"POINT")

Acad::ErrorStatus AcDbPoint::setPosition(const AcGePoint3d& position) {
    return hostkit::setFiniteField(*this, m_position, position);
}

Acad::ErrorStatus AcDbPoint::setThickness(double thickness) {
    return hostkit::setFiniteField(*this, m_thickness, thickness);
}

Acad::ErrorStatus AcDbPoint::setNormal(const AcGeVector3d& normal) {
    return hostkit::setDirectionField(*this, m_normal, normal);
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

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbPoint::Filing {
    static constexpr GroupField<AcDbPoint> groups[] = {
        pointField<&AcDbPoint::m_position>(10),
        realField<&AcDbPoint::m_thickness>(39, 0.0),
        normalField<&AcDbPoint::m_normal>(),
        angleField<&AcDbPoint::m_ecsRotation>(50, 0.0),
    };
};

Acad::ErrorStatus AcDbPoint::dxfInFields(AcDbDxfFiler* filer) {
    return readSubclass<AcDbEntity>(filer, *this, L"AcDbPoint", Filing::groups);
}

Acad::ErrorStatus AcDbPoint::dxfOutFields(AcDbDxfFiler* filer) const {
    return writeSubclass<AcDbEntity>(filer, *this, L"AcDbPoint", Filing::groups);
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbPoint)
