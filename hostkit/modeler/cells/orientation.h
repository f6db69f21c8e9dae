// The side of a line in the plane, exactly.
#pragma once

namespace hostkit::modeler {

/// A point in the plane.
struct Planar {
    double x = 0;
    double y = 0;

    friend bool operator==(const Planar&, const Planar&) = default;
};

/// 1 where a, b, c turn left, -1 where they turn right, 0 where they are collinear: the sign of the exact
/// determinant of these doubles, whatever their size. Products may neither overflow nor underflow:
/// coordinates are 0 or between 1e-140 and 1e140. Most calls are decided by the rounded determinant and its
/// error bound, the rest by expansions (Shewchuk, Adaptive Precision Floating-Point Arithmetic, 1997).
[[nodiscard]] int orientation(const Planar& a, const Planar& b, const Planar& c);

} // namespace hostkit::modeler
