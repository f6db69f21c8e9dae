#include "auditcommand.h"

#include "acdocman.h"
#include "aced.h"
#include "atomicfile.h"
#include "commandoutput.h"
#include "consoletext.h"
#include "drawingaudit.h"
#include "drawingfix.h"
#include "host.h"
#include "modulecommand.h"
#include "repairoutput.h"
#include "systempath.h"
#include "textencoding.h"

#include <cerrno>
#include <cstring>

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

std::wstring lineText(std::size_t line) { return line == 0 ? std::wstring() : std::to_wstring(line); }

void printReport(const hostkit::AuditReport& report) {
    std::vector<std::vector<std::wstring>> rows = {
        {L"Severity", L"Check", L"Type", L"Handle", L"Line", L"Finding"}};
    for (const hostkit::AuditFinding& each : report.findings)
        rows.push_back({severityName(each), hostkit::auditCheckName(each.check), each.type,
                        handleText(AcDbHandle(each.handle)), lineText(each.line), onOneLine(each.text)});
    if (!report.findings.empty()) printTable(rows, "llllrl");
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
        json += ",\"line\":" + std::to_string(each.line);
        appendField("finding", each.text, json += ',');
        json += '}';
    }
    return json + "]}";
}

/// What the answers ask for: a file that need not be one that can be opened, or the drawing; the form; and
/// whether the drawing's faults are repaired.
struct AuditRequest {
    CString file;
    bool fixes = false;
    ReportForm form = ReportForm::table;
};

std::optional<AuditRequest> readRequest() {
    AuditRequest request;
    CString word;
    acedInitGet(0, L"Of Fix Table Json");
    const int answer = acedGetKword(L"File, repair or form [Of/Fix/Table/Json] <Table>: ", word);
    if (answer == RTREJ) hostkit::failCommand(Acad::eInvalidInput, L"OF FILE, FIX, TABLE or JSON is meant");
    if (answer != RTNORM && answer != RTNONE) return std::nullopt;
    request.form = word == L"Json" ? ReportForm::json : ReportForm::table;
    request.fixes = word == L"Fix";
    if (word != L"Of" && word != L"Fix") return request;
    if (word == L"Of" && acedGetString(0, L"File: ", request.file) != RTNORM) return std::nullopt;
    if (word == L"Of" && request.file.IsEmpty()) {
        hostkit::failCommand(Acad::eInvalidInput, L"the file to check is missing behind OF");
        return std::nullopt;
    }
    const std::optional<ReportForm> form = readReportForm();
    if (!form) return std::nullopt;
    request.form = *form;
    return request;
}

std::optional<hostkit::AuditReport> auditFile(const std::wstring& file) {
    std::string bytes;
    if (hostkit::readWholeFile(hostkit::mapPath(file), bytes)) return hostkit::auditDrawingText(bytes);
    hostkit::failCommand(Acad::eFileAccessErr, file + L": " + hostkit::wideFromUtf8(std::strerror(errno)));
    return std::nullopt;
}

std::optional<hostkit::AuditReport> auditOf(const AuditRequest& request) {
    if (!request.file.IsEmpty()) return auditFile(request.file.GetString());
    const AcApDocument* const document = documentOrFail();
    if (!document) return std::nullopt;
    return hostkit::auditDrawing(*document->database());
}

const wchar_t* reasonOf(Acad::ErrorStatus status) {
    switch (status) {
    case Acad::eWasOpenForRead:
        return L"an object of the drawing is open";
    case Acad::eNotApplicable:
        return L"records of this drawing have no handles; saved in a later form it has them";
    case Acad::eNotImplementedYet:
        return L"a binary drawing is repaired as text: SAVEAS FILE.dxf writes one";
    default:
        return L"the drawing cannot be repaired; saved under another name, RECOVER may open that";
    }
}

void fix(ReportForm form) {
    const AcApDocument* const document = documentOrFail();
    if (!document) return;
    hostkit::RepairReport report;
    const Acad::ErrorStatus status = hostkit::fixDrawing(*document->database(), report);
    if (status != Acad::eOk) return hostkit::failCommand(status, reasonOf(status));
    showRepairs(report, form);
    const std::size_t left = hostkit::auditDrawing(*document->database(), 1).faultCount();
    if (left > 0)
        hostkit::failCommand(Acad::eDwgObjectImproperlyRead,
                             counted(left, L"fault") + L" cannot be repaired here; AUDIT names them");
}

} // namespace

void auditCommand() {
    const std::optional<AuditRequest> request = readRequest();
    if (!request) return;
    if (request->fixes) return fix(request->form);
    const std::optional<hostkit::AuditReport> report = auditOf(*request);
    if (!report) return;
    if (request->form == ReportForm::table)
        printReport(*report);
    else
        offerText(asJson(*report));
    if (report->faultCount() > 0)
        hostkit::failCommand(Acad::eDwgObjectImproperlyRead,
                             L"the drawing has " + counted(report->faultCount(), L"fault"));
}
