#pragma once

class AcEdCommandStack;

/// Adds the console's own commands as the group CONSOLE. They need a running session (consoleState).
void registerBuiltinCommands(AcEdCommandStack& stack);
