#pragma once

#include "rxdefs.h"
#include "windows.h"

/// The host's entry for a loadable module. On AcRx::kInitAppMsg it unlocks the module (it may be unloaded)
/// and declares it safe for several documents; all other messages do nothing. Always AcRx::kRetOK. `packet`
/// is the host's own.
extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet);

/// Attach (reason 1) keeps the instance, joins the chain of extension modules and reads the three order
/// colours from the user's settings, writing back those that are absent; 0, and the load fails, only when the
/// extension module cannot be set up. Detach (reason 0) leaves the chain. All other reasons give 1.
extern "C" BOOL DllMain(HINSTANCE instance, DWORD reason, void* reserved);

/// The name under which the base library finds this module's string table; constant, and good before the
/// module has finished its attach.
extern "C" const wchar_t* getModulePromptsProjectName();
