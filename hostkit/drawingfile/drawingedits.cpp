#include "drawingedits.h"

#include "drawingreading.h"

#include "dbblockbegin.h"
#include "dbblockend.h"
#include "dbblockreference.h"
#include "dbsequenceend.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr int nameCode = 2;
constexpr int tableCountCode = 70;

std::string nameInRecord(std::string_view bytes, SourceSpan span) {
    GroupScanner scanner(bytes.substr(0, span.offset + span.length), span.offset);
    RawGroup group;
    while (scanner.next(group) == ScanResult::kGroup)
        if (group.code == nameCode) return std::string(group.value);
    return {};
}

// The block has a layout that the file lacks.
bool hasNewLayout(const AcDbBlockTableRecord& block) {
    const AcDbObject* const layout = DatabaseAccess::object(block.getLayoutId());
    return layout && layout->sourceSpan().isEmpty();
}

} // namespace

void ByteEdits::replace(std::size_t begin, std::size_t end, std::string_view text) {
    m_edits.push_back({begin, end, m_text.size(), m_text.size() + text.size()});
    m_text += text;
}

// Of two replacements that overlap the one that begins first counts.
std::string ByteEdits::apply() {
    std::stable_sort(m_edits.begin(), m_edits.end(), [](const Edit& left, const Edit& right) {
        return left.begin != right.begin ? left.begin < right.begin
                                         : left.end == left.begin && right.end != right.begin;
    });
    std::string result;
    result.reserve(m_bytes.size() + m_text.size());
    std::size_t copied = 0;
    for (const Edit& edit : m_edits) {
        if (edit.begin < copied) continue;
        result += m_bytes.substr(copied, edit.begin - copied);
        result.append(m_text, edit.textBegin, edit.textEnd - edit.textBegin);
        copied = edit.end;
    }
    result += m_bytes.substr(copied);
    return result;
}

DrawingEdits::DrawingEdits(const AcDbDatabase& database, const DrawingSource& source, ObjectWriting& objects,
                           bool everythingFromFields)
    : m_database(database)
    , m_source(source)
    , m_objects(objects)
    , m_everything(everythingFromFields)
    , m_edits(source.bytes) {}

bool DrawingEdits::fail(Acad::ErrorStatus status, std::wstring message) {
    m_status = status;
    m_message = std::move(message);
    return false;
}

bool DrawingEdits::isNeeded() const {
    if (m_everything) return true;
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
    m_structure = mapDrawing(m_source.bytes);
    m_namesChanged = findRenamedRecords();
    m_standingComesAlong = needsStandingObjects();
    bool isGood = true;
    DatabaseAccess::forEachObject(m_database,
                                  [&](const AcDbObject& object) { isGood = isGood && editObject(object); });
    if (!isGood || !addTableRecords() || !addBlocks() || !addEntities() || !addObjects()) return false;
    editHeader();
    bytes = m_edits.apply();
    return true;
}

// Others refer to these records by name: when one has gone or has a new name, so have they to be written
// anew.
bool DrawingEdits::findRenamedRecords() {
    const DrawingText& text = m_objects.style().text;
    bool isFound = false;
    DatabaseAccess::forEachObject(m_database, [&](const AcDbObject& object) {
        const auto* const record = AcDbSymbolTableRecord::cast(&object);
        if (!record || isFound || record->sourceSpan().isEmpty()) return;
        if (!record->isErased() && !record->differsFromSource()) return;
        isFound = record->isErased() ||
                  text.decode(nameInRecord(m_source.bytes, record->sourceSpan())) != record->name();
    });
    return isFound;
}

// The root, which has an entry for the layouts, and the spaces whose layouts come with this save.
bool DrawingEdits::namesStandingObjects(const AcDbObject& object) const {
    if (object.objectId() == m_database.namedObjectsDictionaryId()) return true;
    const auto* const block = AcDbBlockTableRecord::cast(&object);
    return block && hasNewLayout(*block);
}

bool DrawingEdits::mustBeWritten(const AcDbObject& object) const {
    if (m_everything || object.differsFromSource()) return true;
    if (m_standingComesAlong && namesStandingObjects(object)) return true;
    if (m_namesChanged &&
        (object.isKindOf(AcDbEntity::desc()) || object.isKindOf(AcDbSymbolTableRecord::desc())))
        return true;
    // The opening record of a block files the block's own fields.
    if (!object.isKindOf(AcDbBlockBegin::desc())) return false;
    const AcDbObject* const block = DatabaseAccess::object(object.ownerId());
    return block && (block->differsFromSource() && !block->sourceSpan().isEmpty());
}

bool DrawingEdits::editObject(const AcDbObject& object) {
    const SourceSpan span = object.sourceSpan();
    if (span.isEmpty()) return true;
    if (object.isErased()) {
        removeRecord(object);
        return true;
    }
    const AcDbObjectId owner = object.ownerId();
    const bool goesWithOwner = object.isKindOf(AcDbSequenceEnd::desc()) ||
                               object.isKindOf(AcDbBlockBegin::desc()) ||
                               object.isKindOf(AcDbBlockEnd::desc());
    if (goesWithOwner && owner.isErased()) {
        removeRecord(object);
        return true;
    }
    if (object.isKindOf(AcDbSymbolTable::desc()) || !mustBeWritten(object)) {
        ++m_recordsCopied;
        m_objects.passRecord();
        return true;
    }
    m_text.clear();
    if (!m_objects.writeMerged(object, m_source.bytes, span, !m_everything, m_text)) return failWriting();
    m_edits.replace(span.offset, span.offset + span.length, m_text);
    return true;
}

void DrawingEdits::removeRecord(const AcDbObject& object) {
    const SourceSpan span = object.sourceSpan();
    m_edits.replace(span.offset, span.offset + span.length, {});
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

// New records, and with the layouts the records of their spaces.
bool DrawingEdits::comesIntoFile(const AcDbObject& record) const {
    if (isNewRecord(record)) return true;
    const auto* const block = AcDbBlockTableRecord::cast(&record);
    return block && m_standingComesAlong && block->sourceSpan().isEmpty();
}

// A table that the file lacks comes into it with its first own record; others that the reader gave it come
// along.
bool DrawingEdits::addNewTable(TableKind kind, const AcDbSymbolTable& table, std::string& newTables) {
    const bool hasNewRecord =
        std::any_of(table.records().begin(), table.records().end(), [this](AcDbObjectId id) {
            const AcDbObject* const record = DatabaseAccess::object(id);
            return record && !record->isErased() && comesIntoFile(*record);
        });
    if (!hasNewRecord) return true;
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
    if (!isChanged || !span) return true;
    m_edits.insert(span->closing, m_text);
    const SourceSpan head = table.sourceSpan();
    GroupScanner scanner(std::string_view(m_source.bytes).substr(0, head.offset + head.length), head.offset);
    RawGroup group;
    while (scanner.next(group) == ScanResult::kGroup) {
        if (group.code != tableCountCode) continue;
        m_text.clear();
        appendInteger(tableCountCode, static_cast<std::int64_t>(count), m_objects.style(), m_text);
        m_edits.replace(scanner.offsetOf(group.start), scanner.offset(), m_text);
        break;
    }
    return true;
}

bool DrawingEdits::writeEntitiesOf(const AcDbBlockTableRecord& block, std::string& text) {
    for (const AcDbObjectId id : block.entities()) {
        const auto* const entity = DatabaseAccess::objectOf<AcDbEntity>(id);
        if (entity && !entity->isErased() && !writeNewEntity(*entity, m_objects, text)) return false;
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
        if (!block || block->isErased() || !comesIntoFile(*block)) continue;
        entities.clear();
        if (!isNewRecord(*block)) {
            // The entities of a standing space have a section of their own.
            const AcDbObject* const begin = DatabaseAccess::object(block->blockBeginId());
            if (begin && !begin->sourceSpan().isEmpty()) continue;
        } else if (!writeEntitiesOf(*block, entities)) {
            return failWriting();
        }
        if (!writeNewBlock(*block, entities, m_objects, blocks)) return failWriting();
    }
    insertIntoSection("BLOCKS", "ENTITIES", blocks);
    return true;
}

bool DrawingEdits::addEntities() {
    for (const AcDbObjectId id : blockRecords()) {
        const auto* const block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(id);
        if (block && !block->isErased() && !isNewRecord(*block) && !addEntitiesOf(*block)) return false;
    }
    return true;
}

bool DrawingEdits::addEntitiesOf(const AcDbBlockTableRecord& block) {
    std::string added;
    for (const AcDbObjectId id : block.entities()) {
        const auto* const entity = DatabaseAccess::objectOf<AcDbEntity>(id);
        if (!entity || entity->isErased()) continue;
        if (!entity->sourceSpan().isEmpty()) {
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
        if (owner.differsFromSource() || m_everything) return true;
        m_text.clear();
        if (!m_objects.writeMerged(owner, m_source.bytes, owner.sourceSpan(), !m_everything, m_text))
            return failWriting();
        m_edits.replace(owner.sourceSpan().offset, owner.sourceSpan().offset + owner.sourceSpan().length,
                        m_text);
        return true;
    }
    m_edits.insert(end->sourceSpan().offset, pending);
    return true;
}

// What the drawing lacked and was given comes into the file with the records that name it: the root has an
// entry for the layouts, and a space's record the handle of its own.
bool DrawingEdits::needsStandingObjects() const {
    if (!hasSubclassMarkers(m_objects.style().version)) return false;
    const AcDbObject* const root = DatabaseAccess::object(m_database.namedObjectsDictionaryId());
    if (m_everything || (root && root->isChangedSinceRead())) return true;
    return std::any_of(blockRecords().begin(), blockRecords().end(), [](AcDbObjectId id) {
        const auto* const block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(id);
        return block && block->isChangedSinceRead() && hasNewLayout(*block);
    });
}

bool DrawingEdits::addObjects() {
    std::string added;
    const bool isR12 = !hasSubclassMarkers(m_objects.style().version);
    const AcDbObject* unholdable = nullptr;
    bool isGood = true;
    DatabaseAccess::forEachObject(m_database, [&](const AcDbObject& object) {
        if (!isGood || unholdable || object.isErased() || !isListedObject(object) ||
            !object.sourceSpan().isEmpty())
            return;
        if (!m_standingComesAlong && !isNewRecord(object)) return;
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

void DrawingEdits::setHeaderVariable(std::string_view name, std::string_view groups) {
    if (const NamedSpan* const variable = m_structure.headerVariable(name)) {
        // The name's own group stays as it is.
        GroupScanner scanner(m_source.bytes, variable->begin);
        RawGroup group;
        (void)scanner.next(group);
        return m_edits.replace(scanner.offset(), variable->end, groups);
    }
    std::string whole;
    appendGroup(9, name, m_objects.style(), whole);
    whole += groups;
    insertIntoSection("HEADER", m_structure.sections.empty() ? "" : m_structure.sections.front().name, whole);
}

// The variables that name a current record follow it to its new name.
void DrawingEdits::renameInHeader() {
    constexpr struct {
        const wchar_t* name;
        TableKind kind;
        int code;
    } currents[] = {{L"CLAYER", TableKind::kLayer, 8},
                    {L"CELTYPE", TableKind::kLinetype, 6},
                    {L"TEXTSTYLE", TableKind::kTextStyle, 7},
                    {L"DIMSTYLE", TableKind::kDimStyle, 2}};
    const DrawingStyle& style = m_objects.style();
    for (const auto& current : currents) {
        const HeaderVariables::Variable* const variable = m_database.header().find(current.name);
        const auto* const table = static_cast<const AcDbSymbolTable*>(
            DatabaseAccess::object(DatabaseAccess::table(m_database, current.kind)));
        if (!variable || variable->modified || !table) continue;
        const std::wstring name = m_database.header().text(current.name);
        for (const AcDbObjectId id : table->records()) {
            const auto* const record = DatabaseAccess::objectOf<AcDbSymbolTableRecord>(id);
            if (!record || record->isErased() || record->sourceSpan().isEmpty() ||
                !record->isChangedSinceRead())
                continue;
            const std::wstring oldName =
                style.text.decode(nameInRecord(m_source.bytes, record->sourceSpan()));
            if (oldName == record->name() || !equalFolded(oldName, name)) continue;
            m_text.clear();
            appendText(current.code, record->name(), style, m_text);
            std::string headerName = "$";
            style.text.encode(current.name, headerName);
            setHeaderVariable(headerName, m_text);
        }
    }
}

void DrawingEdits::editHeader() {
    const HeaderVariables& header = m_database.header();
    if (m_namesChanged) renameInHeader();
    for (const HeaderVariables::Variable& variable : header.all()) {
        if (!variable.modified || variable.name == L"HANDSEED") continue;
        std::string name = "$";
        m_objects.style().text.encode(variable.name, name);
        m_text.clear();
        appendBlock(variable.groups, m_objects.style(), m_text);
        setHeaderVariable(name, m_text);
    }
    const std::uint64_t seed = m_objects.aboveNewRecords();
    if (!m_structure.headerVariable("$HANDSEED") || header.handle(L"HANDSEED") >= seed) return;
    m_text.clear();
    appendHandle(5, seed, m_objects.style(), m_text);
    setHeaderVariable("$HANDSEED", m_text);
}

} // namespace hostkit
