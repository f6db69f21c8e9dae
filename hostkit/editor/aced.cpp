#include "aced.h"

#include "answerreading.h"
#include "host.h"
#include "numbertext.h"
#include "wildcardpattern.h"
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

int acutWcMatch(const wchar_t* text, const wchar_t* pattern) {
    if (!text || !pattern) return RTERROR;
    return hostkit::WildcardPattern(pattern, hostkit::LetterCase::kExact).matches(text) ? RTNORM : RTERROR;
}

namespace {

using hostkit::AnswerRequest;
using hostkit::commandThatReads;
using hostkit::Host;
using hostkit::readAnswer;
using hostkit::RunningCommand;
using hostkit::takeKeyword;

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
    RunningCommand* command = commandThatReads();
    if (!command) return RTERROR;
    command->inputFlags = flags;
    command->keywords = keywords ? keywords : L"";
    return RTNORM;
}

int acedGetString(int cronly, const wchar_t* prompt, CString& result) {
    const int status = readAnswer(prompt, cronly != 0, L"text",
                                  [&](const std::wstring& text, const AnswerRequest&, RunningCommand&) {
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
                      [&](const std::wstring& text, const AnswerRequest& request, RunningCommand& command) {
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
                      [&](const std::wstring& text, const AnswerRequest& request, RunningCommand& command) {
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
                      [&](const std::wstring& text, const AnswerRequest& request, RunningCommand& command) {
                          return hostkit::parseAnsweredPoint(text, basePoint, result)
                                     ? RTNORM
                                     : takeKeyword(text, request, command);
                      });
}

int acedGetKword(const wchar_t* prompt, CString& result) {
    return readAnswer(prompt, false, L"option of this command",
                      [&](const std::wstring& text, const AnswerRequest& request, RunningCommand&) {
                          std::wstring keyword;
                          if (!hostkit::findKeyword(request.keywords, text, keyword)) return RTREJ;
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
    RunningCommand* command = commandThatReads();
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
