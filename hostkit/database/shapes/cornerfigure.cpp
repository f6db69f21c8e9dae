#include "cornerfigure.h"

#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"
#include "flatmotion.h"

namespace hostkit {

Acad::ErrorStatus CornerFigure::getPointAt(Adesk::UInt16 index, AcGePoint3d& point) const {
    if (index > 3) return Acad::eInvalidIndex;
    point = toWorld(m_normal, m_ecsPoints[index]);
    return Acad::eOk;
}

Acad::ErrorStatus CornerFigure::setPointAt(Adesk::UInt16 index, const AcGePoint3d& point) {
    if (index > 3) return Acad::eInvalidIndex;
    if (!isFinite(point)) return Acad::eInvalidInput;
    return assignField(*this, m_ecsPoints[index], toEntity(m_normal, point));
}

Acad::ErrorStatus CornerFigure::setThickness(double thickness) {
    return setFiniteField(*this, m_thickness, thickness);
}

Acad::ErrorStatus CornerFigure::setNormal(const AcGeVector3d& normal) {
    if (!isDirection(normal)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const AcGeVector3d unit = normal.normal();
    for (AcGePoint3d& corner : m_ecsPoints) corner = toEntity(unit, toWorld(m_normal, corner));
    m_normal = unit;
    return Acad::eOk;
}

Acad::ErrorStatus CornerFigure::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    for (const AcGePoint3d& corner : m_ecsPoints) extents.addPoint(toWorld(m_normal, corner));
    return Acad::eOk;
}

Acad::ErrorStatus CornerFigure::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!isInvertible(matrix)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const FlatMotion motion(matrix, m_normal);
    for (AcGePoint3d& corner : m_ecsPoints) corner = motion.point(corner);
    m_normal = motion.normal();
    m_thickness *= motion.normalScale();
    return Acad::eOk;
}

void CornerFigure::getEcs(AcGeMatrix3d& matrix) const { matrix = arbitraryAxisSystem(m_normal); }

// --- Filing ------------------------------------------------------------------------------------------------

struct CornerFigure::Filing {
    static constexpr short firstCornerCode = 10;
    static constexpr short cornerCount = 4;
    static constexpr GroupField<CornerFigure> groups[] = {
        realField<&CornerFigure::m_thickness>(39, 0.0),
        normalField<&CornerFigure::m_normal>(),
    };
};

// A record without a fourth corner is a triangle: its third corner counts twice.
Acad::ErrorStatus CornerFigure::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbTrace")) return status;
    bool hasLast = false;
    status = readFields(*filer, Filing::groups, *this, [&](const AcDbDxfGroup& group) {
        const int corner = group.code - Filing::firstCornerCode;
        if (corner < 0 || corner >= Filing::cornerCount) return false;
        m_ecsPoints[corner].set(group.point[0], group.point[1], group.point[2]);
        hasLast = hasLast || corner == Filing::cornerCount - 1;
        return true;
    });
    if (!hasLast) m_ecsPoints[3] = m_ecsPoints[2];
    return status;
}

// The subclass of both classes has the name of one.
Acad::ErrorStatus CornerFigure::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbTrace");
    for (short corner = 0; corner < Filing::cornerCount; ++corner)
        filer->writeItem(static_cast<short>(Filing::firstCornerCode + corner), m_ecsPoints[corner]);
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(CornerFigure)

} // namespace hostkit
