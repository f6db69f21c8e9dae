#include "modulecommand.h"

#include "aced.h"
#include "casefold.h"
#include "host.h"
#include "hostport.h"
#include "textencoding.h"

namespace hostkit {

namespace {

bool failUnless(const std::wstring& reason) {
    if (!reason.empty()) failCommand(Acad::eFileAccessErr, reason);
    return reason.empty();
}

std::wstring_view restOfLine() {
    const RunningCommand* const command = Host::current() ? Host::current()->runningCommand() : nullptr;
    return command ? command->input.rest() : std::wstring_view();
}

constexpr std::wstring_view overwrite = L"OVERWRITE";

// A name without quotation marks is all that is left of the line, but for that word.
void takeWordOff(OutputFile& file) {
    const std::size_t blank = file.name.find_last_of(L" \t");
    if (blank == std::wstring::npos || !equalFolded(file.name.substr(blank + 1), overwrite)) return;
    file.name.erase(file.name.find_last_not_of(L" \t", blank) + 1);
    file.mayReplace = true;
}

// What stands behind the name on the line, or a person's answer where a file is in the way.
bool readOverwrite(OutputFile& file) {
    const bool hasWord = !restOfLine().empty();
    if (!hasWord && !currentPort()->outputs().asksForReplacing(file.name)) return true;
    CString word;
    acedInitGet(0, overwrite.data());
    const int answer =
        acedGetKword((file.name + L" is there already [OVERWRITE] <leave it>: ").c_str(), word);
    file.mayReplace = answer == RTNORM;
    if (answer == RTREJ)
        failCommand(Acad::eInvalidInput, L"behind a file in quotation marks stands OVERWRITE or nothing");
    return answer == RTNORM || answer == RTNONE;
}

} // namespace

void failCommand(Acad::ErrorStatus status, std::wstring_view reason) {
    RunningCommand* const command = Host::current() ? Host::current()->runningCommand() : nullptr;
    if (!command || command->result.status != Acad::eOk) return;
    command->result = {status, std::wstring(reason)};
}

bool readOutputFile(const wchar_t* prompt, OutputFile& file) {
    file = {};
    CString name;
    const bool isQuoted = restOfLine().starts_with(L'"');
    if (acedGetString(1, prompt, name) != RTNORM) return false;
    file.name = name.GetString();
    if (!isQuoted) takeWordOff(file);
    return file.name.empty() || ((file.mayReplace || readOverwrite(file)) && acceptOutputFile(file));
}

bool acceptOutputFile(const OutputFile& file, OutputFiles::Kind kind) {
    return failUnless(currentPort()->outputs().refusal(file, kind));
}

bool writeOutputFile(const OutputFile& file, std::string_view bytes) {
    return failUnless(currentPort()->outputs().write(file, bytes));
}

bool writeOutputFile(const OutputFile& file, std::wstring_view text) {
    return writeOutputFile(file, std::string_view(utf8FromWide(text)));
}

} // namespace hostkit
