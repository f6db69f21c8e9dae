#include "dbxline.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbXline::Filing {
    static constexpr GroupField<AcDbXline> groups[] = {
        pointField<&AcDbXline::m_basePoint>(10),
        directionField<&AcDbXline::m_unitDirection>(11),
    };
};

Acad::ErrorStatus AcDbXline::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbXline")) return status;
    return readFields(*filer, Filing::groups, *this);
}

Acad::ErrorStatus AcDbXline::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbXline");
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbXline)
