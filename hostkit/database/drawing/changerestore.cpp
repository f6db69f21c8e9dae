// What the memory of changes does when a transaction is aborted or an open is cancelled.
#include "changeredo.h"
#include "changesettling.h"

#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dbsymboltable.h"

#include "casefold.h"
#include "ownedlist.h"

#include <algorithm>
#include <unordered_set>

namespace hostkit {

// One entry.

bool ChangeLog::restore(Entry& entry) {
    switch (entry.kind) {
    case Kind::state:
        restoreState(entry);
        break;
    case Kind::creation:
        takeBack(*entry.stub->object);
        break;
    case Kind::erasure:
        restoreErasure(entry);
        break;
    case Kind::slot:
        return static_cast<SlotMemory&>(*entry.memory)
            .putBack(static_cast<AcDbDictionary&>(*entry.stub->object));
    case Kind::variable:
        static_cast<VariableMemory&>(*entry.memory).putBack(m_database.header());
        break;
    case Kind::source:
        static_cast<SourceMemory&>(*entry.memory).putBack(m_database);
        break;
    case Kind::touch:
    case Kind::none:
        break;
    }
    return true;
}

void ChangeLog::restoreState(Entry& entry) { putBack(*entry.stub, static_cast<StateMemory&>(*entry.memory)); }

void ChangeLog::putBack(AcDbStub& stub, const StateMemory& state) {
    state.putBack(*stub.object);
    stub.epoch = 0;
    m_display.restored(stub);
}

void ChangeLog::restoreErasure(Entry& entry) {
    AcDbStub& stub = *entry.stub;
    constexpr Adesk::UInt8 mask = kStubErased | kStubErasedWithOwner;
    if (stub.flags & kStubTakenBack) return;
    stub.flags = static_cast<Adesk::UInt8>((stub.flags & ~mask) | (entry.stubFlags & mask));
    stub.object->m_source.setModified(entry.wasModified);
    m_display.restored(stub);
}

// What came into the drawing leaves it, with all that it owns. The object stays in memory, since others may
// hold it open or name it.
void ChangeLog::takeBack(AcDbObject& object) {
    AcDbStub& stub = *object.m_id.stub();
    if (stub.flags & kStubTakenBack) return;
    const Adesk::UInt8 flags = stub.flags;
    stub.flags = kStubErased | kStubTakenBack;
    m_display.restored(stub);
    AcDbObject* const owner = DatabaseAccess::object(object.m_ownerId);
    const std::size_t place = owner ? owner->takeBack(object.m_id) : notListed;
    if (m_undoing) m_undoing->taken.push_back({&stub, place, flags});
    for (const AcDbObjectId id : ownedBy(object)) takeBack(*DatabaseAccess::object(id));
}

std::vector<AcDbObjectId> ChangeLog::ownedBy(AcDbObject& owner) {
    std::vector<AcDbObjectId> owned;
    owner.listOwned(owned);
    owned.push_back(DatabaseAccess::extensionDictionary(owner));
    std::erase_if(owned, [&](AcDbObjectId id) {
        const AcDbObject* object = DatabaseAccess::object(id);
        return !object || object->m_ownerId != owner.m_id;
    });
    return owned;
}

// Going back to a mark.

void ChangeLog::restoreMark() {
    const std::size_t mark = m_marks.back();
    {
        Restoring restoring(*this);
        Settling settling;
        while (m_entries.size() > mark) {
            Entry& entry = m_entries.back();
            settling.note(entry);
            (void)restore(entry); // back to where nothing stood in the way of the entry
            if (entry.isFirstOfOpen) forgetOpen(entry);
            m_entries.pop_back();
        }
        settling.settle();
        settling.nameCurrent();
    }
    dropGroupsFrom(mark);
    ++m_epoch;
    endMark();
}

// Cancel.

/// What belongs to one open: the object's own changes, what it took in, what was erased or restored along
/// with it. What others did meanwhile to something that the object owns is theirs.
struct ChangeLog::CancelledOpen {
    CancelledOpen(const std::deque<Entry>& entries, const AcDbObject& cancelled)
        : object(cancelled)
        , stub(cancelled.m_id.stub())
        , first(entries.size()) {
        while (first > 0 && !(entries[first - 1].stub == stub && entries[first - 1].isFirstOfOpen)) --first;
        if (first == 0) return;
        hasFirst = true;
        --first;
        for (std::size_t i = first; i < entries.size(); ++i)
            if (isErasureWithOwner(entries[i])) erasedWithOwner.insert(entries[i].stub);
    }
    static bool isErasureWithOwner(const Entry& entry) {
        return entry.kind == Kind::erasure &&
               ((entry.stub->flags | entry.stubFlags) & kStubErasedWithOwner) != 0;
    }
    bool includes(const Entry& entry) const {
        if (!entry.stub || entry.kind == Kind::none) return false;
        if (entry.stub == stub) return true;
        const AcDbStub* owner = entry.stub->object->m_ownerId.stub();
        if (entry.kind == Kind::creation) return owner == stub;
        if (!isErasureWithOwner(entry)) return false;
        while (owner && owner != stub && erasedWithOwner.count(owner) > 0)
            owner = owner->object->m_ownerId.stub();
        return owner == stub;
    }

    const AcDbObject& object;
    const AcDbStub* stub;
    std::size_t first;
    bool hasFirst = false;
    std::unordered_set<const AcDbStub*> erasedWithOwner;
};

Acad::ErrorStatus ChangeLog::refusalOfCancel(const CancelledOpen& open) const {
    const auto* record = AcDbSymbolTableRecord::cast(&open.object);
    std::wstring name = record ? record->name() : std::wstring();
    bool staysErased = open.object.isErased();
    for (std::size_t i = m_entries.size(); i-- > open.first;) {
        const Entry& entry = m_entries[i];
        if (entry.stub != open.stub) continue;
        if (entry.kind == Kind::creation) return Acad::eOk;
        if (entry.kind == Kind::erasure) staysErased = (entry.stubFlags & kStubErased) != 0;
        if (entry.kind != Kind::state) continue;
        const auto& memory = static_cast<const StateMemory&>(*entry.memory);
        if (!memory.isComplete()) return Acad::eNotImplementedYet;
        if (record) name = static_cast<const AcDbSymbolTableRecord&>(*memory.values).name();
    }
    const auto* table = record ? DatabaseAccess::objectOf<AcDbSymbolTable>(record->ownerId()) : nullptr;
    const bool isTaken = table && !staysErased && !table->isNameFree(name, record->objectId());
    return isTaken ? Acad::eDuplicateKey : Acad::eOk;
}

Acad::ErrorStatus ChangeLog::cancel(AcDbObject& object) {
    const CancelledOpen open(m_entries, object);
    if (!open.hasFirst) return Acad::eOk;
    const Acad::ErrorStatus status = refusalOfCancel(open);
    if (status != Acad::eOk) return status;
    const AcDbObjectId owner = object.m_ownerId;
    const auto* record = AcDbSymbolTableRecord::cast(&object);
    auto* table = record ? DatabaseAccess::objectOf<AcDbSymbolTable>(record->ownerId()) : nullptr;
    const bool isCurrent = table && table->isCurrent(*record);
    {
        Restoring restoring(*this);
        for (std::size_t i = m_entries.size(); i-- > open.first;) {
            Entry& entry = m_entries[i];
            if (!open.includes(entry)) continue;
            (void)restore(entry); // nobody else had the entries of a dictionary
            if (entry.isFirstOfOpen) forgetOpen(entry);
            entry.memory.reset();
            entry.kind = Kind::none;
        }
        if (isCurrent && !object.isErased()) table->nameCurrent(record->name());
        if (object.m_ownerId != owner) Settling::dropUnlisted(object); // another open took it out
    }
    object.m_id.stub()->epoch = 0;
    trim();
    return Acad::eOk;
}

} // namespace hostkit
