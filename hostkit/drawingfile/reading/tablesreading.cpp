// The symbol tables of a drawing.

#include "drawingreading.h"

#include "dbopaque.h"

#include <algorithm>
#include <array>

namespace hostkit {

namespace {

constexpr int nameCode = 2;

// Records name linetypes and blocks: those are read first, wherever they stand.
constexpr std::array<std::string_view, 3> namedByOthers = {"LTYPE", "BLOCK_RECORD", "STYLE"};

} // namespace

bool DrawingReading::readTables(const RawGroup& opening) {
    std::vector<std::pair<std::string_view, std::size_t>> tables;
    RawGroup group;
    bool awaitsName = false;
    for (;;) {
        if (!next(group)) return false;
        if (group.is(0, "ENDSEC")) break;
        if (group.is(0, "SECTION") || group.is(0, "EOF"))
            return fail(Acad::eBadDxfSequence, opening.start, L"the section of the tables is not closed");
        if (group.code == 0) awaitsName = group.is(0, "TABLE");
        if (awaitsName && group.code == 0) tables.push_back({{}, m_scanner.offsetOf(group.start)});
        if (awaitsName && group.code == nameCode) {
            tables.back().first = withoutBlanks(group.value);
            awaitsName = false;
        }
    }
    std::stable_sort(tables.begin(), tables.end(), [](const auto& left, const auto& right) {
        const auto rank = [](std::string_view name) {
            return std::find(namedByOthers.begin(), namedByOthers.end(), name);
        };
        return rank(left.first) < rank(right.first);
    });
    const std::size_t behind = m_scanner.offset();
    bool hasStanding = false;
    for (const auto& [name, offset] : tables) {
        const bool namesOthers =
            std::find(namedByOthers.begin(), namedByOthers.end(), name) == namedByOthers.end();
        if (namesOthers && !hasStanding) addStandingLinetypes();
        hasStanding = hasStanding || namesOthers;
        if (!readTable(offset)) return false;
    }
    m_scanner = GroupScanner(m_source->bytes, behind);
    return true;
}

// R12 names them without having records of them.
void DrawingReading::addStandingLinetypes() {
    for (const std::wstring_view name : {L"ByBlock", L"ByLayer", L"Continuous"})
        (void)impliedRecord(TableKind::kLinetype, name);
}

bool DrawingReading::readTable(std::size_t offset) {
    m_scanner = GroupScanner(m_source->bytes, offset);
    RawGroup group;
    if (!next(group) || !nextRecord(group)) return false;
    const RecordGroup* const name = m_record.find(nameCode);
    const std::string kindName(name ? withoutBlanks(name->value) : std::string_view());
    const std::optional<TableKind> kind = tableKindOf(kindName);
    if (!kind)
        warn(m_record.begin(), L"the table " + shown(kindName) + L" is not known and was kept as it stands");
    if (kind && !readTableHead(*kind)) return false;
    for (;;) {
        if (!next(group)) return false;
        if (group.code != 0) continue;
        if (group.is(0, "ENDTAB") || group.is(0, "ENDSEC") || group.is(0, "TABLE")) return true;
        if (!nextRecord(group)) return false;
        if (kind && m_record.name() == kindName) {
            if (!readTableRecord(*kind)) return false;
        } else if (!addRead(withFields(makeObject(m_record, m_applications)), {})) {
            return false;
        }
    }
}

AcDbSymbolTable& DrawingReading::tableOf(TableKind kind) {
    AcDbObjectId id = DatabaseAccess::table(m_database, kind);
    if (id.isNull()) {
        id = add(makeTable(kind).release(), 0, {});
        DatabaseAccess::setTable(m_database, kind, id);
    }
    return *static_cast<AcDbSymbolTable*>(DatabaseAccess::object(id));
}

// A second table of a kind adds its records to the first; its head stays in the file alone.
bool DrawingReading::readTableHead(TableKind kind) {
    if (!DatabaseAccess::table(m_database, kind).isNull()) {
        warn(m_record.begin(), L"a second table of this kind: its records are added to the first");
        return true;
    }
    const AcDbObject* const table = addRead(withFields(makeTable(kind)), {});
    if (!table) return false;
    if (table->isKindOf(AcDbSymbolTable::desc()))
        DatabaseAccess::setTable(m_database, kind, table->objectId());
    return true;
}

bool DrawingReading::readTableRecord(TableKind kind) {
    AcDbSymbolTable& table = tableOf(kind);
    AcDbObject* const object = addRead(withFields(makeTableRecord(kind)), table.objectId());
    if (!object) return false;
    if (auto* const record = AcDbSymbolTableRecord::cast(object)) DatabaseAccess::enterRecord(table, *record);
    return true;
}

AcDbSymbolTableRecord& DrawingReading::impliedRecord(TableKind kind, std::wstring_view name) {
    AcDbSymbolTable& table = tableOf(kind);
    const AcDbObjectId present = table.find(name);
    if (!present.isNull()) return *static_cast<AcDbSymbolTableRecord*>(DatabaseAccess::object(present));
    AcDbSymbolTableRecord* const record = makeTableRecord(kind).release();
    DatabaseAccess::setRecordName(*record, name);
    (void)add(record, 0, table.objectId());
    DatabaseAccess::enterRecord(table, *record);
    return *record;
}

} // namespace hostkit
