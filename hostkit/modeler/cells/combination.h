// Booleans of bodies with planar faces.
#pragma once

#include "polyhedron.h"

#include <optional>
#include <span>

namespace hostkit::modeler {

enum class Operation : std::uint8_t { unite, subtract, intersect };

/// What a body `a` becomes by all of `others` at once: a + (b1 + b2 + ...), a - (b1 + b2 + ...), a * (b1 + b2
/// + ...). The others may overlap and touch each other and `a` in any way.
///
/// Points closer than `tolerance` are one, planes that agree within it over the faces that lie in them are
/// one. It is raised to 64 units in the last place of the largest coordinate, and four times, a quarter and
/// sixteen times of it are tried where no consistent result is found. A point of an input that stays in the
/// result has its coordinates bit for bit; where points of two bodies are one, those of the first. A face
/// has the normal of the largest input face in its plane, bit for bit.
///
/// Faces whose boxes meet no other body's pass through corner by corner; of the others neighbours in one
/// plane and on one surface become one face, and points in the middle of a straight edge go. Where faces of
/// two bodies lie on each other, the result has the surface of the one that stands first, so that it may have
/// more faces after `a` and a single other are exchanged only where their surfaces differ. Faces stand in the
/// order of their origins; a result has partners. A result without material is empty.
///
/// Nothing when an input is no closed body with loops counter-clockwise about the normals, when its volume is
/// negative, when the tolerance is negative or not finite, or when no consistent result was found: the
/// operation is refused, nothing is changed. Time grows with the faces that meet, about as n log n. Throws
/// std::bad_alloc alone.
[[nodiscard]] std::optional<Polyhedron> combine(Operation operation, const Polyhedron& a,
                                                std::span<const Polyhedron* const> others, double tolerance);

} // namespace hostkit::modeler
