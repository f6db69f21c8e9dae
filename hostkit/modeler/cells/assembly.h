// The result of a boolean from its cells.
#pragma once

#include "arrangement.h"
#include "combination.h"

#include <optional>

namespace hostkit::modeler {

/// The cells across which the operation changes, without the borders between those of one plane and surface,
/// and the faces that passed through. Nothing where the borders do not close.
std::optional<Polyhedron> assemble(Operation operation, const Arrangement& all);

} // namespace hostkit::modeler
