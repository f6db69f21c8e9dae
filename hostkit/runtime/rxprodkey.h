// Stand-in for the host's product key. Covers acrxProductKey; leaves out the localised product names.
#pragma once

#include "runtimeservices.h"
