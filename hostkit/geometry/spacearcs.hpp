// How arcs meet lines and each other in space. Internal to the geometry kit.
#pragma once

#include "gearc3d.h"
#include "gelent3d.h"

namespace AcGeKernel {

/// The meetings of the plane (see ArcMeetings) with points in space.
struct SpaceArcMeetings {
    struct Run {
        AcGeInterval onFirst;
        AcGeInterval onSecond;
    };
    int pointCount = 0;
    AcGePoint3d points[4];
    int runCount = 0;
    Run runs[2];
};

SpaceArcMeetings meetLineArc(const AcGeLinearEnt3d& line, const AcGeCircArc3d& arc, const AcGeTol& tol);
SpaceArcMeetings meetArcArc(const AcGeCircArc3d& first, const AcGeCircArc3d& second, const AcGeTol& tol);

} // namespace AcGeKernel
