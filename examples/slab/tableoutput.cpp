#include "tableoutput.h"

#include "aced.h"
#include "atomicfile.h"
#include "host.h"
#include "systempath.h"
#include "textencoding.h"

TableOutput::Form tableForm(const CString& keyword) {
    if (keyword == L"CSV") return TableOutput::Form::csv;
    return keyword == L"Json" ? TableOutput::Form::json : TableOutput::Form::text;
}

bool giveOut(const TableOutput& output, const std::wstring& table, const std::wstring& content) {
    if (output.file.IsEmpty()) {
        acutPrintf(L"%s", table.c_str());
        return true;
    }
    hostkit::AtomicFile target(hostkit::mapPath(output.file.view()));
    target.write(hostkit::utf8FromWide(table));
    if (!target.commit()) {
        CString reason;
        reason.Format(L"%s: %s", output.file, hostkit::wideFromUtf8(target.errorText()).c_str());
        hostkit::failCommand(Acad::eFileAccessErr, reason.view());
        return false;
    }
    acutPrintf(L"%s: %s\n", output.file, content.c_str());
    return true;
}
