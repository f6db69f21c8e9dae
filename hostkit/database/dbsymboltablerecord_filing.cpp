#include "dbsymboltablerecord.h"

#include "dbfiler.h"
#include "fielditems.h"

// Name and flags stand with the groups of the derived class.
Acad::ErrorStatus AcDbSymbolTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbObject::dxfInFields(filer);
    if (status == Acad::eOk) (void)filer->atSubclassData(L"AcDbSymbolTableRecord");
    return status;
}

Acad::ErrorStatus AcDbSymbolTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbObject::dxfOutFields(filer);
    if (status == Acad::eOk) filer->writeSubclassMark(L"AcDbSymbolTableRecord");
    return status;
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbSymbolTableRecord)
