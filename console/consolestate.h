#pragma once

class RunRecord;

/// What the console's own commands share with the session that runs them.
struct ConsoleState {
    bool wantsToQuit = false;
    bool keepsGoing = false;     ///< behind a command of a script or list that failed
    RunRecord* record = nullptr; ///< where one is kept
    bool hasThrown = false;      ///< a command ended by an exception
    bool savesAtEnd = false;     ///< --output takes what is there when the program ends
};

/// The state of the running session; good while one runs, which is when commands run.
ConsoleState& consoleState();
