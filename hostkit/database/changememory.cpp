#include "changememory.h"

#include "dbfiler.h"

namespace hostkit {
namespace {

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
    if (!made || kitClass != object.isA()) return;
    kitClass->valueCopier()(*made, object);
    values.reset(static_cast<AcDbObject*>(made.release()));
}

ChangeLog::StateMemory::~StateMemory() = default;

void ChangeLog::StateMemory::putBack(AcDbObject& object) {
    if (!isComplete()) return;
    kitClassOf(object)->valueCopier()(object, *values);
}

ChangeLog::SlotMemory::SlotMemory(const AcDbDictionary& dictionary, std::size_t slot)
    : index(slot) {
    if (slot >= dictionary.m_entries.size()) return;
    earlier = dictionary.m_entries[slot];
    const AcDbObject* named = DatabaseAccess::object(earlier->id);
    wasOwned = named && named->ownerId() == dictionary.objectId();
}

void ChangeLog::SlotMemory::putBack(AcDbDictionary& dictionary) const {
    dictionary.putSlotBack(index, earlier);
    AcDbObject* named = wasOwned ? DatabaseAccess::object(earlier->id) : nullptr;
    if (named && named->ownerId().isNull()) DatabaseAccess::setOwner(*named, dictionary.objectId());
}

ChangeLog::VariableMemory::VariableMemory(const HeaderVariables& header, std::wstring_view variable)
    : name(variable) {
    if (const HeaderVariables::Variable* found = header.find(variable)) earlier = *found;
}

} // namespace hostkit
