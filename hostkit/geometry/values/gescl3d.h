// Stand-in for the host's AcGeScale3d. Covers three scale factors as a value; leaves out algebra on them beyond products.
#pragma once

#include "gemat3d.h"

/// Scale factors along x, y and z, as a block reference holds them. Default is 1, 1, 1.
class AcGeScale3d {
public:
    constexpr AcGeScale3d() = default;
    constexpr explicit AcGeScale3d(double factor)
        : sx(factor)
        , sy(factor)
        , sz(factor) {}
    constexpr AcGeScale3d(double x, double y, double z)
        : sx(x)
        , sy(y)
        , sz(z) {}

    static const AcGeScale3d kIdentity;

    constexpr AcGeScale3d& set(double x, double y, double z) {
        sx = x;
        sy = y;
        sz = z;
        return *this;
    }
    double& operator[](unsigned int i) { return i == 0 ? sx : i == 1 ? sy : sz; }
    double operator[](unsigned int i) const { return i == 0 ? sx : i == 1 ? sy : sz; }
    constexpr AcGeScale3d operator*(const AcGeScale3d& s) const { return {sx * s.sx, sy * s.sy, sz * s.sz}; }
    constexpr AcGeScale3d operator*(double s) const { return {sx * s, sy * s, sz * s}; }
    constexpr AcGeVector3d operator*(const AcGeVector3d& v) const { return {sx * v.x, sy * v.y, sz * v.z}; }
    /// A zero factor gives an infinite one.
    constexpr AcGeScale3d inverse() const { return {1.0 / sx, 1.0 / sy, 1.0 / sz}; }
    /// The magnitudes agree within tol.equalVector(); signs may differ.
    Adesk::Boolean isProportional(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::abs(std::abs(sx) - std::abs(sy)) <= tol.equalVector() &&
               std::abs(std::abs(sy) - std::abs(sz)) <= tol.equalVector();
    }
    Adesk::Boolean isEqualTo(const AcGeScale3d& s, const AcGeTol& tol = AcGeContext::gTol) const {
        return AcGeVector3d(sx - s.sx, sy - s.sy, sz - s.sz).isZeroLength(tol);
    }
    Adesk::Boolean operator==(const AcGeScale3d& s) const { return isEqualTo(s); }
    Adesk::Boolean operator!=(const AcGeScale3d& s) const { return !isEqualTo(s); }
    void getMatrix(AcGeMatrix3d& matrix) const {
        matrix.setToIdentity();
        for (unsigned int i = 0; i < 3; ++i) matrix.entry[i][i] = (*this)[i];
    }

    double sx = 1.0;
    double sy = 1.0;
    double sz = 1.0;
};

inline constexpr AcGeScale3d AcGeScale3d::kIdentity{};
