// Stand-in for the host's ellipse header. Covers AcDbEllipse; leaves out nothing.
#pragma once

#include "dbellipse.h"
