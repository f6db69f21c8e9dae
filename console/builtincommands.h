#pragma once

#include "accmd.h"

#include <span>
#include <string_view>

class AcEdCommandStack;

/// A command that leaves the implied selection to the next one.
inline constexpr Adesk::Int32 keepsSelection = ACRX_CMD_MODAL | ACRX_CMD_USEPICKSET | ACRX_CMD_REDRAW;

/// What HELP knows of a command.
struct CommandDescription {
    const wchar_t* name;
    AcRxFunctionPtr function; ///< null for a command of the host itself, which is described here alone
    const wchar_t* arguments;
    const wchar_t* help;    ///< in a few words, for a list
    const wchar_t* details; ///< sentences on the arguments; may be empty
    Adesk::Int32 flags = keepsSelection;
};

/// The console's own commands and those of the host.
std::span<const CommandDescription> describedCommands();
/// By global name, without regard to case; null for another command.
const CommandDescription* descriptionOf(std::wstring_view globalName);

/// One of these, and no module's of the same name.
bool isOwnCommand(const AcEdCommand& command);

/// Adds the console's own commands as the group CONSOLE. They need a running session (consoleState).
void registerBuiltinCommands(AcEdCommandStack& stack);
