#include "dbsequenceend.h"

#include "fielditems.h"

// Nothing beyond what every entity has.
Acad::ErrorStatus AcDbSequenceEnd::dxfInFields(AcDbDxfFiler* filer) { return AcDbEntity::dxfInFields(filer); }

Acad::ErrorStatus AcDbSequenceEnd::dxfOutFields(AcDbDxfFiler* filer) const {
    return AcDbEntity::dxfOutFields(filer);
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbSequenceEnd)
