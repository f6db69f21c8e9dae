// What the memory of changes does when it is asked: cancel, going back to a mark, undo.
#include "changememory.h"
#include "databasecontents.h"
#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dbsymboltable.h"

#include <algorithm>
#include <unordered_set>

namespace hostkit {

// One entry.

void ChangeLog::restore(Entry& entry) {
    switch (entry.kind) {
    case Kind::state:
        return restoreState(entry);
    case Kind::creation:
        return takeBack(*entry.stub->object);
    case Kind::erasure:
        return restoreErasure(entry);
    case Kind::slot:
        return static_cast<SlotMemory&>(*entry.memory)
            .putBack(static_cast<AcDbDictionary&>(*entry.stub->object));
    case Kind::variable:
        return static_cast<VariableMemory&>(*entry.memory).putBack(m_database.header());
    case Kind::touch:
    case Kind::none:
        return;
    }
}

// A record that gets its earlier name back is found by that one again.
void ChangeLog::restoreState(Entry& entry) {
    AcDbObject& object = *entry.stub->object;
    auto* record = AcDbSymbolTableRecord::cast(&object);
    const std::wstring name = record ? record->name() : std::wstring();
    static_cast<StateMemory&>(*entry.memory).putBack(object);
    entry.stub->epoch = 0;
    auto* table = record ? DatabaseAccess::objectOf<AcDbSymbolTable>(record->ownerId()) : nullptr;
    if (table && record->name() != name) table->reindex(*record, name);
}

// A name may have been given away while recording was off: its first owner then stays erased.
void ChangeLog::restoreErasure(Entry& entry) {
    AcDbStub& stub = *entry.stub;
    AcDbObject& object = *stub.object;
    constexpr Adesk::UInt8 mask = kStubErased | kStubErasedWithOwner;
    const bool comesBack = (stub.flags & kStubErased) && !(entry.stubFlags & kStubErased);
    const auto* record = comesBack ? AcDbSymbolTableRecord::cast(&object) : nullptr;
    const auto* table = record ? DatabaseAccess::objectOf<AcDbSymbolTable>(record->ownerId()) : nullptr;
    if (table && !table->isNameFree(record->name(), record->objectId())) return;
    stub.flags = static_cast<Adesk::UInt8>((stub.flags & ~mask) | (entry.stubFlags & mask));
    object.m_source.setModified(entry.wasModified);
}

// What came into the drawing leaves it, with all that it owns. The object stays in memory, since others may
// hold it open or name it.
void ChangeLog::takeBack(AcDbObject& object) {
    AcDbStub& stub = *object.m_id.stub();
    if (stub.flags & kStubTakenBack) return;
    stub.flags = kStubErased | kStubTakenBack;
    AcDbObject* owner = DatabaseAccess::object(object.m_ownerId);
    if (auto* block = AcDbBlockTableRecord::cast(owner))
        block->takeBack(object.m_id);
    else if (auto* table = AcDbSymbolTable::cast(owner))
        table->takeBack(object.m_id);
    else if (auto* entity = AcDbEntity::cast(owner))
        if (SubentityList* list = DatabaseAccess::parts(*entity)) list->takeBack(object.m_id);
    takeBackOwned(object);
}

void ChangeLog::takeBackOwned(AcDbObject& owner) {
    std::vector<AcDbObjectId> owned;
    if (auto* block = AcDbBlockTableRecord::cast(&owner)) owned = block->entities();
    if (auto* dictionary = AcDbDictionary::cast(&owner))
        for (const auto& entry : dictionary->m_entries) owned.push_back(entry.id);
    auto* entity = AcDbEntity::cast(&owner);
    if (SubentityList* list = entity ? DatabaseAccess::parts(*entity) : nullptr)
        for (std::size_t i = 0; i < list->count(); ++i) owned.push_back(list->idAt(i));
    owned.push_back(DatabaseAccess::extensionDictionary(owner));
    for (const AcDbObjectId id : owned) {
        AcDbObject* object = DatabaseAccess::object(id);
        if (object && object->m_ownerId == owner.m_id) takeBack(*object);
    }
}

// Cancel.

// Its own changes; what it took in; what was erased or restored along with it.
bool ChangeLog::isOfOpen(const Entry& entry, const AcDbObject& object) const {
    if (!entry.stub || entry.kind == Kind::none) return false;
    if (entry.stub == object.m_id.stub()) return true;
    const bool isWithOwner = ((entry.stub->flags | entry.stubFlags) & kStubErasedWithOwner) != 0;
    if (entry.kind != Kind::creation && !(entry.kind == Kind::erasure && isWithOwner)) return false;
    for (const AcDbObject* owner = entry.stub->object; owner && owner != &object;) {
        owner = DatabaseAccess::object(owner->m_ownerId);
        if (owner == &object) return true;
    }
    return false;
}

Acad::ErrorStatus ChangeLog::cancel(AcDbObject& object) {
    const AcDbStub* stub = object.m_id.stub();
    std::size_t first = m_entries.size();
    while (first > 0 && !(m_entries[first - 1].stub == stub && m_entries[first - 1].isFirstOfOpen)) --first;
    if (first == 0) return Acad::eOk; // what this open did was taken back already
    --first;
    for (std::size_t i = first; i < m_entries.size(); ++i) {
        const Entry& entry = m_entries[i];
        if (entry.stub == stub && entry.kind == Kind::state &&
            !static_cast<const StateMemory&>(*entry.memory).isComplete())
            return Acad::eNotImplementedYet;
    }
    Restoring restoring(*this);
    for (std::size_t i = m_entries.size(); i-- > first;) {
        Entry& entry = m_entries[i];
        if (!isOfOpen(entry, object)) continue;
        restore(entry);
        entry.memory.reset();
        entry.kind = Kind::none;
    }
    object.m_id.stub()->epoch = 0;
    return Acad::eOk;
}

// Undo.

struct ChangeLog::Suspended {
    std::unordered_set<const AcDbStub*> states;
    std::unordered_set<const AcDbStub*> erasures;
    std::unordered_set<std::wstring> variables;
    std::unordered_set<std::wstring> slots;

    static std::wstring slotName(const Entry& entry) {
        return std::to_wstring(entry.stub->handle) + L"/" + std::to_wstring(entry.index);
    }
    void add(const Entry& entry) {
        if (entry.kind == Kind::state) states.insert(entry.stub);
        if (entry.kind == Kind::erasure) erasures.insert(entry.stub);
        if (entry.kind == Kind::slot) slots.insert(slotName(entry));
        if (entry.kind == Kind::variable) variables.insert(nameOf(entry));
    }
    bool hides(const Entry& entry) const {
        if (entry.kind == Kind::state) return states.count(entry.stub) > 0;
        if (entry.kind == Kind::erasure) return erasures.count(entry.stub) > 0;
        if (entry.kind == Kind::slot) return !slots.empty() && slots.count(slotName(entry)) > 0;
        if (entry.kind == Kind::variable) return variables.count(nameOf(entry)) > 0;
        return false;
    }
    static const std::wstring& nameOf(const Entry& entry) {
        return static_cast<const VariableMemory&>(*entry.memory).name;
    }
};

Acad::ErrorStatus ChangeLog::undo(UndoReport& report) {
    if (m_groups.empty() || m_hasOpenGroup || !m_marks.empty()) return Acad::eUndoOperationNotAvailable;
    report = {};
    const Group group = std::move(m_groups.back());
    m_groups.pop_back();
    report.name = group.name;
    {
        Restoring restoring(*this);
        undoGroup(group, report);
    }
    ++m_epoch;
    const auto start = m_entries.begin() + static_cast<std::ptrdiff_t>(group.start);
    m_entries.erase(std::remove_if(start, m_entries.end(),
                                   [](const Entry& entry) {
                                       return !entry.isSuspended || entry.kind == Kind::none ||
                                              entry.kind == Kind::touch;
                                   }),
                    m_entries.end());
    trim();
    return Acad::eOk;
}

namespace {

/// Objects and variables, each once.
struct Tally {
    std::unordered_set<const AcDbStub*> objects;
    std::unordered_set<std::wstring> variables;
    std::size_t count() const { return objects.size() + variables.size(); }
    void remove(const Tally& other) {
        for (const AcDbStub* each : other.objects) objects.erase(each);
        for (const std::wstring& each : other.variables) variables.erase(each);
    }
};

} // namespace

void ChangeLog::undoGroup(const Group& group, UndoReport& report) {
    Suspended later;
    Tally restored;
    Tally kept;
    Tally inConflict;
    Tally unfiled;
    for (std::size_t i = m_entries.size(); i-- > group.start;) {
        Entry& entry = m_entries[i];
        if (entry.kind == Kind::none || entry.kind == Kind::touch) continue;
        const bool wasTold = entry.isTold;
        const bool isHidden = !entry.isSuspended && later.hides(entry);
        if (entry.isSuspended) later.add(entry);
        entry.isTold = entry.isSuspended;
        const bool isLost =
            entry.kind == Kind::state && !static_cast<StateMemory&>(*entry.memory).isComplete();
        if (!entry.isSuspended && !isHidden) restore(entry);
        if (entry.isSuspended && wasTold) continue;
        Tally& tally = entry.isSuspended ? kept : isHidden ? inConflict : isLost ? unfiled : restored;
        if (entry.stub)
            tally.objects.insert(entry.stub);
        else
            tally.variables.insert(Suspended::nameOf(entry));
    }
    std::erase_if(kept.objects, [](const AcDbStub* stub) { return (stub->flags & kStubTakenBack) != 0; });
    kept.remove(inConflict);
    restored.remove(inConflict);
    for (const AcDbStub* stub : restored.objects)
        if (stub->flags & kStubTakenBack) unfiled.objects.erase(stub);
    restored.remove(unfiled);
    report.restored = restored.count();
    report.keptSuspended = kept.count();
    report.inConflict = inConflict.count();
    report.unfiled = unfiled.count();
}

} // namespace hostkit
