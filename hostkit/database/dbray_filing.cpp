#include "dbray.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbRay::Filing {
    static constexpr GroupField<AcDbRay> groups[] = {
        pointField<&AcDbRay::m_basePoint>(10),
        directionField<&AcDbRay::m_unitDirection>(11),
    };
};

Acad::ErrorStatus AcDbRay::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbRay")) return status;
    return readFields(*filer, Filing::groups, *this);
}

Acad::ErrorStatus AcDbRay::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbRay");
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbRay)
