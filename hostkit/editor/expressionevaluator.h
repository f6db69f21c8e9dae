// Expression evaluator: the expressions that tools queue: setvar, getvar, command, list and progn; leaves out
// the rest of the language.
#pragma once

#include <string>
#include <string_view>

namespace hostkit {

class Host;
struct CommandResult;
struct SystemValue;

/// Evaluates the expressions of a text one after the other, in the host. What is understood: (setvar "NAME"
/// value), (getvar "NAME"), (command word...), (list x y [z]), (progn expression...), texts in quotation
/// marks with the codes \\ \" \n \r \t \e, whole numbers in 32 bits, finite reals, nil and T. A text of
/// (command) that is blank, or ends in a line end, is Enter or the word without it; numbers and points are
/// words too. (command) and nil in it cancel.
///
/// True when all was done. Else the problem is one sentence with the expression, and what stands behind the
/// fault is not evaluated: an unbalanced text is refused as a whole, before any of it is done.
bool evaluateExpression(Host& host, std::wstring_view text, std::wstring& problem);

/// Puts a value behind the words of a line that a program gives to the command line.
void appendCommandWord(std::wstring& line, const SystemValue& value);
/// Runs such a line by Host::runAll, printed first where CMDECHO says so.
CommandResult runCommandLine(Host& host, std::wstring_view line);

} // namespace hostkit
