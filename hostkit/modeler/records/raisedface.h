// Bodies from flat faces, and flat faces from bodies.
#pragma once

#include "amodeler.h"
#include "shape.h"

namespace hostkit::modeler {

/// The one face of the sheet raised along its normal (against it by a negative height), its sides leaning
/// into the material by the taper in radians. Facets of one arc of the shape that the sheet was made of share
/// a surface. Nothing where the sides would meet below the top.
[[nodiscard]] std::optional<AModeler::Body> raisedFace(const Polyhedron& sheet, const Shape& shape,
                                                       double height, double taper);

/// The face alone, with its edges, two-sided.
[[nodiscard]] Shape sheetOf(const Shape& shape, const Shape::Face& face);

} // namespace hostkit::modeler
