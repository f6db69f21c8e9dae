#pragma once

/// The name under which the base library finds this module's string table; constant, and good before the module has
/// finished its attach.
extern "C" const wchar_t* getModulePromptsProjectName();
