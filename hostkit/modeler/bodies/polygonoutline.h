// The outline of a prism: a polygon with arcs, made of straight sides.
#pragma once

#include "amgeometry.h"
#include "ampolygon.h"

#include <vector>

namespace hostkit::modeler {

struct PolygonOutline {
    std::vector<AcGePoint3d> points; ///< counter-clockwise about the normal
    std::vector<int> arcs; ///< of the side that begins at each point: which arc it is a part of, or -1
    std::vector<AModeler::Circle3d> circles; ///< of the arcs
    AcGeVector3d normal;                     ///< of length 1
};

/// Arcs become sides of equal length, as many as their share of `approx`, at least one. Points that follow
/// each other within gEpsAbs are one where an arc closes up; as given they are an error. Errors as
/// Body::extrusion tells them.
[[nodiscard]] PolygonOutline outlineOf(const AModeler::Point3d points[],
                                       AModeler::PolygonVertexData* const data[], int count,
                                       const AcGeVector3d& normal);

/// Two sides that are no neighbours come within the tolerance of each other, or neighbours run back over each
/// other.
[[nodiscard]] bool crossesItself(const PolygonOutline& outline, double epsilon);

} // namespace hostkit::modeler
