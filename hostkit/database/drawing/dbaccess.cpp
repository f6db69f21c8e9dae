#include "dbaccess.h"

#include "databasecontents.h"
#include "dbent.h"
#include "objectextras.h"
#include "subentitylist.h"

namespace hostkit {

AcDbObjectId DatabaseAccess::add(AcDbDatabase& database, AcDbObject* object, AcDbHandleValue handle,
                                 AcDbObjectId owner) {
    if (!object || !object->m_id.isNull()) return {};
    DatabaseContents& contents = *database.m_contents;
    AcDbStub* stub = handle ? contents.handles.find(handle) : nullptr;
    if (stub && stub->object) return {};
    const bool wasPromised = stub != nullptr;
    if (!stub) stub = contents.makeStub(handle);
    stub->object = object;
    object->m_id = AcDbObjectId(stub);
    object->takeOwner(owner);
    if (wasPromised) {
        contents.ownedObjects.scan().cameLate(*stub);
        contents.blockUsers.scan().cameLate(*stub);
    }
    return object->m_id;
}

AcDbObjectId DatabaseAccess::addOpen(AcDbDatabase& database, AcDbObject* object, AcDbObjectId owner,
                                     AcDbHandleValue handle) {
    const AcDbObjectId id = add(database, object, handle, owner);
    if (id.isNull()) return id;
    id.stub()->openMode = kOpenForWrite;
    object->m_flags |= AcDbObject::kNew | AcDbObject::kModified;
    object->m_source.setModified();
    try {
        database.m_contents->changes.created(*object);
        if (AcDbEntity* entity = AcDbEntity::cast(object))
            if (SubentityList* list = parts(*entity)) list->enterDrawing(*entity);
    } catch (...) {
        withdraw(database, *object);
        throw;
    }
    return id;
}

void DatabaseAccess::withdraw(AcDbDatabase& database, AcDbObject& object) noexcept {
    if (AcDbEntity* entity = AcDbEntity::cast(&object))
        if (SubentityList* list = parts(*entity)) list->leaveDrawing(database);
    AcDbStub& stub = *object.m_id.stub();
    database.m_contents->changes.forgetCreation(object);
    stub.object = nullptr;
    stub.openMode = 0;
    stub.readers = 0;
    object.m_id = {};
    object.m_ownerId = {};
    object.m_flags &= static_cast<Adesk::UInt8>(~(AcDbObject::kNew | AcDbObject::kModified));
}

void DatabaseAccess::takePlace(std::unique_ptr<AcDbObject> object, AcDbObject& earlier) {
    AcDbStub* const stub = earlier.m_id.stub();
    AcDbObject& taken = *object.release();
    taken.AcDbObject::operator=(earlier);
    taken.m_id = earlier.m_id;
    taken.m_flags = earlier.m_flags;
    stub->object = &taken;
    delete &earlier;
}

ChangeLog& DatabaseAccess::changes(AcDbDatabase& database) { return database.m_contents->changes; }

OwnedObjects& DatabaseAccess::ownedObjects(AcDbDatabase& database) {
    return database.m_contents->ownedObjects;
}

BlockUsers& DatabaseAccess::blockUsers(AcDbDatabase& database) { return database.m_contents->blockUsers; }

DisplayChanges& DatabaseAccess::display(AcDbDatabase& database) { return database.m_contents->display; }

std::unique_ptr<PickIndex>& DatabaseAccess::picking(AcDbDatabase& database) {
    return database.m_contents->picking;
}

AcDbObjectId DatabaseAccess::reserve(AcDbDatabase& database, AcDbHandleValue handle) {
    if (handle == 0) return {};
    DatabaseContents& contents = *database.m_contents;
    AcDbStub* stub = contents.handles.find(handle);
    return AcDbObjectId(stub ? stub : contents.makeStub(handle));
}

AcDbObjectId DatabaseAccess::find(const AcDbDatabase& database, AcDbHandleValue handle) {
    return AcDbObjectId(handle ? database.m_contents->handles.find(handle) : nullptr);
}

std::size_t DatabaseAccess::stubCount(const AcDbDatabase& database) {
    return database.m_contents->stubs.count();
}

AcDbStub* DatabaseAccess::stubAt(const AcDbDatabase& database, std::size_t index) {
    return database.m_contents->stubs.at(index);
}

void DatabaseAccess::setExtendedData(AcDbObject& object, GroupBlock&& data) {
    object.extras().extendedData = std::move(data);
    object.m_extras->extendedData.shrinkToFit();
}

void DatabaseAccess::setExtensionDictionary(AcDbObject& object, AcDbObjectId id) {
    if (object.m_extras || !id.isNull()) object.extras().extensionDictionary = id;
}

const std::wstring* DatabaseAccess::unknownName(const AcDbObject& object, short code) {
    const UnplacedFields* const fields = object.m_extras ? object.m_extras->unplaced.get() : nullptr;
    if (!fields) return nullptr;
    for (const auto& [known, name] : fields->names)
        if (known == code) return &name;
    return nullptr;
}

void DatabaseAccess::setUnknownName(AcDbObject& object, short code, std::wstring_view name) {
    forgetUnknownName(object, code);
    object.extras().unplaced.made().names.emplace_back(code, name);
}

void DatabaseAccess::forgetUnknownName(AcDbObject& object, short code) {
    if (UnplacedFields* const fields = object.m_extras ? object.m_extras->unplaced.get() : nullptr)
        std::erase_if(fields->names, [code](const auto& entry) { return entry.first == code; });
}

GroupBlock* DatabaseAccess::embedded(const AcDbObject& object) {
    UnplacedFields* const fields = object.m_extras ? object.m_extras->unplaced.get() : nullptr;
    return fields && !fields->embedded.isEmpty() ? &fields->embedded : nullptr;
}

GroupBlock& DatabaseAccess::madeEmbedded(AcDbObject& object) {
    return object.extras().unplaced.made().embedded;
}

void DatabaseAccess::dropEmbedded(AcDbObject& object) {
    if (GroupBlock* const block = embedded(object)) block->clear();
}

void DatabaseAccess::setPersistentReactors(AcDbObject& object, std::vector<AcDbObjectId>&& ids) {
    if (object.m_extras || !ids.empty()) object.extras().persistentReactors = std::move(ids);
}

const std::vector<AcDbObjectId>& DatabaseAccess::persistentReactors(const AcDbObject& object) {
    static const std::vector<AcDbObjectId> none;
    return object.m_extras ? object.m_extras->persistentReactors : none;
}

AcDbObjectId DatabaseAccess::extensionDictionary(const AcDbObject& object) {
    return object.m_extras ? object.m_extras->extensionDictionary : AcDbObjectId();
}

SubentityList* DatabaseAccess::parts(AcDbEntity& entity) { return entity.subentities(); }

bool DatabaseAccess::followName(AcDbSymbolTableRecord& record, std::wstring_view oldName) {
    auto* table = objectOf<AcDbSymbolTable>(record.ownerId());
    if (!table) return true;
    if (!record.objectId().isErased() && !table->isNameFree(record.name(), record.objectId())) {
        record.m_name = oldName;
        return false;
    }
    if (table->isCurrent(record)) table->nameCurrent(record.name());
    table->renamed(record, oldName);
    return true;
}

void DatabaseAccess::forceName(AcDbSymbolTableRecord& record, std::wstring_view name) {
    const std::wstring oldName = std::exchange(record.m_name, std::wstring(name));
    if (auto* table = objectOf<AcDbSymbolTable>(record.ownerId())) table->renamed(record, oldName);
}

AcDbObjectId DatabaseAccess::table(const AcDbDatabase& database, TableKind kind) {
    return database.m_contents->tables[static_cast<std::size_t>(kind)];
}

void DatabaseAccess::setTable(AcDbDatabase& database, TableKind kind, AcDbObjectId id) {
    database.m_contents->tables[static_cast<std::size_t>(kind)] = id;
}

void DatabaseAccess::setNamedObjectsDictionary(AcDbDatabase& database, AcDbObjectId id) {
    database.m_contents->namedObjectsDictionary = id;
}

void DatabaseAccess::setSource(AcDbDatabase& database, std::shared_ptr<const DrawingSource> source,
                               std::wstring_view file) {
    database.m_contents->source = std::move(source);
    database.m_contents->fileName = file;
}

} // namespace hostkit
