#include "dbplhldr.h"

#include "fielditems.h"

// A placeholder's record has no groups of its own.
Acad::ErrorStatus AcDbPlaceHolder::dxfInFields(AcDbDxfFiler* filer) { return AcDbObject::dxfInFields(filer); }

Acad::ErrorStatus AcDbPlaceHolder::dxfOutFields(AcDbDxfFiler* filer) const {
    return AcDbObject::dxfOutFields(filer);
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbPlaceHolder)
