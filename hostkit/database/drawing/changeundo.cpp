// What the memory of changes does when a step is taken back.
#include "changeredo.h"
#include "changesettling.h"

#include <algorithm>
#include <unordered_set>

namespace hostkit {

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
    std::vector<AcDbStub*> creations; ///< the latest first
    std::vector<AcDbStub*> unlisted;  ///< whose entries of a dictionary did not go back
    Settling settling;

    static std::wstring slotName(const Entry& entry) {
        return std::to_wstring(entry.stub->handle) + L"/" + std::to_wstring(entry.index);
    }
    static const std::wstring& nameOf(const Entry& entry) {
        return static_cast<const VariableMemory&>(*entry.memory).name;
    }
    void add(const Entry& entry) {
        if (entry.kind == Kind::creation) creations.push_back(entry.stub);
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
    report.name = m_groups.back().name;
    RedoStep step;
    step.stateAfter = m_state;
    const bool isRemembered = canBeDoneAgain(m_groups.back());
    takeBackOrLeave(m_groups.back(), report, isRemembered ? &step : nullptr);
    const Group group = std::move(m_groups.back());
    m_groups.pop_back();
    ++m_epoch;
    if (isRemembered)
        rememberForRedo(group, step, report);
    else
        m_redo.clear();
    forgetGroup(group.start);
    const bool isAsBefore = m_entries.size() <= group.start && report.inConflict + report.unfiled == 0;
    if (isAsBefore)
        m_state = group.stateBefore;
    else
        enterNewState();
    trim();
    return Acad::eOk;
}

// All or nothing, where memory is short: what was put back is done again.
void ChangeLog::takeBackOrLeave(const Group& group, UndoReport& report, RedoStep* step) {
    Restoring restoring(*this);
    m_undoing = step;
    try {
        undoGroup(group, report);
    } catch (...) {
        m_undoing = nullptr;
        if (step) restoreOpposites(*step);
        ++m_epoch;
        throw;
    }
    m_undoing = nullptr;
}

// What recording did not see stays in memory. Where an object is open still, so does the mark of where its
// open began: cancel goes back to there.
void ChangeLog::forgetGroup(std::size_t start) {
    std::size_t kept = start;
    for (std::size_t i = start; i < m_entries.size(); ++i) {
        Entry& entry = m_entries[i];
        const bool isChange = entry.kind != Kind::none && entry.kind != Kind::touch;
        if (!entry.isSuspended || !isChange) {
            if (!entry.isFirstOfOpen || !isToldOf(*entry.stub->object)) continue;
            entry.memory.reset();
            entry.kind = Kind::touch;
        }
        if (kept != i) m_entries[kept] = std::move(entry);
        ++kept;
    }
    m_entries.erase(m_entries.begin() + static_cast<std::ptrdiff_t>(kept), m_entries.end());
}

void ChangeLog::undoGroup(const Group& group, UndoReport& report) {
    Suspended later;
    Tally tally;
    for (std::size_t i = m_entries.size(); i-- > group.start;)
        if (m_entries[i].kind != Kind::none && m_entries[i].kind != Kind::touch)
            undoEntry(m_entries[i], later, tally);
    redoSuspended(later, tally);
    takeBackLeftBehind(later);
    for (const AcDbStub* stub : later.settling.settle()) tally.inConflict.objects.insert(stub);
    later.settling.nameCurrent(later.variables);
    for (AcDbStub* stub : later.unlisted) Settling::dropUnlisted(*stub->object);
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
    later.settling.note(entry);
    if (m_undoing) m_undoing->opposites.push_back(oppositeOf(entry));
    if (!restore(entry)) {
        later.unlisted.push_back(static_cast<SlotMemory&>(*entry.memory).earlier->id.stub());
        return tally.inConflict.add(entry);
    }
    (state && !state->isComplete() ? tally.unfiled : tally.restored).add(entry);
}

// What came while recording was off goes with its owner, also where the owner named it no more when it went.
void ChangeLog::takeBackLeftBehind(const Suspended& later) {
    for (auto stub = later.creations.rbegin(); stub != later.creations.rend(); ++stub) {
        AcDbObject& object = *(*stub)->object;
        const AcDbStub* owner = object.m_ownerId.stub();
        if (owner && (owner->flags & kStubTakenBack)) takeBack(object);
    }
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
