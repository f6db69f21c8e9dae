#include "dbpoint.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbPoint::Filing {
    static constexpr GroupField<AcDbPoint> groups[] = {
        pointField<&AcDbPoint::m_position>(10),
        realField<&AcDbPoint::m_thickness>(39, 0.0),
        normalField<&AcDbPoint::m_normal>(),
        angleField<&AcDbPoint::m_ecsRotation>(50, 0.0),
    };
};

Acad::ErrorStatus AcDbPoint::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbPoint")) return status;
    return readFields(*filer, Filing::groups, *this);
}

Acad::ErrorStatus AcDbPoint::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbPoint");
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbPoint)
