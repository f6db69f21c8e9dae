// How arcs meet lines and each other in space. Internal to the geometry kit.
#pragma once

#include "arcmeetings.hpp"
#include "gearc3d.h"
#include "gelent3d.h"

namespace AcGeKernel {

ArcMeetings<Space> meetLineArc(const AcGeLinearEnt3d& line, const AcGeCircArc3d& arc, const AcGeTol& tol);
ArcMeetings<Space> meetArcArc(const AcGeCircArc3d& first, const AcGeCircArc3d& second, const AcGeTol& tol);

} // namespace AcGeKernel
