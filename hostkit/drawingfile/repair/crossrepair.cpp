// Repair of what records say of each other: handles, owners, names, blocks, dictionaries, the header.

#include "drawingrepairing.h"

#include "auditnames.h"
#include "auditvalues.h"
#include "casefold.h"
#include "textencoding.h"

#include <algorithm>
#include <map>

namespace hostkit {

namespace {

using Group = SalvagedGroup;
using Groups = SalvagedGroups;

constexpr int nameCode = 2;
constexpr int variableCode = 9;
constexpr int markCode = 100;
constexpr int controlCode = 102;
constexpr int ownerCode = 330;
constexpr std::size_t longestName = 255;

int handleCodeOf(std::string_view type) { return type == "DIMSTYLE" ? 105 : 5; }

bool isDictionary(std::string_view type) { return type == "DICTIONARY" || type == "ACDBDICTIONARYWDFLT"; }

/// Walks the groups before the first class mark that are not in an application's.
template <class Look>
void forHead(const Groups& groups, Look&& look) {
    bool isInControl = false;
    for (std::size_t i = 0; i < groups.size() && groups[i].code != markCode && groups[i].code < 1000; ++i) {
        if (groups[i].code == controlCode) isInControl = groups[i].value.starts_with('{');
        if (!isInControl && groups[i].code != controlCode && !look(i)) return;
    }
}

constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

std::size_t inHead(const Groups& groups, int code) {
    std::size_t found = nowhere;
    forHead(groups, [&](std::size_t at) {
        if (groups[at].code != code) return true;
        found = at;
        return false;
    });
    return found;
}

// Where the class marks begin.
std::size_t headEnd(const Groups& groups) {
    const auto mark =
        std::find_if(groups.begin(), groups.end(), [](const Group& each) { return each.code == markCode; });
    return static_cast<std::size_t>(mark - groups.begin());
}

bool isKnownForm(std::string_view name) {
    constexpr std::string_view known[] = {
        "AC1.2",  "AC1.40", "AC1.50", "AC2.10", "AC2.21", "AC2.22", "AC1001", "AC1002", "AC1003", "AC1004",
        "AC1006", "AC1009", "AC1012", "AC1014", "AC1015", "AC1018", "AC1021", "AC1024", "AC1027", "AC1032"};
    return std::find(std::begin(known), std::end(known), name) != std::end(known);
}

std::wstring foldedName(std::string_view name) {
    std::wstring folded = AuditNames::charactersOf(name);
    for (wchar_t& each : folded) each = foldCase(each);
    return folded;
}

// The group of a layout that leads to its space.
std::size_t spaceIn(const Groups& groups) {
    bool isBehind = false;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (groups[i].code == markCode) isBehind = groups[i].value == "AcDbLayout";
        if (isBehind && groups[i].code == ownerCode) return i;
    }
    return nowhere;
}

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

// What a record says of itself.

std::uint64_t DrawingRepairing::handleOf(const SalvagedRecord& record) const {
    const Groups groups = SalvagedText::groupsOf(record);
    const std::size_t at = inHead(groups, handleCodeOf(record.type));
    return at == nowhere ? 0 : auditHandle(groups[at].value).value_or(0);
}

std::uint64_t DrawingRepairing::ownerOf(const SalvagedRecord& record) const {
    const Groups groups = SalvagedText::groupsOf(record);
    const std::size_t at = inHead(groups, ownerCode);
    return at == nowhere ? 0 : auditHandle(groups[at].value).value_or(0);
}

std::string_view DrawingRepairing::handleText(std::uint64_t handle) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    do {
        text.insert(text.begin(), digits[handle & 15]);
        handle >>= 4;
    } while (handle != 0);
    return m_text.kept(std::move(text));
}

std::string_view DrawingRepairing::newHandle() { return handleText(m_nextHandle++); }

void DrawingRepairing::setHandle(SalvagedRecord& record, std::uint64_t handle) {
    Groups groups = SalvagedText::groupsOf(record);
    const int code = handleCodeOf(record.type);
    if (const std::size_t at = inHead(groups, code); at != nowhere)
        groups[at].value = handleText(handle);
    else
        groups.insert(groups.begin() +
                          (record.type == "TABLE" && !groups.empty() && groups[0].code == nameCode),
                      {code, handleText(handle)});
    m_text.setGroups(record, groups);
}

void DrawingRepairing::setOwner(SalvagedRecord& record, std::uint64_t owner) {
    Groups groups = SalvagedText::groupsOf(record);
    const std::size_t at = inHead(groups, ownerCode);
    if (at != nowhere && auditHandle(groups[at].value) == owner) return;
    if (at != nowhere)
        groups[at].value = handleText(owner);
    else
        groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(headEnd(groups)),
                      {ownerCode, handleText(owner)});
    m_text.setGroups(record, groups);
}

std::string_view DrawingRepairing::nameOf(const SalvagedRecord& record) const {
    for (const Group& each : SalvagedText::groupsOf(record))
        if (each.code == nameCode) return each.value;
    return {};
}

void DrawingRepairing::setName(SalvagedRecord& record, std::string_view name) {
    Groups groups = SalvagedText::groupsOf(record);
    const std::string_view keptName = m_text.kept(std::string(name));
    bool isSet = false;
    for (Group& each : groups)
        if (each.code == nameCode || (record.type == "BLOCK" && each.code == 3)) {
            each.value = keptName;
            isSet = isSet || each.code == nameCode;
        }
    const auto extended =
        std::find_if(groups.begin(), groups.end(), [](const Group& each) { return each.code >= 1000; });
    if (!isSet) groups.insert(extended, {nameCode, keptName});
    m_text.setGroups(record, groups);
}

DrawingRepairing::ByHandle DrawingRepairing::byHandle() {
    ByHandle records;
    m_text.forEach([&](SalvagedRecord& each) { records.emplace(handleOf(each), &each); });
    return records;
}

std::unordered_map<std::wstring, SalvagedRecord*> DrawingRepairing::blockRecords() {
    std::unordered_map<std::wstring, SalvagedRecord*> records;
    for (SalvagedRecord& each : m_text.table("BLOCK_RECORD").records)
        if (!each.isGone) records.emplace(foldedName(nameOf(each)), &each);
    return records;
}

// What frames the records.

// A header that is lost: the form is told by the records.
void DrawingRepairing::findForm() {
    int form = 0;
    bool isNamed = false;
    for (const Group& each : m_text.header) {
        if (each.code == variableCode) isNamed = each.value == "$ACADVER";
        if (isNamed && each.code == 1 && each.value.starts_with("AC"))
            form = static_cast<int>(auditInteger(each.value.substr(2)).value_or(0));
    }
    if (form == 0) {
        bool hasMarks = false;
        bool isUtf8 = true;
        m_text.forEach([&](const SalvagedRecord& each) {
            hasMarks = hasMarks || each.bytes.find("AcDb") != std::string_view::npos;
            isUtf8 = isUtf8 && isValidUtf8(each.bytes);
        });
        form = !hasMarks ? 1009 : isUtf8 ? 1027 : 1015;
        const std::string name = form == 1009 ? "AC1009" : "AC" + std::to_string(form);
        m_text.header.insert(m_text.header.begin(), {{variableCode, "$ACADVER"}, {1, m_text.kept(name)}});
        note(RepairOutcome::kRepaired, nullptr, L"the header does not tell the form of the drawing");
    }
    m_form.hasMarks = form >= 1012;
    m_form.hasOwners = form >= 1015;
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

// A block without a name has that of its record, by its owner, or its second one.
void DrawingRepairing::completeBlocks() {
    for (SalvagedBlock& each : m_text.blocks) {
        if (nameOf(each.begin).empty()) {
            const std::uint64_t owner = ownerOf(each.begin);
            std::string name = "RECOVERED_" + std::string(newHandle());
            for (const Group& group : SalvagedText::groupsOf(each.begin))
                if (group.code == 3 && !group.value.empty()) name = group.value;
            for (const SalvagedRecord& record : m_text.table("BLOCK_RECORD").records)
                if (owner != 0 && handleOf(record) == owner) name = nameOf(record);
            setName(each.begin, name);
            note(RepairOutcome::kRepaired, &each.begin, L"the block has no name");
        }
        if (!each.end.bytes.empty()) continue;
        Groups groups;
        if (m_form.hasHandles) groups = {{5, newHandle()}};
        if (m_form.hasOwners) groups.push_back({ownerCode, handleText(ownerOf(each.begin))});
        if (m_form.hasMarks) groups.push_back({markCode, "AcDbEntity"});
        groups.push_back({8, "0"});
        if (m_form.hasMarks) groups.push_back({markCode, "AcDbBlockEnd"});
        each.end = m_text.made("ENDBLK", SalvagedPlace::kBlock, groups);
        note(RepairOutcome::kRepaired, &each.begin, L"its ENDBLK is missing");
    }
}

void DrawingRepairing::dropSecondClasses() {
    std::vector<std::string_view> names;
    for (SalvagedRecord& each : m_text.classes) {
        std::string_view name;
        bool hasRecord = false;
        bool hasClass = false;
        for (const Group& group : SalvagedText::groupsOf(each)) {
            if (group.code == 1) name = group.value;
            hasRecord = hasRecord || group.code == 1;
            hasClass = hasClass || group.code == nameCode;
        }
        each.isGone = each.type != "CLASS" || !hasRecord || !hasClass ||
                      std::find(names.begin(), names.end(), name) != names.end();
        if (each.isGone) note(RepairOutcome::kLost, &each, L"the class is none, or stands twice");
        names.push_back(name);
    }
}

// Between records.

void DrawingRepairing::repairHandles() {
    if (!m_form.hasMarks && m_handles.empty()) return;
    std::unordered_set<std::uint64_t> given;
    m_text.forEach([&](SalvagedRecord& each) {
        const std::uint64_t handle = handleOf(each);
        if (handle == 0 ? !m_form.hasMarks : given.insert(handle).second) return;
        setHandle(each, m_nextHandle);
        given.insert(m_nextHandle++);
    });
}

// Variables that are none, or stand twice, go; those that name a record that is missing name a standing one.
void DrawingRepairing::repairHeader(bool hasFaults) {
    Groups result;
    std::unordered_set<std::string_view> known;
    const auto names = [&](const char* table) {
        std::unordered_set<std::wstring> found;
        for (const SalvagedRecord& each : m_text.table(table).records)
            if (!each.isGone) found.insert(foldedName(nameOf(each)));
        return found;
    };
    struct Current {
        std::string_view variable, standing;
        const char* table;
        bool isInTable; ///< else it is there without a record
    };
    constexpr Current currents[] = {{"$CLAYER", "0", "LAYER", false},
                                    {"$CELTYPE", "ByLayer", "LTYPE", false},
                                    {"$TEXTSTYLE", "Standard", "STYLE", true},
                                    {"$DIMSTYLE", "Standard", "DIMSTYLE", true}};
    for (std::size_t at = 0; at < m_text.header.size();) {
        std::size_t end = at + 1;
        while (end < m_text.header.size() && m_text.header[end].code != variableCode) ++end;
        Groups variable(m_text.header.begin() + static_cast<std::ptrdiff_t>(at),
                        m_text.header.begin() + static_cast<std::ptrdiff_t>(end));
        at = end;
        const std::string_view name = variable[0].value;
        if (name == "$HANDSEED") continue;
        if (hasFaults) {
            const bool isPoint = variable.size() > 1 && variable[1].code == 10;
            std::size_t size = 2;
            while (isPoint && size < variable.size() && size < 4 &&
                   variable[size].code == 10 * static_cast<int>(size))
                ++size;
            const bool isSound =
                variable.size() >= 2 && (!isPoint || size > 2) && known.insert(name).second &&
                std::all_of(
                    variable.begin() + 1,
                    variable.begin() + static_cast<std::ptrdiff_t>(std::min(size, variable.size())),
                    [](const Group& each) { return isAuditValue(auditValueOf(each.code), each.value); });
            if (!isSound) {
                note(RepairOutcome::kLost, nullptr,
                     L"the header's " + AuditNames::charactersOf(name) +
                         L", which has no value that it can have");
                continue;
            }
            variable.resize(size);
            bool isMissing = false;
            for (const Current& each : currents) {
                if (each.variable != name || names(each.table).contains(foldedName(variable[1].value)))
                    continue;
                variable[1].value = each.standing;
                isMissing = each.isInTable && !names(each.table).contains(foldedName(each.standing));
            }
            if (isMissing) continue;
            if (name == "$ACADVER" && !isKnownForm(variable[1].value))
                variable[1].value = m_form.hasOwners ? "AC1032" : "AC1009";
        }
        result.insert(result.end(), variable.begin(), variable.end());
    }
    if (m_form.hasMarks || m_nextHandle > 1) {
        result.push_back({variableCode, "$HANDSEED"});
        result.push_back({5, handleText(m_nextHandle)});
    }
    m_text.header = std::move(result);
}

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
            if (name.empty() && table.name != "STYLE")
                allowed = "RECOVERED_" + std::string(handleText(handleOf(each)));
            if (allowed != name) nameAnew(each, allowed);
            if (allowed.empty() || names.insert(foldedName(allowed)).second || mayShare) continue;
            if (table.name == "BLOCK_RECORD") {
                allowed += "_" + std::string(handleText(handleOf(each)));
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
        groups = {{handleCodeOf(table.name), wanted != 0 ? handleText(wanted) : newHandle()}};
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

// Each block has a record, and each record a block.
void DrawingRepairing::repairBlocks() {
    for (SalvagedRecord& each : m_text.table("BLOCK_RECORD").records)
        if (!each.isGone && nameOf(each).empty())
            nameAnew(each, "RECOVERED_" + std::string(handleText(handleOf(each))));
    completeBlocks();
    std::unordered_set<std::wstring> names;
    auto records = blockRecords();
    for (SalvagedBlock& each : m_text.blocks) {
        std::wstring name = foldedName(nameOf(each.begin));
        if (!names.insert(name).second) {
            // The record that it names as its owner tells its name, where no other block has that.
            std::string other = std::string(nameOf(each.begin)) + "_" + std::string(newHandle());
            for (const SalvagedRecord& record : m_text.table("BLOCK_RECORD").records)
                if (!record.isGone && handleOf(record) == ownerOf(each.begin) && !hasBlock(nameOf(record)))
                    other = nameOf(record);
            nameAnew(each.begin, other);
            name = foldedName(other);
            names.insert(name);
        }
        if (!m_form.hasMarks || records.contains(name)) continue;
        SalvagedTable& table = m_text.table("BLOCK_RECORD");
        addRecord(table, "AcDbBlockTableRecord", {{nameCode, nameOf(each.begin)}, {340, "0"}});
        note(RepairOutcome::kRepaired, &each.begin, L"the block has no record");
        records = blockRecords();
    }
    if (!m_form.hasMarks) return;
    for (const SalvagedRecord& each : m_text.table("BLOCK_RECORD").records)
        if (!each.isGone && names.insert(foldedName(nameOf(each))).second) {
            note(RepairOutcome::kRepaired, &each, L"its block is missing; it is empty now");
            addBlock(nameOf(each), handleOf(each));
        }
}

bool DrawingRepairing::hasBlock(std::string_view name) const {
    return std::any_of(m_text.blocks.begin(), m_text.blocks.end(), [&](const SalvagedBlock& each) {
        return foldedName(nameOf(each.begin)) == foldedName(name);
    });
}

// An empty one.
void DrawingRepairing::addBlock(std::string_view name, std::uint64_t owner) {
    m_text.hasBlocks = true;
    const auto make = [&](std::string_view type, std::string_view mark, Groups own) {
        Groups groups;
        if (m_form.hasHandles) groups = {{5, newHandle()}};
        if (m_form.hasOwners) groups.push_back({ownerCode, handleText(owner)});
        if (m_form.hasMarks) groups.push_back({markCode, "AcDbEntity"});
        groups.push_back({8, "0"});
        if (m_form.hasMarks) groups.push_back({markCode, mark});
        groups.insert(groups.end(), own.begin(), own.end());
        return m_text.made(type, SalvagedPlace::kBlock, groups);
    };
    SalvagedBlock block;
    block.begin =
        make("BLOCK", "AcDbBlockBegin",
             {{nameCode, name}, {70, "0"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {3, name}, {1, ""}});
    block.end = make("ENDBLK", "AcDbBlockEnd", {});
    m_text.blocks.push_back(std::move(block));
}

void DrawingRepairing::addMissingBlock(std::string_view missing) {
    if (hasBlock(missing)) return;
    const std::string_view name = m_text.kept(std::string(missing));
    std::uint64_t owner = 0;
    if (m_form.hasMarks) {
        SalvagedTable& table = m_text.table("BLOCK_RECORD");
        addRecord(table, "AcDbBlockTableRecord", {{nameCode, name}, {340, "0"}});
        owner = handleOf(table.records.back());
    }
    addBlock(name, owner);
    note(RepairOutcome::kRepaired, nullptr,
         L"the block " + AuditNames::charactersOf(name) + L" is there, empty");
}

// A space leads to the layout that leads to it. A layout of a space that is missing takes the one that leads
// to it, or goes: some programs do not read a drawing with such a one.
void DrawingRepairing::repairLayouts() {
    std::unordered_map<std::uint64_t, std::uint64_t> spaces; // with the layout that each leads to
    for (const SalvagedRecord& each : m_text.table("BLOCK_RECORD").records) {
        if (each.isGone) continue;
        std::uint64_t& layout = spaces[handleOf(each)];
        for (const Group& group : SalvagedText::groupsOf(each))
            if (group.code == 340) layout = auditHandle(group.value).value_or(0);
    }
    std::unordered_map<std::uint64_t, std::uint64_t> layoutOf;
    for (SalvagedRecord& each : m_text.objects) {
        if (each.isGone || each.type != "LAYOUT") continue;
        const std::uint64_t own = handleOf(each);
        Groups groups = SalvagedText::groupsOf(each);
        const std::size_t at = spaceIn(groups);
        if (at == nowhere) continue;
        std::uint64_t space = auditHandle(groups[at].value).value_or(0);
        if (!spaces.contains(space)) {
            const auto other = std::find_if(spaces.begin(), spaces.end(),
                                            [&](const auto& one) { return one.second == own; });
            if (other == spaces.end()) {
                each.isGone = true;
                note(RepairOutcome::kLost, &each, L"its space is missing");
                continue;
            }
            space = other->first;
            groups[at].value = handleText(space);
            m_text.setGroups(each, groups);
        }
        layoutOf.emplace(space, own);
    }
    for (SalvagedRecord& each : m_text.table("BLOCK_RECORD").records) {
        const auto layout = layoutOf.find(handleOf(each));
        Groups groups = SalvagedText::groupsOf(each);
        const auto group =
            std::find_if(groups.begin(), groups.end(), [](const Group& one) { return one.code == 340; });
        const std::uint64_t wanted = layout == layoutOf.end() ? 0 : layout->second;
        if (each.isGone || group == groups.end() || auditHandle(group->value) == wanted) continue;
        group->value = handleText(wanted);
        m_text.setGroups(each, groups);
    }
}

void DrawingRepairing::repairOwnersIn(SalvagedRecords& records, std::uint64_t owner, bool isOfLayouts) {
    std::unordered_set<std::uint64_t> layouts;
    std::uint64_t model = 0;
    std::uint64_t paper = 0;
    if (isOfLayouts)
        for (const auto& [name, record] : blockRecords()) {
            const std::uint64_t handle = handleOf(*record);
            if (name == foldedName("*Model_Space")) model = handle;
            if (name == foldedName("*Paper_Space")) paper = handle;
            if (name.starts_with(foldedName("*Paper_Space")) || handle == model) layouts.insert(handle);
        }
    std::uint64_t sequence = 0;
    for (SalvagedRecord& each : records) {
        if (each.isGone) continue;
        if (each.isPart()) {
            // Some programs name the block, which others have got used to.
            const bool isOfBlock = ownerOf(each) == owner || layouts.contains(ownerOf(each));
            if (!isOfBlock) setOwner(each, sequence);
            continue;
        }
        sequence = handleOf(each);
        if (!isOfLayouts) {
            setOwner(each, owner);
        } else if (!layouts.contains(ownerOf(each))) {
            const Groups groups = SalvagedText::groupsOf(each);
            const bool isOnPaper = std::any_of(groups.begin(), groups.end(), [](const Group& group) {
                return group.code == 67 && auditInteger(group.value) == 1;
            });
            setOwner(each, isOnPaper ? paper : model);
        }
    }
}

void DrawingRepairing::repairOwners() {
    if (!m_form.hasOwners) return;
    for (SalvagedTable& table : m_text.tables) {
        if (table.head.bytes.empty()) continue; // asked for, but not there
        setOwner(table.head, 0);
        const std::uint64_t owner = handleOf(table.head);
        for (SalvagedRecord& each : table.records)
            if (!each.isGone) setOwner(each, owner);
    }
    repairBlocks();
    const auto records = blockRecords();
    for (SalvagedBlock& each : m_text.blocks) {
        const auto record = records.find(foldedName(nameOf(each.begin)));
        if (record == records.end()) continue;
        const std::uint64_t owner = handleOf(*record->second);
        setOwner(each.begin, owner);
        repairOwnersIn(each.entities, owner, false);
        setOwner(each.end, owner);
    }
    repairOwnersIn(m_text.entities, 0, true);
    repairObjectOwners();
}

// Objects belong to who holds them.
void DrawingRepairing::repairObjectOwners() {
    repairRoot();
    if (!root()) return;
    std::unordered_map<std::uint64_t, std::vector<std::uint64_t>> holders;
    m_text.forEach([&](const SalvagedRecord& each) {
        const std::uint64_t handle = handleOf(each);
        for (const Group& group : SalvagedText::groupsOf(each))
            if ((group.code >= 360 && group.code <= 369) || (group.code == 350 && isDictionary(each.type)))
                holders[auditHandle(group.value).value_or(0)].push_back(handle);
    });
    const ByHandle records = byHandle();
    const std::uint64_t rootHandle = handleOf(*root());
    const auto isInCircle = [&](std::uint64_t handle) {
        constexpr int deepest = 1000;
        for (int depth = 0; handle != 0; ++depth) {
            const auto found = records.find(handle);
            if (found == records.end()) return false;
            if (depth > deepest) return true;
            handle = ownerOf(*found->second);
        }
        return false;
    };
    for (SalvagedRecord& each : m_text.objects) {
        const std::uint64_t handle = handleOf(each);
        if (each.isGone || handle == rootHandle) continue;
        const auto owner = records.find(ownerOf(each));
        const auto& held = holders[handle];
        const bool isThere = owner != records.end() && owner->first != 0;
        const bool asksForHolder =
            isThere && (isDictionary(owner->second->type) || each.type == "DICTIONARY");
        const bool isHeld = isThere && std::find(held.begin(), held.end(), owner->first) != held.end();
        if (isThere && (isHeld || !asksForHolder) && !isInCircle(handle)) continue;
        if (!held.empty() && !(isThere && isHeld) && held.front() != handle) {
            setOwner(each, held.front());
            if (!isInCircle(handle)) continue;
        }
        adopt(each, records);
    }
}

// What nobody holds: the extension dictionary of its owner, or an entry of the root.
void DrawingRepairing::adopt(SalvagedRecord& object, const ByHandle& byHandle) {
    const auto owner = byHandle.find(ownerOf(object));
    if (owner != byHandle.end() && object.type == "DICTIONARY" && !isDictionary(owner->second->type)) {
        Groups groups = SalvagedText::groupsOf(*owner->second);
        const bool hasOne = std::any_of(groups.begin(), groups.end(), [](const Group& each) {
            return each.code == controlCode && each.value == "{ACAD_XDICTIONARY";
        });
        const std::size_t at = inHead(groups, handleCodeOf(owner->second->type));
        if (!hasOne && at != nowhere) {
            const Groups own = {
                {controlCode, "{ACAD_XDICTIONARY"}, {360, handleText(handleOf(object))}, {controlCode, "}"}};
            groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(at) + 1, own.begin(), own.end());
            return m_text.setGroups(*owner->second, groups);
        }
    }
    SalvagedRecord& above = *root();
    const std::string_view handle = handleText(handleOf(object));
    setOwner(object, handleOf(above));
    Groups groups = SalvagedText::groupsOf(above);
    const auto end =
        std::find_if(groups.begin(), groups.end(), [](const Group& each) { return each.code >= 1000; });
    const Groups entry = {{3, m_text.kept("RECOVERED_" + std::string(handle))}, {350, handle}};
    groups.insert(end, entry.begin(), entry.end());
    m_text.setGroups(above, groups);
    note(RepairOutcome::kRepaired, &object, L"no dictionary holds it; the root does now");
}

SalvagedRecord* DrawingRepairing::root() {
    for (SalvagedRecord& each : m_text.objects)
        if (!each.isGone) return each.type == "DICTIONARY" ? &each : nullptr;
    return nullptr;
}

// The first object; where it is none, the dictionary that has no owner, or a new one.
void DrawingRepairing::repairRoot() {
    if (!m_form.hasMarks || !m_text.hasObjects) return;
    SalvagedRecords& objects = m_text.objects;
    std::erase_if(objects, [](const SalvagedRecord& each) { return each.isGone; });
    const auto found = std::find_if(objects.begin(), objects.end(), [&](const SalvagedRecord& each) {
        return each.type == "DICTIONARY" && ownerOf(each) == 0;
    });
    const bool isByName = found == objects.end();
    const auto named = std::find_if(objects.begin(), objects.end(), [&](const SalvagedRecord& each) {
        return each.type == "DICTIONARY" && each.bytes.find("ACAD_") != std::string_view::npos;
    });
    const auto chosen = isByName ? named : found;
    if (chosen != objects.end()) {
        std::rotate(objects.begin(), chosen, chosen + 1);
        setOwner(objects.front(), 0);
        return;
    }
    Groups groups = {{5, newHandle()}, {ownerCode, "0"}, {markCode, "AcDbDictionary"}, {281, "1"}};
    objects.insert(objects.begin(), m_text.made("DICTIONARY", SalvagedPlace::kObjects, groups));
    note(RepairOutcome::kRepaired, nullptr, L"the root dictionary is missing");
}

} // namespace hostkit
