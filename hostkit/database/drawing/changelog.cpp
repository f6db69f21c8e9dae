#include "changelog.h"

#include "changeredo.h"
#include "databasecontents.h"
#include "dbdatabase.h"

#include <algorithm>

namespace hostkit {

ChangeLog::ChangeLog(AcDbDatabase& database, DisplayChanges& display)
    : m_database(database)
    , m_display(display) {}
ChangeLog::~ChangeLog() = default;

ChangeLog& ChangeLog::of(const AcDbObject& object) { return DatabaseAccess::changes(*object.database()); }

// What is about to change.

ChangeLog::Entry& ChangeLog::append(Kind kind, AcDbStub* stub) {
    const bool startsGroup =
        m_isRecording && !m_hasOpenGroup && (m_groups.empty() || m_groups.back().isNamed);
    if (startsGroup) m_groups.push_back({std::wstring(), m_entries.size(), false, m_state});
    if (kind != Kind::touch) {
        enterNewState();
        m_redo.clear();
    }
    Entry& entry = m_entries.emplace_back();
    entry.stub = stub;
    entry.kind = kind;
    entry.isSuspended = !m_isRecording;
    return entry;
}

// As long as it is so, the latest first entry of an open that the object has is the present open's.
bool ChangeLog::isToldOf(const AcDbObject& object) {
    return (object.m_flags & (AcDbObject::kRemembered | AcDbObject::kTouched)) != 0;
}

bool ChangeLog::noteOpen(AcDbObject& object, Adesk::UInt8 flag) {
    const bool isFirst = !isToldOf(object);
    object.m_flags |= flag;
    if (isFirst) ++m_openCount;
    return isFirst;
}

// The entry goes: what its open changes from now on is told of anew.
void ChangeLog::forgetOpen(const Entry& firstOfOpen) {
    AcDbObject& object = *firstOfOpen.stub->object;
    if (!isToldOf(object)) return;
    object.m_flags &= static_cast<Adesk::UInt8>(~(AcDbObject::kRemembered | AcDbObject::kTouched));
    if (m_openCount > 0) --m_openCount;
}

void ChangeLog::changing(AcDbObject& object) {
    AcDbStub& stub = *object.m_id.stub();
    const bool isRemembered = stub.epoch == m_epoch;
    if (m_isRestoring || (isRemembered && (object.m_flags & AcDbObject::kRemembered))) return;
    m_display.begins(object);
    auto memory = std::make_unique<StateMemory>(object);
    Entry& entry = append(Kind::state, &stub);
    entry.memory = std::move(memory);
    entry.isRepeated = isRemembered;
    entry.isFirstOfOpen = object.isWriteEnabled() && noteOpen(object, AcDbObject::kRemembered);
    stub.epoch = m_epoch;
}

void ChangeLog::touching(AcDbObject& container) {
    if (isToldOf(container)) return;
    append(Kind::touch, container.m_id.stub()).isFirstOfOpen = true;
    noteOpen(container, AcDbObject::kTouched);
}

void ChangeLog::created(AcDbObject& object) {
    AcDbStub& stub = *object.m_id.stub();
    m_display.begins(object);
    append(Kind::creation, &stub).isFirstOfOpen = true;
    noteOpen(object, AcDbObject::kRemembered);
    stub.epoch = m_epoch;
}

// What came in goes out again before anything else is told of it: its entries are the latest.
void ChangeLog::forgetCreation(AcDbObject& object) noexcept {
    const AcDbStub* const stub = object.m_id.stub();
    bool wasFound = false;
    for (auto entry = m_entries.rbegin(); entry != m_entries.rend() && !wasFound; ++entry) {
        if (entry->stub != stub) continue;
        wasFound = entry->kind == Kind::creation;
        entry->memory.reset();
        entry->kind = Kind::none;
        entry->isFirstOfOpen = false;
        entry->stub = nullptr;
    }
    if (!wasFound || !isToldOf(object)) return;
    object.m_flags &= static_cast<Adesk::UInt8>(~(AcDbObject::kRemembered | AcDbObject::kTouched));
    if (m_openCount > 0) --m_openCount;
}

void ChangeLog::erasing(AcDbObject& object) {
    m_display.begins(object);
    Entry& entry = append(Kind::erasure, object.m_id.stub());
    entry.stubFlags = entry.stub->flags;
    entry.wasModified = object.m_source.isModified();
}

void ChangeLog::entryChanging(AcDbDictionary& dictionary, std::size_t index) {
    if (dictionary.objectId().isNull() || m_isRestoring) return;
    auto memory = std::make_unique<SlotMemory>(dictionary, index);
    Entry& entry = append(Kind::slot, dictionary.objectId().stub());
    entry.index = static_cast<Adesk::UInt32>(index);
    entry.memory = std::move(memory);
}

const AcDbSymbolTable* ChangeLog::tableOfCurrent(std::wstring_view variable) const {
    for (int kind = 0; kind < tableCount; ++kind) {
        const auto* table = DatabaseAccess::objectOf<AcDbSymbolTable>(
            DatabaseAccess::table(m_database, static_cast<TableKind>(kind)));
        const wchar_t* current = table ? table->currentVariable() : nullptr;
        if (current && variable == current) return table;
    }
    return nullptr;
}

void ChangeLog::headerChanging(const HeaderVariables& header, std::wstring_view name) {
    if ((!isNeeded() && m_openCount == 0) || m_isRestoring) return;
    auto memory = std::make_unique<VariableMemory>(header, name, tableOfCurrent(name));
    append(Kind::variable, nullptr).memory = std::move(memory);
}

// It is told for any one object: there is always one, and nothing else of the entry asks for it.
void ChangeLog::sourceChanging() {
    if (m_isRestoring || DatabaseAccess::stubCount(m_database) == 0) return;
    auto memory = std::make_unique<SourceMemory>(m_database);
    append(Kind::source, DatabaseAccess::stubAt(m_database, 0)).memory = std::move(memory);
}

// The end of an open.

void ChangeLog::closed(AcDbObject& object) {
    if (m_openCount > 0) --m_openCount;
    if (!object.isNewObject()) dropOfOpen(object.m_id.stub());
    trim();
    m_display.changed(object);
}

// What only this open could ask for stands near the end, if the open was a short one.
void ChangeLog::dropOfOpen(const AcDbStub* stub) {
    constexpr std::size_t reach = 8;
    const std::size_t last = m_entries.size() - std::min(reach, m_entries.size());
    for (std::size_t i = m_entries.size(); i > last; --i) {
        Entry& entry = m_entries[i - 1];
        if (entry.stub != stub || !(entry.kind == Kind::touch || entry.isRepeated)) continue;
        entry.memory.reset();
        entry.kind = Kind::none;
    }
}

void ChangeLog::trim() {
    if (!isNeeded() && m_openCount == 0) return m_entries.clear();
    for (;;) {
        const std::size_t floor =
            std::max(m_marks.empty() ? 0 : m_marks.back(), m_groups.empty() ? 0 : m_groups.back().start);
        while (m_entries.size() > floor && m_entries.back().kind == Kind::none) m_entries.pop_back();
        const bool isEmptyGroup =
            !m_hasOpenGroup && !m_groups.empty() && m_groups.back().start >= m_entries.size();
        if (!isEmptyGroup) return;
        m_groups.pop_back();
    }
}

// Marks.

void ChangeLog::setMark() {
    ++m_epoch;
    m_marks.push_back(m_entries.size());
}

void ChangeLog::endMark() {
    m_marks.pop_back();
    trim();
}

// The group that is open stays, though it has nothing left.
void ChangeLog::dropGroupsFrom(std::size_t mark) {
    Group open;
    if (m_hasOpenGroup) {
        open = std::move(m_groups.back());
        m_groups.pop_back();
    }
    while (!m_groups.empty() && m_groups.back().start >= mark) m_groups.pop_back();
    if (!m_hasOpenGroup) return;
    open.start = std::min(open.start, m_entries.size());
    m_groups.push_back(std::move(open));
}

// Undo groups.

void ChangeLog::setRecording(bool recording) {
    if (recording != m_isRecording) ++m_epoch;
    m_isRecording = recording;
}

void ChangeLog::beginGroup(std::wstring_view name) {
    if (m_groupDepth++ > 0) return;
    ++m_epoch;
    m_hasOpenGroup = true;
    m_groups.push_back({std::wstring(name), m_entries.size(), true, m_state});
}

void ChangeLog::endGroup() {
    if (m_groupDepth == 0 || --m_groupDepth > 0) return;
    ++m_epoch;
    m_hasOpenGroup = false;
    const auto isChange = [](const Entry& entry) {
        return entry.kind != Kind::none && entry.kind != Kind::touch;
    };
    const auto start = m_entries.begin() + static_cast<std::ptrdiff_t>(m_groups.back().start);
    if (std::none_of(start, m_entries.end(), isChange)) {
        m_state = m_groups.back().stateBefore;
        m_groups.pop_back();
    }
    trim();
}

// Saving.

void ChangeLog::noteSaved() {
    ++m_epoch; // what changes from now on is told of anew
    m_savedState = m_state;
}

} // namespace hostkit
