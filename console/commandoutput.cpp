#include "commandoutput.h"

#include "acdocman.h"
#include "aced.h"
#include "consoleport.h"
#include "consoletext.h"
#include "host.h"
#include "jsontext.h"
#include "modulecommand.h"
#include "textencoding.h"

AcApDocument* documentOrFail() {
    AcApDocument* document = acDocManagerPtr()->curDocument();
    if (!document) hostkit::failCommand(Acad::eNoDocument, L"no drawing is open");
    return document;
}

std::optional<ReportForm> readReportForm(bool* ofSelection) {
    for (;;) {
        CString form;
        acedInitGet(0, ofSelection ? L"Table Json Selected" : L"Table Json");
        const int answer = acedGetKword(
            ofSelection ? L"Form [Table/Json/Selected] <Table>: " : L"Form [Table/Json] <Table>: ", form);
        if (answer == RTREJ) hostkit::failCommand(Acad::eInvalidInput, L"the form is TABLE or JSON");
        if (answer != RTNORM && answer != RTNONE) return std::nullopt;
        if (form != L"Selected") return form == L"Json" ? ReportForm::json : ReportForm::table;
        *ofSelection = true;
    }
}

void printTable(const std::vector<std::vector<std::wstring>>& rows, std::string_view alignment) {
    hostkit::printToCommandLine(formatTable(rows, alignment, ConsolePort::shownColumns()));
}

void offerText(const std::string& text) {
    hostkit::OutputFile file;
    if (!hostkit::readOutputFile(L"File <command line>: ", file)) return;
    if (file.name.empty())
        hostkit::printToCommandLine(hostkit::wideFromUtf8(text) + L"\n");
    else
        (void)hostkit::writeOutputFile(file, text + "\n"); // a failure is the command's
}

std::wstring handleText(AcDbHandle handle) {
    wchar_t text[17] = {};
    if (!handle.isNull()) (void)handle.getIntoAsciiBuffer(text);
    return text;
}

void appendField(const char* name, std::wstring_view text, std::string& json) {
    (json += '"') += name;
    hostkit::appendJsonText(text, json += "\":");
}
