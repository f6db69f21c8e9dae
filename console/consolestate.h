#pragma once

/// What the console's own commands share with the session that runs them.
struct ConsoleState {
    bool wantsToQuit = false;
};

/// The state of the running session; good while one runs, which is when commands run.
ConsoleState& consoleState();
