// One loop of a hatch as closed contours; leaves out how loops lie in each other.
#pragma once

#include "hatcharea.h"

#include <vector>

namespace hostkit {

/// The loop's chain of edges or its polyline, and each edge that is closed by itself. Empty for a loop
/// without edges, and for one with values that are no numbers or beyond 1e100. Deviation as for HatchArea.
std::vector<HatchContour> contoursOf(const HatchLoop& loop, double deviation);

} // namespace hostkit
