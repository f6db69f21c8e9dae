#pragma once

/// The commands U and UNDO [COUNT].
void uCommand();
void undoCommand();
