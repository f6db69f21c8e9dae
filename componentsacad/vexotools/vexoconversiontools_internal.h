#pragma once

#include <cmath>

namespace vexo {

inline constexpr double comparisonTolerance = 1e-10;

/// How far from a value counts as the value.
inline double toleranceAt(double value) {
    return std::fabs(value) * comparisonTolerance + comparisonTolerance;
}

} // namespace vexo
