#pragma once

/// The commands that open, save and leave drawings. What would lose changes asks a person first: save,
/// discard, or stay.
void openCommand();
void newCommand();
void saveCommand();
void saveAsCommand();
void quitCommand();
