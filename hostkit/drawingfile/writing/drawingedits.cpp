#include "drawingedits.h"

#include "classrecords.h"
#include "modelerstore.h"
#include "recordkinds.h"
#include "recordrewriting.h"
#include "sequenceends.h"

#include "dbblockbegin.h"
#include "dbblockend.h"
#include "dbblockreference.h"
#include "dblayout.h"
#include "dbsequenceend.h"
#include "groupcodes.h"
#include "headervariables.h"

#include <algorithm>
#include <array>
#include <future>

namespace hostkit {

namespace {

constexpr int nameCode = 2;

std::string nameInRecord(std::string_view bytes, SourceSpan span) {
    GroupScanner scanner(bytes.substr(0, span.offset + span.length), span.offset);
    RawGroup group;
    while (scanner.next(group) == ScanResult::kGroup)
        if (group.code == nameCode) return std::string(group.value);
    return {};
}

// R12 has blocks without records of them, and so have careless programs in later forms.
bool isBlockInFile(const AcDbBlockTableRecord& block) {
    const AcDbObject* const begin = DatabaseAccess::object(block.blockBeginId());
    return begin && !begin->sourceSpan().isEmpty();
}

} // namespace

DrawingEdits::DrawingEdits(const AcDbDatabase& database, const DrawingSource& source, ObjectWriting& objects,
                           RewritingScope scope, unsigned threads)
    : m_database(database)
    , m_source(source)
    , m_objects(objects)
    , m_scope(scope)
    , m_threads(threadsFor(database, threads))
    , m_edits(source.bytes) {}

bool DrawingEdits::fail(Acad::ErrorStatus status, std::wstring message) {
    m_status = status;
    m_message = std::move(message);
    return false;
}

bool DrawingEdits::isNeeded() const {
    if (m_scope != RewritingScope::kChanged) return true;
    const auto& variables = m_database.header().all();
    if (std::any_of(variables.begin(), variables.end(),
                    [](const auto& variable) { return variable.modified; }))
        return true;
    bool isChanged = false;
    DatabaseAccess::forEachObject(m_database, [&](const AcDbObject& object) {
        const bool wasErased = object.isErased() && !object.sourceSpan().isEmpty();
        isChanged = isChanged || object.isChangedSinceRead() || wasErased;
    });
    return isChanged;
}

bool DrawingEdits::run(std::string& bytes) {
    // The map is asked for first when new records are added.
    const auto policy = m_threads == 1 ? std::launch::deferred : std::launch::async | std::launch::deferred;
    std::future<DrawingStructure> map =
        std::async(policy, [&bytes = m_source.bytes] { return mapDrawing(bytes); });
    findReferenceChanges();
    findComing();
    m_objects.follow(&m_changes);
    m_objects.setCopySource(m_source.bytes);
    if (!hasSubclassMarkers(m_objects.style().version) &&
        m_source.bytes.find("\nAcDbEntity") != std::string::npos)
        m_objects.giveMarksInR12();
    m_objects.setHasRecord([this](AcDbObjectId id) { return hasRecord(id); });
    m_objects.keepTrueColors(m_source.bytes);
    const RewritingRules rules{m_database, m_source, m_scope, m_changes, m_holders};
    if (!rewriteRecords(rules, m_objects, m_threads, m_edits, m_recordsCopied)) return failWriting();
    m_structure = map.get();
    addClasses();
    if (!addTableRecords() || !addBlocks() || !addEntities() || !addObjects()) return false;
    editStore();
    editHeader();
    bytes = m_edits.apply();
    return true;
}

// Others refer to records by their names and to objects by their handles: what was renamed or leaves the file
// concerns them all.
void DrawingEdits::findReferenceChanges() {
    DatabaseAccess::forEachObject(m_database, [&](const AcDbObject& object) {
        if (isLeftOut(object) && !object.sourceSpan().isEmpty()) m_changes.remove(object.handle().value());
        const auto* const record = AcDbSymbolTableRecord::cast(&object);
        if (record && (record->isErased() || record->isChangedSinceRead())) findNewName(*record);
    });
}

// The name that the record's users have in the file; empty for a record that the file has not.
std::wstring DrawingEdits::nameInFile(const AcDbSymbolTableRecord& record) const {
    SourceSpan span = record.sourceSpan();
    // R12 has no records of blocks but their beginnings.
    if (const auto* const block = AcDbBlockTableRecord::cast(&record); block && span.isEmpty())
        if (const AcDbObject* const begin = DatabaseAccess::object(block->blockBeginId()))
            span = begin->sourceSpan();
    const DrawingText& text = m_objects.style().text;
    if (!span.isEmpty()) return text.decode(nameInRecord(m_source.bytes, span));
    // A record that the file lacks is named there all the same, by its users.
    const auto given = m_source.given.find(record.handle().value());
    if (given == m_source.given.end()) return {};
    return text.decode(nameInRecord(given->second, {0, static_cast<Adesk::UInt32>(given->second.size())}));
}

void DrawingEdits::findNewName(const AcDbSymbolTableRecord& record) {
    constexpr std::array<std::wstring_view, tableCount> namesOfNone = {
        L"", L"0", L"STANDARD", L"BYLAYER", L"", L"", L"", L"", L"STANDARD"};
    const std::wstring name = nameInFile(record);
    if (name.empty() || (!record.isErased() && name == record.name())) return;
    const auto* const table = DatabaseAccess::objectOf<AcDbSymbolTable>(record.ownerId());
    if (!table) return;
    const bool isTakenByOther = record.isErased() && !table->find(name).isNull();
    for (int index = 0; index < tableCount; ++index) {
        const auto kind = static_cast<TableKind>(index);
        if (DatabaseAccess::table(m_database, kind) != record.ownerId()) continue;
        const std::wstring_view newName = record.isErased() ? namesOfNone[static_cast<std::size_t>(index)]
                                                            : std::wstring_view(record.name());
        m_changes.rename(kind, name, isTakenByOther ? std::wstring_view(name) : newName);
    }
}

// Whether the file that is written has a record of the object, so that others may name it as their owner.
bool DrawingEdits::hasRecord(AcDbObjectId id) const {
    const AcDbObject* const object = DatabaseAccess::object(id);
    if (!object) return true; // a handle that nobody has stays as it was read
    if (isLeftOut(*object)) return false;
    if (!object->sourceSpan().isEmpty()) return true;
    if (const auto* const table = AcDbSymbolTable::cast(object)) return comesIntoFile(*table);
    return comesIntoFile(*object) || object->isKindOf(AcDbEntity::desc());
}

// What the file lacked and was given, and nobody changed since.
bool DrawingEdits::isAsGiven(const AcDbObject& object) const {
    if (!object.isChangedSinceRead()) return true;
    const auto given = m_source.given.find(object.handle().value());
    if (given == m_source.given.end()) return false;
    std::string now;
    ObjectWriting writing(m_database, m_objects.style(), {nullptr, 0, 0.0, 0.0});
    return writing.writeNew(object, now) && now == given->second;
}

// An object that stands in a table, or where others are listed: not an entity, and not a table, which comes
// with its records.
bool DrawingEdits::isOfTheDrawing(const AcDbObject& object) const {
    if (object.isKindOf(AcDbEntity::desc()) || object.isKindOf(AcDbSymbolTable::desc())) return false;
    const auto* const block = AcDbBlockTableRecord::cast(&object);
    return !block || !isBlockInFile(*block);
}

void DrawingEdits::findComing() {
    DatabaseAccess::forEachObject(m_database, [&](const AcDbObject& object) {
        if (object.sourceSpan().isEmpty() && isOfTheDrawing(object) && !isLeftOut(object) &&
            !isAsGiven(object))
            take(object);
    });
}

// With what holds it: its owners, and of a layout the record of its space.
void DrawingEdits::take(const AcDbObject& object) {
    const auto takeHolder = [this](AcDbObjectId id) {
        const AcDbObject* const holder = DatabaseAccess::object(id);
        if (!holder || holder->isKindOf(AcDbSymbolTable::desc())) return;
        if (!holder->sourceSpan().isEmpty())
            m_holders.insert(holder);
        else if (isOfTheDrawing(*holder))
            take(*holder);
    };
    if (!m_coming.insert(&object).second) return;
    takeHolder(object.ownerId());
    if (const auto* const layout = AcDbLayout::cast(&object)) takeHolder(layout->getBlockTableRecordId());
}

std::size_t DrawingEdits::sectionEnd(std::string_view name) const {
    const NamedSpan* const section = m_structure.section(name);
    return section ? section->closing : 0;
}

// The section, or where the drawing lacks it the next one that it has in the usual order.
const NamedSpan* DrawingEdits::sectionFrom(std::string_view name) const {
    constexpr std::string_view order[] = {"CLASSES",  "TABLES",  "BLOCKS",
                                          "ENTITIES", "OBJECTS", "THUMBNAILIMAGE"};
    const NamedSpan* found = m_structure.section(name);
    for (auto next = std::find(std::begin(order), std::end(order), name); !found && next != std::end(order);
         ++next)
        found = m_structure.section(*next);
    return found;
}

// Where the drawing lacks the section it is made, before the one named or at the end.
void DrawingEdits::insertIntoSection(std::string_view section, std::string_view before,
                                     std::string_view text) {
    if (text.empty()) return;
    if (const std::size_t end = sectionEnd(section)) return m_edits.insert(end, text);
    const NamedSpan* const next = sectionFrom(before);
    std::string whole;
    appendSectionStart(section, m_objects.style(), whole);
    whole += text;
    appendGroup(0, "ENDSEC", m_objects.style(), whole);
    m_edits.insert(next ? next->begin : m_structure.endMark, whole);
}

void DrawingEdits::addClasses() {
    const NamedSpan* const section = m_structure.section("CLASSES");
    const std::string_view bytes = m_source.bytes;
    const std::string_view present =
        section ? bytes.substr(section->begin, section->closing - section->begin) : std::string_view();
    insertIntoSection("CLASSES", "TABLES", missingClassRecords(m_database, m_objects.style(), present));
}

bool DrawingEdits::addTableRecords() {
    std::string newTables;
    for (int index = 0; index < tableCount; ++index) {
        const auto kind = static_cast<TableKind>(index);
        const auto* const table = static_cast<const AcDbSymbolTable*>(
            DatabaseAccess::object(DatabaseAccess::table(m_database, kind)));
        if (!table) continue;
        const bool isWithoutRecords =
            kind == TableKind::kBlock && !hasSubclassMarkers(m_objects.style().version);
        if (isWithoutRecords) continue;
        const bool isGood =
            table->sourceSpan().isEmpty() ? addNewTable(kind, *table, newTables) : updateTable(kind, *table);
        if (!isGood) return false;
    }
    insertIntoSection("TABLES", "BLOCKS", newTables);
    return true;
}

// A table that the file lacks comes into it with its first own record; others that the reader gave it come
// along.
bool DrawingEdits::comesIntoFile(const AcDbSymbolTable& table) const {
    return std::any_of(table.records().begin(), table.records().end(), [this](AcDbObjectId id) {
        const AcDbObject* const record = DatabaseAccess::object(id);
        return record && !record->isErased() && comesIntoFile(*record);
    });
}

bool DrawingEdits::addNewTable(TableKind kind, const AcDbSymbolTable& table, std::string& newTables) {
    if (!comesIntoFile(table)) return true;
    return writeNewTable(kind, table, m_objects, newTables) || failWriting();
}

bool DrawingEdits::updateTable(TableKind kind, const AcDbSymbolTable& table) {
    const NamedSpan* const span = m_structure.table(tableName(kind));
    m_text.clear();
    bool isChanged = false;
    std::size_t count = 0;
    for (const AcDbObjectId id : table.records()) {
        const AcDbObject* const record = DatabaseAccess::object(id);
        if (!record) continue;
        const bool isInFile = !record->sourceSpan().isEmpty();
        if (record->isErased())
            isChanged = isChanged || isInFile;
        else if (isInFile)
            ++count;
        if (record->isErased() || isInFile || !comesIntoFile(*record)) continue;
        if (!m_objects.writeNew(*record, m_text)) return failWriting();
        isChanged = true;
        ++count;
    }
    if (kind == TableKind::kRegApp && m_objects.mustRegisterColors()) {
        if (!m_objects.registerColors(table.objectId(), m_text)) return failWriting();
        isChanged = true;
        ++count;
    }
    if (!isChanged || !span) return true;
    m_edits.insert(span->closing, m_text);
    dropGoneFromHead(table);
    const SourceSpan group = tableCountIn(m_source.bytes, table.sourceSpan());
    if (group.isEmpty()) return true;
    m_text.clear();
    appendInteger(tableCountCode, static_cast<std::int64_t>(count), m_objects.style(), m_text);
    m_edits.replace(group.offset, group.offset + group.length, m_text);
    return true;
}

bool DrawingEdits::writeEntitiesOf(const AcDbBlockTableRecord& block, std::string& text) {
    for (const AcDbObjectId id : block.entities()) {
        const auto* const entity = DatabaseAccess::objectOf<AcDbEntity>(id);
        if (entity && !isLeftOut(*entity) && !writeNewEntity(*entity, m_objects, text)) return false;
    }
    return true;
}

// None where the drawing has no table of blocks.
const std::vector<AcDbObjectId>& DrawingEdits::blockRecords() const {
    static const std::vector<AcDbObjectId> none;
    const auto* const table =
        DatabaseAccess::objectOf<AcDbSymbolTable>(DatabaseAccess::table(m_database, TableKind::kBlock));
    return table ? table->records() : none;
}

bool DrawingEdits::addBlocks() {
    std::string blocks;
    std::string entities;
    for (const AcDbObjectId id : blockRecords()) {
        const auto* const block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(id);
        if (!block || !comesIntoFile(*block)) continue;
        entities.clear();
        // The entities of a space have a section of their own.
        if (!isActiveSpace(*block) && !writeEntitiesOf(*block, entities)) return failWriting();
        if (!writeNewBlock(*block, entities, m_objects, blocks)) return failWriting();
    }
    insertIntoSection("BLOCKS", "ENTITIES", blocks);
    return true;
}

bool DrawingEdits::addEntities() {
    for (const AcDbObjectId id : blockRecords()) {
        const auto* const block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(id);
        if (!block || isLeftOut(*block)) continue;
        const bool cameWithBlock = comesIntoFile(*block) && !isActiveSpace(*block);
        if (!cameWithBlock && !addEntitiesOf(*block)) return false;
    }
    return !m_hasStrayParts || endBeforeStrays(m_database, m_source, m_objects, m_edits) || failWriting();
}

bool DrawingEdits::addEntitiesOf(const AcDbBlockTableRecord& block) {
    std::string added;
    for (const AcDbObjectId id : block.entities()) {
        const auto* const entity = DatabaseAccess::objectOf<AcDbEntity>(id);
        if (!entity || isLeftOut(*entity)) continue;
        if (!entity->sourceSpan().isEmpty()) {
            m_hasStrayParts = m_hasStrayParts || isOfPartKind(*entity);
            if (!addParts(*entity)) return false;
        } else if (isNewRecord(*entity) && !writeNewEntity(*entity, m_objects, added)) {
            return failWriting();
        }
    }
    if (added.empty()) return true;
    if (isActiveSpace(block)) {
        insertIntoSection("ENTITIES", "OBJECTS", added);
        return true;
    }
    const AcDbObject* const end = DatabaseAccess::object(block.blockEndId());
    if (!end || end->sourceSpan().isEmpty())
        return fail(Acad::eInvalidInput, L"the block " + block.name() + L" has no place in the file");
    m_edits.insert(end->sourceSpan().offset, added);
    return true;
}

// New parts of an entity that the file has: before the part or the end that follows them, or behind the last
// one.
bool DrawingEdits::addParts(const AcDbEntity& owner) {
    const SubentityList* const parts = partsOf(owner);
    if (!parts) return true;
    std::size_t last = owner.sourceSpan().offset + owner.sourceSpan().length;
    std::string pending;
    for (std::size_t place = 0; place < parts->count(); ++place) {
        const AcDbObject* const part = DatabaseAccess::object(parts->idAt(place));
        if (!part) continue;
        const SourceSpan span = part->sourceSpan();
        if (!span.isEmpty()) {
            if (!pending.empty()) m_edits.insert(span.offset, pending);
            pending.clear();
            last = span.offset + span.length;
        } else if (!part->isErased() && !m_objects.writeNew(*part, pending)) {
            return failWriting();
        }
    }
    if (pending.empty()) return true;
    const AcDbObject* const end = DatabaseAccess::object(parts->sequenceEnd());
    if (!end || end->sourceSpan().isEmpty()) {
        AcDbSequenceEnd own;
        (void)own.setPropertiesFrom(&owner);
        if (!m_objects.writeNewUnder(own, m_objects.newHandle(), owner.objectId(), pending))
            return failWriting();
        m_edits.insert(last, pending);
        // The reference itself says from now on that attributes follow.
        if (owner.differsFromSource() || isWrittenAgain(m_scope, owner)) return true;
        m_text.clear();
        if (!m_objects.writeMerged(owner, m_source.bytes, owner.sourceSpan(),
                                   m_scope == RewritingScope::kChanged, m_text))
            return failWriting();
        m_edits.replace(owner.sourceSpan().offset, owner.sourceSpan().offset + owner.sourceSpan().length,
                        m_text);
        return true;
    }
    m_edits.insert(end->sourceSpan().offset, pending);
    return true;
}

bool DrawingEdits::addObjects() {
    std::string added;
    const bool isR12 = !hasSubclassMarkers(m_objects.style().version);
    const AcDbObject* unholdable = nullptr;
    bool isGood = true;
    DatabaseAccess::forEachObject(m_database, [&](const AcDbObject& object) {
        if (!isGood || unholdable || !isListedObject(object) || !comesIntoFile(object)) return;
        if (isR12)
            unholdable = &object;
        else
            isGood = m_objects.writeNew(object, added);
    });
    if (!isGood) return failWriting();
    if (unholdable)
        return fail(Acad::eNotApplicable, L"a drawing of the R12 form cannot hold a " +
                                              std::wstring(unholdable->dxfName()) +
                                              L"; save it in a later form");
    insertIntoSection("OBJECTS", "THUMBNAILIMAGE", added);
    return true;
}

void DrawingEdits::editStore() {
    if (m_objects.style().version < DrawingVersion::k2013) return;
    const auto leavesFile = [this](std::uint64_t handle) {
        const AcDbObject* const object = DatabaseAccess::object(DatabaseAccess::find(m_database, handle));
        return object && isLeftOut(*object);
    };
    editModelerStore(m_database, m_source.bytes, m_structure, m_objects.style(), leavesFile, m_edits);
}

void DrawingEdits::setHeaderVariable(std::string_view name, std::string_view groups) {
    if (const NamedSpan* const variable = m_structure.headerVariable(name)) {
        // The name's own group stays as it is.
        GroupScanner scanner(m_source.bytes, variable->begin);
        RawGroup group;
        (void)scanner.next(group);
        const std::size_t begin = scanner.offset();
        std::string text;
        bool isWritten = false;
        while (scanner.offset() < variable->end && scanner.next(group) == ScanResult::kGroup) {
            if (group.code == commentCode)
                text.append(group.start, scanner.position());
            else if (!std::exchange(isWritten, true))
                text += groups;
        }
        if (!isWritten) text += groups;
        return m_edits.replace(begin, variable->end, text);
    }
    std::string whole;
    appendGroup(9, name, m_objects.style(), whole);
    whole += groups;
    insertIntoSection("HEADER", m_structure.sections.empty() ? "" : m_structure.sections.front().name, whole);
}

// The variables that name a record follow it to its new name.
void DrawingEdits::renameInHeader() {
    constexpr struct {
        const wchar_t* name;
        TableKind kind;
    } naming[] = {{L"CLAYER", TableKind::kLayer},        {L"CELTYPE", TableKind::kLinetype},
                  {L"TEXTSTYLE", TableKind::kTextStyle}, {L"DIMSTYLE", TableKind::kDimStyle},
                  {L"DIMTXSTY", TableKind::kTextStyle},  {L"DIMBLK", TableKind::kBlock},
                  {L"DIMBLK1", TableKind::kBlock},       {L"DIMBLK2", TableKind::kBlock},
                  {L"DIMLDRBLK", TableKind::kBlock},     {L"DIMLTYPE", TableKind::kLinetype},
                  {L"DIMLTEX1", TableKind::kLinetype},   {L"DIMLTEX2", TableKind::kLinetype}};
    const DrawingStyle& style = m_objects.style();
    for (const auto& [name, kind] : naming) {
        const HeaderVariables::Variable* const variable = m_database.header().find(name);
        const std::wstring* const newName = variable && !variable->modified
                                                ? m_changes.newName(kind, m_database.header().text(name))
                                                : nullptr;
        short code = 0;
        if (!newName || !GroupWalker(variable->groups).peek(code)) continue;
        m_text.clear();
        appendText(code, *newName, style, m_text);
        std::string headerName = "$";
        style.text.encode(name, headerName);
        setHeaderVariable(headerName, m_text);
    }
}

void DrawingEdits::editHeader() {
    const HeaderVariables& header = m_database.header();
    if (m_changes.hasRenamed()) renameInHeader();
    for (const HeaderVariables::Variable& variable : header.all()) {
        if (!variable.modified || variable.name == L"HANDSEED") continue;
        std::string name = "$";
        m_objects.style().text.encode(variable.name, name);
        m_text.clear();
        appendBlock(variable.groups, m_objects.style(), m_text);
        setHeaderVariable(name, m_text);
    }
    const std::uint64_t seed = m_objects.aboveNewRecords();
    const std::uint64_t present = header.handle(L"HANDSEED");
    if (seed == 0 || !m_structure.headerVariable("$HANDSEED") || (present >= seed && present < handleLimit))
        return;
    m_text.clear();
    appendHandle(5, seed, m_objects.style(), m_text);
    setHeaderVariable("$HANDSEED", m_text);
}

} // namespace hostkit
