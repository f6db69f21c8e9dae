#include "dbsolid.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

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
