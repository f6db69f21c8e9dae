#include "completewriting.h"

#include "classrecords.h"

#include "drawingedits.h"
#include "formtables.h"
#include "modelerstore.h"
#include "recordkinds.h"
#include "sequenceends.h"
#include "sourcegroups.h"

#include "dbblockreference.h"
#include "dbdictionary.h"
#include "dblayout.h"
#include "dbsequenceend.h"
#include "headervariables.h"

#include <algorithm>
#include <array>

namespace hostkit {

namespace {

// The order that readers expect: what others name comes first.
constexpr std::array<TableKind, tableCount> tableOrder = {
    TableKind::kViewport, TableKind::kLinetype, TableKind::kLayer,    TableKind::kTextStyle, TableKind::kView,
    TableKind::kUcs,      TableKind::kRegApp,   TableKind::kDimStyle, TableKind::kBlock};

// A damaged record's name may read so, cut at its NUL; a record written anew with it would end the section.
bool isStructural(std::wstring_view name) {
    constexpr std::wstring_view names[] = {L"SECTION", L"ENDSEC", L"TABLE", L"ENDTAB",
                                           L"BLOCK",   L"ENDBLK", L"EOF"};
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

std::wstring nameInRoot(const AcDbDatabase& database, AcDbObjectId id) {
    const auto* const root = DatabaseAccess::objectOf<AcDbDictionary>(database.namedObjectsDictionaryId());
    wchar_t* found = nullptr;
    if (!root || root->nameAt(id, found) != Acad::eOk) return {};
    std::wstring name = found;
    acutDelString(found);
    return name;
}

// What every later drawing has says nothing that R12 would need: the root with the dictionaries of the
// host's own, and the standing kinds.
bool isStanding(const AcDbDatabase& database, const AcDbObject& object) {
    const std::wstring_view kind = object.dxfName();
    if (isStandingKind(std::string(kind.begin(), kind.end()))) return true;
    const AcDbObjectId root = database.namedObjectsDictionaryId();
    if (object.objectId() == root) return true;
    const auto* const dictionary = AcDbDictionary::cast(&object);
    if (object.ownerId() != root || !dictionary) return false;
    if (object.objectId() == database.groupDictionaryId()) return dictionary->numEntries() == 0;
    const std::wstring name = nameInRoot(database, object.objectId());
    return name.starts_with(L"ACAD_") || name.starts_with(L"AcDb");
}

const AcDbSymbolTable* tableOf(const AcDbDatabase& database, TableKind kind) {
    return static_cast<const AcDbSymbolTable*>(DatabaseAccess::object(DatabaseAccess::table(database, kind)));
}

} // namespace

bool CompleteWriting::fail(Acad::ErrorStatus status, std::wstring message) {
    m_status = status;
    m_message = std::move(message);
    return false;
}

bool CompleteWriting::run(std::string& bytes) {
    const DrawingStyle& style = m_objects.style();
    std::string body;
    const auto source = m_database.source();
    m_objects.keepTrueColors({});
    constexpr std::size_t typicalRecord = 320;
    body.reserve(source ? source->bytes.size() + source->bytes.size() / 4
                        : static_cast<std::size_t>(m_database.approxNumObjects()) * typicalRecord);
    if (!isR12()) {
        appendSectionStart("CLASSES", style, body);
        body += missingClassRecords(m_database, style, {});
        appendGroup(0, "ENDSEC", style, body);
    }
    if (!writeTables(body) || !writeBlocks(body) || !writeEntities(body)) return false;
    if (!writeObjects(body)) return false;
    if (style.version >= DrawingVersion::k2013) body += newModelerStore(m_database, style);
    appendGroup(0, "EOF", style, body);
    if (source || isR12()) body = SourceGroups(m_database, style).complete(body);
    std::string header;
    writeHeader(header); // last, when all handles are given
    bytes = std::move(body);
    bytes.insert(0, header);
    return true;
}

void CompleteWriting::writeHeader(std::string& bytes) {
    const DrawingStyle& style = m_objects.style();
    appendSectionStart("HEADER", style, bytes);
    appendGroup(9, "$ACADVER", style, bytes);
    appendGroup(1, nameOfVersion(style.version), style, bytes);
    const std::wstring page =
        style.text.page() == CodePage::utf8 ? L"ANSI_1252" : nameOfCodePage(style.text.page());
    appendGroup(9, "$DWGCODEPAGE", style, bytes);
    appendText(3, page, style, bytes);
    for (const HeaderVariables::Variable& variable : m_database.header().all()) {
        if (variable.name == L"ACADVER" || variable.name == L"DWGCODEPAGE" || variable.name == L"HANDSEED")
            continue;
        if (isR12() && variable.name == L"HANDLING") continue;
        appendText(9, L"$" + variable.name, style, bytes);
        appendBlock(variable.groups, style, bytes);
    }
    if (isR12()) {
        appendGroup(9, "$HANDLING", style, bytes);
        appendInteger(70, 1, style, bytes);
    }
    appendGroup(9, "$HANDSEED", style, bytes);
    appendHandle(5, m_objects.nextHandle(), style, bytes);
    appendGroup(0, "ENDSEC", style, bytes);
}

bool CompleteWriting::writeTables(std::string& bytes) {
    appendSectionStart("TABLES", m_objects.style(), bytes);
    for (const TableKind kind : tableOrder) {
        const AcDbSymbolTable* const table = tableOf(m_database, kind);
        if (!table || (isR12() && kind == TableKind::kBlock)) continue;
        if (!writeNewTable(kind, *table, m_objects, bytes)) return failWriting();
    }
    appendGroup(0, "ENDSEC", m_objects.style(), bytes);
    return true;
}

bool CompleteWriting::writeEntitiesOf(const AcDbBlockTableRecord& block, std::string& bytes) {
    for (const AcDbObjectId id : block.entities()) {
        const auto* const entity = DatabaseAccess::objectOf<AcDbEntity>(id);
        if (!entity || isLeftOut(*entity)) continue;
        if (isStructural(entity->dxfName())) {
            m_changes.add(entity->dxfName(), {}, entity->handle().value());
            continue;
        }
        if (!writeEntity(*entity, bytes)) return failWriting();
    }
    return true;
}

bool CompleteWriting::writeEntity(const AcDbEntity& entity, std::string& bytes) {
    if (m_open && isOfPartKind(entity) && !writeSequenceEnd(*m_open, m_objects, bytes)) return false;
    if (isR12() && !R12Entities::isKept(entity)) return writeOlder(entity, bytes);
    m_open = hasOpenSequence(entity) ? &entity : nullptr;
    return writeNewEntity(entity, m_objects, bytes);
}

// The first of the new entities takes the handle of the old one over.
bool CompleteWriting::writeOlder(const AcDbEntity& entity, std::string& bytes) {
    if (!m_older) m_older.emplace(m_database);
    const OlderEntities older = m_older->turn(entity);
    const AcDbHandleValue handle = entity.handle().value();
    m_changes.add(entity.dxfName(), older.entities.empty() ? L"" : older.kind, handle);
    AcDbHandleValue next = handle;
    for (const std::unique_ptr<AcDbEntity>& each : older.entities) {
        if (!m_objects.writeNewUnder(*each, next, entity.ownerId(), bytes) || !writeOwnedParts(*each, bytes))
            return false;
        m_open = hasOpenSequence(*each) ? &entity : nullptr;
        next = m_objects.newHandle();
    }
    return true;
}

bool CompleteWriting::writeOwnedParts(const AcDbEntity& entity, std::string& bytes) {
    const SubentityList* const parts = partsOf(entity);
    if (!parts || (parts->count() == 0 && entity.isKindOf(AcDbBlockReference::desc()))) return true;
    for (std::size_t place = 0; place < parts->count(); ++place) {
        AcDbEntity* const part = parts->at(place);
        (void)part->setPropertiesFrom(&entity);
        DatabaseAccess::setOwner(*part, entity.ownerId());
        if (!m_objects.writeNewUnder(*part, m_objects.newHandle(), {}, bytes)) return false;
    }
    AcDbSequenceEnd end;
    (void)end.setPropertiesFrom(&entity);
    DatabaseAccess::setOwner(end, entity.ownerId());
    return m_objects.writeNewUnder(end, m_objects.newHandle(), {}, bytes);
}

// R12 has model space and one sheet.
void CompleteWriting::tellOtherSheet(const AcDbBlockTableRecord& block) {
    for (const AcDbObjectId id : block.entities()) {
        const auto* const entity = DatabaseAccess::objectOf<AcDbEntity>(id);
        if (entity && !entity->isErased()) m_changes.add(entity->dxfName(), {}, entity->handle().value());
    }
}

// The spaces' blocks are empty frames, which R12 does not have.
bool CompleteWriting::writeBlocks(std::string& bytes) {
    appendSectionStart("BLOCKS", m_objects.style(), bytes);
    const AcDbSymbolTable* const table = tableOf(m_database, TableKind::kBlock);
    for (const AcDbObjectId id : table ? table->records() : std::vector<AcDbObjectId>()) {
        const auto* const block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(id);
        if (!block || block->isErased() || (isR12() && isActiveSpace(*block))) continue;
        if (isR12() && block->isLayout()) {
            tellOtherSheet(*block);
            continue;
        }
        std::string entities;
        m_open = nullptr;
        if (!isActiveSpace(*block) && !writeEntitiesOf(*block, entities)) return false;
        if (!writeNewBlock(*block, entities, m_objects, bytes)) return failWriting();
    }
    appendGroup(0, "ENDSEC", m_objects.style(), bytes);
    return true;
}

bool CompleteWriting::writeEntities(std::string& bytes) {
    appendSectionStart("ENTITIES", m_objects.style(), bytes);
    m_open = nullptr;
    for (const AcDbObjectId id : {m_database.modelSpaceId(), m_database.paperSpaceId()}) {
        const auto* const space = DatabaseAccess::objectOf<AcDbBlockTableRecord>(id);
        if (space && !writeEntitiesOf(*space, bytes)) return false;
    }
    appendGroup(0, "ENDSEC", m_objects.style(), bytes);
    return true;
}

void CompleteWriting::tellObjects() {
    DatabaseAccess::forEachObject(m_database, [&](const AcDbObject& object) {
        if (!object.isErased() && isListedObject(object) && !isStanding(m_database, object))
            m_changes.add(object.dxfName(), {}, object.handle().value());
    });
}

// The root comes first: readers find the others through it.
bool CompleteWriting::writeObjects(std::string& bytes) {
    if (isR12()) {
        tellObjects();
        return true;
    }
    appendSectionStart("OBJECTS", m_objects.style(), bytes);
    const AcDbObjectId rootId = m_database.namedObjectsDictionaryId();
    const AcDbObject* const root = DatabaseAccess::object(rootId);
    if (root && !m_objects.writeNew(*root, bytes)) return failWriting();
    bool isGood = true;
    DatabaseAccess::forEachObject(m_database, [&](const AcDbObject& object) {
        if (!isGood || object.isErased() || !isListedObject(object) || object.objectId() == rootId) return;
        isGood = m_objects.writeNew(object, bytes);
    });
    appendGroup(0, "ENDSEC", m_objects.style(), bytes);
    return isGood || failWriting();
}

} // namespace hostkit
