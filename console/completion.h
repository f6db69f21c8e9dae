#pragma once

#include "lineeditor.h"

/// Of a command's line up to the cursor: names of commands for its first word; behind it names of files where
/// the command takes one, of commands behind HELP, of system variables behind SETVAR. Needs a current host.
Completion completeCommand(std::wstring_view line);

/// Of an answer: names of files. Folders end with '/'; a name that begins with a dot only where the word
/// does.
Completion completeFile(std::wstring_view line);
