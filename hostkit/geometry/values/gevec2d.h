// Stand-in for the host's AcGeVector2d. Covers arithmetic, lengths, angles, direction tests and transforms; leaves out error conditions.
#pragma once

#include "gegbl.h"

#include <cmath>

/// A direction and a length in the plane. A plain value of two doubles. Direction tests compare unit vectors
/// with tol.equalVector() and answer false for a zero vector, as those of AcGeVector3d do.
class AcGeVector2d {
public:
    constexpr AcGeVector2d() = default;
    constexpr AcGeVector2d(double xx, double yy)
        : x(xx)
        , y(yy) {}

    static const AcGeVector2d kIdentity; ///< (0, 0)
    static const AcGeVector2d kXAxis;
    static const AcGeVector2d kYAxis;

    constexpr AcGeVector2d& set(double xx, double yy) {
        x = xx;
        y = yy;
        return *this;
    }
    double& operator[](unsigned int i) { return i == 0 ? x : y; }
    double operator[](unsigned int i) const { return i == 0 ? x : y; }

    constexpr AcGeVector2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    constexpr AcGeVector2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    constexpr AcGeVector2d operator-() const { return {-x, -y}; }
    constexpr AcGeVector2d operator*(double s) const { return {x * s, y * s}; }
    constexpr AcGeVector2d operator/(double s) const { return {x / s, y / s}; }
    constexpr AcGeVector2d& operator+=(const AcGeVector2d& v) { return *this = *this + v; }
    constexpr AcGeVector2d& operator-=(const AcGeVector2d& v) { return *this = *this - v; }
    constexpr AcGeVector2d& operator*=(double s) { return *this = *this * s; }
    constexpr AcGeVector2d& operator/=(double s) { return *this = *this / s; }
    constexpr AcGeVector2d& negate() { return *this = -*this; }
    constexpr AcGeVector2d& setToSum(const AcGeVector2d& a, const AcGeVector2d& b) { return *this = a + b; }
    AcGeVector2d& setToProduct(const AcGeMatrix2d& matrix, const AcGeVector2d& vector);

    constexpr double dotProduct(const AcGeVector2d& v) const { return x * v.x + y * v.y; }
    /// x * v.y - y * v.x: positive when v lies to the left of this.
    constexpr double crossProduct(const AcGeVector2d& v) const { return x * v.y - y * v.x; }
    constexpr double lengthSqrd() const { return x * x + y * y; }
    double length() const { return std::sqrt(lengthSqrd()); }

    /// Unit vector of the same direction. A vector of a length at most tol.equalVector() is given back as it
    /// is.
    AcGeVector2d normal(const AcGeTol& tol = AcGeContext::gTol) const {
        const double size = length();
        return size > tol.equalVector() ? *this / size : *this;
    }
    /// Makes this a unit vector. A vector of a length at most tol.equalVector() stays as it is.
    AcGeVector2d& normalize(const AcGeTol& tol = AcGeContext::gTol) { return *this = normal(tol); }

    /// Angle from the x axis, 0 to below 2*pi, counter-clockwise. 0 for the zero vector.
    double angle() const;
    /// Unsigned angle, 0..pi. 0 when either vector is zero.
    double angleTo(const AcGeVector2d& v) const {
        return std::atan2(std::abs(crossProduct(v)), dotProduct(v));
    }
    /// This vector turned left by a right angle, of the same length.
    constexpr AcGeVector2d perpVector() const { return {-y, x}; }

    Adesk::Boolean isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return lengthSqrd() <= tol.equalVector() * tol.equalVector();
    }
    Adesk::Boolean isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::abs(length() - 1.0) <= tol.equalVector();
    }
    /// The difference of the vectors, not of their directions, has a length of at most tol.equalVector().
    Adesk::Boolean isEqualTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return (*this - v).isZeroLength(tol);
    }
    Adesk::Boolean operator==(const AcGeVector2d& v) const { return isEqualTo(v); }
    Adesk::Boolean operator!=(const AcGeVector2d& v) const { return !isEqualTo(v); }
    Adesk::Boolean isParallelTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isCodirectionalTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isPerpendicularTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const;

    /// Applies the linear part; the translation is ignored.
    AcGeVector2d& transformBy(const AcGeMatrix2d& matrix);
    AcGeVector2d& rotateBy(double angle);
    /// Reflects through the line of this direction, of any length. A zero direction changes nothing.
    AcGeVector2d& mirror(const AcGeVector2d& line);

    double x = 0.0;
    double y = 0.0;
};

inline constexpr AcGeVector2d AcGeVector2d::kIdentity{0.0, 0.0};
inline constexpr AcGeVector2d AcGeVector2d::kXAxis{1.0, 0.0};
inline constexpr AcGeVector2d AcGeVector2d::kYAxis{0.0, 1.0};

constexpr AcGeVector2d operator*(double s, const AcGeVector2d& v) { return v * s; }

#include "gepnt2d.h"
