#pragma once

#include "gepnt3d.h"

#include <cmath>

/// What the topic files of the contour tools share: the named tolerances and the comparisons made with them.
namespace vexo {

/// Relative and absolute slack of comparisons, and the bound for signs of bulges and sums.
inline constexpr double kComparisonTolerance = 1e-10;
/// Bound for squared values: a bulge is an arc when its square is above this.
inline constexpr double kSquaredTolerance = 1e-20;
/// How far correctExtentsPoints moves a point inwards.
inline constexpr double kExtentsNudge = 1e-8;

/// a < b beyond doubt: the left operand alone is widened, so that the order of the operands matters.
inline bool isDefinitelyLess(double a, double b) {
    return a + std::abs(a) * kComparisonTolerance + kComparisonTolerance < b;
}

inline bool isArcBulge(double bulge) { return kSquaredTolerance < bulge * bulge; }
inline bool isArcBulge(const AcGeVector3d& bulge) {
    const double height = bulge.length();
    return kSquaredTolerance < height * height;
}

/// A tolerance with the same value for points and vectors.
inline AcGeTol toleranceOf(double value) {
    AcGeTol tolerance;
    tolerance.setEqualPoint(value);
    tolerance.setEqualVector(value);
    return tolerance;
}

/// A tolerance for points; vectors keep the default.
inline AcGeTol pointToleranceOf(double value) {
    AcGeTol tolerance;
    tolerance.setEqualPoint(value);
    return tolerance;
}

} // namespace vexo
