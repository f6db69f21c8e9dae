// Stand-in for the host's header of dimensions. Covers every class of dimensions; leaves out nothing callers ask for.
#pragma once

#include "dbaligneddimension.h"
#include "dbdimension.h"
#include "dbrotateddimension.h"
