// Stand-in for the host's AcGeTol. Covers the two tolerances and the point allowance; leaves out nothing that callers ask for.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

/// The tolerance that the geometry kit's tests take: one length for points, one dimensionless number for
/// vectors. A default object holds 1e-10 in both.
///
/// A point test holds when the points are at most equalPoint() apart, or at most AcGe::kPointUlps units in
/// the last place of their largest coordinate: at 1e6 the coordinates themselves stand 1.2e-10 apart, so that
/// a length of 1e-10 alone would ask for equality to the bit. A vector test compares unit vectors
/// (directions) or the vectors themselves (isEqualTo, isZeroLength) with equalVector().
class AcGeTol {
public:
    constexpr AcGeTol() = default;
    constexpr double equalPoint() const { return m_equalPoint; }
    constexpr double equalVector() const { return m_equalVector; }
    constexpr void setEqualPoint(double value) { m_equalPoint = value; }
    constexpr void setEqualVector(double value) { m_equalVector = value; }

private:
    double m_equalPoint = 1e-10;
    double m_equalVector = 1e-10;
};

namespace AcGe {

/// How many units in the last place of the largest coordinate two points may differ and still be the same
/// point. A point that the kit computes (a centre and a radius rounded once each, an angle, a product, a sum)
/// is off by at most four; two such points that stand for the same place differ by at most eight.
inline constexpr double kPointUlps = 8.0;

/// The distance from |magnitude| to the next larger double, for a magnitude that is a normal number. Infinite
/// for an infinity or a NaN, 0 for 0.
inline double ulpOf(double magnitude) {
    constexpr std::uint64_t exponentMask = 0x7ff0000000000000ULL;
    constexpr double ulpOfOne = 0x1p-52;
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(magnitude) & exponentMask) * ulpOfOne;
}

/// The distance within which two points with coordinates up to `magnitude` count as the same. Whoever indexes
/// points inflates boxes by this much. Callers that compare with it use `distance <= allowance` on finite
/// distances.
inline double pointAllowance(const AcGeTol& tol, double magnitude) {
    return std::max(tol.equalPoint(), kPointUlps * ulpOf(magnitude));
}

/// The squared form of the point test: true for a squared distance within the allowance; false for NaN and
/// infinities.
inline bool isWithinAllowance(double distanceSquared, double magnitude, const AcGeTol& tol) {
    if (distanceSquared <= tol.equalPoint() * tol.equalPoint()) return true;
    const double coarse = kPointUlps * ulpOf(magnitude);
    return std::isfinite(distanceSquared) && distanceSquared <= coarse * coarse;
}

} // namespace AcGe
