// Triangles of a curved face that lie in one plane.
#pragma once

#include "polyhedron.h"

namespace hostkit::modeler {

using Facet = std::vector<Polyhedron::Index>;

/// Half the sum of the cross products along the loop: its area, along its normal.
[[nodiscard]] AcGeVector3d areaVectorOf(const std::vector<AcGePoint3d>& points, const Facet& loop);

/// Two triangles with a common edge that lie in one plane become one convex facet of four corners; the other
/// one is empty then. Each has one partner at most.
void joinFlatPairs(const std::vector<AcGePoint3d>& points, std::vector<Facet>& facets);

} // namespace hostkit::modeler
