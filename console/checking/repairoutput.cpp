#include "repairoutput.h"

#include "aced.h"
#include "consoletext.h"

#include <algorithm>

namespace {

using hostkit::RepairNote;
using hostkit::RepairOutcome;

constexpr std::size_t mostRows = 200;

const wchar_t* outcomeName(RepairOutcome outcome) {
    constexpr const wchar_t* names[] = {L"repaired", L"lost", L"left"};
    return names[static_cast<std::size_t>(outcome)];
}

// What is left and lost first.
std::vector<const RepairNote*> orderedNotes(const hostkit::RepairReport& report) {
    std::vector<const RepairNote*> notes;
    for (const RepairNote& each : report.notes) notes.push_back(&each);
    std::stable_sort(notes.begin(), notes.end(), [](const RepairNote* left, const RepairNote* right) {
        return left->outcome > right->outcome;
    });
    return notes;
}

std::string asJson(const hostkit::RepairReport& report) {
    std::string json = "[";
    std::string_view separator = "\n";
    for (const RepairNote* const each : orderedNotes(report)) {
        json += separator;
        separator = ",\n";
        appendField("outcome", outcomeName(each->outcome), json += '{');
        appendField("type", each->type, json += ',');
        appendField("handle", handleText(AcDbHandle(each->handle)), json += ',');
        json += ",\"line\":" + std::to_string(each->line);
        appendField("finding", each->text, json += ',');
        json += '}';
    }
    return json + "]";
}

void printNotes(const hostkit::RepairReport& report) {
    std::vector<std::vector<std::wstring>> rows = {{L"Outcome", L"Type", L"Handle", L"Line", L"Finding"}};
    for (const RepairNote* const each : orderedNotes(report)) {
        if (rows.size() > mostRows) break;
        rows.push_back({outcomeName(each->outcome), each->type, handleText(AcDbHandle(each->handle)),
                        each->line == 0 ? std::wstring() : std::to_wstring(each->line),
                        onOneLine(each->text)});
    }
    if (rows.size() > 1) printTable(rows, "lllrl");
    if (report.notes.size() > mostRows)
        acutPrintf(L"Only the first %d are listed.\n", static_cast<int>(mostRows));
}

} // namespace

void showRepairs(const hostkit::RepairReport& report, ReportForm form) {
    if (form == ReportForm::json) return offerText(asJson(report));
    printNotes(report);
    const auto count = [&](RepairOutcome outcome) { return std::to_wstring(report.count(outcome)); };
    acutPrintf(L"%s repaired, %s lost, %s left\n", count(RepairOutcome::kRepaired).c_str(),
               count(RepairOutcome::kLost).c_str(), count(RepairOutcome::kLeft).c_str());
}
