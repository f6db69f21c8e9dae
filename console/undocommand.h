#pragma once

/// The console's command UNDO [COUNT].
void undoCommand();
