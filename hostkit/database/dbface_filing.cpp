#include "dbface.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbFace::Filing {
    static constexpr short firstCornerCode = 10;
    static constexpr short cornerCount = 4;
    static constexpr GroupField<AcDbFace> groups[] = {
        integerField<&AcDbFace::m_hiddenEdges>(70, 0),
    };
};

// A record without a fourth corner is a triangle: its third corner counts twice.
Acad::ErrorStatus AcDbFace::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbFace")) return status;
    bool hasLast = false;
    status = readFields(*filer, Filing::groups, *this, [&](const AcDbDxfGroup& group) {
        const int corner = group.code - Filing::firstCornerCode;
        if (corner < 0 || corner >= Filing::cornerCount) return false;
        m_points[corner].set(group.point[0], group.point[1], group.point[2]);
        hasLast = hasLast || corner == Filing::cornerCount - 1;
        return true;
    });
    if (!hasLast) m_points[3] = m_points[2];
    return status;
}

Acad::ErrorStatus AcDbFace::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbFace");
    for (short corner = 0; corner < Filing::cornerCount; ++corner)
        filer->writeItem(static_cast<short>(Filing::firstCornerCode + corner), m_points[corner]);
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbFace)
