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

void ChangeLog::restoreState(Entry& entry) { putBack(*entry.stub, static_cast<StateMemory&>(*entry.memory)); }

// A record that gets its earlier name back is found by that one again.
void ChangeLog::putBack(AcDbStub& stub, const StateMemory& state) {
    auto* record = AcDbSymbolTableRecord::cast(stub.object);
    const std::wstring name = record ? record->name() : std::wstring();
    state.putBack(*stub.object);
    stub.epoch = 0;
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
    /// A change of an object's state: its entry has what was before.
    struct Step {
        Entry* entry;
        StateMemory after;
    };
    std::vector<Step> steps; ///< the latest first
    std::unordered_set<const AcDbStub*> erasures;
    std::unordered_set<std::wstring> variables;
    std::unordered_set<std::wstring> slots;

    static std::wstring slotName(const Entry& entry) {
        return std::to_wstring(entry.stub->handle) + L"/" + std::to_wstring(entry.index);
    }
    static const std::wstring& nameOf(const Entry& entry) {
        return static_cast<const VariableMemory&>(*entry.memory).name;
    }
    void add(const Entry& entry) {
        if (entry.kind == Kind::erasure) erasures.insert(entry.stub);
        if (entry.kind == Kind::slot) slots.insert(slotName(entry));
        if (entry.kind == Kind::variable) variables.insert(nameOf(entry));
    }
    bool hides(const Entry& entry) const {
        if (entry.kind == Kind::erasure) return erasures.count(entry.stub) > 0;
        if (entry.kind == Kind::slot) return !slots.empty() && slots.count(slotName(entry)) > 0;
        return entry.kind == Kind::variable && variables.count(nameOf(entry)) > 0;
    }
};

/// Objects and variables, each once in each list.
struct ChangeLog::Tally {
    struct List {
        std::unordered_set<const AcDbStub*> objects;
        std::unordered_set<std::wstring> variables;

        void add(const Entry& entry) {
            if (entry.stub)
                objects.insert(entry.stub);
            else
                variables.insert(Suspended::nameOf(entry));
        }
        std::size_t count() const { return objects.size() + variables.size(); }
        void remove(const List& other) {
            for (const AcDbStub* each : other.objects) objects.erase(each);
            for (const std::wstring& each : other.variables) variables.erase(each);
        }
        void removeTakenBack() {
            std::erase_if(objects, [](const AcDbStub* stub) { return (stub->flags & kStubTakenBack) != 0; });
        }
    };
    List restored;
    List kept;
    List inConflict;
    List unfiled;

    void report(UndoReport& to) {
        for (List* each : {&kept, &inConflict, &unfiled}) each->removeTakenBack();
        kept.remove(inConflict);
        restored.remove(inConflict);
        restored.remove(unfiled);
        to.restored = restored.count();
        to.keptSuspended = kept.count();
        to.inConflict = inConflict.count();
        to.unfiled = unfiled.count();
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

void ChangeLog::undoGroup(const Group& group, UndoReport& report) {
    Suspended later;
    Tally tally;
    for (std::size_t i = m_entries.size(); i-- > group.start;)
        if (m_entries[i].kind != Kind::none && m_entries[i].kind != Kind::touch)
            undoEntry(m_entries[i], later, tally);
    redoSuspended(later, tally);
    tally.report(report);
}

// States go back whole, step by step; what recording did not see is done again behind the last of them.
void ChangeLog::undoEntry(Entry& entry, Suspended& later, Tally& tally) {
    const auto* state = entry.kind == Kind::state ? static_cast<StateMemory*>(entry.memory.get()) : nullptr;
    if (entry.isSuspended) {
        later.add(entry);
        if (!entry.isTold) tally.kept.add(entry);
        entry.isTold = true;
        if (!state || !state->isComplete()) return;
        later.steps.push_back({&entry, StateMemory(*entry.stub->object)});
        return restoreState(entry);
    }
    if (later.hides(entry)) return tally.inConflict.add(entry);
    restore(entry);
    (state && !state->isComplete() ? tally.unfiled : tally.restored).add(entry);
}

void ChangeLog::redoSuspended(Suspended& later, Tally& tally) {
    for (auto step = later.steps.rbegin(); step != later.steps.rend(); ++step) {
        Entry& entry = *step->entry;
        if (entry.stub->flags & kStubTakenBack) continue;
        const auto& before = static_cast<const StateMemory&>(*entry.memory);
        auto now = std::make_unique<StateMemory>(*entry.stub->object);
        const StateDifference done = before.differenceTo(step->after);
        if (done.overlaps(before.differenceTo(*now))) tally.inConflict.add(entry);
        StateMemory again(*entry.stub->object);
        again.takeParts(step->after, done);
        putBack(*entry.stub, again);
        entry.memory = std::move(now);
    }
}

} // namespace hostkit
