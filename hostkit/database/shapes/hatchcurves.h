// Hatch loops as curves: both ways between a loop's edges and geometry curves, boxes and areas; leaves out
// patterns.
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

/// Area with the sign of the sense, the chords and what lies between them and their curves.
double signedArea(const LoopCurves& curves);
/// Whether the point lies within the loop, by crossings with chords that are within `tolerance` of the
/// curves.
bool isInside(const LoopCurves& curves, const AcGePoint2d& point, double tolerance);
/// The largest distance of the curves along the direction from the origin, negated for the smallest with the
/// opposite direction. -infinity for no curves.
double reachAlong(const LoopCurves& curves, const AcGeVector2d& direction);

} // namespace hostkit
