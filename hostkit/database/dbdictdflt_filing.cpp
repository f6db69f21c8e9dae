#include "dbdictdflt.h"

#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

struct AcDbDictionaryWithDefault::Filing {
    static constexpr GroupField<AcDbDictionaryWithDefault> groups[] = {
        idField<&AcDbDictionaryWithDefault::m_defaultId>(340),
    };
};

Acad::ErrorStatus AcDbDictionaryWithDefault::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbDictionary::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbDictionaryWithDefault")) return status;
    return readFields(*filer, Filing::groups, *this);
}

Acad::ErrorStatus AcDbDictionaryWithDefault::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbDictionary::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbDictionaryWithDefault");
    writeFields(*filer, Filing::groups, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbDictionaryWithDefault)
