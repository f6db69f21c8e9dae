#include "drawingrepair.h"

#include "drawingrepairing.h"
#include "salvagedgroups.h"

#include "auditing.h"
#include "binaryform.h"
#include "handlelists.h"

#include <algorithm>
#include <limits>

namespace hostkit {

namespace {

constexpr int blockReferenceFlag = 66;
constexpr int mostRounds = 12;
constexpr unsigned char mostAttempts = 4;

std::wstring wideOf(std::string_view bytes) {
    std::wstring text;
    appendWords(text, bytes);
    return text;
}

} // namespace

std::size_t RepairReport::count(RepairOutcome outcome) const {
    return static_cast<std::size_t>(std::count_if(
        notes.begin(), notes.end(), [&](const RepairNote& each) { return each.outcome == outcome; }));
}

std::string repairDrawingText(std::string_view bytes, RepairReport& report, const RepairOptions& options) {
    report = {};
    std::string turned;
    if (isBinaryForm(bytes)) {
        if (const std::optional<FormFault> fault = textFromBinary(bytes, turned))
            report.notes.push_back(
                {RepairOutcome::kLost,
                 0,
                 {},
                 L"behind byte " + std::to_wstring(fault->offset) + L" of the binary form: " + fault->reason,
                 0});
        bytes = turned;
    }
    const AuditReport found = auditDrawingText(bytes);
    if (found.faultCount() == 0 && !bytes.empty()) return std::string(bytes);
    // What is wrong with the frame of the records is right when they are put together again.
    for (const AuditFinding& each : found.findings)
        if (each.severity == AuditSeverity::kFault &&
            (each.check == AuditCheck::kStructure || each.check == AuditCheck::kTable || each.type.empty()))
            report.notes.push_back({RepairOutcome::kRepaired, each.handle, each.type, each.text, each.line});
    return DrawingRepairing(bytes, report, options).run();
}

DrawingRepairing::DrawingRepairing(std::string_view bytes, RepairReport& report, const RepairOptions& options)
    : m_text(bytes)
    , m_report(report)
    , m_options(options)
    , m_nextHandle(options.firstHandle) {}

std::string DrawingRepairing::run() {
    tellOfLosses();
    m_text.hasEntities = true; // some programs refuse a drawing without that section
    findForm();
    m_text.forEach(
        [&](const SalvagedRecord& each) { m_nextHandle = std::max(m_nextHandle, handleOf(each) + 1); });
    m_form.hasHandles = m_form.hasMarks || m_nextHandle > 1;
    completeHeads();
    completeBlocks();
    dropSecondClasses();
    Stands stands;
    AuditReport found;
    for (int round = 0; round < mostRounds; ++round) {
        completeSequences();
        const std::string text = m_text.text(&stands);
        found = auditDrawingText(text, std::numeric_limits<std::size_t>::max());
        if (found.faultCount() == 0) return text;
        if (!repairRound(found, stands)) break;
    }
    for (const AuditFinding& each : found.findings)
        if (each.severity == AuditSeverity::kFault) note(RepairOutcome::kLeft, nullptr, each);
    return m_text.text();
}

void DrawingRepairing::note(RepairOutcome outcome, const SalvagedRecord* record, std::wstring_view text) {
    m_report.notes.push_back({outcome, record ? handleOf(*record) : 0,
                              record ? wideOf(record->type) : std::wstring(), std::wstring(text),
                              record ? record->line : 0});
}

void DrawingRepairing::note(RepairOutcome outcome, const SalvagedRecord* record,
                            const AuditFinding& finding) {
    m_report.notes.push_back(
        {outcome, finding.handle, finding.type, finding.text, record ? record->line : 0});
}

void DrawingRepairing::tellOfLosses() {
    for (const SalvageLoss& each : m_text.losses)
        m_report.notes.push_back({each.isLost ? RepairOutcome::kLost : RepairOutcome::kRepaired, 0,
                                  wideOf(each.type), each.text, each.line});
}

// Sequences.

void DrawingRepairing::completeSequences() {
    for (SalvagedBlock& each : m_text.blocks) completeSequences(each.entities);
    completeSequences(m_text.entities);
}

// In order: what stands behind its owner, an end where one is missing; parts of nothing go.
void DrawingRepairing::completeSequences(SalvagedRecords& records) {
    SalvagedRecords result;
    result.reserve(records.size());
    std::size_t owner = records.size();
    bool isEnded = true;
    for (SalvagedRecord& each : records) {
        if (each.isGone) continue;
        const bool isOwned =
            !isEnded && owner < result.size() &&
            (each.type == "SEQEND" || each.type == (result[owner].type == "POLYLINE" ? "VERTEX" : "ATTRIB"));
        if (each.isPart() && !isOwned) {
            note(RepairOutcome::kLost, &each, L"it belongs to no polyline and no insertion");
            continue;
        }
        if (!each.isPart()) {
            if (!isEnded) endSequence(result, owner);
            isEnded = true;
        }
        if (each.type == "SEQEND") isEnded = true;
        result.push_back(each);
        if (each.type == "SEQEND") endSequence(result, owner);
        if (each.type != "POLYLINE" && each.type != "INSERT") continue;
        owner = result.size() - 1;
        isEnded = false;
    }
    if (!isEnded) endSequence(result, owner);
    records = std::move(result);
}

// What stands from the owner on is its sequence, with or without an end.
void DrawingRepairing::endSequence(SalvagedRecords& records, std::size_t owner) {
    const bool hasEnd = records.back().type == "SEQEND";
    const std::size_t parts = records.size() - owner - 1 - (hasEnd ? 1 : 0);
    const bool isPolyline = records[owner].type == "POLYLINE";
    Groups groups = SalvagedText::groupsOf(records[owner]);
    const auto flag = std::find_if(groups.begin(), groups.end(),
                                   [](const SalvagedGroup& each) { return each.code == blockReferenceFlag; });
    const bool isAnnounced = flag != groups.end() && auditInteger(flag->value).value_or(0) != 0;
    if (isPolyline && parts == 0) {
        note(RepairOutcome::kLost, &records[owner], L"it has no vertices");
        records.resize(owner);
        return;
    }
    if (!isPolyline && parts == 0) {
        if (!isAnnounced) return;
        groups.erase(flag);
        m_text.setGroups(records[owner], groups);
        if (hasEnd) records.pop_back();
        return note(RepairOutcome::kRepaired, &records[owner],
                    L"it says that attributes follow, but none does");
    }
    if (!isAnnounced && (!isPolyline || !m_form.hasMarks)) {
        if (flag != groups.end()) groups.erase(flag);
        const auto mark = std::find_if(groups.rbegin(), groups.rend(), [](const SalvagedGroup& each) {
            return each.code == 100 || each.code == 8;
        });
        groups.insert(mark.base(), {blockReferenceFlag, "1"});
        m_text.setGroups(records[owner], groups);
        note(RepairOutcome::kRepaired, &records[owner], L"its group 66 does not say what follows");
    }
    if (hasEnd) return;
    Groups end;
    if (m_form.hasHandles) end = {{5, newHandle()}};
    if (m_form.hasOwners) end.push_back({330, handleText(handleOf(records[owner]))});
    if (m_form.hasMarks) end.push_back({100, "AcDbEntity"});
    end.push_back({8, "0"});
    note(RepairOutcome::kRepaired, &records[owner], L"the SEQEND behind its parts is missing");
    records.push_back(m_text.made("SEQEND", records[owner].place, end));
}

// Rounds.

bool DrawingRepairing::repairRound(const AuditReport& found, const Stands& stands) {
    std::vector<std::pair<std::size_t, const AuditFinding*>> places;
    m_handles.clear();
    m_text.forEach([&](const SalvagedRecord& each) { m_handles.insert(handleOf(each)); });
    bool hasCheck[auditCheckCount] = {};
    bool isOfHeader = false;
    for (const AuditFinding& each : found.findings) {
        if (each.severity != AuditSeverity::kFault) continue;
        hasCheck[static_cast<std::size_t>(each.check)] = true;
        const auto stand =
            std::upper_bound(stands.begin(), stands.end(), each.line,
                             [](std::size_t line, const auto& one) { return line < one.line; });
        if (each.line != 0 && stand != stands.begin() && std::prev(stand)->record)
            places.emplace_back(static_cast<std::size_t>(stand - stands.begin() - 1), &each);
        else
            isOfHeader = true;
    }
    std::stable_sort(places.begin(), places.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    for (std::size_t first = 0; first < places.size();) {
        Findings findings;
        const std::size_t stand = places[first].first;
        for (; first < places.size() && places[first].first == stand; ++first)
            findings.push_back(places[first].second);
        repairRecord(*stands[stand].record, stands[stand].line, findings);
    }
    const auto has = [&](AuditCheck check) { return hasCheck[static_cast<std::size_t>(check)]; };
    for (const std::string& each : m_missingBlocks) addMissingBlock(each);
    m_missingBlocks.clear();
    if (has(AuditCheck::kTable)) repairNames();
    if (has(AuditCheck::kBlock) || has(AuditCheck::kTable)) repairBlocks();
    if (has(AuditCheck::kDictionary)) repairRoot();
    if (has(AuditCheck::kHandle)) repairHandles();
    if (has(AuditCheck::kOwner) || has(AuditCheck::kHandle)) repairOwners();
    if (m_form.hasMarks) repairLayouts();
    for (const std::string& each : m_applications) addApplication(each);
    m_applications.clear();
    repairHeader(isOfHeader);
    return true;
}

bool DrawingRepairing::mayGo(const SalvagedRecord& record) {
    return record.type != "TABLE" && record.type != "BLOCK" && record.type != "ENDBLK";
}

void DrawingRepairing::drop(SalvagedRecord& record, const AuditFinding& reason) {
    record.isGone = true;
    note(RepairOutcome::kLost, &record, reason);
}

void DrawingRepairing::repairRecord(SalvagedRecord& record, std::uint32_t line, const Findings& findings) {
    if (record.isGone) return;
    if (record.attempts++ >= mostAttempts) {
        if (mayGo(record)) drop(record, *findings.front());
        return;
    }
    Groups groups = SalvagedText::groupsOf(record);
    bool isOfContent = false;
    bool isRemedied = false;
    // From the last one on, so that the places before stay what they are.
    Findings ordered = findings;
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const auto* left, const auto* right) { return left->line > right->line; });
    for (const AuditFinding* const each : ordered) {
        const std::size_t place = each->line > line + 1 ? (each->line - line) / 2 - 1 : groups.size();
        if (takeRemedy(groups, place, *each))
            isRemedied = true;
        else if (!repairGroup(record, groups, place, *each))
            return drop(record, *each);
        else
            isOfContent = isOfContent || each->check == AuditCheck::kRecord ||
                          each->check == AuditCheck::kExtendedData || each->check == AuditCheck::kStructure;
    }
    // A count may be right again when it alone was wrong.
    if (isOfContent && !isRemedied && !repairGroups(record, m_form, groups)) {
        if (mayGo(record)) return drop(record, *findings.front());
    }
    m_text.setGroups(record, groups);
    for (const AuditFinding* const each : findings)
        if (each->check != AuditCheck::kStructure && each->check != AuditCheck::kTable)
            note(RepairOutcome::kRepaired, &record, *each);
}

bool DrawingRepairing::takeRemedy(Groups& groups, std::size_t place, const AuditFinding& finding) {
    if (finding.remedyCode == 0) return false;
    const auto isIt = [&](const SalvagedGroup& each) { return each.code == finding.remedyCode; };
    auto group = groups.end();
    if (place < groups.size() && isIt(groups[place]))
        group = groups.begin() + static_cast<std::ptrdiff_t>(place);
    if (group == groups.end()) group = std::find_if(groups.begin(), groups.end(), isIt);
    if (group == groups.end()) return false;
    group->value = m_text.kept(std::to_string(finding.remedyValue));
    return true;
}

// What one group says of other records. False where the record has to go.
bool DrawingRepairing::repairGroup(SalvagedRecord& record, Groups& groups, std::size_t place,
                                   const AuditFinding& finding) {
    switch (finding.check) {
    case AuditCheck::kReference:
        repairReference(record, groups, place);
        return true;
    case AuditCheck::kExtendedData:
        if (place < groups.size() && groups[place].code == 1001)
            m_applications.emplace_back(groups[place].value);
        return true;
    case AuditCheck::kDictionary:
        repairEntry(record, groups, place, finding);
        return true;
    case AuditCheck::kBlock:
        return record.type != "INSERT" && record.type != "DIMENSION";
    default:
        return true;
    }
}

// An insertion of a block that is missing has an empty one, so that it keeps its place and its attributes.
void DrawingRepairing::repairReference(const SalvagedRecord& record, Groups& groups, std::size_t place) {
    if (place >= groups.size()) return;
    const int code = groups[place].code;
    if (auditValueOf(code) == AuditValue::kHandle) return repairHandle(record, groups, place);
    if (code == 2 && record.type == "INSERT")
        m_missingBlocks.emplace_back(groups[place].value);
    else if (code == 6 && record.type == "LAYER")
        groups[place].value = "Continuous";
    else
        groups.erase(groups.begin() + static_cast<std::ptrdiff_t>(place));
}

void DrawingRepairing::repairHandle(const SalvagedRecord& record, Groups& groups, std::size_t place) {
    const int code = groups[place].code;
    const auto at = groups.begin() + static_cast<std::ptrdiff_t>(place);
    const bool isOptional = (code == 390 || code == 347 || code == 348 || record.type == "DIMSTYLE") &&
                            record.place != SalvagedPlace::kObjects;
    if (handleListOf(record.type, code) || isOptional)
        groups.erase(at);
    else
        at->value = "0";
}

// Of an entry what leads nowhere goes, and a name that it cannot have is another.
void DrawingRepairing::repairEntry(const SalvagedRecord& record, Groups& groups, std::size_t place,
                                   const AuditFinding& finding) {
    if (place >= groups.size()) return;
    const auto at = groups.begin() + static_cast<std::ptrdiff_t>(place);
    if (at->code == 360 && !isDictionaryType(record.type)) {
        // Of an extension dictionary the group of the application, with its frame.
        if (place > 0 && place + 1 < groups.size()) groups.erase(at - 1, at + 2);
        return;
    }
    if (!isDictionaryType(record.type) || at->code != 3) return;
    const bool hasHandle = place + 1 < groups.size() && (at[1].code == 350 || at[1].code == 360);
    const std::uint64_t handle = hasHandle ? auditHandle(at[1].value).value_or(0) : 0;
    if (m_handles.contains(handle) && handle != finding.handle)
        at->value = m_text.kept("RECOVERED_" + std::string(at[1].value));
    else
        groups.erase(at, at + (hasHandle ? 2 : 1));
}

} // namespace hostkit
