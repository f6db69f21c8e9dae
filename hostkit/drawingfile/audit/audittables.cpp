// The check of tables: their records, names, and what the header names as current.

#include "auditing.h"

#include <algorithm>

namespace hostkit {

namespace {

struct TableText {
    std::string_view name;
    AuditTable table;
    bool mayShareNames = false;
    bool mayHaveNoName = false;
};
constexpr TableText tableTexts[] = {
    {"VPORT", AuditTable::kOther, true},  {"LTYPE", AuditTable::kLinetype},
    {"LAYER", AuditTable::kLayer},        {"STYLE", AuditTable::kStyle, false, true},
    {"VIEW", AuditTable::kView},          {"UCS", AuditTable::kUcs},
    {"APPID", AuditTable::kApplication},  {"DIMSTYLE", AuditTable::kDimStyle},
    {"BLOCK_RECORD", AuditTable::kBlock},
};

struct Standing {
    AuditTable table;
    std::string_view tableName, name;
};
constexpr Standing standingRecords[] = {
    {AuditTable::kLayer, "LAYER", "0"},
    {AuditTable::kLinetype, "LTYPE", "ByLayer"},
    {AuditTable::kLinetype, "LTYPE", "ByBlock"},
    {AuditTable::kLinetype, "LTYPE", "Continuous"},
    {AuditTable::kBlock, "BLOCK_RECORD", "*Model_Space"},
    {AuditTable::kBlock, "BLOCK_RECORD", "*Paper_Space"},
};

constexpr std::wstring_view forbiddenSigns = L"<>/\\\":;?*|,=`";
constexpr std::size_t longestName = 255;
constexpr std::size_t longestOldName = 31;
constexpr std::int64_t foreignFlag = 16; // comes from an external reference, whose name is divided by a bar

const TableText* tableOf(std::string_view type) {
    for (const TableText& each : tableTexts)
        if (each.name == type) return &each;
    return nullptr;
}

void checkName(AuditRun& run, const AuditContent& content, const AuditRecord& record,
               const AuditGroup& group) {
    const bool isNew = run.drawing.hasMarks() && run.drawing.hasOwners();
    const std::wstring name = AuditNames::charactersOf(group.value);
    const AuditSeverity severity = isNew ? AuditSeverity::kFault : AuditSeverity::kRemark;
    const auto tell = [&](const auto&... pieces) {
        run.findings.tell(AuditCheck::kTable, severity, &record, group.line, pieces...);
    };
    if (name.size() > (isNew ? longestName : longestOldName))
        tell(L"its name has ", name.size(), L" characters, above ", isNew ? longestName : longestOldName);
    const bool isForeign = (content.integer(70).value_or(0) & foreignFlag) != 0;
    for (std::size_t at = 0; at < name.size(); ++at) {
        const bool isControl = name[at] < L' ';
        const bool isSign = forbiddenSigns.find(name[at]) != std::wstring_view::npos;
        const bool isAllowed = (at == 0 && name[at] == L'*') || (name[at] == L'|' && isForeign);
        if (isAllowed || (!isControl && !isSign)) continue;
        const std::wstring what = isControl ? L"a control character" : std::wstring(1, name[at]);
        return tell(L"its name ", group.value, L" holds ", what, L", which names cannot have");
    }
}

void gatherName(AuditRun& run, const AuditContent& content, AuditIndex index, AuditTableNames& names,
                bool mayShare) {
    AuditRecord& record = run.drawing.records[index];
    const AuditGroup* const group = content.find(2);
    const TableText* const table = tableOf(record.type);
    if (!group || group->value.empty()) {
        if (group && !(table && table->mayHaveNoName))
            run.findings.fault(AuditCheck::kTable, &record, group->line, L"its name is empty");
        return;
    }
    record.name = run.drawing.names.idOf(group->value);
    record.nameLine = group->line;
    checkName(run, content, record, *group);
    const auto [place, isNew] = names.try_emplace(record.name, index);
    if (isNew || mayShare) return;
    run.findings.fault(AuditCheck::kTable, &record, group->line, L"its name ", group->value,
                       L" is also that of ", AuditHandleText{run.drawing.records[place->second].handle},
                       L" in line ", run.drawing.records[place->second].line);
}

void checkHeads(AuditRun& run) {
    std::unordered_map<AuditNames::Id, AuditIndex> heads;
    auto& drawing = run.drawing;
    for (const auto& [index, count] : drawing.tableCounts) {
        (void)count;
        const AuditRecord& head = drawing.records[index];
        const auto [place, isNew] = heads.try_emplace(head.name, index);
        if (isNew) continue;
        const AuditRecord& second = drawing.records[std::max(index, place->second)];
        run.findings.fault(AuditCheck::kTable, &second, second.line, L"the table ",
                           drawing.names.spelling(head.name), L" stands twice");
    }
    if (!drawing.hasMarks() || !drawing.isReadWhole || drawing.tableCounts.empty()) return;
    for (const TableText& each : tableTexts)
        if (!heads.contains(drawing.names.idOf(each.name)))
            run.findings.remark(AuditCheck::kTable, nullptr, 0, L"the table ", each.name, L" is missing");
}

std::int64_t uncounted(const AuditedDrawing& drawing, AuditIndex table) {
    const std::string_view name = drawing.names.spelling(drawing.records[table].name);
    return name == "LTYPE" || name == "BLOCK_RECORD" ? 2 : 0;
}

void checkHeadCounts(AuditRun& run) {
    std::unordered_map<AuditIndex, std::int64_t> found;
    auto& drawing = run.drawing;
    for (const AuditRecord& record : drawing.records)
        if (!record.isEntity && record.container != noAuditIndex) ++found[record.container];
    // Programs take the number as a hint of how much room to make. They write ones that are too large, and
    // leave out the two linetypes and the two spaces that are always there.
    for (const auto& [index, told] : drawing.tableCounts)
        if (told && *told + uncounted(drawing, index) < found[index])
            run.findings.remark(AuditCheck::kTable, &drawing.records[index], drawing.records[index].line,
                                L"its group 70 speaks of ", *told, L" records, but ", found[index],
                                found[index] == 1 ? L" follows" : L" follow");
}

} // namespace

void auditTableRecord(AuditRun& run, const AuditContent& content, AuditIndex index) {
    auto& drawing = run.drawing;
    AuditRecord& record = drawing.records[index];
    if (record.type == "TABLE") {
        const AuditGroup* const name = content.find(2);
        record.name = name ? drawing.names.idOf(name->value) : AuditNames::none;
        if (name) drawing.tableCounts.emplace(index, content.integer(70));
    } else if (record.type == "BLOCK") {
        gatherName(run, content, index, drawing.blocks, false);
    } else if (record.type == "INSERT" || record.type == "DIMENSION") {
        const AuditGroup* const block = content.find(2);
        if (block && !block->value.empty()) {
            record.name = drawing.names.idOf(block->value);
            record.nameLine = block->line;
        } else if (record.type == "DIMENSION") {
            run.findings.remark(
                AuditCheck::kBlock, &record, record.line,
                L"it names no block with its picture, group 2; programs that draw by the block lose it");
        }
    } else if (const TableText* const table = tableOf(record.type);
               table && !record.isEntity && !record.isObject) {
        gatherName(run, content, index, drawing.tables[static_cast<std::size_t>(table->table)],
                   table->mayShareNames);
        const AuditGroup* const layout = content.find(340);
        if (table->table == AuditTable::kBlock && layout)
            drawing.layouts.emplace(index, AuditHandleReference{auditHandle(layout->value).value_or(0),
                                                                {},
                                                                index,
                                                                layout->line,
                                                                340,
                                                                AuditLink::kReference});
    }
}

void auditTables(AuditRun& run) {
    checkHeads(run);
    checkHeadCounts(run);
    auto& drawing = run.drawing;
    if (!drawing.hasMarks() || !drawing.isReadWhole) return;
    for (const Standing& each : standingRecords) {
        const auto has = [&](const auto& head) {
            return drawing.names.idOf(each.tableName) == drawing.records[head.first].name;
        };
        const bool isTableThere = std::any_of(drawing.tableCounts.begin(), drawing.tableCounts.end(), has);
        if (isTableThere && drawing.find(each.table, drawing.names.idOf(each.name)) == noAuditIndex)
            run.findings.fault(AuditCheck::kTable, nullptr, 0, L"the table ", each.tableName, L" lacks ",
                               each.name);
    }
}

} // namespace hostkit
