#pragma once

#include <string>

/// What the console's own commands share with the session that runs them.
struct ConsoleState {
    std::wstring drawing; ///< the file that was opened; empty for a new drawing
    bool wantsToQuit = false;
};

/// The state of the running session; good while one runs, which is when commands run.
ConsoleState& consoleState();

/// True when both name the same existing file, by whatever path.
bool isSameFile(const std::wstring& first, const std::wstring& second);
