#include "dbellipse.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbEllipse::Filing {
    static constexpr GroupField<AcDbEllipse> groups[] = {
        pointField<&AcDbEllipse::m_center>(10),    pointField<&AcDbEllipse::m_majorAxis>(11),
        normalField<&AcDbEllipse::m_normal>(),     realField<&AcDbEllipse::m_radiusRatio>(40),
        realField<&AcDbEllipse::m_startParam>(41), realField<&AcDbEllipse::m_endParam>(42),
    };
};

Acad::ErrorStatus AcDbEllipse::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbEllipse")) return status;
    return readFields(*filer, Filing::groups, *this);
}

Acad::ErrorStatus AcDbEllipse::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbEllipse");
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbEllipse)
