#include "changesettling.h"

#include "dbsymboltable.h"

#include "casefold.h"

#include <algorithm>

namespace hostkit {

void ChangeLog::Settling::note(const Entry& entry) {
    if (entry.kind == Kind::variable) {
        const auto& memory = static_cast<const VariableMemory&>(*entry.memory);
        if (memory.table) m_variables[memory.table] = memory.meant;
    }
    if (entry.kind != Kind::state && entry.kind != Kind::erasure) return;
    const auto* record = AcDbSymbolTableRecord::cast(entry.stub->object);
    if (!record || !m_noted.insert(entry.stub).second) return;
    const auto* table = DatabaseAccess::objectOf<AcDbSymbolTable>(record->ownerId());
    const bool isCurrent = table && table->isCurrent(*record);
    m_records.push_back({entry.stub, record->name(), record->isErased() != Adesk::kFalse, isCurrent});
}

// Whoever keeps what it had may be in the way of another one that went back.
std::vector<const AcDbStub*> ChangeLog::Settling::settle() {
    std::vector<const AcDbStub*> kept;
    for (;;) {
        const auto odd = std::find_if(m_records.begin(), m_records.end(),
                                      [this](const Before& before) { return isAtOdds(before); });
        if (odd == m_records.end()) return kept;
        keep(*odd);
        kept.push_back(odd->stub);
        m_records.erase(odd);
    }
}

void ChangeLog::Settling::nameCurrent(const std::unordered_set<std::wstring>& kept) const {
    const auto name = [](const AcDbSymbolTable& table, AcDbObjectId id) {
        const auto* record = DatabaseAccess::objectOf<AcDbSymbolTableRecord>(id);
        if (record && !record->isErased() && !table.isCurrent(*record)) table.nameCurrent(record->name());
    };
    for (const auto& [table, meant] : m_variables) name(*table, meant);
    for (const Before& before : m_records) {
        if (!before.wasCurrent) continue;
        const AcDbObject& record = *before.stub->object;
        const auto& table = *DatabaseAccess::objectOf<AcDbSymbolTable>(record.ownerId());
        if (m_variables.count(&table) == 0 && kept.count(table.currentVariable()) > 0)
            name(table, record.objectId());
    }
}

bool ChangeLog::Settling::isAtOdds(const Before& before) const {
    const auto& record = static_cast<const AcDbSymbolTableRecord&>(*before.stub->object);
    const auto* table = DatabaseAccess::objectOf<AcDbSymbolTable>(record.ownerId());
    const bool isAsBefore = !before.wasErased && record.name() == before.name;
    if (!table || isAsBefore || record.isErased() || table->isNameFree(record.name(), record.objectId()))
        return false;
    // Two records of one name that went back together, or that a drawing was read with, are as they were.
    return std::any_of(table->records().begin(), table->records().end(), [&](AcDbObjectId id) {
        const auto* other = DatabaseAccess::objectOf<AcDbSymbolTableRecord>(id);
        return other && other != &record && !other->isErased() && equalFolded(other->name(), record.name()) &&
               other->isChangedSinceRead() && !m_noted.contains(id.stub());
    });
}

void ChangeLog::Settling::keep(const Before& before) {
    auto& record = static_cast<AcDbSymbolTableRecord&>(*before.stub->object);
    if (before.wasErased) return eraseWithOwned(*before.stub);
    DatabaseAccess::forceName(record, before.name);
    DatabaseAccess::markChanged(record);
}

void ChangeLog::Settling::eraseWithOwned(AcDbStub& stub) {
    stub.flags |= kStubErased;
    DatabaseAccess::markChanged(*stub.object);
    for (const AcDbObjectId id : ownedBy(*stub.object)) {
        if (id.isErased()) continue;
        id.stub()->flags |= kStubErasedWithOwner;
        eraseWithOwned(*id.stub());
    }
}

void ChangeLog::Settling::dropUnlisted(AcDbObject& object) {
    const auto* dictionary = DatabaseAccess::objectOf<AcDbDictionary>(object.m_ownerId);
    if (!dictionary) return;
    const auto& entries = dictionary->m_entries;
    if (std::none_of(entries.begin(), entries.end(),
                     [&](const auto& entry) { return entry.id == object.m_id; }))
        object.m_ownerId.setNull();
}

} // namespace hostkit
