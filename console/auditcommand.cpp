#include "auditcommand.h"

#include "acdocman.h"
#include "aced.h"
#include "commandoutput.h"
#include "drawingaudit.h"
#include "host.h"
#include "jsontext.h"

namespace {

std::wstring handleText(const hostkit::AuditFinding& finding) {
    wchar_t text[17] = {};
    if (finding.handle != 0) (void)AcDbHandle(finding.handle).getIntoAsciiBuffer(text);
    return text;
}

const wchar_t* severityName(const hostkit::AuditFinding& finding) {
    return finding.severity == hostkit::AuditSeverity::kFault ? L"fault" : L"remark";
}

std::wstring counted(std::size_t count, const std::wstring& word) {
    return std::to_wstring(count) + L" " + word + (count == 1 ? L"" : L"s");
}

std::wstring summaryOf(const hostkit::AuditReport& report) {
    std::wstring text = counted(report.objects, L"object") + L": " + counted(report.faultCount(), L"fault") +
                        L", " + counted(report.remarkCount(), L"remark");
    for (std::size_t check = 0; check < hostkit::auditCheckCount; ++check)
        if (report.faults[check] + report.remarks[check] > 0)
            text += std::wstring(L"; ") + hostkit::auditCheckName(static_cast<hostkit::AuditCheck>(check)) +
                    L" " + std::to_wstring(report.faults[check] + report.remarks[check]);
    return text;
}

void printReport(const hostkit::AuditReport& report) {
    std::vector<std::vector<std::wstring>> rows = {{L"Severity", L"Check", L"Type", L"Handle", L"Finding"}};
    for (const hostkit::AuditFinding& each : report.findings)
        rows.push_back({severityName(each), hostkit::auditCheckName(each.check), each.type, handleText(each),
                        each.text});
    if (!report.findings.empty()) printTable(rows, "lllll");
    if (report.findings.size() < report.faultCount() + report.remarkCount())
        acutPrintf(L"Only the first findings of each check are listed.\n");
    acutPrintf(L"%s\n", summaryOf(report).c_str());
}

std::string asJson(const hostkit::AuditReport& report) {
    std::string json = "{\"objects\":" + std::to_string(report.objects) +
                       ",\"faults\":" + std::to_string(report.faultCount()) +
                       ",\"remarks\":" + std::to_string(report.remarkCount()) + ",\"findings\":[";
    std::string_view separator = "\n";
    for (const hostkit::AuditFinding& each : report.findings) {
        json += separator;
        separator = ",\n";
        const std::pair<const char*, std::wstring> fields[] = {
            {"severity", severityName(each)},
            {"check", hostkit::auditCheckName(each.check)},
            {"type", each.type},
            {"handle", handleText(each)},
            {"finding", each.text},
        };
        char mark = '{';
        for (const auto& [name, value] : fields) {
            ((json += mark) += '"') += name;
            hostkit::appendJsonText(value, json += "\":");
            mark = ',';
        }
        json += '}';
    }
    return json + "]}";
}

} // namespace

void auditCommand() {
    const AcApDocument* const document = documentOrFail();
    if (!document) return;
    CString form(L"Table");
    acedInitGet(0, L"Table Json");
    const int answer = acedGetKword(L"Form [Table/Json] <Table>: ", form);
    if (answer == RTREJ) return hostkit::failCommand(Acad::eInvalidInput, L"the form is TABLE or JSON");
    if (answer != RTNORM && answer != RTNONE) return;
    const hostkit::AuditReport report = hostkit::auditDrawing(*document->database());
    if (form == L"Table")
        printReport(report);
    else
        offerText(asJson(report));
    if (report.faultCount() > 0)
        hostkit::failCommand(Acad::eDwgObjectImproperlyRead,
                             L"the drawing has " + counted(report.faultCount(), L"fault"));
}
