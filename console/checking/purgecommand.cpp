#include "purgecommand.h"

#include "acdocman.h"
#include "aced.h"
#include "commandoutput.h"
#include "consoletext.h"
#include "drawingpurge.h"
#include "modulecommand.h"

#include <array>

namespace {

using Items = std::vector<hostkit::PurgeItem>;

struct PurgeRequest {
    bool listsOnly = false;
    ReportForm form = ReportForm::table;
};

std::optional<PurgeRequest> readRequest() {
    PurgeRequest request;
    CString word;
    acedInitGet(0, L"List Table Json");
    const int answer = acedGetKword(L"[List/Table/Json] <Table>: ", word);
    if (answer == RTREJ) hostkit::failCommand(Acad::eInvalidInput, L"LIST, TABLE or JSON is meant");
    if (answer != RTNORM && answer != RTNONE) return std::nullopt;
    request.form = word == L"Json" ? ReportForm::json : ReportForm::table;
    request.listsOnly = word == L"List";
    if (!request.listsOnly) return request;
    const std::optional<ReportForm> form = readReportForm();
    if (!form) return std::nullopt;
    request.form = *form;
    return request;
}

std::wstring summaryOf(const Items& items) {
    std::array<std::size_t, hostkit::purgeKindCount> counts{};
    for (const hostkit::PurgeItem& each : items) ++counts[static_cast<std::size_t>(each.kind)];
    std::wstring text;
    for (std::size_t kind = 0; kind < counts.size(); ++kind) {
        if (counts[kind] == 0) continue;
        text += text.empty() ? L"" : L", ";
        text += counted(counts[kind], hostkit::purgeKindName(static_cast<hostkit::PurgeKind>(kind)));
    }
    return text;
}

void printItems(const Items& items) {
    if (items.empty()) return;
    std::vector<std::vector<std::wstring>> rows = {{L"Kind", L"Handle", L"Name"}};
    for (const hostkit::PurgeItem& each : items)
        rows.push_back(
            {hostkit::purgeKindName(each.kind), handleText(each.id.handle()), onOneLine(each.name)});
    printTable(rows, "lll");
}

std::string asJson(const Items& items) {
    std::string json = "[";
    std::string_view separator = "\n";
    for (const hostkit::PurgeItem& each : items) {
        json += separator;
        separator = ",\n";
        appendField("kind", hostkit::purgeKindName(each.kind), json += '{');
        appendField("handle", handleText(each.id.handle()), json += ',');
        appendField("name", each.name, json += ',');
        json += '}';
    }
    return json + "]";
}

void show(const Items& items, ReportForm form) {
    if (form == ReportForm::table)
        printItems(items);
    else
        offerText(asJson(items));
}

bool isDone(Acad::ErrorStatus status) {
    if (status == Acad::eOk) return true;
    hostkit::failCommand(status, status == Acad::eWasOpenForWrite
                                     ? L"an object of the drawing is open for write"
                                     : L"an object of the drawing cannot be written, so that nobody can tell "
                                       L"what it refers to; AUDIT names it");
    return false;
}

} // namespace

void purgeCommand() {
    AcApDocument* const document = documentOrFail();
    if (!document) return;
    const std::optional<PurgeRequest> request = readRequest();
    if (!request) return;
    Items unused;
    if (!isDone(hostkit::findUnused(*document->database(), unused))) return;
    show(unused, request->form);
    const bool isTable = request->form == ReportForm::table;
    if (unused.empty() && isTable) return acutPrintf(L"Nothing is unused\n"), void();
    if (request->listsOnly) {
        if (isTable) acutPrintf(L"Unused: %s\n", summaryOf(unused).c_str());
        return;
    }
    hostkit::PurgeReport report;
    if (!isDone(hostkit::purgeUnused(*document->database(), report))) return;
    if (isTable && !report.erased.empty()) acutPrintf(L"Purged: %s\n", summaryOf(report.erased).c_str());
    if (!report.kept.empty())
        hostkit::failCommand(Acad::eWasOpenForRead,
                             summaryOf(report.kept) + L" stayed, held open or used by what is");
}
