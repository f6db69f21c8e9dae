// What the memory of changes does when a step that was taken back is done again.
#include "changeredo.h"

#include "changesettling.h"
#include "ownedlist.h"

#include <algorithm>

namespace hostkit {

// Undo.

// Where recording was off, or an object is open and changed, nobody could put back all that was there.
bool ChangeLog::canBeDoneAgain(const Group& group) const {
    const auto start = m_entries.begin() + static_cast<std::ptrdiff_t>(group.start);
    const auto isIncomplete = [](const Entry& entry) {
        if (entry.isSuspended) return true;
        return entry.kind == Kind::state && !static_cast<const StateMemory&>(*entry.memory).isComplete();
    };
    return m_openCount == 0 && std::none_of(start, m_entries.end(), isIncomplete);
}

// What an undo gives back to the dictionary had this owner, or none, while it was out.
std::unique_ptr<ChangeLog::SlotMemory> ChangeLog::oppositeOfSlot(const Entry& entry) {
    const auto& dictionary = static_cast<const AcDbDictionary&>(*entry.stub->object);
    const auto& memory = static_cast<const SlotMemory&>(*entry.memory);
    auto opposite = std::make_unique<SlotMemory>(dictionary, entry.index);
    if (!memory.wasOwned) return opposite;
    opposite->leaving = memory.earlier->id;
    opposite->leavingOwner = DatabaseAccess::object(memory.earlier->id)->ownerId();
    return opposite;
}

// Of what is about to be put back: what is there now.
ChangeLog::Entry ChangeLog::oppositeOf(const Entry& entry) {
    Entry opposite;
    opposite.stub = entry.stub;
    opposite.kind = entry.kind;
    opposite.index = entry.index;
    if (entry.kind == Kind::state) opposite.memory = std::make_unique<StateMemory>(*entry.stub->object);
    if (entry.kind == Kind::slot) opposite.memory = oppositeOfSlot(entry);
    if (entry.kind == Kind::source) opposite.memory = std::make_unique<SourceMemory>(m_database);
    if (entry.kind == Kind::variable) {
        const auto& memory = static_cast<const VariableMemory&>(*entry.memory);
        opposite.memory = std::make_unique<VariableMemory>(m_database.header(), memory.name, memory.table);
    }
    if (entry.kind == Kind::erasure) {
        opposite.stubFlags = entry.stub->flags;
        opposite.wasModified = entry.stub->object->m_source.isModified();
    }
    if (entry.kind == Kind::creation) opposite.index = static_cast<Adesk::UInt32>(m_undoing->taken.size());
    return opposite;
}

void ChangeLog::rememberForRedo(const Group& group, RedoStep& step, const UndoReport& report) {
    const bool isWhole = report.inConflict + report.unfiled + report.keptSuspended == 0;
    if (!isWhole) return m_redo.clear();
    step.group = group;
    step.restored = report.restored;
    const auto isChange = [](const Entry& each) {
        return each.kind != Kind::none && each.kind != Kind::touch;
    };
    step.entries.reserve(static_cast<std::size_t>(std::count_if(
        m_entries.begin() + static_cast<std::ptrdiff_t>(group.start), m_entries.end(), isChange)));
    m_redo.reserve(m_redo.size() + 1);
    for (std::size_t i = group.start; i < m_entries.size(); ++i) {
        Entry& entry = m_entries[i];
        if (!isChange(entry)) continue;
        entry.isFirstOfOpen = false;
        step.entries.push_back(std::move(entry));
        entry.kind = Kind::none;
    }
    m_redo.push_back(std::move(step));
}

// Redo.

std::unordered_set<const AcDbStub*> ChangeLog::remembered() const {
    std::unordered_set<const AcDbStub*> stubs;
    const auto take = [&](const auto& entries) {
        for (const auto& entry : entries) stubs.insert(entry.stub);
    };
    take(m_entries);
    for (const RedoStep& step : m_redo) {
        take(step.entries);
        take(step.opposites);
        take(step.taken);
    }
    return stubs;
}

std::size_t ChangeLog::redoCount() const { return m_redo.size(); }

// In the reverse order of the undo, so that each finds what was there behind its own undoing.
void ChangeLog::restoreOpposites(RedoStep& step) {
    Settling settling;
    for (auto opposite = step.opposites.rbegin(); opposite != step.opposites.rend(); ++opposite) {
        settling.note(*opposite);
        if (opposite->kind != Kind::creation) {
            (void)restore(*opposite); // nothing came between that could stand in the way
            continue;
        }
        for (; step.taken.size() > opposite->index; step.taken.pop_back()) giveBack(step.taken.back());
    }
    settling.settle();
    settling.nameCurrent();
}

void ChangeLog::giveBack(const TakenBack& taken) {
    AcDbObject& object = *taken.stub->object;
    taken.stub->flags = taken.stubFlags;
    taken.stub->epoch = 0;
    AcDbObject* const owner = DatabaseAccess::object(object.m_ownerId);
    if (owner && taken.place != notListed) owner->giveBack(object.m_id, taken.place);
    m_display.restored(*taken.stub);
}

Acad::ErrorStatus ChangeLog::redo(UndoReport& report) {
    if (m_redo.empty() || m_hasOpenGroup || !m_marks.empty()) return Acad::eUndoOperationNotAvailable;
    RedoStep step = std::move(m_redo.back());
    m_redo.pop_back();
    report = {};
    report.name = step.group.name;
    report.restored = step.restored;
    {
        Restoring restoring(*this);
        restoreOpposites(step);
    }
    step.group.start = m_entries.size();
    m_groups.push_back(std::move(step.group));
    std::move(step.entries.begin(), step.entries.end(), std::back_inserter(m_entries));
    m_state = step.stateAfter;
    ++m_epoch;
    return Acad::eOk;
}

} // namespace hostkit
