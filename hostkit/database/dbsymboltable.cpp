#include "dbsymboltable.h"

#include "dbaccess.h"
#include "dbdatabase.h"
#include "headervariables.h"

#include <algorithm>

HOSTKIT_KIT_CLASS(AcDbSymbolTable, AcDbObject, L"TABLE")

using hostkit::DatabaseAccess;

AcDbObjectId AcDbSymbolTable::find(std::wstring_view name) const {
    const auto found = m_names.find(name);
    return found == m_names.end() || found->second.isErased() ? AcDbObjectId() : found->second;
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const wchar_t* name, AcDbObjectId& id, bool openErased) const {
    if (!name) return Acad::eInvalidInput;
    const auto found = m_names.find(std::wstring_view(name));
    if (found == m_names.end()) return Acad::eKeyNotFound;
    if (found->second.isErased() && !openErased) return Acad::eWasErased;
    id = found->second;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const wchar_t* name, AcDbSymbolTableRecord*& record,
                                         AcDb::OpenMode mode, bool openErased) const {
    record = nullptr;
    AcDbObjectId id;
    const Acad::ErrorStatus status = getAt(name, id, openErased);
    return status == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : status;
}

bool AcDbSymbolTable::has(const wchar_t* name) const { return name && !find(name).isNull(); }

bool AcDbSymbolTable::has(AcDbObjectId id) const {
    const AcDbObject* object = DatabaseAccess::object(id);
    return object && !id.isErased() && object->ownerId() == objectId() && !objectId().isNull() &&
           object->isKindOf(recordClass());
}

bool AcDbSymbolTable::isNameFree(std::wstring_view name, AcDbObjectId except) const {
    if (name.empty() || allowsDuplicateNames()) return true; // the styles of shape files have no name
    const AcDbObjectId holder = find(name);
    return holder.isNull() || holder == except;
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& id, AcDbSymbolTableRecord* record) {
    if (!record) return Acad::eNullObjectPointer;
    if (!database()) return Acad::eNoDatabase;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!record->isKindOf(recordClass())) return Acad::eNotThatKindOfClass;
    if (!record->objectId().isNull()) return Acad::eAlreadyInDb;
    completeName(*record);
    if (!record->allowsName(record->name())) return Acad::eInvalidSymbolTableName;
    if (!isNameFree(record->name(), AcDbObjectId())) return Acad::eDuplicateKey;
    assertWriteEnabled();
    id = DatabaseAccess::addOpen(*database(), record, objectId());
    enter(*record);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbSymbolTableRecord* record) {
    AcDbObjectId id;
    return add(id, record);
}

void AcDbSymbolTable::enter(AcDbSymbolTableRecord& record) {
    m_records.push_back(record.objectId());
    const auto [place, isNew] = m_names.try_emplace(record.name(), record.objectId());
    if (!isNew && place->second.isErased()) place->second = record.objectId();
}

AcDbSymbolTable& AcDbSymbolTable::operator=(const AcDbSymbolTable& other) {
    AcDbObject::operator=(other);
    return *this;
}

// An erased record whose name the other one had taken over is found by it again.
void AcDbSymbolTable::takeBack(AcDbObjectId record) {
    const auto found = std::find(m_records.rbegin(), m_records.rend(), record);
    if (found == m_records.rend()) return;
    const bool sharesName = m_records.size() > m_names.size();
    m_records.erase(std::next(found).base());
    const auto* taken = DatabaseAccess::objectOf<AcDbSymbolTableRecord>(record);
    const auto named = m_names.find(taken->name());
    if (named == m_names.end() || named->second != record) return;
    m_names.erase(named);
    for (std::size_t i = sharesName ? m_records.size() : 0; i-- > 0;) {
        auto* other = DatabaseAccess::objectOf<AcDbSymbolTableRecord>(m_records[i]);
        if (!other || !hostkit::equalFolded(other->name(), taken->name())) continue;
        m_names.emplace(other->name(), other->objectId());
        return;
    }
}

void AcDbSymbolTable::reindex(AcDbSymbolTableRecord& record, std::wstring_view oldName) {
    const auto old = m_names.find(oldName);
    if (old != m_names.end() && old->second == record.objectId()) m_names.erase(old);
    m_names.insert_or_assign(record.name(), record.objectId());
}

void AcDbSymbolTable::rename(AcDbSymbolTableRecord& record, std::wstring_view oldName) {
    reindex(record, oldName);
    const wchar_t* variable = currentVariable();
    if (!variable || !database()) return;
    hostkit::HeaderVariables& header = database()->header();
    if (hostkit::equalFolded(header.text(variable), oldName)) header.setText(variable, record.name());
}

Acad::ErrorStatus AcDbSymbolTable::subErase(Adesk::Boolean) { return Acad::eCannotBeErasedByCaller; }

Acad::ErrorStatus AcDbSymbolTable::newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning,
                                               bool skipDeleted) const {
    iterator = new AcDbSymbolTableIterator(*this, atBeginning, skipDeleted);
    return Acad::eOk;
}

// The iterator. An index before the first wraps to the largest number and counts as done.

void AcDbSymbolTableIterator::start(bool atBeginning, bool skipDeleted) {
    m_index = atBeginning ? 0 : m_table.numRecords() - 1;
    if (skipDeleted) skipErased(atBeginning);
}

void AcDbSymbolTableIterator::step(bool forward, bool skipDeleted) {
    if (done()) return;
    m_index += forward ? 1 : static_cast<std::size_t>(-1);
    if (skipDeleted) skipErased(forward);
}

void AcDbSymbolTableIterator::skipErased(bool forward) {
    while (!done() && m_table.records()[m_index].isErased())
        m_index += forward ? 1 : static_cast<std::size_t>(-1);
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecordId(AcDbObjectId& id) const {
    if (done()) return Acad::eInvalidIndex;
    id = m_table.records()[m_index];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecord(AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                                                     bool openErased) const {
    if (done()) return Acad::eInvalidIndex;
    return acdbOpenObject(record, m_table.records()[m_index], mode, openErased);
}

Acad::ErrorStatus AcDbSymbolTableIterator::seek(AcDbObjectId id) {
    const auto& records = m_table.records();
    const auto found = std::find(records.begin(), records.end(), id);
    if (found == records.end()) return Acad::eKeyNotFound;
    m_index = static_cast<std::size_t>(found - records.begin());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableIterator::seek(const AcDbSymbolTableRecord* record) {
    return record ? seek(record->objectId()) : Acad::eNullObjectPointer;
}
