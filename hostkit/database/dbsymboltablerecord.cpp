#include "dbsymboltablerecord.h"

#include "dbaccess.h"
#include "dbsymboltable.h"

#include "adsdef.h"

HOSTKIT_KIT_ABSTRACT_CLASS(AcDbSymbolTableRecord, AcDbObject)

using hostkit::DatabaseAccess;

bool AcDbSymbolTableRecord::isValidName(std::wstring_view name) {
    constexpr std::size_t longest = 255;
    constexpr std::wstring_view forbidden = L"<>/\\\":;?*|,=`";
    if (name.empty() || name.size() > longest) return false;
    for (const wchar_t c : name)
        if (c < L' ' || forbidden.find(c) != std::wstring_view::npos) return false;
    return true;
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(wchar_t*& name) const {
    if (m_name.empty()) return Acad::eInvalidKey;
    name = acutNewString(m_name.c_str());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(const wchar_t*& name) const {
    if (m_name.empty()) return Acad::eInvalidKey;
    name = m_name.c_str();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const wchar_t* name) {
    if (!name || !allowsName(name)) return Acad::eInvalidSymbolTableName;
    auto* table = DatabaseAccess::objectOf<AcDbSymbolTable>(ownerId());
    if (table && !table->isNameFree(name, objectId())) return Acad::eDuplicateKey;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const std::wstring oldName = std::exchange(m_name, name);
    if (table) table->rename(*this, oldName);
    return Acad::eOk;
}

// A restored record needs its name back.
Acad::ErrorStatus AcDbSymbolTableRecord::subErase(Adesk::Boolean erasing) {
    auto* table = DatabaseAccess::objectOf<AcDbSymbolTable>(ownerId());
    if (erasing || !table) return Acad::eOk;
    if (!table->isNameFree(m_name, objectId())) return Acad::eDuplicateKey;
    if (table->find(m_name).isNull()) table->rename(*this, m_name);
    return Acad::eOk;
}
