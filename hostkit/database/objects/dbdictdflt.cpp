#include "dbdictdflt.h"

#include "assignfield.h"
#include "fielditems.h"
#include "fieldtable.h"

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbDictionaryWithDefault, AcDbDictionary, L"ACDBDICTIONARYWDFLT")

Acad::ErrorStatus AcDbDictionaryWithDefault::setDefaultId(AcDbObjectId id) {
    return hostkit::assignField(*this, m_defaultId, id);
}

Acad::ErrorStatus AcDbDictionaryWithDefault::getAtOrDefault(const wchar_t* name, AcDbObjectId& id) const {
    const Acad::ErrorStatus status = getAt(name, id);
    if (status == Acad::eOk) return status;
    if (m_defaultId.isNull() || m_defaultId.isErased()) return Acad::eKeyNotFound;
    id = m_defaultId;
    return Acad::eOk;
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbDictionaryWithDefault::Filing {
    static constexpr GroupField<AcDbDictionaryWithDefault> groups[] = {
        idField<&AcDbDictionaryWithDefault::m_defaultId>(340),
    };
};

Acad::ErrorStatus AcDbDictionaryWithDefault::dxfInFields(AcDbDxfFiler* filer) {
    return readSubclass<AcDbDictionary>(filer, *this, L"AcDbDictionaryWithDefault", Filing::groups);
}

Acad::ErrorStatus AcDbDictionaryWithDefault::dxfOutFields(AcDbDxfFiler* filer) const {
    return writeSubclass<AcDbDictionary>(filer, *this, L"AcDbDictionaryWithDefault", Filing::groups);
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbDictionaryWithDefault)
