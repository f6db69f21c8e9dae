// Booleans of bodies with planar faces.
#pragma once

#include "polyhedron.h"

#include <optional>
#include <span>

namespace hostkit::modeler {

enum class Operation : std::uint8_t { unite, subtract, intersect };

/// What a body `a` becomes by all of `others` at once: a + (b1 + b2 + ...), a - (b1 + b2 + ...), a * (b1 + b2
/// + ...). The others may overlap and touch each other and `a` in any way. Points closer than `tolerance` are
/// one, planes that agree within it over the faces that lie in them are one; a point of an input that stays
/// in the result has its coordinates bit for bit. A result without material is empty. Nothing when the input
/// is no closed body or no consistent result could be found: the operation is refused, nothing is changed.
/// Throws std::bad_alloc alone.
[[nodiscard]] std::optional<Polyhedron> combine(Operation operation, const Polyhedron& a,
                                                std::span<const Polyhedron* const> others, double tolerance);

} // namespace hostkit::modeler
