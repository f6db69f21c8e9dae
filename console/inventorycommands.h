#pragma once

#include "accmd.h"

#include <string>

/// The flags of a command in words; what has no word as a number.
std::wstring commandFlagsText(Adesk::Int32 flags);

/// COMMANDS: the command stack from the top: groups, global and local names, flags.
void commandsCommand();
/// MODULES [PROCESS]: the loaded modules with what they told the loader; or all files that the process has
/// code from.
void modulesCommand();
