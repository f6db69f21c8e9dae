// Hatch loops as curves: both ways between a loop's edges and geometry curves, boxes; leaves out
// what is filled.
#pragma once

#include "gecurv2d.h"
#include "hatchloop.h"

#include <memory>
#include <vector>

namespace hostkit {

using LoopCurves = std::vector<std::unique_ptr<AcGeCurve2d>>;

/// A new curve for the edge; null for a spline whose counts do not fit together.
std::unique_ptr<AcGeCurve2d> curveOf(const HatchEdge& edge);
/// The loop's edges, or the segments of its polyline, with the closing one; zero-length segments are left
/// out.
LoopCurves curvesOf(const HatchLoop& loop);
/// False, and no change, for a curve that is none of the four kinds, for a spline that is empty and for
/// infinite values.
bool edgeOf(const AcGeCurve2d& curve, HatchEdge& edge);

/// The largest distance of the curves along the direction from the origin, negated for the smallest with the
/// opposite direction. -infinity for no curves.
double reachAlong(const LoopCurves& curves, const AcGeVector2d& direction);

} // namespace hostkit
