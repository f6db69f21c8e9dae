// Stand-in for the host's AcGePoint2d. Covers arithmetic, distances, the point test and transforms; leaves out nothing that callers ask for.
#pragma once

#include "gevec2d.h"

#include <algorithm>

/// A place in the plane, in drawing units. A plain value of two doubles.
class AcGePoint2d {
public:
    constexpr AcGePoint2d() = default;
    constexpr AcGePoint2d(double xx, double yy)
        : x(xx)
        , y(yy) {}

    static const AcGePoint2d kOrigin;

    constexpr AcGePoint2d& set(double xx, double yy) {
        x = xx;
        y = yy;
        return *this;
    }
    double& operator[](unsigned int i) { return i == 0 ? x : y; }
    double operator[](unsigned int i) const { return i == 0 ? x : y; }

    constexpr AcGePoint2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    constexpr AcGePoint2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    constexpr AcGeVector2d operator-(const AcGePoint2d& p) const { return {x - p.x, y - p.y}; }
    /// Scales the coordinates about the origin.
    constexpr AcGePoint2d operator*(double s) const { return {x * s, y * s}; }
    constexpr AcGePoint2d operator/(double s) const { return {x / s, y / s}; }
    constexpr AcGePoint2d& operator+=(const AcGeVector2d& v) { return *this = *this + v; }
    constexpr AcGePoint2d& operator-=(const AcGeVector2d& v) { return *this = *this - v; }
    constexpr AcGePoint2d& operator*=(double s) { return *this = *this * s; }
    constexpr AcGePoint2d& operator/=(double s) { return *this = *this / s; }
    constexpr AcGePoint2d& setToSum(const AcGePoint2d& p, const AcGeVector2d& v) { return *this = p + v; }
    AcGePoint2d& setToProduct(const AcGeMatrix2d& matrix, const AcGePoint2d& point);
    constexpr AcGeVector2d asVector() const { return {x, y}; }

    constexpr double distanceSqrdTo(const AcGePoint2d& p) const { return (*this - p).lengthSqrd(); }
    double distanceTo(const AcGePoint2d& p) const { return (*this - p).length(); }
    /// The coordinate with the largest magnitude, without sign: what the allowance of a point test grows
    /// with.
    double largestCoordinate() const { return std::max(std::abs(x), std::abs(y)); }

    /// The point test of AcGeTol. A NaN coordinate is equal to nothing.
    Adesk::Boolean isEqualTo(const AcGePoint2d& p, const AcGeTol& tol = AcGeContext::gTol) const {
        return AcGe::isWithinAllowance(distanceSqrdTo(p),
                                       std::max(largestCoordinate(), p.largestCoordinate()), tol);
    }
    Adesk::Boolean operator==(const AcGePoint2d& p) const { return isEqualTo(p); }
    Adesk::Boolean operator!=(const AcGePoint2d& p) const { return !isEqualTo(p); }

    AcGePoint2d& transformBy(const AcGeMatrix2d& matrix);
    /// Turns by `angle` radians, counter-clockwise.
    AcGePoint2d& rotateBy(double angle, const AcGePoint2d& wrtPoint = kOrigin);
    AcGePoint2d& mirror(const AcGeLine2d& line);
    AcGePoint2d& scaleBy(double factor, const AcGePoint2d& wrtPoint = kOrigin) {
        return *this = wrtPoint + (*this - wrtPoint) * factor;
    }

    double x = 0.0;
    double y = 0.0;
};

inline constexpr AcGePoint2d AcGePoint2d::kOrigin{0.0, 0.0};

#include "gemat2d.h"
