#include "dbdictdflt.h"

#include "assignfield.h"

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
