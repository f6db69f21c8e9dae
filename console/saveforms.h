#pragma once

#include "drawingwriter.h"

#include <string>
#include <string_view>

/// The words for the forms that a drawing can be saved in, separated by blanks: R12 to 2018, TEXT,
/// BINARY and DWG.
std::wstring formWords();
/// What the word says goes into the options; false, and no change, for another word. The case of letters does
/// not count.
bool applyFormWord(std::wstring_view word, hostkit::WriteOptions& options);

/// On the command line what a save in another form turned or left out, a line for each kind and fate: number,
/// kind, what it became, and the first handles. Nothing where all went over as it was.
void printFormChanges(const hostkit::FormChanges& changes);
