#include "vexodatabasetools.h"

#include "vexosmartlock.h"
#include "vexosmartopen.h"
#include "vexosmartpointer.h"

#include "acdocman.h"
#include "cvxlogentry.h"
#include "dbdatabase.h"
#include "dbdict.h"
#include "dbsymtb.h"
#include "moduledatabase.h"
#include "tchar.h"

#include <memory>

namespace {

constexpr wchar_t applicationName[] = L"ORDANE";
constexpr wchar_t servicesName[] = L"VEXO_SERVICES";
constexpr wchar_t infoName[] = L"VEXO_INFO";
constexpr wchar_t buildVersionKey[] = L"ORDANE";
constexpr wchar_t modelSpaceName[] = L"*Model_Space";
/// Hands the naming of the entry to the host.
constexpr wchar_t anyKey[] = L"*";

struct OpenedDictionary {
    AcDbDictionary* dictionary = nullptr; ///< null unless the status is eOk
    Acad::ErrorStatus status = Acad::eOk;
};

void stampServices(AcDbDictionary* dictionary, const wchar_t* name) {
    if (_wcsicmp(name, servicesName) == 0)
        VEXODatabaseTools::setIntValueInEntityXData(dictionary, applicationName, servicesName, 1);
}

// What level 0 refuses nobody else knows of.
OpenedDictionary makeEntry(AcDbDictionary& root, const wchar_t* name, bool stampsServices) {
    auto made = std::make_unique<AcDbDictionary>();
    AcDbObjectId id;
    const Acad::ErrorStatus status = root.setAt(name, made.get(), id);
    // The stamp does not wait for the host's consent.
    if (stampsServices && name) stampServices(made.get(), name);
    if (status != Acad::eOk) return {nullptr, status};
    return {made.release(), status};
}

OpenedDictionary openEntry(AcDbDictionary& root, const wchar_t* name, AcDb::OpenMode mode, bool create,
                           bool stampsServices) {
    OpenedDictionary found;
    found.status = root.getAt(name, found.dictionary, mode);
    if (found.status == Acad::eKeyNotFound && mode == AcDb::kForWrite && create)
        return makeEntry(root, name, stampsServices);
    return found;
}

AcDbDictionary* openUnderLock(const wchar_t* name, AcDb::OpenMode mode, AcDbDatabase& database, bool create,
                              bool stampsServices) {
    const VEXOSmartPointer<VEXOSmartLock> lock(mode == AcDb::kForWrite ? new VEXOSmartLock(&database)
                                                                       : nullptr);
    AcDbDictionary* root = nullptr;
    if (database.getNamedObjectsDictionary(root, mode) != Acad::eOk) return nullptr;
    AcDbDictionary* dictionary = openEntry(*root, name, mode, create, stampsServices).dictionary;
    root->close();
    return dictionary;
}

void giveBackLock(VEXOSmartLock*& lock, AcDb::OpenMode mode) {
    if (mode == AcDb::kForWrite) delete lock;
    lock = nullptr;
}

void putEntry(AcDbDictionary& dictionary, AcDbObject* object, AcDbObjectId& id, const wchar_t* key) {
    const VEXOSmartLock lock;
    dictionary.setAt(key ? key : anyKey, object, id);
    if (object) object->close();
}

// The first entry that has the stamp decides; an entry that cannot be opened does not end the walk.
Acad::ErrorStatus readBuildVersion(const AcDbDictionary& dictionary, int& version) {
    Acad::ErrorStatus status = Acad::eInvalidInput;
    if (dictionary.numEntries() == 0) return status;
    const VEXOSmartPointer<AcDbDictionaryIterator> iterator(dictionary.newIterator());
    for (bool more = iterator && !iterator->done(); more; more = iterator->next()) {
        AcDbObject* object = nullptr;
        status = iterator->getObject(object, AcDb::kForRead);
        if (status != Acad::eOk) continue;
        int value = -1;
        const bool isStamped =
            VEXODatabaseTools::getIntValueInEntityXData(object, applicationName, buildVersionKey, value);
        object->close();
        if (isStamped) {
            version = value;
            return Acad::eOk;
        }
        status = Acad::eInvalidInput;
    }
    return status;
}

// The record stays open for the caller to close, also after a failure; null where there is none.
Acad::ErrorStatus appendToRecord(AcDbBlockTable& table, const wchar_t* blockName, AcDbEntity* entity,
                                 AcDbObjectId& id, AcDbBlockTableRecord*& record) {
    Acad::ErrorStatus status = table.getAt(blockName, record, AcDb::kForWrite, false);
    if (status == Acad::eKeyNotFound) {
        auto made = std::make_unique<AcDbBlockTableRecord>();
        made->setName(blockName);
        status = table.upgradeOpen();
        if (status == Acad::eOk) status = table.add(made.get());
        if (status == Acad::eOk) record = made.release();
    }
    return status == Acad::eOk ? record->appendAcDbEntity(id, entity) : status;
}

void appendEntitiesOf(const AcDbBlockTableRecord& block, AcDbObjectIdArray& ids) {
    AcDbBlockTableRecordIterator* opened = nullptr;
    if (block.newIterator(opened) != Acad::eOk) return;
    const VEXOSmartPointer<AcDbBlockTableRecordIterator> iterator(opened);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getEntityId(id) == Acad::eOk) ids.append(id);
    }
}

struct TableWord {
    const wchar_t* word;
    AcDbObjectId (AcDbDatabase::*table)() const;
};
constexpr TableWord tableWords[] = {
    {L"APPID", &AcDbDatabase::regAppTableId},      {L"BLOCK", &AcDbDatabase::blockTableId},
    {L"DIMSTYLE", &AcDbDatabase::dimStyleTableId}, {L"LAYER", &AcDbDatabase::layerTableId},
    {L"LTYPE", &AcDbDatabase::linetypeTableId},    {L"STYLE", &AcDbDatabase::textStyleTableId},
    {L"UCS", &AcDbDatabase::UCSTableId},           {L"VIEW", &AcDbDatabase::viewTableId},
    {L"VPORT", &AcDbDatabase::viewportTableId},
};

} // namespace

// ---------------------------------------------------------------------------------------------------------------------
// Dictionaries
// ---------------------------------------------------------------------------------------------------------------------

AcDbDictionary* VEXODatabaseTools::openDictionary(const wchar_t* name, AcDb::OpenMode mode,
                                                  AcDbDatabase* database, int create) {
    CVxLogEntry entry(L"VEXODatabaseTools::openDictionary");
    database = vexo::workingDatabaseOr(database);
    return database ? openUnderLock(name, mode, *database, create != 0, true) : nullptr;
}

AcDbDictionary* VEXODatabaseTools::openDictionary(const wchar_t* name, AcDb::OpenMode mode,
                                                  AcApDocument* document) {
    CVxLogEntry entry(L"VEXODatabaseTools::openDictionary");
    AcDbDatabase* database = document ? document->database() : nullptr;
    return database ? openUnderLock(name, mode, *database, true, false) : nullptr;
}

AcDbDictionary* VEXODatabaseTools::openDictionary2(const wchar_t* name, AcDb::OpenMode mode,
                                                   VEXOSmartLock*& lock, AcDbDatabase* database, int create) {
    CVxLogEntry entry(L"VEXODatabaseTools::openDictionary2");
    if (mode == AcDb::kForWrite) {
        lock = new VEXOSmartLock;
        if (lock->status() != Acad::eOk) {
            giveBackLock(lock, mode);
            return nullptr;
        }
    }
    database = vexo::workingDatabaseOr(database);
    AcDbDictionary* root = nullptr;
    if (!database || database->getNamedObjectsDictionary(root, mode) != Acad::eOk) {
        giveBackLock(lock, mode);
        return nullptr;
    }
    const OpenedDictionary found = openEntry(*root, name, mode, create != 0, false);
    root->close();
    if (found.status == Acad::eWasOpenForWrite) giveBackLock(lock, mode);
    return found.dictionary;
}

int VEXODatabaseTools::appendToDictionary(const wchar_t* dictionaryName, AcDbObject* object, AcDbObjectId& id,
                                          AcDbDatabase* database, bool closeDictionary, const wchar_t* key) {
    CVxLogEntry entry(L"VEXODatabaseTools::appendToDictionary");
    AcDbDictionary* dictionary = openDictionary(dictionaryName, AcDb::kForWrite, database, 1);
    if (!dictionary) return 0;
    putEntry(*dictionary, object, id, key);
    if (closeDictionary) dictionary->close();
    return 1;
}

int VEXODatabaseTools::appendToDictionary(AcDbDictionary* dictionary, AcDbObject* object, AcDbObjectId& id,
                                          const wchar_t* key) {
    CVxLogEntry entry(L"VEXODatabaseTools::appendToDictionary");
    if (!dictionary || !dictionary->isWriteEnabled()) return 0;
    putEntry(*dictionary, object, id, key);
    return 1;
}

int VEXODatabaseTools::appendToDictionary(const wchar_t* dictionaryName, AcDbObject* object, AcDbObjectId& id,
                                          AcApDocument* document, const wchar_t* key, int closeDictionary) {
    CVxLogEntry entry(L"VEXODatabaseTools::appendToDictionary");
    AcDbDictionary* dictionary = openDictionary(dictionaryName, AcDb::kForWrite, document);
    if (!dictionary) return 0;
    putEntry(*dictionary, object, id, key);
    if (closeDictionary) dictionary->close();
    return 1;
}

int VEXODatabaseTools::getFromDictionary(const wchar_t* dictionaryName, const wchar_t* key,
                                         AcDbObject*& object, AcDb::OpenMode mode, AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXODatabaseTools::getFromDictionary");
    const VEXOSmartPointer<VEXOSmartLock> lock(mode == AcDb::kForWrite ? new VEXOSmartLock(database)
                                                                       : nullptr);
    AcDbDictionary* dictionary = openDictionary(dictionaryName, AcDb::kForRead, database, 1);
    if (!dictionary) return 0;
    AcDbObject* found = nullptr;
    const Acad::ErrorStatus status = dictionary->getAt(key, found, mode);
    dictionary->close();
    if (status != Acad::eOk || !found) return 0;
    object = found;
    return 1;
}

int VEXODatabaseTools::getFromDictionary(const wchar_t* dictionaryName, const wchar_t* key, AcDbObjectId& id,
                                         AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXODatabaseTools::getFromDictionary");
    AcDbDictionary* dictionary = openDictionary(dictionaryName, AcDb::kForRead, database, 1);
    const int result = getFromDictionary(dictionary, key, id, database);
    if (dictionary) dictionary->close();
    return result;
}

int VEXODatabaseTools::getFromDictionary(const wchar_t* dictionaryName, AcDbObjectIdArray& ids,
                                         AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXODatabaseTools::getFromDictionary");
    ids.removeAll();
    AcDbDictionary* dictionary = openDictionary(dictionaryName, AcDb::kForRead, database, 1);
    if (!dictionary) return 1;
    int result = 0;
    if (const VEXOSmartPointer<AcDbDictionaryIterator> iterator(dictionary->newIterator()); iterator) {
        for (bool more = !iterator->done(); more; more = iterator->next()) ids.append(iterator->objectId());
        result = 1;
    }
    dictionary->close();
    return result;
}

int VEXODatabaseTools::getFromDictionary(AcDbDictionary* dictionary, const wchar_t* key, AcDbObjectId& id,
                                         AcDbDatabase* /*database*/) {
    CVxLogEntry entry(L"VEXODatabaseTools::getFromDictionary");
    return dictionary && dictionary->getAt(key, id) == Acad::eOk ? 1 : 0;
}

int VEXODatabaseTools::isEntryInDictionary(const wchar_t* dictionaryName, const wchar_t* key,
                                           AcDbObjectId& id, AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXODatabaseTools::isEntryInDictionary");
    AcDbDictionary* dictionary = openDictionary(dictionaryName, AcDb::kForRead, database, 1);
    if (!dictionary) return 0;
    const bool isThere = dictionary->has(key);
    id.setNull();
    if (isThere) dictionary->getAt(key, id);
    dictionary->close();
    return isThere ? 1 : 0;
}

// ---------------------------------------------------------------------------------------------------------------------
// Info records
// ---------------------------------------------------------------------------------------------------------------------

bool VEXODatabaseTools::isExistInfoObjectDictionary(AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXODatabaseTools::isExistInfoObjectDictionary");
    AcDbDictionary* root = nullptr;
    if (!database || database->getNamedObjectsDictionary(root, AcDb::kForRead) != Acad::eOk) return false;
    AcDbObjectId id;
    const Acad::ErrorStatus status = root->getAt(infoName, id);
    root->close();
    return status == Acad::eOk && !id.isNull();
}

Acad::ErrorStatus VEXODatabaseTools::getOrdaneBuildVersion(int& version, AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXODatabaseTools::getOrdaneBuildVersion");
    AcDbDictionary* dictionary = openDictionary(infoName, AcDb::kForRead, database, 0);
    if (!dictionary) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = readBuildVersion(*dictionary, version);
    dictionary->close();
    return status;
}

// ---------------------------------------------------------------------------------------------------------------------
// Blocks and tables
// ---------------------------------------------------------------------------------------------------------------------

int VEXODatabaseTools::appendEntity(AcDbEntity* entity, const wchar_t* blockName, AcDbObjectId& id,
                                    AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXODatabaseTools::appendEntity");
    database = vexo::workingDatabaseOr(database);
    AcDbBlockTable* table = nullptr;
    if (!database || database->getSymbolTable(table, AcDb::kForRead) != Acad::eOk) return 0;
    AcDbBlockTableRecord* record = nullptr;
    const Acad::ErrorStatus status = appendToRecord(*table, blockName, entity, id, record);
    if (record) record->close();
    table->close();
    return status == Acad::eOk ? 1 : 0;
}

int VEXODatabaseTools::appendEntity(AcDbEntity* entity, const wchar_t* blockName, AcDbObjectId& id) {
    CVxLogEntry entry(L"VEXODatabaseTools::appendEntity");
    if (!entity) return Acad::eInvalidInput;
    AcDbDatabase* database = vexo::workingDatabaseOr(nullptr);
    if (!database) return 0;
    const VEXOSmartLock lock;
    AcDbBlockTable* table = nullptr;
    if (database->getSymbolTable(table, AcDb::kForRead) != Acad::eOk) return 0;
    AcDbBlockTableRecord* record = nullptr;
    const Acad::ErrorStatus status = appendToRecord(*table, blockName, entity, id, record);
    table->close();
    if (record) record->close();
    // Only the append itself speaks of an entity that has its place already.
    return status == Acad::eOk || (record && status == Acad::eAlreadyInDb) ? 1 : 0;
}

int VEXODatabaseTools::getFromBlockTable(AcDbObjectIdArray& ids, AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXODatabaseTools::getFromBlockTable");
    ids.removeAll();
    database = vexo::workingDatabaseOr(database);
    if (!database) return 0;
    const VEXOSmartOpen<AcDbBlockTable> table(database->blockTableId(), AcDb::kForRead, false);
    AcDbBlockTableIterator* opened = nullptr;
    if (table.status() != Acad::eOk || table->newIterator(opened) != Acad::eOk) return 0;
    const VEXOSmartPointer<AcDbBlockTableIterator> iterator(opened);
    for (; !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getRecordId(id) != Acad::eOk) continue;
        const VEXOSmartOpen<AcDbBlockTableRecord> block(id, AcDb::kForRead, false);
        if (block.status() == Acad::eOk) appendEntitiesOf(*block, ids);
    }
    return 1;
}

int VEXODatabaseTools::getFromBlockTable(AcDbObjectIdArray& ids, const wchar_t* blockName,
                                         AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXODatabaseTools::getFromBlockTable");
    ids.removeAll();
    const VEXOSmartOpen<AcDbBlockTableRecord> block(getFromSymbolTable(L"BLOCK", blockName, database),
                                                    AcDb::kForRead, false);
    if (block.status() != Acad::eOk) return 0;
    appendEntitiesOf(*block, ids);
    return 1;
}

int VEXODatabaseTools::getFromModelSpace(AcDbObjectIdArray& ids, AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXODatabaseTools::getFromModelSpace");
    return getFromBlockTable(ids, modelSpaceName, database);
}

AcDbObjectId VEXODatabaseTools::getFromSymbolTable(const wchar_t* tableWord, const wchar_t* name,
                                                   AcDbDatabase* database) {
    CVxLogEntry entry(L"VEXODatabaseTools::getFromSymbolTable");
    AcDbObjectId id;
    database = vexo::workingDatabaseOr(database);
    if (!database || !tableWord || !name) return id;
    for (const TableWord& each : tableWords) {
        if (_wcsicmp(tableWord, each.word) != 0) continue;
        const VEXOSmartOpen<AcDbSymbolTable> table((database->*each.table)(), AcDb::kForRead, false);
        if (table.status() == Acad::eOk) table->getAt(name, id);
    }
    return id;
}
