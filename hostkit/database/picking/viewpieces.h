// Curves as pieces of the view plane: arcs, bulges, splines and quadrilaterals; leaves out which entity has
// them.
#pragma once

#include "regionprobe.h"

#include "genurb3d.h"

#include <vector>

namespace hostkit {

/// Pieces of center + u cos t + v sin t for t from `start` on over `sweep` radians, which may be negative and
/// is cut to a turn.
void appendArc(std::vector<PlanePiece>& pieces, const AcGePoint2d& center, const AcGeVector2d& u,
               const AcGeVector2d& v, double start, double sweep);

/// Pieces of a polyline's segment in a plane with that unit normal. Nothing is computed by way of the centre,
/// so that flat arcs are as exact as their ends.
void appendBulge(std::vector<PlanePiece>& pieces, const ViewMap& toView, const AcGePoint3d& start,
                 const AcGePoint3d& end, double bulge, const AcGeVector3d& normal);

void appendQuad(std::vector<PlanePiece>& pieces, const ViewMap& toView, const AcGePoint3d (&corners)[4]);

/// Chords of a spline, no farther from it than `deviation`, and but for what is more than `deviation` outside
/// of `near` where that is given: there a chord stands for a longer part.
void appendSpline(std::vector<PlanePiece>& pieces, const ViewMap& toView, const AcGeNurbCurve3d& curve,
                  double deviation, const PlaneBox* near = nullptr);

/// How far chords may be from splines where the region is asked.
double chordDeviation(const PlaneRegion& region);

} // namespace hostkit
