#include "answerreading.h"

#include "aced.h"
#include "casefold.h"
#include "host.h"
#include "numbertext.h"

namespace hostkit {
namespace {

// The start of a keyword that must be typed: up to its last capital letter, all of it where it has none.
std::size_t leastLength(std::wstring_view keyword) {
    for (std::size_t i = keyword.size(); i > 0; --i)
        if (foldCase(keyword[i - 1]) != keyword[i - 1]) return i;
    return keyword.size();
}

// "whole number above 0, nor Fill or OVERWRITE"
std::wstring wantedBy(const AnswerRequest& request, const wchar_t* wanted) {
    const bool isNoZero = (request.flags & RSG_NOZERO) != 0;
    std::wstring text = wanted;
    if (request.flags & RSG_NONEG)
        text += isNoZero ? L" above 0" : L" of 0 or more";
    else if (isNoZero)
        text += L" but 0";
    CommandInput list(request.keywords, MoreInput::none);
    const wchar_t* joint = L", nor ";
    for (std::wstring keyword; list.nextWord(keyword); joint = L" or ") text += joint + keyword;
    return text;
}

void refuse(const RunningCommand& command, const std::wstring& answer, const std::wstring& wanted) {
    acutPrintf(L"\n%s: \"%s\" is no %s.\n", command.globalName.c_str(), answer.c_str(), wanted.c_str());
}

// A person is asked again; of a line that stands by itself the rest cannot be meant.
void refuseUnclosed(const RunningCommand& command, const std::wstring& answer) {
    const std::wstring reason = unclosedMark(answer);
    if (command.input.more() == MoreInput::none)
        failCommand(Acad::eInvalidInput, reason);
    else
        acutPrintf(L"\n%s: %s.\n", command.globalName.c_str(), reason.c_str());
}

// A transparent command given at a prompt, behind an apostrophe: it runs with answers of its own, and the
// prompt comes again. False for any other answer; an apostrophe may begin a text.
bool runTransparently(const std::wstring& text, const RunningCommand& command) {
    Host* host = Host::current();
    if (text.size() < 2 || text.front() != L'\'') return false;
    const AcEdCommand* called = host->commands().lookupTyped(text.c_str());
    if (!called || !(called->commandFlags() & ACRX_CMD_TRANSPARENT)) return false;
    const CommandResult result = host->run(quotedWord(text), command.input.more());
    if (result.status != Acad::eOk)
        acutPrintf(L"\n%s: %s (%s)\n", text.c_str(), result.reason.c_str(),
                   acadErrorStatusText(result.status));
    return true;
}

} // namespace

RunningCommand* commandThatReads() {
    Host* host = Host::current();
    return host ? host->runningCommand() : nullptr;
}

bool findKeyword(std::wstring_view keywords, std::wstring_view typed, std::wstring& found) {
    if (typed.starts_with(L'_')) typed.remove_prefix(1);
    if (typed.empty()) return false;
    CommandInput list(keywords, MoreInput::none);
    for (std::wstring keyword; list.nextWord(keyword);) {
        const bool isShortForm = typed.size() >= leastLength(keyword) && typed.size() <= keyword.size() &&
                                 equalFolded(typed, keyword.substr(0, typed.size()));
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
    if (!parsePoint(text, point)) return false;
    for (int i = 0; isRelative && i < 3; ++i) point[i] += base[i];
    return true;
}

AnswerRequest takeRequest(RunningCommand& command) {
    AnswerRequest request{command.inputFlags, std::move(command.keywords)};
    command.inputFlags = 0;
    command.keywords.clear();
    command.lastKeyword.clear();
    return request;
}

int takeKeyword(const std::wstring& typed, const AnswerRequest& request, RunningCommand& command) {
    std::wstring keyword;
    if (!findKeyword(request.keywords, typed, keyword)) return RTREJ;
    command.lastKeyword = keyword;
    return RTKWORD;
}

int readAnswer(const wchar_t* prompt, bool wholeLine, const wchar_t* wanted, const ParseAnswer& parse) {
    RunningCommand* command = commandThatReads();
    if (!command) return RTERROR;
    const AnswerRequest request = takeRequest(*command);
    for (;;) {
        if (acedUsrBrk()) return RTCAN;
        const Answer answer = command->input.next(prompt ? prompt : L"", wholeLine);
        if (answer.kind == Answer::Kind::cancelled) return RTCAN;
        if (answer.kind == Answer::Kind::end) return RTERROR;
        const bool isEnter =
            answer.kind == Answer::Kind::enter || (answer.text.empty() && !command->input.isUnclosed());
        if (isEnter) {
            if (!(request.flags & RSG_NONULL)) return RTNONE;
            if (command->input.more() == MoreInput::none) return RTREJ;
            continue;
        }
        if (command->input.isUnclosed()) {
            refuseUnclosed(*command, answer.text);
        } else {
            if (runTransparently(answer.text, *command)) continue;
            const int result = parse(answer.text, request, *command);
            if (result != RTREJ) return result;
            refuse(*command, answer.text, wantedBy(request, wanted));
        }
        if (command->input.more() == MoreInput::none) return RTREJ;
    }
}

} // namespace hostkit
