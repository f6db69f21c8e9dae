// Reading of a command's answers: the frame of every call that asks, keywords and points; leaves out the
// kinds of values, which the calls know.
#pragma once

#include "commandinput.h"

#include "adesk.h"

#include <functional>
#include <string>
#include <string_view>

namespace hostkit {

struct RunningCommand;

/// What acedInitGet asked for holds for one call: it is taken out of the command as the call begins.
struct AnswerRequest {
    int flags = 0;
    std::wstring keywords{};
};
AnswerRequest takeRequest(RunningCommand& command);

/// Null when no command runs.
RunningCommand* commandThatReads();

/// The keyword of a list that was typed: whole, or shortened to no less than its capital letters, in any
/// case, with an underscore in front or without. False for a word that is none.
bool findKeyword(std::wstring_view keywords, std::wstring_view typed, std::wstring& found);
/// RTKWORD, and the command remembers the keyword for acedGetInput; RTREJ for a word that is none of the
/// request's.
int takeKeyword(const std::wstring& typed, const AnswerRequest& request, RunningCommand& command);
/// "x,y" or "x,y,z"; "@" in front is relative to the base point, where one is given.
bool parseAnsweredPoint(std::wstring_view text, const ads_real* base, ads_point point);

/// RTNORM, RTKWORD, or RTREJ for an answer that is not of the wanted kind.
using ParseAnswer =
    std::function<int(const std::wstring& text, const AnswerRequest& request, RunningCommand& command)>;
/// Asks until an answer is taken: transparent commands run in between, Enter is RTNONE where the request does
/// not forbid it, an answer that is refused is told as "is no <wanted>", with the bounds and keywords of the
/// request, and asked for again where a person sits. A quotation mark that is not closed is refused likewise,
/// and fails a command whose line stands by itself. Results as in aced.h.
int readAnswer(const wchar_t* prompt, bool wholeLine, const wchar_t* wanted, const ParseAnswer& parse);

} // namespace hostkit
