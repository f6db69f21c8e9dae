#include "aced.h"

#include "casefold.h"
#include "host.h"
#include "numbertext.h"
#include "windows.h"

#include <algorithm>
#include <cerrno>
#include <cwchar>
#include <limits>

namespace hostkit {

int printToCommandLine(std::wstring_view text) {
    currentPort()->print(text);
    return RTNORM;
}

} // namespace hostkit

namespace {

using hostkit::Answer;
using hostkit::Host;
using hostkit::RunningCommand;

RunningCommand* runningCommand() {
    Host* host = Host::current();
    return host ? host->runningCommand() : nullptr;
}

// The start of a keyword that must be typed: up to its last capital letter, all of it where it has none.
std::size_t leastLength(std::wstring_view keyword) {
    for (std::size_t i = keyword.size(); i > 0; --i)
        if (hostkit::foldCase(keyword[i - 1]) != keyword[i - 1]) return i;
    return keyword.size();
}

bool findKeyword(const std::wstring& keywords, std::wstring_view typed, std::wstring& found) {
    if (typed.starts_with(L'_')) typed.remove_prefix(1);
    if (typed.empty()) return false;
    hostkit::CommandInput list(keywords, hostkit::MoreInput::none);
    for (std::wstring keyword; list.nextWord(keyword);) {
        const bool isShortForm = typed.size() >= leastLength(keyword) && typed.size() <= keyword.size() &&
                                 hostkit::equalFolded(typed, keyword.substr(0, typed.size()));
        if (!isShortForm) continue;
        found = keyword;
        return true;
    }
    return false;
}

bool parseAnsweredPoint(std::wstring_view text, const ads_real* base, ads_point point) {
    const bool isRelative = text.starts_with(L'@');
    if (isRelative) text.remove_prefix(1);
    if (isRelative && !base) return false;
    if (!hostkit::parsePoint(text, point)) return false;
    for (int i = 0; isRelative && i < 3; ++i) point[i] += base[i];
    return true;
}

// What acedInitGet asked for holds for one call: it is taken out of the command as the call begins.
struct Request {
    int flags;
    std::wstring keywords;
};

Request takeRequest(RunningCommand& command) {
    Request request{command.inputFlags, std::move(command.keywords)};
    command.inputFlags = 0;
    command.keywords.clear();
    command.lastKeyword.clear();
    return request;
}

int refuse(const RunningCommand& command, const std::wstring& answer, const wchar_t* wanted) {
    acutPrintf(L"\n%s: \"%s\" is no %s.\n", command.globalName.c_str(), answer.c_str(), wanted);
    return RTREJ;
}

// A transparent command given at a prompt, behind an apostrophe: it runs with answers of its own, and the
// prompt comes again. False for any other answer; an apostrophe may begin a text.
bool runTransparently(const std::wstring& text, const RunningCommand& command) {
    Host* host = Host::current();
    if (text.size() < 2 || text.front() != L'\'') return false;
    const AcEdCommand* called = host->commands().lookupTyped(text.c_str());
    if (!called || !(called->commandFlags() & ACRX_CMD_TRANSPARENT)) return false;
    const hostkit::CommandResult result = host->run(hostkit::quotedWord(text), command.input.more());
    if (result.status != Acad::eOk)
        acutPrintf(L"\n%s: %s (%s)\n", text.c_str(), result.reason.c_str(),
                   acadErrorStatusText(result.status));
    return true;
}

// The frame of every reading call. `parse` gives RTNORM, or RTREJ for an answer that is not of the wanted
// kind.
template <class Parse>
int readAnswer(const wchar_t* prompt, bool wholeLine, const wchar_t* wanted, Parse parse) {
    RunningCommand* command = runningCommand();
    if (!command) return RTERROR;
    const Request request = takeRequest(*command);
    for (;;) {
        if (acedUsrBrk()) return RTCAN;
        const Answer answer = command->input.next(prompt ? prompt : L"", wholeLine);
        if (answer.kind == Answer::Kind::cancelled) return RTCAN;
        if (answer.kind == Answer::Kind::end) return RTERROR;
        if (answer.kind == Answer::Kind::enter) {
            if (!(request.flags & RSG_NONULL)) return RTNONE;
            if (command->input.more() == hostkit::MoreInput::none) return RTREJ;
            continue;
        }
        if (runTransparently(answer.text, *command)) continue;
        const int result = parse(answer.text, request, *command);
        if (result != RTREJ) return result;
        refuse(*command, answer.text, wanted);
        if (command->input.more() == hostkit::MoreInput::none) return RTREJ;
    }
}

int takeKeyword(const std::wstring& typed, const Request& request, RunningCommand& command) {
    std::wstring keyword;
    if (!findKeyword(request.keywords, typed, keyword)) return RTREJ;
    command.lastKeyword = keyword;
    return RTKWORD;
}

template <class Number>
bool isAllowed(Number value, int flags) {
    return !((flags & RSG_NOZERO) && value == 0) && !((flags & RSG_NONEG) && value < 0);
}

bool copyInto(wchar_t* buffer, std::size_t length, const CString& text) {
    if (!buffer || static_cast<std::size_t>(text.GetLength()) >= length) return false;
    std::wmemcpy(buffer, text.GetString(), static_cast<std::size_t>(text.GetLength()) + 1);
    return true;
}

} // namespace

int acedInitGet(int flags, const wchar_t* keywords) {
    RunningCommand* command = runningCommand();
    if (!command) return RTERROR;
    command->inputFlags = flags;
    command->keywords = keywords ? keywords : L"";
    return RTNORM;
}

int acedGetString(int cronly, const wchar_t* prompt, CString& result) {
    const int status = readAnswer(prompt, cronly != 0, L"text",
                                  [&](const std::wstring& text, const Request&, RunningCommand&) {
                                      result = text.c_str();
                                      return RTNORM;
                                  });
    if (status != RTNONE) return status;
    result.Empty();
    return RTNORM;
}

int acedGetString(int cronly, const wchar_t* prompt, wchar_t* result, std::size_t bufferLength) {
    if (!result) return RTERROR;
    CString text;
    const int status = acedGetString(cronly, prompt, text);
    if (status != RTNORM) return status;
    return copyInto(result, bufferLength, text) ? RTNORM : RTREJ;
}

int acedGetInt(const wchar_t* prompt, int* result) {
    if (!result) return RTERROR;
    return readAnswer(prompt, false, L"whole number",
                      [&](const std::wstring& text, const Request& request, RunningCommand& command) {
                          wchar_t* end = nullptr;
                          errno = 0;
                          const long long value = std::wcstoll(text.c_str(), &end, 10);
                          const bool isWhole = *end == 0 && errno == 0 &&
                                               value >= std::numeric_limits<int>::min() &&
                                               value <= std::numeric_limits<int>::max();
                          if (!isWhole || !isAllowed(value, request.flags))
                              return takeKeyword(text, request, command);
                          *result = static_cast<int>(value);
                          return RTNORM;
                      });
}

int acedGetReal(const wchar_t* prompt, ads_real* result) {
    if (!result) return RTERROR;
    return readAnswer(prompt, false, L"number",
                      [&](const std::wstring& text, const Request& request, RunningCommand& command) {
                          double value = 0.0;
                          if (!hostkit::parseReal(text, value) || !isAllowed(value, request.flags))
                              return takeKeyword(text, request, command);
                          *result = value;
                          return RTNORM;
                      });
}

int acedGetPoint(const ads_real* basePoint, const wchar_t* prompt, ads_point result) {
    if (!result) return RTERROR;
    return readAnswer(prompt, false, L"point",
                      [&](const std::wstring& text, const Request& request, RunningCommand& command) {
                          return parseAnsweredPoint(text, basePoint, result)
                                     ? RTNORM
                                     : takeKeyword(text, request, command);
                      });
}

int acedGetKword(const wchar_t* prompt, CString& result) {
    return readAnswer(prompt, false, L"option of this command",
                      [&](const std::wstring& text, const Request& request, RunningCommand&) {
                          std::wstring keyword;
                          if (!findKeyword(request.keywords, text, keyword)) return RTREJ;
                          result = keyword.c_str();
                          return RTNORM;
                      });
}

int acedGetKword(const wchar_t* prompt, wchar_t* result, std::size_t bufferLength) {
    if (!result) return RTERROR;
    CString keyword;
    const int status = acedGetKword(prompt, keyword);
    if (status != RTNORM) return status;
    return copyInto(result, bufferLength, keyword) ? RTNORM : RTREJ;
}

int acedGetInput(CString& result) {
    RunningCommand* command = runningCommand();
    if (!command || command->lastKeyword.empty()) return RTERROR;
    result = command->lastKeyword.c_str();
    return RTNORM;
}

bool acedUsrBrk() { return hostkit::currentPort()->interruptRequested(); }

int acedGetEnv(const wchar_t* name, CString& value) {
    std::wstring text;
    if (!name || !*name || !hostkit::currentPort()->getEnvironment(name, text)) return RTERROR;
    value = text.c_str();
    return RTNORM;
}

int acedGetEnv(const wchar_t* name, wchar_t* value, std::size_t bufferLength) {
    CString text;
    if (!value || acedGetEnv(name, text) != RTNORM) return RTERROR;
    return copyInto(value, bufferLength, text) ? RTNORM : RTERROR;
}

int acedSetEnv(const wchar_t* name, const wchar_t* value) {
    if (!name || !*name || !value) return RTERROR;
    hostkit::currentPort()->setEnvironment(name, value);
    return RTNORM;
}

int acedSetStatusBarProgressMeter(const wchar_t* caption, int minimum, int maximum) {
    Host* host = Host::current();
    if (!host || maximum <= minimum) return -1;
    acedRestoreStatusBar();
    host->meter() = {true, minimum, maximum};
    host->port().meterStart(caption ? caption : L"", minimum, maximum);
    return 0;
}

int acedSetStatusBarProgressMeterPos(int position) {
    Host* host = Host::current();
    if (!host || !host->meter().isShown) return -1;
    host->port().meterStep(std::clamp(position, host->meter().minimum, host->meter().maximum));
    return 0;
}

void acedRestoreStatusBar() {
    Host* host = Host::current();
    if (!host || !host->meter().isShown) return;
    host->meter().isShown = false;
    host->port().meterStop();
}

int acedAlert(const wchar_t* text) {
    MessageBoxW(adsw_acadMainWnd(), text ? text : L"", L"", MB_OK | MB_ICONEXCLAMATION);
    return RTNORM;
}
