#pragma once

#include "accmd.h"

#include <string>

/// The file that the code of a command stands in: a module, or the program; empty where the system does not
/// tell.
std::wstring moduleFileOf(AcRxFunctionPtr function);
