#include "db2dvertex.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDb2dVertex::Filing {
    static constexpr GroupField<AcDb2dVertex> groups[] = {
        pointField<&AcDb2dVertex::m_position>(10),      realField<&AcDb2dVertex::m_startWidth>(40, 0.0),
        realField<&AcDb2dVertex::m_endWidth>(41, 0.0),  realField<&AcDb2dVertex::m_bulge>(42, 0.0),
        integerField<&AcDb2dVertex::m_dxfFlags>(70, 0), angleField<&AcDb2dVertex::m_tangent>(50, 0.0),
    };
};

Acad::ErrorStatus AcDb2dVertex::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    (void)filer->atSubclassData(L"AcDbVertex");
    if (!filer->atSubclassData(L"AcDb2dVertex")) return status;
    return readFields(*filer, Filing::groups, *this);
}

Acad::ErrorStatus AcDb2dVertex::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbVertex");
    filer->writeSubclassMark(L"AcDb2dVertex");
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDb2dVertex)
