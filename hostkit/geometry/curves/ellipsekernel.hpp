// What the ellipses of the plane and of space share. Internal to the geometry kit.
#pragma once

#include "circlekernel.hpp"
#include "gegbl.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace AcGeKernel {

/// Turns two conjugate radii into the principal ones. Returns the angle by which parameters move: the point
/// at t before is the point at t less the angle after. Radii that are perpendicular already stay as they are.
template <class Vector>
double principalAxes(Vector& a, Vector& b) {
    const double dot = a.dotProduct(b), aa = a.lengthSqrd(), bb = b.lengthSqrd();
    constexpr double roundingLimit = 16.0 * std::numeric_limits<double>::epsilon();
    if (std::abs(dot) <= roundingLimit * std::sqrt(aa) * std::sqrt(bb)) return 0.0;
    // |a cos t + b sin t| is extreme where tan 2t = 2 a.b / (a.a - b.b).
    const double angle = std::atan2(2.0 * dot, aa - bb) / 2.0;
    const double c = std::cos(angle), s = std::sin(angle);
    const Vector major = a * c + b * s, minor = b * c - a * s;
    a = major;
    b = minor;
    return angle;
}

/// The angular pieces, cut on the axes too: in its own quadrant a point has one foot, however flat the
/// ellipse is, so that no nearest point is missed between two cuts.
inline void ellipsePieces(double start, double end, AcGeDoubleArray& params) {
    angularPieces(start, end, params);
    constexpr double quarter = AcGe::kPi / 2.0;
    const double quarters = std::ceil(start / quarter);
    for (int i = 0; i <= 4; ++i) {
        const double axis = (quarters + i) * quarter;
        if (axis > start && axis < end) params.append(axis);
    }
    std::sort(params.begin(), params.end());
}

template <class Ellipse>
bool areEqualEllipses(const Ellipse& a, const Ellipse& b, const AcGeTol& tol) {
    if (!a.center().isEqualTo(b.center(), tol)) return false;
    // Five points fix an ellipse, and their order its sense.
    constexpr int parts = 4;
    for (int i = 0; i <= parts; ++i) {
        const double part = static_cast<double>(i) / parts;
        const auto pointA = a.evalPoint(a.startAng() + (a.endAng() - a.startAng()) * part);
        const auto pointB = b.evalPoint(b.startAng() + (b.endAng() - b.startAng()) * part);
        if (!pointA.isEqualTo(pointB, tol)) return false;
    }
    return true;
}

} // namespace AcGeKernel
