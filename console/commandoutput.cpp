#include "commandoutput.h"

#include "acdocman.h"
#include "aced.h"
#include "atomicfile.h"
#include "consoletext.h"
#include "host.h"
#include "jsontext.h"
#include "systempath.h"
#include "textencoding.h"

AcApDocument* documentOrFail() {
    AcApDocument* document = acDocManagerPtr()->curDocument();
    if (!document) hostkit::failCommand(Acad::eNoDocument, L"no drawing is open");
    return document;
}

std::optional<ReportForm> readReportForm() {
    CString form;
    acedInitGet(0, L"Table Json");
    const int answer = acedGetKword(L"Form [Table/Json] <Table>: ", form);
    if (answer == RTREJ) hostkit::failCommand(Acad::eInvalidInput, L"the form is TABLE or JSON");
    if (answer != RTNORM && answer != RTNONE) return std::nullopt;
    return form == L"Json" ? ReportForm::json : ReportForm::table;
}

void printTable(const std::vector<std::vector<std::wstring>>& rows, std::string_view alignment) {
    hostkit::printToCommandLine(formatTable(rows, alignment));
}

bool writeTextFile(const std::wstring& file, const std::string& bytes) {
    hostkit::AtomicFile target(hostkit::mapPath(file));
    target.write(bytes);
    if (target.commit()) return true;
    hostkit::failCommand(Acad::eFileAccessErr, file + L": " + hostkit::wideFromUtf8(target.errorText()));
    return false;
}

void offerText(const std::string& text) {
    CString file;
    if (acedGetString(0, L"File <command line>: ", file) != RTNORM) return;
    if (file.IsEmpty())
        hostkit::printToCommandLine(hostkit::wideFromUtf8(text) + L"\n");
    else
        writeTextFile(file.GetString(), text + "\n");
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
