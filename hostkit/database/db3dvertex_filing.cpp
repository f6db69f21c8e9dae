#include "db3dvertex.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDb3dPolylineVertex::Filing {
    static constexpr GroupField<AcDb3dPolylineVertex> groups[] = {
        pointField<&AcDb3dPolylineVertex::m_position>(10),
        integerField<&AcDb3dPolylineVertex::m_dxfFlags>(70),
    };
};

Acad::ErrorStatus AcDb3dPolylineVertex::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    (void)filer->atSubclassData(L"AcDbVertex");
    if (!filer->atSubclassData(L"AcDb3dPolylineVertex")) return status;
    return readFields(*filer, Filing::groups, *this);
}

Acad::ErrorStatus AcDb3dPolylineVertex::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbVertex");
    filer->writeSubclassMark(L"AcDb3dPolylineVertex");
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDb3dPolylineVertex)
