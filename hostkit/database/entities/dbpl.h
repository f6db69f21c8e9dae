// Stand-in for the host's light polyline header. Covers AcDbPolyline; leaves out nothing.
#pragma once

#include "dbpolyline.h"
