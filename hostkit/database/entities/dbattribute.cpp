#include "dbattribute.h"

#include "fielditems.h"

HOSTKIT_KIT_CLASS(AcDbAttribute, AcDbText, L"ATTRIB")

Acad::ErrorStatus AcDbAttribute::dxfInFields(AcDbDxfFiler* filer) {
    return readAttribute(filer, L"AcDbAttribute");
}

Acad::ErrorStatus AcDbAttribute::dxfOutFields(AcDbDxfFiler* filer) const {
    return writeAttribute(filer, L"AcDbAttribute");
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbAttribute)
