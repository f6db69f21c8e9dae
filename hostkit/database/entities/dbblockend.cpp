#include "dbblockend.h"

#include "fielditems.h"

Acad::ErrorStatus AcDbBlockEnd::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status == Acad::eOk) (void)filer->atSubclassData(L"AcDbBlockEnd");
    return status;
}

Acad::ErrorStatus AcDbBlockEnd::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status == Acad::eOk) filer->writeSubclassMark(L"AcDbBlockEnd");
    return status;
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbBlockEnd)
