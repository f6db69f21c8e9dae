#pragma once

#include "options.h"

/// Does what the options ask for, from loading the library to detaching the modules. Gives one of the exit
/// codes.
int runSession(const Options& options);
