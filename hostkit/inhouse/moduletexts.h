// Texts of loaded modules: attached modules and those linked by the program; leaves out modules that export
// no table.
#pragma once

#include "stringtable.h"
#include "windows.h"

namespace hostkit {

/// The table of the attached or linked module with that prompts project name, or null.
const StringTable* stringTableOfProject(const wchar_t* project);
/// The module's own table, or null.
const StringTable* stringTableOfModule(HINSTANCE instance);
/// This layer's own module, which stands for "Skeleton10-9" and brings its icons.
HINSTANCE inhouseModule();
/// The attached module with that prompts project name or file name, or null. "Skeleton10-9" is always there.
HINSTANCE attachedModule(const wchar_t* name);

} // namespace hostkit
