// Stand-in for the host's header of dimensions. Covers every class of dimensions; leaves out nothing callers ask for.
#pragma once

#include "db2lineangulardimension.h"
#include "db3pointangulardimension.h"
#include "dbaligneddimension.h"
#include "dbarcdimension.h"
#include "dbdiametricdimension.h"
#include "dbdimension.h"
#include "dbordinatedimension.h"
#include "dbradialdimension.h"
#include "dbrotateddimension.h"
