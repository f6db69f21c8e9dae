#include "dbsolid.h"

#include "cornerfigure.h"
#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbSolid, AcDbEntity, L"SOLID")

AcDbSolid::AcDbSolid(const AcGePoint3d& p0, const AcGePoint3d& p1, const AcGePoint3d& p2,
                     const AcGePoint3d& p3)
    : m_ecsPoints{p0, p1, p2, p3} {}

Acad::ErrorStatus AcDbSolid::getPointAt(Adesk::UInt16 index, AcGePoint3d& point) const {
    if (index > 3) return Acad::eInvalidIndex;
    point = hostkit::toWorld(m_normal, m_ecsPoints[index]);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSolid::setPointAt(Adesk::UInt16 index, const AcGePoint3d& point) {
    if (index > 3) return Acad::eInvalidIndex;
    if (!hostkit::isFinite(point)) return Acad::eInvalidInput;
    return hostkit::assignField(*this, m_ecsPoints[index], hostkit::toEntity(m_normal, point));
}

Acad::ErrorStatus AcDbSolid::setThickness(double thickness) {
    return hostkit::setFiniteField(*this, m_thickness, thickness);
}

Acad::ErrorStatus AcDbSolid::setNormal(const AcGeVector3d& normal) {
    return hostkit::CornerFigure{m_ecsPoints, m_normal, m_thickness}.setNormal(*this, normal);
}

Acad::ErrorStatus AcDbSolid::getGeomExtents(AcDbExtents& extents) const {
    hostkit::setToCorners(extents, m_ecsPoints, m_normal);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSolid::subTransformBy(const AcGeMatrix3d& matrix) {
    return hostkit::CornerFigure{m_ecsPoints, m_normal, m_thickness}.transformBy(*this, matrix);
}

void AcDbSolid::getEcs(AcGeMatrix3d& matrix) const { matrix = hostkit::arbitraryAxisSystem(m_normal); }

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbSolid::Filing {
    static constexpr short firstCornerCode = 10;
    static constexpr short cornerCount = 4;
    static constexpr GroupField<AcDbSolid> groups[] = {
        realField<&AcDbSolid::m_thickness>(39, 0.0),
        normalField<&AcDbSolid::m_normal>(),
    };
};

// A record without a fourth corner is a triangle: its third corner counts twice.
Acad::ErrorStatus AcDbSolid::dxfInFields(AcDbDxfFiler* filer) {
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

Acad::ErrorStatus AcDbSolid::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbTrace");
    for (short corner = 0; corner < Filing::cornerCount; ++corner)
        filer->writeItem(static_cast<short>(Filing::firstCornerCode + corner), m_ecsPoints[corner]);
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbSolid)
