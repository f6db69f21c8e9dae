#include "completewriting.h"

#include "drawingedits.h"
#include "drawingreading.h"

#include "dbdictionary.h"
#include "dblayout.h"
#include "dbopaque.h"
#include "headervariables.h"

#include <algorithm>
#include <array>

namespace hostkit {

namespace {

/// Records that came with a form; all others are as old as R12.
struct KindAge {
    std::wstring_view name;
    DrawingVersion first;
};
constexpr std::array<KindAge, 7> kindAges = {{{L"ELLIPSE", DrawingVersion::kR13},
                                              {L"HATCH", DrawingVersion::kR14},
                                              {L"LWPOLYLINE", DrawingVersion::kR14},
                                              {L"MTEXT", DrawingVersion::kR13},
                                              {L"RAY", DrawingVersion::kR13},
                                              {L"SPLINE", DrawingVersion::kR13},
                                              {L"XLINE", DrawingVersion::kR13}}};

/// Header variables that R12 has, of those that a drawing of ours has.
constexpr std::array<std::wstring_view, 30> r12Variables = {
    L"ATTMODE",  L"AUNITS",    L"AUPREC",    L"ANGBASE",  L"ANGDIR",    L"CECOLOR",   L"CELTYPE", L"CLAYER",
    L"DIMSTYLE", L"ELEVATION", L"EXTMAX",    L"EXTMIN",   L"FILLMODE",  L"INSBASE",   L"LIMMAX",  L"LIMMIN",
    L"LTSCALE",  L"LUNITS",    L"LUPREC",    L"MIRRTEXT", L"ORTHOMODE", L"PDMODE",    L"PDSIZE",  L"PLINEWID",
    L"TEXTSIZE", L"TEXTSTYLE", L"THICKNESS", L"TILEMODE", L"TRACEWID",  L"PELEVATION"};

// The order that readers expect: what others name comes first.
constexpr std::array<TableKind, tableCount> tableOrder = {
    TableKind::kViewport, TableKind::kLinetype, TableKind::kLayer,    TableKind::kTextStyle, TableKind::kView,
    TableKind::kUcs,      TableKind::kRegApp,   TableKind::kDimStyle, TableKind::kBlock};

std::wstring hexadecimal(AcDbHandle handle) {
    wchar_t text[17] = {};
    (void)handle.getIntoAsciiBuffer(text);
    return text;
}

bool isOlderThan(DrawingVersion version, const AcDbObject& object) {
    const auto found = std::find_if(kindAges.begin(), kindAges.end(),
                                    [&](const KindAge& age) { return age.name == object.dxfName(); });
    return found != kindAges.end() && version < found->first;
}

// The dictionaries and layouts that every later drawing has say nothing that R12 would need.
bool isStanding(const AcDbDatabase& database, const AcDbObject& object) {
    if (object.isKindOf(AcDbLayout::desc())) return true;
    const AcDbObjectId id = object.objectId();
    if (id == database.namedObjectsDictionaryId() || id == database.layoutDictionaryId()) return true;
    const auto* const dictionary = AcDbDictionary::cast(&object);
    return dictionary && id == database.groupDictionaryId() && dictionary->numEntries() == 0;
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
    if (!checkContents()) return false;
    const DrawingStyle& style = m_objects.style();
    std::string body;
    const auto source = m_database.source();
    constexpr std::size_t typicalRecord = 320;
    body.reserve(source ? source->bytes.size() + source->bytes.size() / 4
                        : static_cast<std::size_t>(m_database.approxNumObjects()) * typicalRecord);
    if (!isR12()) {
        appendSectionStart("CLASSES", style, body);
        appendGroup(0, "ENDSEC", style, body);
    }
    if (!writeTables(body) || !writeBlocks(body) || !writeEntities(body)) return false;
    if (!isR12() && !writeObjects(body)) return false;
    appendGroup(0, "EOF", style, body);
    std::string header;
    writeHeader(header); // last, when all handles are given
    bytes = std::move(body);
    bytes.insert(0, header);
    return true;
}

// What the file alone knows, and what the form has no record for, would be lost without a word.
bool CompleteWriting::checkContents() {
    const auto source = m_database.source();
    const DrawingVersion version = m_objects.style().version;
    const AcDbObject* refused = nullptr;
    DatabaseAccess::forEachObject(m_database, [&](const AcDbObject& object) {
        if (refused || object.isErased()) return;
        const bool isOpaque =
            object.isKindOf(AcDbOpaqueEntity::desc()) || object.isKindOf(AcDbOpaqueObject::desc());
        const SourceSpan span = object.sourceSpan();
        const bool isOnlyInFile =
            isOpaque || (source && !span.isEmpty() && !object.isKindOf(AcDbSymbolTable::desc()) &&
                         !m_objects.knowsAllGroups(object, source->bytes, span));
        const bool isTooNew = isOlderThan(version, object) ||
                              (isR12() && isListedObject(object) && !isStanding(m_database, object));
        if (isOnlyInFile || isTooNew) refused = &object;
    });
    if (!refused) return true;
    const std::string_view name = nameOfVersion(version);
    return fail(Acad::eNotApplicable,
                std::wstring(refused->dxfName()) + L" " + hexadecimal(refused->handle()) +
                    L" cannot be written in the form " + std::wstring(name.begin(), name.end()));
}

void CompleteWriting::writeHeader(std::string& bytes) {
    const DrawingStyle& style = m_objects.style();
    appendSectionStart("HEADER", style, bytes);
    appendGroup(9, "$ACADVER", style, bytes);
    appendGroup(1, nameOfVersion(style.version), style, bytes);
    const std::wstring page = isUtf8(style.version) ? L"ANSI_1252" : nameOfCodePage(style.text.page());
    appendGroup(9, "$DWGCODEPAGE", style, bytes);
    appendText(3, page, style, bytes);
    for (const HeaderVariables::Variable& variable : m_database.header().all()) {
        if (variable.name == L"ACADVER" || variable.name == L"DWGCODEPAGE" || variable.name == L"HANDSEED")
            continue;
        if (isR12() &&
            std::find(r12Variables.begin(), r12Variables.end(), variable.name) == r12Variables.end())
            continue;
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
        if (entity && !isLeftOut(*entity) && !writeNewEntity(*entity, m_objects, bytes)) return failWriting();
    }
    return true;
}

// The spaces' blocks are empty frames, which R12 does not have.
bool CompleteWriting::writeBlocks(std::string& bytes) {
    appendSectionStart("BLOCKS", m_objects.style(), bytes);
    const AcDbSymbolTable* const table = tableOf(m_database, TableKind::kBlock);
    for (const AcDbObjectId id : table ? table->records() : std::vector<AcDbObjectId>()) {
        const auto* const block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(id);
        if (!block || block->isErased() || (isR12() && isActiveSpace(*block))) continue;
        std::string entities;
        if (!isActiveSpace(*block) && !writeEntitiesOf(*block, entities)) return false;
        if (!writeNewBlock(*block, entities, m_objects, bytes)) return failWriting();
    }
    appendGroup(0, "ENDSEC", m_objects.style(), bytes);
    return true;
}

bool CompleteWriting::writeEntities(std::string& bytes) {
    appendSectionStart("ENTITIES", m_objects.style(), bytes);
    for (const AcDbObjectId id : {m_database.modelSpaceId(), m_database.paperSpaceId()}) {
        const auto* const space = DatabaseAccess::objectOf<AcDbBlockTableRecord>(id);
        if (space && !writeEntitiesOf(*space, bytes)) return false;
    }
    appendGroup(0, "ENDSEC", m_objects.style(), bytes);
    return true;
}

// The root comes first: readers find the others through it.
bool CompleteWriting::writeObjects(std::string& bytes) {
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
