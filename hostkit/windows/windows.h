// Stand-in for the host's platform kit. Covers files, modules, registry, clock and message boxes by their wide names, windows and drawing; leaves out starting processes.
#pragma once

#include "tchar.h"
#include "winbase.h"
#include "windowstypes.h"
#include "winreg.h"
#include "winuser.h"
