// Stand-in for the host's services around modules. Covers the names of the loaded ones; leaves out loading, which is the dynamic linker's.
#pragma once

#include "acarray.h"

/// The file names, without directory, of the loaded modules in the order of loading. The array and its texts
/// belong to the caller: each text goes with acutDelString, the array with delete. Null when there is no
/// host.
AcArray<wchar_t*>* acrxLoadedApps();
