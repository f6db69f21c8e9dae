#pragma once

/// The commands U and UNDO [COUNT].
void uCommand();
/// The command REDO [COUNT].
void redoCommand();
void undoCommand();
