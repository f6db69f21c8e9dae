// Stand-in for the host's modeller, its main header. Covers all classes that stand here; leaves out what their headers say.
#pragma once

#include "ambody.h"
#include "amerror.h"
