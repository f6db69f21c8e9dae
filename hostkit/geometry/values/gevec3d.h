// Stand-in for the host's AcGeVector3d. Covers arithmetic, lengths, angles, direction tests and transforms; leaves out error conditions.
#pragma once

#include "gegbl.h"

#include <cmath>

/// A direction and a length in space. A plain value of three doubles.
///
/// Direction tests (isCodirectionalTo, isParallelTo, isPerpendicularTo) compare unit vectors with
/// tol.equalVector(); a vector that isZeroLength under the same tolerance has no direction, so that each of
/// them answers false for it, against any vector, another zero vector included.
class AcGeVector3d {
public:
    constexpr AcGeVector3d() = default;
    constexpr AcGeVector3d(double xx, double yy, double zz)
        : x(xx)
        , y(yy)
        , z(zz) {}
    /// The vector of a plane's coordinates as AcGePlanarEnt::getCoordSystem gives them.
    AcGeVector3d(const AcGePlanarEnt& plane, const AcGeVector2d& vector);

    static const AcGeVector3d kIdentity; ///< (0, 0, 0)
    static const AcGeVector3d kXAxis;
    static const AcGeVector3d kYAxis;
    static const AcGeVector3d kZAxis;

    constexpr AcGeVector3d& set(double xx, double yy, double zz) {
        x = xx;
        y = yy;
        z = zz;
        return *this;
    }
    AcGeVector3d& set(const AcGePlanarEnt& plane, const AcGeVector2d& vector);
    /// Coordinates along the plane's axes; the part along the normal is dropped.
    AcGeVector2d convert2d(const AcGePlanarEnt& plane) const;
    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }
    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }

    constexpr AcGeVector3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    constexpr AcGeVector3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    constexpr AcGeVector3d operator-() const { return {-x, -y, -z}; }
    constexpr AcGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
    constexpr AcGeVector3d operator/(double s) const { return {x / s, y / s, z / s}; }
    constexpr AcGeVector3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
    constexpr AcGeVector3d& operator-=(const AcGeVector3d& v) { return *this = *this - v; }
    constexpr AcGeVector3d& operator*=(double s) { return *this = *this * s; }
    constexpr AcGeVector3d& operator/=(double s) { return *this = *this / s; }
    constexpr AcGeVector3d& negate() { return *this = -*this; }
    constexpr AcGeVector3d& setToSum(const AcGeVector3d& a, const AcGeVector3d& b) { return *this = a + b; }
    AcGeVector3d& setToProduct(const AcGeMatrix3d& matrix, const AcGeVector3d& vector);

    constexpr double dotProduct(const AcGeVector3d& v) const { return x * v.x + y * v.y + z * v.z; }
    constexpr AcGeVector3d crossProduct(const AcGeVector3d& v) const {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }
    constexpr double lengthSqrd() const { return x * x + y * y + z * z; }
    /// Correct for components up to 1e150; beyond that it may overflow to infinity.
    double length() const { return std::sqrt(lengthSqrd()); }
    /// Index of the component with the largest magnitude.
    unsigned int largestElement() const;

    /// Unit vector of the same direction. A vector of a length at most tol.equalVector() is given back as it
    /// is.
    AcGeVector3d normal(const AcGeTol& tol = AcGeContext::gTol) const {
        const double size = length();
        return size > tol.equalVector() ? *this / size : *this;
    }
    /// Makes this a unit vector. A vector of a length at most tol.equalVector() stays as it is.
    AcGeVector3d& normalize(const AcGeTol& tol = AcGeContext::gTol) { return *this = normal(tol); }

    /// Unsigned angle, 0..pi, with full relative accuracy near 0 and near pi. 0 when either vector is zero.
    double angleTo(const AcGeVector3d& v) const {
        return std::atan2(crossProduct(v).length(), dotProduct(v));
    }
    /// Angle from this to v, 0..2*pi, counter-clockwise seen against `reference` (from its tip). The unsigned
    /// angle is taken and subtracted from 2*pi when the cross product points away from `reference`.
    double angleTo(const AcGeVector3d& v, const AcGeVector3d& reference) const;
    /// Angle from the plane's first axis to this vector's projection on the plane, 0..2*pi, about the plane's
    /// normal.
    double angleOnPlane(const AcGePlanarEnt& plane) const;
    /// A vector perpendicular to this. In the XY plane it is kZAxis x this, of the same length: this vector
    /// turned left. Elsewhere it is the unit x axis that the arbitrary-axis rule gives for this vector as a
    /// normal. Zero gives zero.
    AcGeVector3d perpVector() const;

    /// Length at most tol.equalVector().
    Adesk::Boolean isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return lengthSqrd() <= tol.equalVector() * tol.equalVector();
    }
    Adesk::Boolean isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const {
        return std::abs(length() - 1.0) <= tol.equalVector();
    }
    /// The difference of the vectors, not of their directions, has a length of at most tol.equalVector().
    Adesk::Boolean isEqualTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const {
        return (*this - v).isZeroLength(tol);
    }
    Adesk::Boolean operator==(const AcGeVector3d& v) const { return isEqualTo(v); }
    Adesk::Boolean operator!=(const AcGeVector3d& v) const { return !isEqualTo(v); }
    /// Same line of direction, in the same or the opposite sense.
    Adesk::Boolean isParallelTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    /// Same direction and sense.
    Adesk::Boolean isCodirectionalTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;
    Adesk::Boolean isPerpendicularTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const;

    /// Applies the linear part; the translation is ignored. Found in gemat3d.h, which this header brings
    /// along.
    AcGeVector3d& transformBy(const AcGeMatrix3d& matrix);
    /// Turns by `angle` radians, right-handed about `axis`, which may have any length. A zero axis changes
    /// nothing.
    AcGeVector3d& rotateBy(double angle, const AcGeVector3d& axis);
    /// Reflects through the plane with this normal, of any length. A zero normal changes nothing.
    AcGeVector3d& mirror(const AcGeVector3d& planeNormal);
    /// Moves along `direction` on to the plane with this normal through the origin. A direction in the plane
    /// changes nothing.
    AcGeVector3d project(const AcGeVector3d& planeNormal, const AcGeVector3d& direction) const;
    /// The part of this vector in the plane with this normal.
    AcGeVector3d orthoProject(const AcGeVector3d& planeNormal) const;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline constexpr AcGeVector3d AcGeVector3d::kIdentity{0.0, 0.0, 0.0};
inline constexpr AcGeVector3d AcGeVector3d::kXAxis{1.0, 0.0, 0.0};
inline constexpr AcGeVector3d AcGeVector3d::kYAxis{0.0, 1.0, 0.0};
inline constexpr AcGeVector3d AcGeVector3d::kZAxis{0.0, 0.0, 1.0};

constexpr AcGeVector3d operator*(double s, const AcGeVector3d& v) { return v * s; }

namespace AcGe {

/// The x and y axes that the drawing format gives a plane by its normal: x is world Y x normal when the
/// normal is within 1/64 of the world Z axis in both its X and Y, otherwise world Z x normal; y is normal x
/// x. Both come out as unit vectors; a zero normal is taken as +Z.
void arbitraryAxes(const AcGeVector3d& normal, AcGeVector3d& xAxis, AcGeVector3d& yAxis);

} // namespace AcGe

#include "gepnt3d.h"
