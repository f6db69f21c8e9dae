#include "usegraph.h"

#include "objectwriting.h"

#include "dbblocktablerecord.h"
#include "dbsymboltable.h"
#include "groupcodes.h"
#include "headervariables.h"

namespace hostkit {

namespace {

constexpr short nameCode = 2;

bool refers(int code) {
    return (code >= 320 && code <= 369) || (code >= 390 && code <= 399) || code == 480 || code == 481 ||
           code == 1005;
}

// Arrows are named with and without it.
constexpr wchar_t arrowSign = L'_';

} // namespace

UseGraph::UseGraph(const AcDbDatabase& database, std::vector<UseCandidate> candidates)
    : m_database(database)
    , m_candidates(std::move(candidates))
    , m_uses(m_candidates.size()) {
    for (Index i = 0; i < m_candidates.size(); ++i) m_places.emplace(m_candidates[i].id.stub(), i);
    const auto source = database.source();
    const DrawingStyle style = styleOf(source.get());
    m_text = style.text;
    enterNames();
    ObjectWriting writing(database, style, {nullptr, 0, 0.0, 0.0});
    if (source) writing.setCopySource(source->bytes);
    DatabaseAccess::forEachObject(database, [&](const AcDbObject& object) {
        if (m_isWhole && !isLeftOut(object) && !object.isKindOf(AcDbSymbolTable::desc()))
            look(object, writing);
    });
    lookAtHeader();
}

void UseGraph::enterName(Index candidate, std::wstring_view name) {
    if (name.empty()) return;
    std::vector<Index>& bearers =
        m_byName[static_cast<std::size_t>(m_candidates[candidate].kind)][std::wstring(name)];
    if (bearers.empty() || bearers.back() != candidate) bearers.push_back(candidate);
}

// A record that was renamed is named as before by records that nobody changed since.
void UseGraph::enterNames() {
    const auto source = m_database.source();
    for (Index i = 0; i < m_candidates.size(); ++i) {
        const UseCandidate& candidate = m_candidates[i];
        enterName(i, candidate.name);
        const bool isArrow = candidate.kind == NamedKind::kBlock && candidate.name.starts_with(arrowSign);
        if (isArrow) enterName(i, std::wstring_view(candidate.name).substr(1));
        const AcDbObject* object = DatabaseAccess::object(candidate.id);
        const auto* const block = AcDbBlockTableRecord::cast(object);
        if (block && object->sourceSpan().isEmpty()) object = DatabaseAccess::object(block->blockBeginId());
        if (!source || !object || object->sourceSpan().isEmpty() || candidate.kind == NamedKind::kEntry)
            continue;
        const SourceSpan span = object->sourceSpan();
        scanRecordAt(source->bytes, span.offset, span.length, m_record);
        if (const RecordGroup* const name = m_record.find(nameCode)) enterName(i, m_text.decode(name->value));
    }
}

UseGraph::Index UseGraph::candidateOf(AcDbObjectId id) const {
    const auto found = m_places.find(id.stub());
    return found == m_places.end() ? outside : found->second;
}

// The nearest one that owns it.
UseGraph::Index UseGraph::candidateOf(const AcDbObject& object) const {
    // Blocks and dictionaries are some five deep; what goes on longer goes in a circle.
    constexpr int deepest = 1000;
    const AcDbObject* each = &object;
    for (int depth = 0; each && depth < deepest; ++depth) {
        if (const Index found = candidateOf(each->objectId()); found != outside) return found;
        each = DatabaseAccess::object(each->ownerId());
    }
    return outside;
}

void UseGraph::look(const AcDbObject& object, ObjectWriting& writing) {
    const SourceSpan span = object.sourceSpan();
    const auto source = m_database.source();
    m_user = candidateOf(object);
    if (!span.isEmpty() && !object.differsFromSource()) return lookAtRecord(object, source->bytes, span);
    m_written.clear();
    m_isWhole = span.isEmpty() ? writing.writeNew(object, m_written)
                               : writing.writeMerged(object, source->bytes, span, false, m_written);
    if (m_isWhole && !m_written.empty())
        lookAtRecord(object, m_written, {0, static_cast<Adesk::UInt32>(m_written.size())});
}

void UseGraph::lookAtRecord(const AcDbObject& object, std::string_view bytes, SourceSpan span) {
    scanRecordAt(bytes, span.offset, span.length, m_record);
    readHead(m_record, m_head);
    std::string_view application;
    for (std::size_t i = 1; i < m_record.groups.size(); ++i) {
        const RecordGroup& group = m_record.groups[i];
        if (group.part >= headPart && group.part <= dictionaryPart) continue;
        if (group.code == applicationCode) application = withoutBlanks(group.value);
        lookAtGroup(object, group, application);
    }
}

void UseGraph::lookAtGroup(const AcDbObject& object, const RecordGroup& group, std::string_view application) {
    if (refers(group.code)) useHandle(object, handleFromText(group.value).value_or(0));
    const NamedKinds kinds = group.code >= firstExtendedCode ? namedByExtendedData(application, group.code)
                                                             : namedBy(m_record.name(), group.code);
    if (kinds != 0) useNames(kinds, withoutBlanks(group.value));
}

void UseGraph::useHandle(const AcDbObject& object, std::uint64_t handle) {
    if (handle == 0) return;
    const AcDbObjectId id = DatabaseAccess::find(m_database, handle);
    const AcDbObject* const target = DatabaseAccess::object(id);
    if (!target || target->isErased()) return;
    // Who owns a candidate does not use it.
    if (target->ownerId() != object.objectId()) use(candidateOf(id));
    // A group is used for its members.
    if (m_user != outside && m_candidates[m_user].id == object.objectId() && m_record.name() == "GROUP")
        m_candidates[m_user].isUsed = true;
}

void UseGraph::useNames(NamedKinds kinds, std::string_view value) {
    for (std::size_t kind = 0; kind < namedKindCount; ++kind) {
        if ((kinds >> kind & 1U) == 0 || m_byName[kind].empty()) continue;
        const auto [place, isNew] = m_known[kind].try_emplace(std::string(value), nullptr);
        if (isNew)
            if (const auto found = m_byName[kind].find(m_text.decode(value)); found != m_byName[kind].end())
                place->second = &found->second;
        if (!place->second) continue;
        for (const Index each : *place->second) use(each);
    }
}

void UseGraph::useNames(NamedKinds kinds, std::wstring_view name) {
    for (std::size_t kind = 0; kind < namedKindCount; ++kind) {
        if ((kinds >> kind & 1U) == 0) continue;
        const auto found = m_byName[kind].find(name);
        if (found == m_byName[kind].end()) continue;
        for (const Index each : found->second) use(each);
    }
}

void UseGraph::use(Index candidate) {
    if (candidate == outside || candidate == m_user) return;
    if (m_user == outside)
        m_candidates[candidate].isUsed = true;
    else
        m_uses[m_user].push_back(candidate);
}

void UseGraph::lookAtHeader() {
    m_user = outside;
    for (const HeaderVariables::Variable& variable : m_database.header().all()) {
        const NamedKinds kinds = namedByHeader(variable.name);
        GroupWalker walker(variable.groups);
        AcDbDxfGroup group;
        while (walker.next(group)) {
            if (group.kind == AcDb::GroupKind::kText && kinds != 0) useNames(kinds, group.text);
            if (group.kind == AcDb::GroupKind::kHandle && variable.name != L"HANDSEED")
                use(candidateOf(DatabaseAccess::find(m_database, group.handle())));
        }
    }
}

std::vector<bool> UseGraph::referredTo() const {
    std::vector<bool> result(m_candidates.size());
    for (Index i = 0; i < m_candidates.size(); ++i) {
        if (m_candidates[i].isUsed) result[i] = true;
        for (const Index used : m_uses[i]) result[used] = true;
    }
    return result;
}

std::vector<bool> UseGraph::reached() const {
    std::vector<bool> result(m_candidates.size());
    std::vector<Index> waiting;
    const auto reach = [&](Index candidate) {
        if (result[candidate]) return;
        result[candidate] = true;
        waiting.push_back(candidate);
    };
    for (Index i = 0; i < m_candidates.size(); ++i)
        if (m_candidates[i].isUsed) reach(i);
    while (!waiting.empty()) {
        const Index user = waiting.back();
        waiting.pop_back();
        for (const Index used : m_uses[user]) reach(used);
    }
    return result;
}

} // namespace hostkit
