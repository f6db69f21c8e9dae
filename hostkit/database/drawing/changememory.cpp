#include "changememory.h"

#include "groupblock.h"
#include "objectextras.h"

namespace hostkit {
namespace {

/// An object's own members refuse to change what is not open for write.
class Writing {
public:
    explicit Writing(AcDbStub& stub)
        : m_stub(stub)
        , m_mode(stub.openMode) {
        m_stub.openMode |= kOpenForWrite;
    }
    ~Writing() { m_stub.openMode = m_mode; }
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;

private:
    AcDbStub& m_stub;
    Adesk::UInt8 m_mode;
};

/// The nearest class of the kit, from the object's own class up; all of them have a copier.
AcRxClass* kitClassOf(const AcDbObject& object) {
    AcRxClass* cls = object.isA();
    while (!cls->valueCopier()) cls = cls->myParent();
    return cls;
}

} // namespace

ChangeLog::StateMemory::StateMemory(const AcDbObject& object) {
    AcRxClass* kitClass = kitClassOf(object);
    std::unique_ptr<AcRxObject> made(object.isA()->create());
    if (!made) return;
    if (kitClass != object.isA()) {
        const Writing writing(*object.objectId().stub());
        fields = std::make_shared<MemoryDwgFiler>(AcDb::kUndoFiler, object.database());
        if (object.dwgOutFields(fields.get()) != Acad::eOk) return;
    }
    kitClass->valueCopier()(*made, object);
    values.reset(static_cast<AcDbObject*>(made.release()));
}

void ChangeLog::StateMemory::putBack(AcDbObject& object) const {
    if (!isComplete()) return;
    // What a class of an application adds first; the rest is then exact, the mark of change too.
    if (fields) {
        const Writing writing(*object.objectId().stub());
        (void)fields->seek(0, 0);
        (void)object.dwgInFields(fields.get());
    }
    kitClassOf(object)->valueCopier()(object, *values);
}

StateDifference ChangeLog::StateMemory::differenceTo(const StateMemory& other) const {
    static const ObjectExtras none;
    const ObjectExtras& mine = values->m_extras ? *values->m_extras : none;
    const ObjectExtras& its = other.values->m_extras ? *other.values->m_extras : none;
    StateDifference difference;
    difference.extendedData = !(mine.extendedData == its.extendedData);
    difference.extensionDictionary = mine.extensionDictionary != its.extensionDictionary;
    difference.reactors = mine.persistentReactors != its.persistentReactors;
    difference.owner = values->m_ownerId != other.values->m_ownerId;
    MemoryDwgFiler one(AcDb::kUndoFiler);
    MemoryDwgFiler two(AcDb::kUndoFiler);
    if (fields)
        difference.fields = !other.fields || !fields->holdsTheSame(*other.fields);
    else
        difference.fields = values->dwgOutFields(&one) != Acad::eOk ||
                            other.values->dwgOutFields(&two) != Acad::eOk || !one.holdsTheSame(two);
    return difference;
}

void ChangeLog::StateMemory::takeParts(const StateMemory& from, const StateDifference& parts) {
    const auto ties = values->m_extras ? *values->m_extras : ObjectExtras();
    const AcDbObjectId owner = values->m_ownerId;
    if (parts.fields) {
        kitClassOf(*values)->valueCopier()(*values, *from.values);
        fields = from.fields;
    }
    const ObjectExtras its = from.values->m_extras ? *from.values->m_extras : ObjectExtras();
    ObjectExtras& extras = values->extras();
    extras.extendedData = parts.extendedData ? its.extendedData : ties.extendedData;
    extras.extensionDictionary =
        parts.extensionDictionary ? its.extensionDictionary : ties.extensionDictionary;
    extras.persistentReactors = parts.reactors ? its.persistentReactors : ties.persistentReactors;
    values->m_ownerId = parts.owner ? from.values->m_ownerId : owner;
    values->m_source.setModified();
}

ChangeLog::SlotMemory::SlotMemory(const AcDbDictionary& dictionary, std::size_t slot)
    : index(slot) {
    if (slot >= dictionary.m_entries.size()) return;
    earlier = dictionary.m_entries[slot];
    const AcDbObject* named = DatabaseAccess::object(earlier->id);
    wasOwned = named && named->ownerId() == dictionary.objectId();
}

bool ChangeLog::SlotMemory::putBack(AcDbDictionary& dictionary) const {
    if (!dictionary.putSlotBack(index, earlier)) return false;
    AcDbObject* named = wasOwned ? DatabaseAccess::object(earlier->id) : nullptr;
    if (named && named->ownerId().isNull()) DatabaseAccess::setOwner(*named, dictionary.objectId());
    if (AcDbObject* const left = DatabaseAccess::object(leaving))
        DatabaseAccess::setOwner(*left, leavingOwner);
    return true;
}

ChangeLog::VariableMemory::VariableMemory(const HeaderVariables& header, std::wstring_view variable,
                                          const AcDbSymbolTable* records)
    : name(variable)
    , table(records) {
    if (const HeaderVariables::Variable* found = header.find(variable)) earlier = *found;
    if (table) meant = table->find(header.text(variable));
}

ChangeLog::SourceMemory::SourceMemory(const AcDbDatabase& database)
    : source(database.source()) {
    records.reserve(DatabaseAccess::stubCount(database));
    for (std::size_t i = 0, count = DatabaseAccess::stubCount(database); i < count; ++i) {
        const AcDbStub* const stub = DatabaseAccess::stubAt(database, i);
        if (stub->object) records.emplace_back(stub, stub->object->m_source);
    }
}

void ChangeLog::SourceMemory::putBack(AcDbDatabase& database) const {
    DatabaseAccess::setSource(database, source, database.originalFileName());
    for (const auto& [stub, record] : records) stub->object->m_source = record;
}

} // namespace hostkit
