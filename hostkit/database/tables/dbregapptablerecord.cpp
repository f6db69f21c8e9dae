#include "dbregapptablerecord.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbRegAppTableRecord::Filing {
    static constexpr GroupField<AcDbRegAppTableRecord> groups[] = {
        textField<&AcDbRegAppTableRecord::m_name, AcDbRegAppTableRecord>(2),
        integerField<&AcDbRegAppTableRecord::m_dxfFlags, AcDbRegAppTableRecord>(70),
    };
};

Acad::ErrorStatus AcDbRegAppTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    return readSubclass<AcDbSymbolTableRecord>(filer, *this, L"AcDbRegAppTableRecord", Filing::groups);
}

Acad::ErrorStatus AcDbRegAppTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    return writeSubclass<AcDbSymbolTableRecord>(filer, *this, L"AcDbRegAppTableRecord", Filing::groups);
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbRegAppTableRecord)
