#include "debuglogoption.h"

int DebugLogOption = 0;
