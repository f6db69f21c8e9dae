#include "dbline.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbLine::Filing {
    static constexpr GroupField<AcDbLine> groups[] = {
        realField<&AcDbLine::m_thickness>(39, 0.0),
        pointField<&AcDbLine::m_start>(10),
        pointField<&AcDbLine::m_end>(11),
        normalField<&AcDbLine::m_normal>(),
    };
};

Acad::ErrorStatus AcDbLine::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbLine")) return status;
    return readFields(*filer, Filing::groups, *this);
}

Acad::ErrorStatus AcDbLine::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbLine");
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbLine)
