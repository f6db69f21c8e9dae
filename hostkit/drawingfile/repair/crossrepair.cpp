// Repair of what records say of each other: handles, the form and the header.

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

bool isKnownForm(std::string_view name) {
    constexpr std::string_view known[] = {
        "AC1.2",  "AC1.40", "AC1.50", "AC2.10", "AC2.21", "AC2.22", "AC1001", "AC1002", "AC1003", "AC1004",
        "AC1006", "AC1009", "AC1012", "AC1014", "AC1015", "AC1018", "AC1021", "AC1024", "AC1027", "AC1032"};
    return std::find(std::begin(known), std::end(known), name) != std::end(known);
}

} // namespace

std::uint64_t DrawingRepairing::handleOf(const SalvagedRecord& record) const {
    const Groups groups = SalvagedText::groupsOf(record);
    const std::size_t at = placeInHead(groups, handleCodeOfType(record.type));
    return at == nowhere ? 0 : auditHandle(groups[at].value).value_or(0);
}

std::uint64_t DrawingRepairing::ownerOf(const SalvagedRecord& record) const {
    const Groups groups = SalvagedText::groupsOf(record);
    const std::size_t at = placeInHead(groups, ownerCode);
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
    const int code = handleCodeOfType(record.type);
    if (const std::size_t at = placeInHead(groups, code); at != nowhere)
        groups[at].value = handleText(handle);
    else
        groups.insert(groups.begin() +
                          (record.type == "TABLE" && !groups.empty() && groups[0].code == nameCode),
                      {code, handleText(handle)});
    m_text.setGroups(record, groups);
}

void DrawingRepairing::setOwner(SalvagedRecord& record, std::uint64_t owner) {
    Groups groups = SalvagedText::groupsOf(record);
    const std::size_t at = placeInHead(groups, ownerCode);
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
    const auto extended = std::find_if(groups.begin(), groups.end(),
                                       [](const Group& each) { return each.code >= firstExtended; });
    if (!isSet) groups.insert(extended, {nameCode, keptName});
    m_text.setGroups(record, groups);
}

DrawingRepairing::ByHandle DrawingRepairing::byHandle() {
    ByHandle records;
    m_text.forEach([&](SalvagedRecord& each) { records.emplace(handleOf(each), &each); });
    return records;
}

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

namespace {

struct CurrentName {
    std::string_view variable, standing;
    const char* table;
    bool isInTable; ///< else the standing one is there without a record
};
constexpr CurrentName currentNames[] = {{"$CLAYER", "0", "LAYER", false},
                                        {"$CELTYPE", "ByLayer", "LTYPE", false},
                                        {"$TEXTSTYLE", "Standard", "STYLE", true},
                                        {"$DIMSTYLE", "Standard", "DIMSTYLE", true}};

// A point is two or three reals in a row; all else is one value. 0: it has none that it can have.
std::size_t soundSize(const Groups& variable) {
    const bool isPoint = variable.size() > 1 && variable[1].code == 10;
    std::size_t size = 2;
    while (isPoint && size < variable.size() && size < 4 &&
           variable[size].code == 10 * static_cast<int>(size))
        ++size;
    if (variable.size() < size || (isPoint && size < 3)) return 0;
    const auto isSound = [](const Group& each) { return isAuditValue(auditValueOf(each.code), each.value); };
    return std::all_of(variable.begin() + 1, variable.begin() + static_cast<std::ptrdiff_t>(size), isSound)
               ? size
               : 0;
}

} // namespace

// Variables that are none, or stand twice, go; those that name a record that is missing name a standing one.
void DrawingRepairing::repairHeader(bool hasFaults) {
    Groups result;
    std::unordered_set<std::string_view> known;
    for (std::size_t at = 0; at < m_text.header.size();) {
        std::size_t end = at + 1;
        while (end < m_text.header.size() && m_text.header[end].code != variableCode) ++end;
        Groups variable(m_text.header.begin() + static_cast<std::ptrdiff_t>(at),
                        m_text.header.begin() + static_cast<std::ptrdiff_t>(end));
        at = end;
        if (variable[0].value == "$HANDSEED") continue;
        const bool isSecond = !known.insert(variable[0].value).second;
        if (hasFaults && (isSecond || !repairVariable(variable))) {
            note(RepairOutcome::kLost, nullptr,
                 L"the header's " + AuditNames::charactersOf(variable[0].value) +
                     (isSecond ? L", which stands twice" : L", which has no value that it can have"));
            continue;
        }
        result.insert(result.end(), variable.begin(), variable.end());
    }
    if (m_form.hasMarks || m_nextHandle > 1) {
        result.push_back({variableCode, "$HANDSEED"});
        result.push_back({5, handleText(m_nextHandle)});
    }
    m_text.header = std::move(result);
}

bool DrawingRepairing::repairVariable(Groups& variable) {
    const std::size_t size = soundSize(variable);
    if (size == 0) return false;
    variable.resize(size);
    const auto has = [&](const CurrentName& current, std::string_view name) {
        const SalvagedRecords& records = m_text.table(current.table).records;
        return std::any_of(records.begin(), records.end(), [&](const SalvagedRecord& each) {
            return !each.isGone && foldedName(nameOf(each)) == foldedName(name);
        });
    };
    for (const CurrentName& each : currentNames) {
        if (each.variable != variable[0].value || has(each, variable[1].value)) continue;
        variable[1].value = each.standing;
        if (each.isInTable && !has(each, each.standing)) return false;
    }
    if (variable[0].value == "$ACADVER" && !isKnownForm(variable[1].value))
        variable[1].value = m_form.hasOwners ? "AC1032" : "AC1009";
    return true;
}

} // namespace hostkit
