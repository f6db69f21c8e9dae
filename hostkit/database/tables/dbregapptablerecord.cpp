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
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbRegAppTableRecord")) return status;
    return readFields(*filer, Filing::groups, *this);
}

Acad::ErrorStatus AcDbRegAppTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbRegAppTableRecord");
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbRegAppTableRecord)
