#include "dbsymboltablerecord.h"

#include "adsdef.h"
#include "casefold.h"
#include "dbaccess.h"
#include "dbblocktablerecord.h"
#include "dbfiler.h"
#include "dblayertablerecord.h"
#include "dblinetypetablerecord.h"
#include "dbsymboltable.h"
#include "fielditems.h"

#include <algorithm>
#include <span>

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

AcDbSymbolTableRecord& AcDbSymbolTableRecord::operator=(const AcDbSymbolTableRecord& other) {
    auto* table = objectId().isNull() ? nullptr : DatabaseAccess::objectOf<AcDbSymbolTable>(ownerId());
    AcDbObject::operator=(other);
    const std::wstring oldName = std::exchange(m_name, other.m_name);
    m_dxfFlags = other.m_dxfFlags;
    if (table) table->renamed(*this, oldName);
    return *this;
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

namespace {

// Files and readers know these by their names alone.
bool hasStandingName(const AcDbSymbolTableRecord& record) {
    constexpr std::wstring_view layers[] = {L"0"};
    constexpr std::wstring_view linetypes[] = {L"ByBlock", L"ByLayer", L"Continuous"};
    constexpr std::wstring_view blocks[] = {L"*Model_Space", L"*Paper_Space"};
    const auto isOneOf = [&](std::span<const std::wstring_view> names) {
        return std::any_of(names.begin(), names.end(),
                           [&](std::wstring_view name) { return hostkit::equalFolded(record.name(), name); });
    };
    return (record.isKindOf(AcDbLayerTableRecord::desc()) && isOneOf(layers)) ||
           (record.isKindOf(AcDbLinetypeTableRecord::desc()) && isOneOf(linetypes)) ||
           (record.isKindOf(AcDbBlockTableRecord::desc()) && isOneOf(blocks));
}

} // namespace

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const wchar_t* name) {
    if (!name || !allowsName(name)) return Acad::eInvalidSymbolTableName;
    auto* table = DatabaseAccess::objectOf<AcDbSymbolTable>(ownerId());
    if (table && hasStandingName(*this) && !hostkit::equalFolded(m_name, name)) return Acad::eInvalidInput;
    if (table && !table->isNameFree(name, objectId())) return Acad::eDuplicateKey;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    if (table && table->isCurrent(*this)) table->nameCurrent(name);
    const std::wstring oldName = std::exchange(m_name, name);
    if (table) table->renamed(*this, oldName);
    return Acad::eOk;
}

// A restored record needs its name back.
Acad::ErrorStatus AcDbSymbolTableRecord::subErase(Adesk::Boolean erasing) {
    const auto* table = DatabaseAccess::objectOf<AcDbSymbolTable>(ownerId());
    return erasing || !table || table->isNameFree(m_name, objectId()) ? Acad::eOk : Acad::eDuplicateKey;
}

// --- Filing ------------------------------------------------------------------------------------------------

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
