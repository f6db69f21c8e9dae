#include "tableoutput.h"

#include "aced.h"
#include "modulecommand.h"

TableOutput::Form tableForm(const CString& keyword) {
    if (keyword == L"CSV") return TableOutput::Form::csv;
    return keyword == L"Json" ? TableOutput::Form::json : TableOutput::Form::text;
}

bool giveOut(const TableOutput& output, const std::wstring& table, const std::wstring& content) {
    if (output.file.name.empty()) {
        acutPrintf(L"%s", table.c_str());
        return true;
    }
    if (!hostkit::writeOutputFile(output.file, std::wstring_view(table))) return false;
    if (!hostkit::isStandardOutput(output.file.name))
        acutPrintf(L"%s: %s\n", output.file.name.c_str(), content.c_str());
    return true;
}
