#pragma once

#include "acadstrc.h"

/// The commands that open, save and leave drawings. What would lose changes asks a person first: save,
/// discard, or stay.
void openCommand();
void recoverCommand();
void newCommand();
void saveCommand();
void saveAsCommand();
void quitCommand();

/// What the refusal of a damaged drawing adds; empty for other statuses.
const wchar_t* hintOfRecovery(Acad::ErrorStatus status);
