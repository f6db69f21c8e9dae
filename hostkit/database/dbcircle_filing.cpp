#include "dbcircle.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbCircle::Filing {
    static constexpr GroupField<AcDbCircle> groups[] = {
        realField<&AcDbCircle::m_thickness>(39, 0.0),
        pointField<&AcDbCircle::m_ecsCenter>(10),
        realField<&AcDbCircle::m_radius>(40),
        normalField<&AcDbCircle::m_normal>(),
    };
};

Acad::ErrorStatus AcDbCircle::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbCircle")) return status;
    return readFields(*filer, Filing::groups, *this);
}

Acad::ErrorStatus AcDbCircle::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbCircle");
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbCircle)
