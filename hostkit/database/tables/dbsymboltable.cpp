#include "dbsymboltable.h"

#include "dbaccess.h"
#include "dbdatabase.h"
#include "fielditems.h"
#include "fieldtable.h"
#include "headervariables.h"
#include "ownedlist.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbSymbolTable, AcDbObject, L"TABLE")

using hostkit::DatabaseAccess;

const std::vector<AcDbObjectId>* AcDbSymbolTable::bearersOf(std::wstring_view name) const {
    const auto found = m_names.find(name);
    return found == m_names.end() ? nullptr : &found->second;
}

AcDbObjectId AcDbSymbolTable::find(std::wstring_view name) const {
    if (const auto* bearers = bearersOf(name))
        for (const AcDbObjectId id : *bearers)
            if (!id.isErased()) return id;
    return {};
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const wchar_t* name, AcDbObjectId& id, bool openErased) const {
    if (!name) return Acad::eInvalidInput;
    const auto* bearers = bearersOf(name);
    if (!bearers) return Acad::eKeyNotFound;
    const AcDbObjectId found = find(name);
    if (found.isNull() && !openErased) return Acad::eWasErased;
    id = found.isNull() ? bearers->back() : found;
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
    const auto* bearers = bearersOf(name);
    return !bearers || std::none_of(bearers->begin(), bearers->end(),
                                    [&](AcDbObjectId id) { return id != except && !id.isErased(); });
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& id, AcDbSymbolTableRecord* record) {
    if (!record) return Acad::eNullObjectPointer;
    if (!database()) return Acad::eNoDatabase;
    if (!isWriteEnabled()) return Acad::eNotOpenForWrite;
    if (!record->isKindOf(recordClass())) return Acad::eNotThatKindOfClass;
    if (!record->objectId().isNull()) return Acad::eAlreadyInDb;
    if (!database()->mayWrite()) return Acad::eLockViolation;
    completeName(*record);
    if (!record->allowsName(record->name())) return Acad::eInvalidSymbolTableName;
    if (!isNameFree(record->name(), AcDbObjectId())) return Acad::eDuplicateKey;
    assertWriteEnabled();
    makeRoom(m_records);
    makeRoom(m_names[record->name()]);
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
    m_names[record.name()].push_back(record.objectId());
}

AcDbSymbolTable& AcDbSymbolTable::operator=(const AcDbSymbolTable& other) {
    AcDbObject::operator=(other);
    return *this;
}

std::size_t AcDbSymbolTable::takeBack(AcDbObjectId record) {
    const std::size_t place = hostkit::takeFromList(m_records, record);
    if (place != hostkit::notListed)
        dropName(record, DatabaseAccess::objectOf<AcDbSymbolTableRecord>(record)->name());
    return place;
}

void AcDbSymbolTable::giveBack(AcDbObjectId record, std::size_t place) {
    hostkit::giveToList(m_records, record, place);
    enterName(record, DatabaseAccess::objectOf<AcDbSymbolTableRecord>(record)->name());
}

bool AcDbSymbolTable::dropName(AcDbObjectId record, std::wstring_view name) {
    const auto found = m_names.find(name);
    if (found == m_names.end() || std::erase(found->second, record) == 0) return false;
    if (found->second.empty()) m_names.erase(found);
    return true;
}

void AcDbSymbolTable::renamed(AcDbSymbolTableRecord& record, std::wstring_view oldName) {
    if (hostkit::equalFolded(record.name(), oldName)) return;
    if (!dropName(record.objectId(), oldName)) return; // the table has let it go
    enterName(record.objectId(), record.name());
}

// Records of one name stand in the order of the table.
void AcDbSymbolTable::enterName(AcDbObjectId record, const std::wstring& name) {
    std::vector<AcDbObjectId>& bearers = m_names[name];
    bearers.push_back(record);
    if (bearers.size() == 1) return;
    const std::unordered_set<AcDbObjectId> unordered(bearers.begin(), bearers.end());
    bearers.clear();
    std::copy_if(m_records.begin(), m_records.end(), std::back_inserter(bearers),
                 [&](AcDbObjectId id) { return unordered.count(id) > 0; });
}

bool AcDbSymbolTable::isCurrent(const AcDbSymbolTableRecord& record) const {
    const wchar_t* variable = currentVariable();
    return variable && database() && find(database()->header().text(variable)) == record.objectId();
}

void AcDbSymbolTable::nameCurrent(const std::wstring& name) const {
    database()->header().setText(currentVariable(), name);
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

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbSymbolTable::Filing {
    static constexpr short countCode = 70;
};

// The count in a file is what its writer made of it; the records count themselves.
Acad::ErrorStatus AcDbSymbolTable::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbObject::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbSymbolTable")) return status;
    AcDbDxfGroup group;
    for (;;) {
        const Acad::ErrorStatus read = filer->readItem(group);
        if (read == Acad::eEndOfObject) return Acad::eOk;
        if (read != Acad::eOk) return read;
        if (group.code != Filing::countCode) filer->rejectItem();
    }
}

Acad::ErrorStatus AcDbSymbolTable::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbObject::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbSymbolTable");
    filer->writeInteger(Filing::countCode, std::count_if(m_records.begin(), m_records.end(),
                                                         [](AcDbObjectId id) { return !id.isErased(); }));
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbSymbolTable)
