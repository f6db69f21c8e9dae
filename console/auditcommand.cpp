#include "auditcommand.h"

#include "acdocman.h"
#include "aced.h"
#include "commandoutput.h"
#include "consoletext.h"
#include "drawingaudit.h"
#include "host.h"

namespace {

const wchar_t* severityName(const hostkit::AuditFinding& finding) {
    return finding.severity == hostkit::AuditSeverity::kFault ? L"fault" : L"remark";
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
        rows.push_back({severityName(each), hostkit::auditCheckName(each.check), each.type,
                        handleText(AcDbHandle(each.handle)), each.text});
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
        appendField("severity", severityName(each), json += '{');
        appendField("check", hostkit::auditCheckName(each.check), json += ',');
        appendField("type", each.type, json += ',');
        appendField("handle", handleText(AcDbHandle(each.handle)), json += ',');
        appendField("finding", each.text, json += ',');
        json += '}';
    }
    return json + "]}";
}

} // namespace

void auditCommand() {
    const AcApDocument* const document = documentOrFail();
    if (!document) return;
    const std::optional<ReportForm> form = readReportForm();
    if (!form) return;
    const hostkit::AuditReport report = hostkit::auditDrawing(*document->database());
    if (*form == ReportForm::table)
        printReport(report);
    else
        offerText(asJson(report));
    if (report.faultCount() > 0)
        hostkit::failCommand(Acad::eDwgObjectImproperlyRead,
                             L"the drawing has " + counted(report.faultCount(), L"fault"));
}
