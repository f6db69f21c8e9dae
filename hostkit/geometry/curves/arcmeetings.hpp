// How arcs meet lines and each other in one plane. Internal to the geometry kit.
#pragma once

#include "gearc2d.h"
#include "gelent2d.h"

namespace AcGeKernel {

/// What an arc has in common with a line or another arc: single points, and runs along one circle with their
/// parameter ranges. A range on the first arc may go past its end angle when the arc is a full circle.
template <class T>
struct ArcMeetings {
    struct Run {
        AcGeInterval onFirst;
        AcGeInterval onSecond;
    };
    int pointCount = 0;
    typename T::Point points[4];
    int runCount = 0;
    Run runs[2];
};

/// In the order of the line.
ArcMeetings<Plane> meetLineArc(const AcGeLinearEnt2d& line, const AcGeCircArc2d& arc, const AcGeTol& tol);
/// In the order of the first arc; at most two points, or runs and touching ends on one circle.
ArcMeetings<Plane> meetArcArc(const AcGeCircArc2d& first, const AcGeCircArc2d& second, const AcGeTol& tol);

/// A point common to both curves near a candidate that lies on the curves without their bounds: the candidate
/// itself, or the end of one of them that it lies a little beyond, when that end is on the other. False when
/// there is none.
template <class Point, class CurveA, class CurveB>
bool settleOnBoth(const CurveA& a, const CurveB& b, Point& candidate, const AcGeTol& tol) {
    if (a.isOn(candidate, tol) && b.isOn(candidate, tol)) return true;
    const Point onA = a.closestPointTo(candidate, tol);
    if (b.isOn(onA, tol)) {
        candidate = onA;
        return true;
    }
    const Point onB = b.closestPointTo(candidate, tol);
    if (!a.isOn(onB, tol)) return false;
    candidate = onB;
    return true;
}

} // namespace AcGeKernel
