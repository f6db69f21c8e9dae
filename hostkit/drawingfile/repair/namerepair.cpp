// Repair of tables: heads, names, and records that every drawing has.

#include "drawingrepairing.h"
#include "salvagedgroups.h"

#include "auditnames.h"
#include "auditvalues.h"
#include "textencoding.h"

#include <algorithm>

namespace hostkit {

using namespace salvaged;

namespace {

using Group = SalvagedGroup;
using Groups = SalvagedGroups;

constexpr std::size_t longestName = 255;

bool isForbidden(char sign) {
    return static_cast<unsigned char>(sign) < ' ' ||
           std::string_view("<>/\\\":;?*|,=`").find(sign) != std::string_view::npos;
}

// A name that tables take: other signs for those that they do not, and no longer than they have room for.
std::string allowedName(std::string_view name, bool isForeign) {
    std::string result;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const bool isEscape =
            name[i] == '\\' && i + 1 < name.size() && (name[i + 1] == 'U' || name[i + 1] == 'M');
        const bool isAllowed =
            !isForbidden(name[i]) || isEscape || (i == 0 && name[i] == '*') || (name[i] == '|' && isForeign);
        result += isAllowed ? name[i] : '_';
    }
    const std::wstring characters = AuditNames::charactersOf(result);
    if (characters.size() <= longestName) return result;
    while (AuditNames::charactersOf(result).size() > longestName) result.pop_back();
    while (!result.empty() && !isValidUtf8(result) && isValidUtf8(name)) result.pop_back();
    return result;
}

} // namespace

void DrawingRepairing::nameAnew(SalvagedRecord& record, std::string_view name) {
    note(RepairOutcome::kRepaired, &record, L"its name is " + AuditNames::charactersOf(name) + L" now");
    setName(record, name);
}

// Of two with one name the first one stays, and of blocks both.
void DrawingRepairing::repairNames() {
    for (SalvagedTable& table : m_text.tables) {
        std::unordered_set<std::wstring> names;
        const bool mayShare = table.name == "VPORT";
        for (SalvagedRecord& each : table.records) {
            if (each.isGone) continue;
            const std::string_view name = nameOf(each);
            const bool isForeign = name.find('|') != std::string_view::npos;
            std::string allowed = m_form.hasOwners ? allowedName(name, isForeign) : std::string(name);
            if (name.empty() && table.name != "STYLE") allowed = recoveredName(handleText(handleOf(each)));
            if (allowed != name) nameAnew(each, allowed);
            if (allowed.empty() || names.insert(foldedName(allowed)).second || mayShare) continue;
            if (table.name == "BLOCK_RECORD") {
                allowed += '_';
                allowed += handleText(handleOf(each));
                nameAnew(each, allowed);
                names.insert(foldedName(allowed));
                continue;
            }
            each.isGone = true;
            note(RepairOutcome::kLost, &each, L"its name is also that of another one");
        }
        addStanding(table, names);
    }
}

// What every drawing has, as far as the check asks for it.
void DrawingRepairing::addStanding(SalvagedTable& table, const std::unordered_set<std::wstring>& names) {
    struct Standing {
        std::string_view table, name;
        const char* mark;
    };
    constexpr Standing standing[] = {{"LAYER", "0", "AcDbLayerTableRecord"},
                                     {"LTYPE", "ByLayer", "AcDbLinetypeTableRecord"},
                                     {"LTYPE", "ByBlock", "AcDbLinetypeTableRecord"},
                                     {"LTYPE", "Continuous", "AcDbLinetypeTableRecord"},
                                     {"BLOCK_RECORD", "*Model_Space", "AcDbBlockTableRecord"},
                                     {"BLOCK_RECORD", "*Paper_Space", "AcDbBlockTableRecord"}};
    if (!m_form.hasMarks) return;
    for (const Standing& each : standing) {
        if (each.table != table.name || names.contains(foldedName(each.name))) continue;
        Groups own = {{nameCode, each.name}, {70, "0"}};
        if (each.table == "LAYER") own.insert(own.end(), {{62, "7"}, {6, "Continuous"}});
        if (each.table == "LTYPE") own.insert(own.end(), {{3, ""}, {72, "65"}, {73, "0"}, {40, "0.0"}});
        if (each.table == "BLOCK_RECORD") own = {{nameCode, each.name}, {340, "0"}};
        addRecord(table, each.mark, own);
        note(RepairOutcome::kRepaired, &table.records.back(), L"the drawing lacks it");
    }
}

void DrawingRepairing::addRecord(SalvagedTable& table, std::string_view mark, const Groups& own) {
    Groups groups;
    m_text.hasTables = true;
    completeHeads();
    const std::uint64_t wanted =
        m_options.handleOf ? m_options.handleOf(table.name, AuditNames::charactersOf(own.front().value)) : 0;
    if (m_form.hasHandles)
        groups = {{handleCodeOfType(table.name), wanted != 0 ? handleText(wanted) : newHandle()}};
    if (m_form.hasOwners) groups.push_back({ownerCode, handleText(handleOf(table.head))});
    if (m_form.hasMarks) groups.insert(groups.end(), {{markCode, "AcDbSymbolTableRecord"}, {markCode, mark}});
    groups.insert(groups.end(), own.begin(), own.end());
    table.records.push_back(m_text.made(table.name, SalvagedPlace::kTable, groups));
}

void DrawingRepairing::addApplication(std::string_view name) {
    SalvagedTable& table = m_text.table("APPID");
    for (const SalvagedRecord& each : table.records)
        if (!each.isGone && foldedName(nameOf(each)) == foldedName(name)) return;
    addRecord(table, "AcDbRegAppTableRecord", {{nameCode, m_text.kept(std::string(name))}, {70, "0"}});
}

void DrawingRepairing::completeHeads() {
    for (SalvagedTable& each : m_text.tables) {
        if (!each.head.bytes.empty()) continue;
        Groups groups = {{nameCode, each.name}};
        if (m_form.hasHandles) groups.push_back({5, newHandle()});
        if (m_form.hasOwners) groups.push_back({ownerCode, "0"});
        if (m_form.hasMarks) groups.push_back({markCode, "AcDbSymbolTable"});
        groups.push_back({70, m_text.kept(std::to_string(each.records.size()))});
        if (m_form.hasMarks && each.name == "DIMSTYLE") groups.push_back({markCode, "AcDbDimStyleTable"});
        each.head = m_text.made("TABLE", SalvagedPlace::kTable, groups);
        if (!each.records.empty())
            note(RepairOutcome::kRepaired, &each.head, L"the head of the table is missing");
    }
}

} // namespace hostkit
